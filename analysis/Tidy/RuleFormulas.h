#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/ContextProvider.h"
#include "Utils/CellIndex.h"
#include "analysis/Tidy/WrittenRule.h"

namespace Zorv::Analysis {

/// The formulas of one sheet's rules, whatever cell each rule is written relative to. Borrows the
/// table and the provider.
class RuleFormulas {
public:
  using Exprs = std::vector<DOM::FormulaSyntaxTree::Expr>;

  RuleFormulas(DOM::Table const& table, std::size_t sheet,
               Formulas::ContextProvider const& provider)
      : _context(*provider.getTableContext(table)), _sheet(sheet) {}

  /// The formulas as they read in the first cell of the sheet: those of two rules are equal if they
  /// say the same on every cell. Nothing if one cannot be read.
  [[nodiscard]] std::optional<Exprs> read(WrittenRule const& rule) const;

  /// The texts of the formulas relative to another cell. Nothing if a reference would leave the
  /// sheet, or if the texts would not say the same.
  [[nodiscard]] std::optional<std::vector<std::string>> moveTo(WrittenRule const& rule,
                                                               CellIndex base) const;

private:
  [[nodiscard]] std::optional<DOM::FormulaSyntaxTree::Expr> parseAt(std::string const& text,
                                                                    CellIndex base) const;

  Formulas::TableContext const& _context;
  std::size_t _sheet;
};

}  // namespace Zorv::Analysis
