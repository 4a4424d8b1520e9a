#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"

#include <string>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "ConditionalFormatters/Formats/CndFrmt_FormulaBaseCell.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_FormulaConditions.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_NumberCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_ValueConditions.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ContextProvider.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

namespace {

using ConditionPtr = std::unique_ptr<PreparedCondition const>;

/// Prepares the condition of each kind of record.
class ConditionPreparer : public boost::static_visitor<ConditionPtr> {
public:
  ConditionPreparer(ConditionSources const& sources, std::vector<TableRange> const& ranges) noexcept
      : _sources(sources), _ranges(ranges) {}

  ConditionPtr operator()(DOM::NullaryConditionalFormatOperator const& record) const {
    auto const period = findDatePeriod(record.getType());
    if (!period) {
      return std::make_unique<ValueKindCondition>(findValueKindTest(record.getType()));
    }
    return std::make_unique<DatePeriodCondition>(*period, contextProvider().getLocaleContext(),
                                                 _sources.provider.getTimeZone());
  }

  ConditionPtr operator()(DOM::UnaryConditionalFormatOperator const& record) const {
    auto const origin = findOrigin();
    if (record.getType() == DOM::UnaryConditionalFormatType::FormulaIsTrue) {
      return std::make_unique<TruthCondition>(origin, record.getArgument());
    }
    return std::make_unique<ComparisonCondition>(findComparison(record.getType()), origin,
                                                 record.getArgument());
  }

  ConditionPtr operator()(DOM::BinaryConditionalFormatOperator const& record) const {
    return std::make_unique<BoundsCondition>(findBoundsTest(record.getType()), findOrigin(),
                                             record.getFirstArgument(), record.getSecondArgument());
  }

  ConditionPtr operator()(DOM::TextConditionalFormatOperator const& record) const {
    auto const origin = findOrigin();
    TextTest const test = findTextTest(record.getType());
    if (auto const* literal = boost::get<std::string>(&record.getArgument())) {
      return std::make_unique<LiteralTextCondition>(test, origin.contextProvider, *literal);
    }
    auto const& formula =
        boost::get<std::unique_ptr<DOM::FormulaSyntaxTree::Expr>>(record.getArgument());
    return std::make_unique<FormulaTextCondition>(test, origin, PtrUtils::derefHeld(formula));
  }

  ConditionPtr operator()(DOM::TopBottomConditionalFormatOperator const& record) const {
    return std::make_unique<NumberCondition>(findThresholdTest(record.getType()),
                                             operands().getThreshold(record, _sources.request));
  }

  ConditionPtr operator()(DOM::AboveAverageConditionalFormatOperator const& record) const {
    return std::make_unique<NumberCondition>(findMeanTest(record),
                                             operands().getMean(_sources.request));
  }

  ConditionPtr operator()(DOM::UniquenessConditionalFormatOperator const& record) const {
    operands().prepareOccurrences(_sources.request);
    return std::make_unique<OccurrenceCondition>(record, operands());
  }

private:
  [[nodiscard]] Formulas::ContextProvider const& contextProvider() const {
    return _sources.provider.getFormulasContextProvider();
  }
  [[nodiscard]] FormulaOrigin findOrigin() const {
    CellIndex const baseCell = formulaBaseCell(_ranges);
    return {_sources.table, contextProvider(), baseCell};
  }
  [[nodiscard]] RangeOperands const& operands() const noexcept { return *_sources.operands; }

  ConditionSources const& _sources;
  std::vector<TableRange> const& _ranges;
};

}  // namespace

PreparedCondition::~PreparedCondition() = default;

ConditionPtr prepareCondition(ConditionSources const& sources,
                              ConditionalFormatRef const& formatRef) {
  auto const& [ranges, format] = formatRef;
  return boost::apply_visitor(ConditionPreparer(sources, ranges), format.get().getOperator());
}

}  // namespace Zorv::ConditionalFormatters
