#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <boost/variant/get.hpp>

#include "DOM/CellInfo.h"
#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "FormulaModel/ValueKey.h"
#include "Utils/HashPartitions.h"

namespace Zorv::ConditionalFormatters {

/// True for a value that may occur more than once: NaN equals nothing, and an empty value does not
/// count.
[[nodiscard]] inline bool isComparable(FormulaValue const& value) noexcept {
  auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value);
  return number == nullptr ? !FormulaModel::isFormulaEmpty(value)
                           : !std::isnan(number->value.get());
}

/// The values of one row block, by partition. Its cells have indices in the order of the walk.
struct OccurrenceBlock {
  struct Position {
    std::uint32_t row;
    std::uint32_t column;
  };
  /// A value's key, and the index of its cell.
  struct Entry {
    FormulaModel::ValueKey key;
    std::uint64_t cell;
  };
  /// The same for a text, whose key is a hash.
  struct TextEntry {
    FormulaModel::ValueKey key;
    std::uint64_t cell;
    std::string const* text;
  };

  std::vector<Position> positions;
  std::size_t firstCell = 0;  ///< index of its first cell among those of all blocks
  std::vector<std::string> strings;
  PartitionedEntries<TextEntry> texts;
  PartitionedEntries<Entry> others;
};

/// Makes a block of the values that can be compared.
class OccurrenceBlockBuilder {
public:
  explicit OccurrenceBlockBuilder(HashPartitions partitions) noexcept : _partitions(partitions) {}

  /// Takes the text of the value, if it is one that can be compared.
  void add(DOM::CellInfo const& cellInfo, FormulaValue&& value);
  [[nodiscard]] OccurrenceBlock finalize();

private:
  HashPartitions _partitions;
  OccurrenceBlock _block;
  std::vector<OccurrenceBlock::TextEntry> _texts;
  std::vector<OccurrenceBlock::Entry> _others;
};

// Inline, for it is done for each cell.
inline void OccurrenceBlockBuilder::add(DOM::CellInfo const& cellInfo, FormulaValue&& value) {
  if (!isComparable(value)) {
    return;
  }
  auto const key = FormulaModel::makeValueKey(value, std::hash<std::string>());
  if (auto* const string = boost::get<FormulaModel::FormulaString>(&value)) {
    _texts.push_back({key, _block.positions.size(), nullptr});
    _block.strings.push_back(std::move(string->value));
  } else {
    _others.push_back({key, _block.positions.size()});
  }
  _block.positions.push_back({static_cast<std::uint32_t>(cellInfo.getRowIndex()),
                              static_cast<std::uint32_t>(cellInfo.getColIndex())});
}

}  // namespace Zorv::ConditionalFormatters
