#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/ContextProvider.h"
#include "workbook/Rule.h"

namespace Zorv::Analysis {

/// A condition in a form that can be compared: everything about it besides its formulas as a text,
/// and the formulas as they read in the first cell of the sheet.
struct ConditionForm {
  std::string text;
  std::vector<DOM::FormulaSyntaxTree::Expr> formulas;

  friend bool operator==(ConditionForm const&, ConditionForm const&) noexcept = default;
};

/// The form of a rule's condition. A rule that is not resolved has its texts.
[[nodiscard]] ConditionForm makeConditionForm(Workbook::Rule const& rule,
                                              Formulas::TableContext const& context);

/// Gives conditions numbers: equal ones to those that say the same on each cell.
class ConditionIds {
public:
  /// The number of a condition, from 0. Costs a look into a hash table.
  [[nodiscard]] std::size_t getOrCreate(ConditionForm form);

private:
  struct Entry {
    ConditionForm form;
    std::size_t id;
  };

  std::unordered_map<std::size_t, std::vector<Entry>> _byHash;
  std::size_t _count = 0;
};

}  // namespace Zorv::Analysis
