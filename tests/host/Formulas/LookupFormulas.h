#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Formulas/EvaluationSession.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

/// A sheet full of values that look-ups may take for each other, and formulas over its ranges,
/// written for the first row.
struct LookupFormulas {
  static constexpr unsigned long rows = 150;

  /// The values of cells, as FormulaDocument::set() takes them; "" stands for no cell.
  static std::vector<std::string> const& getValues();
  static std::vector<std::string_view> const& getFormulas();

  /// Fills columns A to D; `choose(n)` gives a number below n.
  static void fill(FormulaDocument& document,
                   std::function<std::size_t(std::size_t)> const& choose);

  /// The result of a formula in a row: as cell by cell resolution gets it, and in a session.
  static std::string calcPlainly(FormulaDocument& document, std::string_view formula,
                                 unsigned long row);
  static std::string calcInSession(FormulaDocument const& document, TableContext const& sheet,
                                   DOM::FormulaSyntaxTree::Expr const& expr, unsigned long row,
                                   EvaluationSession& session);
};

}  // namespace Zorv::Formulas
