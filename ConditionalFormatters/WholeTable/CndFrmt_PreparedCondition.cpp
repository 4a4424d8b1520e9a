#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include "ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_FormulaCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_NumbersConditions.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_UniquenessCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_ValueCondition.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::ConditionalFormatters {

namespace {

using ConditionPtr = std::unique_ptr<PreparedCondition const>;

class Preparer : public boost::static_visitor<ConditionPtr> {
public:
  Preparer(ConditionSources const& sources, ConditionalFormatRef const& formatRef) noexcept
      : _sources(sources), _formatRef(formatRef) {}

  ConditionPtr operator()(DOM::NullaryConditionalFormatOperator const& /*record*/) const {
    return std::make_unique<ValueCondition>(_sources, _formatRef);
  }
  ConditionPtr operator()(DOM::UnaryConditionalFormatOperator const& /*record*/) const {
    return std::make_unique<FormulaCondition<UnaryOperator, 1>>(_sources, _formatRef);
  }
  ConditionPtr operator()(DOM::BinaryConditionalFormatOperator const& /*record*/) const {
    return std::make_unique<FormulaCondition<BinaryOperator, 2>>(_sources, _formatRef);
  }
  ConditionPtr operator()(DOM::TextConditionalFormatOperator const& /*record*/) const {
    return std::make_unique<FormulaCondition<TextOperator, 1>>(_sources, _formatRef);
  }
  ConditionPtr operator()(DOM::TopBottomConditionalFormatOperator const& /*record*/) const {
    return std::make_unique<TopBottomCondition>(_sources, _formatRef);
  }
  ConditionPtr operator()(DOM::AboveAverageConditionalFormatOperator const& /*record*/) const {
    return std::make_unique<AverageCondition>(_sources, _formatRef);
  }
  ConditionPtr operator()(DOM::UniquenessConditionalFormatOperator const& record) const {
    return std::make_unique<UniquenessCondition>(_sources, _formatRef, record.type);
  }

private:
  ConditionSources const& _sources;
  ConditionalFormatRef const& _formatRef;
};

}  // namespace

PreparedCondition::~PreparedCondition() = default;

void PreparedCondition::makeOnce(unsigned threadCount) const {
  std::lock_guard const lock(_mutex);
  if (!_isReady.load(std::memory_order_relaxed)) {
    make(threadCount);
    _isReady.store(true, std::memory_order_release);
  }
}

ConditionPtr prepareCondition(ConditionSources const& sources,
                              ConditionalFormatRef const& formatRef) {
  return boost::apply_visitor(Preparer(sources, formatRef), formatRef.second.get().getOperator());
}

}  // namespace Zorv::ConditionalFormatters
