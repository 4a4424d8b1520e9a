#include "Formulas/Lookups/CellBand.h"

#include <numeric>
#include <utility>

namespace Zorv::Formulas {

void CellBand::add(std::uint32_t position, Value const& value) {
  KeyedValue const keyed(value);
  _entries.push_back({.key = keyed.key,
                      .cell = static_cast<std::uint32_t>(_positions.size()),
                      .link = static_cast<std::uint32_t>(_texts.size())});
  _positions.push_back(position);
  if (value.isText()) {
    _texts.push_back(keyed.text);
  }
}

void CellBand::sortInto(ValueTable const& table) {
  _ends.assign(table.pieceCount(), 0);
  for (Entry const& entry : _entries) {
    ++_ends[table.pieceOf(entry.key)];
  }
  // Until its entries are in place, the end of a piece is where the next of them goes.
  std::exclusive_scan(_ends.begin(), _ends.end(), _ends.begin(), std::uint32_t{0});
  std::vector<Entry> sorted(_entries.size());
  for (Entry const& entry : _entries) {
    sorted[_ends[table.pieceOf(entry.key)]++] = entry;
  }
  _entries = std::move(sorted);
  sortTexts();
  _positions.shrink_to_fit();
}

void CellBand::sortTexts() {
  std::vector<std::string_view> sorted;
  sorted.reserve(_texts.size());
  for (Entry& entry : _entries) {
    if (entry.key.isText()) {
      sorted.push_back(
          _texts[std::exchange(entry.link, static_cast<std::uint32_t>(sorted.size()))]);
    }
  }
  _texts = std::move(sorted);
}

}  // namespace Zorv::Formulas
