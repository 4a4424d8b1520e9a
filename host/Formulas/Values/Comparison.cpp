#include "Formulas/Values/Comparison.h"

#include "Formulas/NumberOrder.h"
#include "Formulas/Text/Texts.h"

namespace Zorv::Formulas {

namespace {

/// The value as which an empty one is compared with another.
Value emptyLike(Value const& other) noexcept {
  switch (other.kind()) {
    case Value::Kind::Text:
      return Value::text({});
    case Value::Kind::Boolean:
      return Value::boolean(false);
    default:
      return Value::number(0.0);
  }
}

}  // namespace

std::strong_ordering compareValues(Value const& left, Value const& right) noexcept {
  if (left.isNumber() && right.isNumber()) {
    return compareNumbers(left.asNumber(), right.asNumber());
  }
  if (left.isEmpty() && right.isEmpty()) {
    return std::strong_ordering::equal;
  }
  if (left.isEmpty()) {
    return compareValues(emptyLike(right), right);
  }
  if (right.isEmpty()) {
    return compareValues(left, emptyLike(left));
  }
  // The kinds are numbered in the order of their values.
  if (left.kind() != right.kind()) {
    return left.kind() <=> right.kind();
  }
  return left.isText() ? compareTexts(left.asText(), right.asText())
                       : std::compare_three_way()(left.asBoolean(), right.asBoolean());
}

}  // namespace Zorv::Formulas
