#include "ConditionalFormatters/WholeTable/CndFrmt_WatchedValues.h"

#include <bit>
#include <functional>
#include <string>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"

namespace Zorv::ConditionalFormatters {

namespace {

using FormulaModel::ValueKey;

ValueKey watchedKeyOf(FormulaValue const& value) {
  return FormulaModel::makeValueKey(value, std::hash<std::string>());
}

/// True if values with one key are equal: the key of a text is a hash.
bool isSameWatched(FormulaValue const& a, FormulaValue const& b) {
  auto const* const text = boost::get<FormulaModel::FormulaString>(&a);
  return text == nullptr || text->value == boost::get<FormulaModel::FormulaString>(b).value;
}

}  // namespace

WatchedValues::WatchedValues(std::size_t capacity) : _slots(std::bit_ceil(2 * capacity + 1)) {
  _values.reserve(capacity);
}

WatchedValues::Index WatchedValues::insert(FormulaValue const& value) {
  ValueKey const key = watchedKeyOf(value);
  Place const place = findPlace(key, value);
  Slot& slot = _slots[place.slot];
  if (slot.index == none && place.othersOfKey < mostOfOneKey) {
    _values.push_back(value);
    slot = {key, static_cast<Index>(_values.size() - 1)};
    _filter.set(filterIndexOf(key.hash()));
  }
  return slot.index;
}

// Flattened: GCC leaves boost::get as a call.
[[gnu::flatten]] WatchedValues::Index WatchedValues::find(FormulaValue const& value) const {
  if (!isComparable(value)) {
    return none;
  }
  ValueKey const key = watchedKeyOf(value);
  return _filter.test(filterIndexOf(key.hash())) ? _slots[findPlace(key, value).slot].index : none;
}

WatchedValues::Place WatchedValues::findPlace(ValueKey key, FormulaValue const& value) const {
  std::size_t const mask = _slots.size() - 1;
  Place place{key.hash() & mask, 0};
  for (; _slots[place.slot].index != none; place.slot = (place.slot + 1) & mask) {
    Slot const& slot = _slots[place.slot];
    if (slot.key == key) {
      if (isSameWatched(value, _values[slot.index])) {
        break;
      }
      ++place.othersOfKey;
    }
  }
  return place;
}

}  // namespace Zorv::ConditionalFormatters
