#include "ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h"

#include <iterator>
#include <string>
#include <utility>

#include <boost/variant/get.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "Utils/Assert.h"

namespace Zorv::ConditionalFormatters {

namespace {

constexpr char const* sourceFile =
    "/code/ConditionalFormatters/Operators/CndFrmt_UniquenessOperator";

/// Whether an element of the multiset has an equal one besides it. Equal elements are kept
/// together, so the next one tells; counting them would visit them all.
bool isRepeated(FormulaValueMultiset const& values, FormulaValueMultiset::const_iterator found) {
  auto const next = std::next(found);
  return next != values.end() && values.key_eq()(*found, *next);
}

}  // namespace

std::size_t FormulaValueHasher::operator()(FormulaValue const& value) const noexcept {
  using namespace FormulaModel;
  switch (value.which()) {
    case FormulaValueKind::Number:
      return std::hash<double>()(boost::get<FormulaNumber>(value).value.get());
    case FormulaValueKind::String:
      return std::hash<std::string>()(boost::get<FormulaString>(value).value);
    case FormulaValueKind::Boolean:
      return static_cast<std::size_t>(boost::get<FormulaBoolean>(value).value);
    case FormulaValueKind::Error:
      return static_cast<std::size_t>(boost::get<FormulaError>(value).code);
    default:
      doFailAssert(sourceFile, 42, "", "Empty shouldn't be hashed.");
  }
}

UniquenessOperator::UniquenessOperator(DOM::UniquenessConditionalFormatOperator const& record,
                                       FormulaValueMultiset values)
    : _uniquenessType(static_cast<std::uint8_t>(record.type)), _values(std::move(values)) {}

UniquenessOperator::~UniquenessOperator() = default;

bool UniquenessOperator::operator()(FormulaValueData const& data) const {
  if (FormulaModel::isFormulaEmpty(data.value)) {
    return false;
  }
  auto const found = _values.find(data.value);
  if (found == _values.end()) {
    doFailAssert(sourceFile, 62, "valueCount != 0");
  }
  switch (_uniquenessType) {
    case static_cast<std::uint8_t>(DOM::UniquenessType::Duplicate):
      return isRepeated(_values, found);
    case static_cast<std::uint8_t>(DOM::UniquenessType::Unique):
      return !isRepeated(_values, found);
    default:
      return false;
  }
}

}  // namespace Zorv::ConditionalFormatters
