#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"

#include <iterator>
#include <string>
#include <utility>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include "ConditionalFormatters/Predicates/CndFrmt_Occurrence.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Utils/Assert.h"

namespace Zorv::ConditionalFormatters {

namespace {

constexpr char const* uniquenessSource =
    "/code/ConditionalFormatters/Operators/CndFrmt_UniquenessOperator";

struct PayloadHasher : boost::static_visitor<std::size_t> {
  std::size_t operator()(FormulaModel::FormulaEmpty const& /*value*/) const {
    doFailAssert(uniquenessSource, 42, "", "Empty shouldn't be hashed.");
  }
  std::size_t operator()(FormulaModel::FormulaNumber const& number) const {
    return std::hash<double>()(number.value.get());
  }
  std::size_t operator()(FormulaModel::FormulaString const& string) const {
    return std::hash<std::string>()(string.value);
  }
  std::size_t operator()(FormulaModel::FormulaBoolean const& boolean) const {
    return static_cast<std::size_t>(boolean.value);
  }
  std::size_t operator()(FormulaModel::FormulaError const& error) const {
    return static_cast<std::size_t>(error.code);
  }
};

/// True if another element is equal to the one that was found. Equal elements are neighbours, so
/// that the next one usually tells; listing them all would cost their number.
bool isRepeated(FormulaValueMultiset const& values, FormulaValueMultiset::const_iterator found) {
  auto const next = std::next(found);
  if (next != values.end() && values.key_eq()(*next, *found)) {
    return true;
  }
  // Containers do not promise to find the first of several.
  return values.equal_range(*found).first != found;
}

}  // namespace

std::size_t FormulaValueHasher::operator()(FormulaValue const& value) const {
  return boost::apply_visitor(PayloadHasher(), value);
}

UniquenessOperator::UniquenessOperator(DOM::UniquenessConditionalFormatOperator const& record,
                                       FormulaValueMultiset values)
    : _uniquenessType(static_cast<std::uint8_t>(record.type)), _values(std::move(values)) {}

bool UniquenessOperator::operator()(FormulaValueData const& data) const {
  if (FormulaModel::isFormulaEmpty(data.value)) {
    return false;
  }
  auto const found = _values.find(data.value);
  if (found == _values.end()) {
    doFailAssert(uniquenessSource, 62, "valueCount != 0");
  }
  return satisfiesOccurrence(static_cast<DOM::UniquenessType>(_uniquenessType),
                             isRepeated(_values, found));
}

}  // namespace Zorv::ConditionalFormatters
