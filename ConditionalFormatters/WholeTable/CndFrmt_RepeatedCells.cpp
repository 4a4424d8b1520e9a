#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatedCells.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <boost/sort/pdqsort/pdqsort.hpp>
#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "FormulaModel/ValueKey.h"
#include "Utils/HashPartitions.h"

namespace Zorv::ConditionalFormatters {

namespace {

using FormulaModel::ValueKey;

struct Place {
  std::uint32_t row;
  std::uint32_t column;
};

/// A value's key, and the number of its cell.
struct Entry {
  ValueKey key;
  std::uint64_t cell;
};

/// The same for a text, whose key is a hash.
struct TextEntry {
  ValueKey key;
  std::uint64_t cell;
  std::string const* text;
};

bool isComparable(FormulaValue const& value) noexcept {
  auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value);
  return number == nullptr ? !FormulaModel::isFormulaEmpty(value)
                           : !std::isnan(number->value.get());
}

/// The values of one band, with its cells numbered as they were visited.
struct Band {
  std::vector<Place> places;
  std::size_t firstCell = 0;  ///< the number of the band's first cell among those of all bands
  std::vector<std::string> strings;
  PartitionedEntries<TextEntry> texts;
  PartitionedEntries<Entry> others;
};

class CollectBand {
public:
  explicit CollectBand(HashPartitions partitions) noexcept : _partitions(partitions) {}

  void add(DOM::CellInfo const& cellInfo, FormulaValue value) {
    if (!isComparable(value)) {
      return;
    }
    ValueKey const key = FormulaModel::makeValueKey(value, std::hash<std::string>());
    if (auto* const string = boost::get<FormulaModel::FormulaString>(&value)) {
      _texts.push_back({key, _band.places.size(), nullptr});
      _band.strings.push_back(std::move(string->value));
    } else {
      _others.push_back({key, _band.places.size()});
    }
    _band.places.push_back({static_cast<std::uint32_t>(cellInfo.getRowIndex()),
                            static_cast<std::uint32_t>(cellInfo.getColIndex())});
  }

  [[nodiscard]] Band finish() {
    for (std::size_t number = 0; number < _texts.size(); ++number) {
      _texts[number].text = &_band.strings[number];
    }
    constexpr auto keyOf = [](auto const& entry) { return entry.key.bits(); };
    _band.texts = PartitionedEntries(_texts, _partitions, keyOf);
    _band.others = PartitionedEntries(_others, _partitions, keyOf);
    return std::move(_band);
  }

private:
  HashPartitions _partitions;
  Band _band;
  std::vector<TextEntry> _texts;
  std::vector<Entry> _others;
};

/// Which cells are marked, by number; different ones may be marked by several threads at once.
using Marks = std::vector<std::uint8_t>;

template <class AnyEntry>
void markIfSeveral(std::span<AnyEntry const> equal, Marks& marks) {
  if (equal.size() > 1) {
    for (AnyEntry const& entry : equal) {
      marks[entry.cell] = 1;
    }
  }
}

/// Calls `onGroup(group)` for each group of sorted entries of which none is less than another.
template <class AnyEntry, class IsLess, class OnGroup>
void forEachGroup(std::span<AnyEntry> entries, IsLess const& isLess, OnGroup const& onGroup) {
  for (std::size_t begin = 0; begin < entries.size();) {
    std::size_t end = begin + 1;
    while (end < entries.size() && !isLess(entries[begin], entries[end])) {
      ++end;
    }
    onGroup(entries.subspan(begin, end - begin));
    begin = end;
  }
}

constexpr auto hasLessKey = [](auto const& a, auto const& b) { return a.key < b.key; };
constexpr auto hasLessText = [](TextEntry const& a, TextEntry const& b) {
  return *a.text < *b.text;
};

/// The entries of one partition of all bands, sorted by key.
template <class AnyEntry>
std::vector<AnyEntry> gatherPartition(std::vector<Band> const& bands,
                                      PartitionedEntries<AnyEntry> Band::*entries,
                                      std::size_t partition) {
  std::vector<AnyEntry> gathered;
  for (Band const& band : bands) {
    for (AnyEntry entry : (band.*entries).at(partition)) {
      entry.cell += band.firstCell;
      gathered.push_back(entry);
    }
  }
  // Keys compare in one instruction: nothing to mispredict.
  boost::sort::pdqsort_branchless(gathered.begin(), gathered.end(), hasLessKey);
  return gathered;
}

void markPartition(std::vector<Band> const& bands, std::size_t partition, Marks& marks) {
  auto others = gatherPartition(bands, &Band::others, partition);
  forEachGroup(std::span(others), hasLessKey,
               [&](std::span<Entry const> equal) { markIfSeveral(equal, marks); });
  auto texts = gatherPartition(bands, &Band::texts, partition);
  forEachGroup(std::span(texts), hasLessKey, [&](std::span<TextEntry> sameHash) {
    boost::sort::pdqsort(sameHash.begin(), sameHash.end(), hasLessText);
    forEachGroup(sameHash, hasLessText,
                 [&](std::span<TextEntry const> equal) { markIfSeveral(equal, marks); });
  });
}

}  // namespace

CellSet findRepeatedCells(CollectedRanges const& from) {
  HashPartitions const partitions(from.table.getCellCount());
  std::vector<Band> bands;
  std::size_t cellCount = 0;
  collectInBands(
      from, [&] { return CollectBand(partitions); },
      [&](Band& band) {
        band.firstCell = cellCount;
        cellCount += band.places.size();
        bands.push_back(std::move(band));
      });

  Marks isRepeated(cellCount);
  auto const makeWorker = [&] {
    return [&](std::size_t partition) {
      markPartition(bands, partition, isRepeated);
      return partition;
    };
  };
  auto const deliver = [](std::size_t /*partition*/) {};
  OrderedParallel(partitions.count(), from.threadCount, makeWorker, deliver).run();

  CellSet repeated;
  for (Band const& band : bands) {
    for (std::size_t number = 0; number < band.places.size(); ++number) {
      if (isRepeated[band.firstCell + number] != 0) {
        repeated.insert(band.places[number].row, band.places[number].column);
      }
    }
  }
  return repeated;
}

}  // namespace Zorv::ConditionalFormatters
