#include "Formulas/Lookups/CellBlock.h"

#include <utility>

namespace Zorv::Formulas {

void CellBlock::add(std::uint32_t position, Value const& value) {
  KeyedValue const keyed(value);
  _entries.push_back({.key = keyed.key,
                      .cell = static_cast<std::uint32_t>(_positions.size()),
                      .link = static_cast<std::uint32_t>(_texts.size())});
  _positions.push_back(position);
  if (value.isText()) {
    _texts.push_back(keyed.text);
  }
}

void CellBlock::partition(HashPartitions const& partitions) {
  _partitioned =
      PartitionedEntries(_entries, partitions, [](Entry const& entry) { return entry.key.bits(); });
  _entries = std::vector<Entry>();
  sortTexts();
  _positions.shrink_to_fit();
}

void CellBlock::sortTexts() {
  std::vector<std::string_view> sorted;
  sorted.reserve(_texts.size());
  for (Entry& entry : _partitioned.all()) {
    if (entry.key.isText()) {
      sorted.push_back(
          _texts[std::exchange(entry.link, static_cast<std::uint32_t>(sorted.size()))]);
    }
  }
  _texts = std::move(sorted);
}

}  // namespace Zorv::Formulas
