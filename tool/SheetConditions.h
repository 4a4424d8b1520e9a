#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "DOM/CellInfo.h"
#include "workbook/Rule.h"

namespace Zorv::Tool {

/// The conditions of one sheet's rules, each made when a cell first needs it and then asked about
/// every cell; so a condition over a whole range gathers its values once.
///
/// Borrows the provider, the table and the rules. Not for use from several threads.
class SheetConditions {
public:
  /// Told where a condition cannot be evaluated: the rule, the cell, and what is wrong.
  using OnFailure =
      std::function<void(Workbook::Rule const&, DOM::CellInfo const&, char const* problem)>;

  SheetConditions(ConditionalFormatters::ValueContextProvider const& provider,
                  DOM::Table const& table, std::vector<Workbook::Rule const*> const& rules,
                  OnFailure onFailure);

  /// Whether a rule's condition holds for a cell by itself, wherever the rule applies and whatever
  /// its priority. Nothing where it cannot be evaluated.
  [[nodiscard]] std::optional<bool> holds(Workbook::Rule const& rule,
                                          DOM::CellInfo const& cellInfo);

  /// The rules that decide about a cell, in order of priority: those whose ranges hold it and whose
  /// conditions hold, up to the first that stops. Nothing where a condition cannot be evaluated.
  [[nodiscard]] std::optional<std::vector<Workbook::Rule const*>> findDeciding(
      ConditionalFormatters::ConditionalFormatRefs const& formatRefs,
      DOM::CellInfo const& cellInfo);

  /// The rule that a format of the sheet comes from.
  [[nodiscard]] Workbook::Rule const& ruleOf(DOM::ConditionalFormat const& format) const {
    return *_conditions.at(&format).rule;
  }

private:
  using OperatorPtr = std::unique_ptr<ConditionalFormatters::Operator>;
  struct Condition {
    Workbook::Rule const* rule = nullptr;
    OperatorPtr condition;  ///< null until it is needed
  };

  OperatorPtr const& obtainOperator(ConditionalFormatters::ConditionalFormatRef const& formatRef);
  [[nodiscard]] ConditionalFormatters::FormulaValueData obtainValue(
      DOM::CellInfo const& cellInfo) const;

  ConditionalFormatters::ValueContextProvider const& _provider;
  ConditionalFormatters::OperatorsFactory _factory;
  std::unordered_map<DOM::ConditionalFormat const*, Condition> _conditions;
  OnFailure _onFailure;
};

}  // namespace Zorv::Tool
