#include "ConditionalFormatters/Predicates/CndFrmt_Comparison.h"

namespace Zorv::ConditionalFormatters {

namespace {

template <class SameKindComparison>
bool comparePresent(FormulaValue const& cellValue, boost::optional<FormulaValue> const& argument) {
  return argument && SameKindComparison()(cellValue, *argument);
}

}  // namespace

Comparison findComparison(DOM::UnaryConditionalFormatType type) noexcept {
  using Type = DOM::UnaryConditionalFormatType;
  switch (type) {
    case Type::Equal:
      return comparePresent<IsEqual>;
    case Type::NotEqual:
      return comparePresent<IsNotEqual>;
    case Type::Greater:
      return comparePresent<IsGreater>;
    case Type::GreaterOrEqual:
      return comparePresent<IsGreaterOrEqual>;
    case Type::Less:
      return comparePresent<IsLess>;
    case Type::LessOrEqual:
      return comparePresent<IsLessOrEqual>;
    case Type::FormulaIsTrue:
      return nullptr;
  }
  return nullptr;
}

}  // namespace Zorv::ConditionalFormatters
