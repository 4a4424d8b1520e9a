#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"

#include <utility>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include "ConditionalFormatters/Formats/CndFrmt_FormulaBaseCell.h"
#include "ConditionalFormatters/Operators/CndFrmt_AboveAverageOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_NullaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_ValueCollectors.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ContextProvider.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Makes the operator of each kind of record.
class OperatorMaker : public boost::static_visitor<std::unique_ptr<Operator>> {
public:
  OperatorMaker(OperatorsFactory const& factory, ValueContextProvider const& provider,
                DOM::Table const& table, std::vector<TableRange> const& ranges) noexcept
      : _factory(factory), _provider(provider), _table(table), _ranges(ranges) {}

  result_type operator()(DOM::NullaryConditionalFormatOperator const& record) const {
    DOM::TimeZone const& timeZone = _provider.getTimeZone();
    auto const& locale = _provider.getFormulasContextProvider().getLocaleContext();
    return std::make_unique<NullaryOperator>(record, locale, timeZone);
  }
  result_type operator()(DOM::UnaryConditionalFormatOperator const& record) const {
    return makeWithFormulas<UnaryOperator>(record);
  }
  result_type operator()(DOM::BinaryConditionalFormatOperator const& record) const {
    return makeWithFormulas<BinaryOperator>(record);
  }
  result_type operator()(DOM::TextConditionalFormatOperator const& record) const {
    return makeWithFormulas<TextOperator>(record);
  }
  result_type operator()(DOM::TopBottomConditionalFormatOperator const& record) const {
    return std::make_unique<TopBottomOperator>(record, collectNumbers());
  }
  result_type operator()(DOM::AboveAverageConditionalFormatOperator const& record) const {
    return std::make_unique<AboveAverageOperator>(record, collectNumbers());
  }
  result_type operator()(DOM::UniquenessConditionalFormatOperator const& record) const {
    return std::make_unique<UniquenessOperator>(
        record, _factory.collectValuesFromRange<FormulaValueMultiset>(_ranges, insertNonEmpty));
  }

private:
  template <class FormulaOperator, class Record>
  result_type makeWithFormulas(Record const& record) const {
    CellIndex const baseCell = formulaBaseCell(_ranges);
    return std::make_unique<FormulaOperator>(record, _table, _provider.getFormulasContextProvider(),
                                             baseCell);
  }

  [[nodiscard]] std::vector<FloatNumber> collectNumbers() const {
    return _factory.collectValuesFromRange<std::vector<FloatNumber>>(_ranges, pushNumber);
  }

  OperatorsFactory const& _factory;
  ValueContextProvider const& _provider;
  DOM::Table const& _table;
  std::vector<TableRange> const& _ranges;
};

}  // namespace

OperatorsFactory::OperatorsFactory(ValueContextProvider const& valueContextProvider,
                                   DOM::Table const& table) noexcept
    : _valueContextProvider(valueContextProvider), _table(table) {}

std::unique_ptr<Operator> OperatorsFactory::create(ConditionalFormatRef const& formatRef) const {
  auto const& [ranges, format] = formatRef;
  OperatorMaker const maker(*this, _valueContextProvider, _table, ranges);
  return boost::apply_visitor(maker, format.get().getOperator());
}

}  // namespace Zorv::ConditionalFormatters
