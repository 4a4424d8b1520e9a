#include "Formulas/Lookups/EqualValues.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "DOM/RowBlocks.h"
#include "Formulas/Lookups/CellBlock.h"
#include "Formulas/TableContext.h"
#include "Formulas/Text/ValueText.h"
#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

/// The distance, in cells, between the two prefetches for a class and its use.
constexpr std::uint32_t cellsAhead = 4;

/// A value as an equality sees it: for criteria a text that reads as a number is that number.
Value seenBy(Equality equality, Value const& value, OfficeUtils::LocaleContext const& locale) {
  if (equality == Equality::Search || !value.isText()) {
    return value;
  }
  auto const number = readValue(value.asText(), locale);
  return number && std::isfinite(*number) ? Value::number(*number) : value;
}

}  // namespace

/// Builds the classes in stages, each of which the threads share out: sink the cells of each row
/// block, combine the blocks by hash partition, then write the results of each block and partition.
class EqualValues::Builder {
public:
  Builder(EqualValues& built, Area const& area)
      : _built(built),
        _area(area),
        _rowBlocks(DOM::RowBlocks::ofCells(area.table->getTable(), area.toTableRange())),
        _blocks(_rowBlocks.count()),
        _firstCells(_blocks.size()),
        _partitions(built._values.hashPartitions().count()) {}

  void run(SharedWork& work) {
    work.run(_blocks.size(), [this](std::size_t block) { sinkBlock(block); });
    layOut();
    work.run(_partitions.size(), [this](std::size_t partition) { combine(partition); });
    join();
    work.run(_blocks.size(), [this](std::size_t block) { writeBlock(block); });
    // Not before the memory of the blocks is free.
    _built._values.makeRoom();
    _built.resizeClasses(_built._values.size());
    work.run(_partitions.size(), [this](std::size_t partition) { writePartition(partition); });
  }

private:
  struct Partition {
    std::uint32_t firstMember = 0;
    std::vector<std::uint32_t> ends;  ///< of each class, among the members of all
  };

  void sinkBlock(std::size_t index) {
    Area const area = Area::of(*_area.table, _rowBlocks.at(index));
    std::uint32_t const firstRow = area.firstRow - _area.firstRow;
    CellBlock block;
    block.reserve(
        std::min<std::uint64_t>(maxCellCount(area), std::uint64_t{DOM::RowBlocks::cellsPerBlock}));
    forEachCell(area, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
      if (!value.isEmpty()) {
        block.add((firstRow + row) * _area.width() + column,
                  seenBy(_built._equality, value, _built._locale));
      }
      return true;
    });
    block.partition(_built._values.hashPartitions());
    _blocks[index] = std::move(block);
  }

  /// Finds the first cell of each block and the first member of each partition.
  void layOut() {
    std::uint32_t cellCount = 0;
    for (std::size_t block = 0; block < _blocks.size(); ++block) {
      _firstCells[block] = cellCount;
      cellCount += static_cast<std::uint32_t>(_blocks[block].positions().size());
    }
    std::uint32_t memberCount = 0;
    for (std::size_t partition = 0; partition < _partitions.size(); ++partition) {
      _partitions[partition].firstMember = memberCount;
      for (CellBlock const& block : _blocks) {
        memberCount += static_cast<std::uint32_t>(block.sizeOf(partition));
      }
    }
    _built.resizeCells(cellCount);
  }

  void combine(std::size_t partition) {
    ValuePartition values;
    values.reserve(cellCountOf(partition), countTexts(partition));
    std::vector<std::uint32_t> counts = linkValues(partition, values);
    values.shrink();
    _built._values.put(partition, std::move(values));

    // A class that is filled from its begin on ends at its end.
    std::exclusive_scan(counts.begin(), counts.end(), counts.begin(),
                        _partitions[partition].firstMember);
    std::span<std::uint32_t> const members = _built.members();
    forEachEntry(partition, [&](std::size_t block, CellBlock::Entry const& entry) {
      members[counts[entry.link]++] = _firstCells[block] + entry.cell;
    });
    _partitions[partition].ends = std::move(counts);
  }

  [[nodiscard]] std::size_t countTexts(std::size_t partition) {
    std::size_t count = 0;
    forEachEntry(partition, [&](std::size_t /*block*/, CellBlock::Entry const& entry) {
      count += entry.key.isText() ? 1 : 0;
    });
    return count;
  }

  /// Links the entries of a partition with their values; returns how many entries each value has.
  [[nodiscard]] std::vector<std::uint32_t> linkValues(std::size_t partition,
                                                      ValuePartition& values) {
    std::vector<std::uint32_t> counts;
    counts.reserve(std::min<std::size_t>(cellCountOf(partition), ValuePartition::mostReserved));
    forEachEntry(partition, [&](std::size_t block, CellBlock::Entry& entry) {
      entry.link = values.getOrCreate(_blocks[block].valueOf(entry));
      if (entry.link == counts.size()) {
        counts.push_back(0);
      }
      ++counts[entry.link];
    });
    counts.shrink_to_fit();
    return counts;
  }

  void join() {
    for (CellBlock& block : _blocks) {
      block.freeTexts();
    }
    _built._values.join();
  }

  void writeBlock(std::size_t index) {
    CellBlock block = std::move(_blocks[index]);
    std::ranges::copy(block.positions(), _built.positions().begin() + _firstCells[index]);
    auto const classes = _built.classesOfCells().subspan(_firstCells[index]);
    for (std::size_t partition = 0; partition < _partitions.size(); ++partition) {
      std::uint32_t const firstClass = _built._values.firstIndex(partition);
      for (CellBlock::Entry const& entry : block.entriesOf(partition)) {
        classes[entry.cell] = firstClass + entry.link;
      }
    }
  }

  void writePartition(std::size_t partition) {
    std::uint32_t const firstClass = _built._values.firstIndex(partition);
    std::ranges::copy(_partitions[partition].ends, _built.ends().begin() + firstClass);
    _built._values.settle(partition);
  }

  [[nodiscard]] std::uint32_t cellCountOf(std::size_t partition) const noexcept {
    return endOfMembers(partition) - _partitions[partition].firstMember;
  }
  [[nodiscard]] std::uint32_t endOfMembers(std::size_t partition) const noexcept {
    return partition + 1 == _partitions.size() ? _built.size()
                                               : _partitions[partition + 1].firstMember;
  }

  /// Calls `visit(block, entry)` for the entries of a partition, in the order of their cells.
  template <class Visit>
  void forEachEntry(std::size_t partition, Visit const& visit) {
    for (std::size_t block = 0; block < _blocks.size(); ++block) {
      for (CellBlock::Entry& entry : _blocks[block].entriesOf(partition)) {
        visit(block, entry);
      }
    }
  }

  EqualValues& _built;
  Area _area;
  DOM::RowBlocks _rowBlocks;
  std::vector<CellBlock> _blocks;
  std::vector<std::uint32_t> _firstCells;  ///< of each block, among the cells of all
  std::vector<Partition> _partitions;
};

EqualValues::EqualValues(Area const& area, Equality equality,
                         OfficeUtils::LocaleContext const& locale, SharedWork& work)
    : _area(area), _equality(equality), _locale(locale), _values(maxCellCount(area)) {
  Builder(*this, area).run(work);
}

/// Finds the edits that new values make, area by area.
class EqualValues::Follower {
public:
  explicit Follower(EqualValues& followed)
      : _followed(followed), _mostCells(followed.size() / 16 + 64) {}

  /// Compares the cells of a part of the area with the classes. False where these are too many.
  [[nodiscard]] bool compare(TableRange const& part) {
    TableArea const& area = _followed._area;
    _part = part;
    _cell = _followed.firstCellAt(positionOf(part.firstRow, part.firstColumn));
    std::uint32_t const end =
        _followed.firstCellAt(positionOf(part.endRow - 1, part.endColumn - 1) + std::uint64_t{1});
    _cellCount += end - _cell;
    auto [cell, last] = area.table->getRangeIterators(part);
    for (; cell != last && _cellCount <= _mostCells; ++cell, ++_cellCount) {
      DOM::CellInfo const info = cell.getCellInfo();
      Value const value = fromFormulaValue(info.getCell()->value);
      if (!value.isEmpty()) {
        compare(positionOf(info.getRowIndex(), info.getColIndex()),
                seenBy(_followed._equality, value, _followed._locale));
      }
    }
    removeTo(end);
    return _cellCount <= _mostCells && _followed._values.hasRoom();
  }

  /// The edits of all parts, which may overlap.
  [[nodiscard]] std::vector<ClassEdit> takeEdits() {
    std::ranges::sort(_edits, {}, &ClassEdit::position);
    auto const isRepeated = [](ClassEdit const& a, ClassEdit const& b) {
      return a.position == b.position;
    };
    _edits.erase(std::unique(_edits.begin(), _edits.end(), isRepeated), _edits.end());
    return std::move(_edits);
  }

private:
  [[nodiscard]] std::uint32_t positionOf(unsigned long row, unsigned long column) const noexcept {
    TableArea const& area = _followed._area;
    return static_cast<std::uint32_t>((row - area.firstRow) * (area.endColumn - area.firstColumn) +
                                      (column - area.firstColumn));
  }

  void compare(std::uint32_t position, Value const& value) {
    removeTo(_followed.firstCellAt(position));
    bool const isKnown = _cell < _followed.size() && _followed.positionOf(_cell) == position;
    std::uint32_t const before = isKnown ? _followed.classOf(_cell) : noClass;
    if (!isKnown || !_followed._values.isEqualAt(before, value)) {
      _edits.push_back({position, _cell, before, _followed._values.getOrAdd(value)});
    }
    _cell += isKnown ? 1 : 0;
  }

  /// The cells of the part that are passed without a value are gone.
  void removeTo(std::uint32_t end) {
    TableArea const& area = _followed._area;
    for (; _cell < end; ++_cell) {
      std::uint32_t const position = _followed.positionOf(_cell);
      std::uint32_t const column =
          area.firstColumn + position % (area.endColumn - area.firstColumn);
      if (_part.firstColumn <= column && column < _part.endColumn) {
        _edits.push_back({position, _cell, _followed.classOf(_cell), noClass});
      }
    }
  }

  EqualValues& _followed;
  std::size_t _mostCells;
  std::size_t _cellCount = 0;
  TableRange _part;
  std::uint32_t _cell = 0;  ///< the next one of the part, or behind it
  std::vector<ClassEdit> _edits;
};

std::optional<std::vector<ClassEdit>> EqualValues::follow(std::span<TableRange const> areas) {
  if (borrowsTexts()) {
    return std::nullopt;
  }
  Follower follower(*this);
  for (TableRange const& area : areas) {
    TableRange const part = intersect(_area.toTableRange(), area);
    if (!part.isEmpty() && !follower.compare(part)) {
      return std::nullopt;
    }
  }
  std::vector<ClassEdit> edits = follower.takeEdits();
  edit(edits, _values.size());
  return edits;
}

std::optional<std::uint32_t> EqualValues::find(Value const& value,
                                               std::uint32_t& lastCell) const noexcept {
  std::uint32_t const next = lastCell + 1;
  if (next < size() && _values.isEqualAt(classOf(next), value)) {
    lastCell = next;
    // Not in a function of its own: compilers drop one that seems to have no effect.
    std::uint32_t const soon = classOf(std::min(next + cellsAhead, size() - 1));
    std::uint32_t const later = classOf(std::min(next + 2 * cellsAhead, size() - 1));
    _values.prefetchKey(later);
    prefetchCount(later);
    _values.prefetchText(soon);
    return classOf(next);
  }
  auto const found = _values.find(value);
  auto const members = found ? membersOf(*found) : std::span<std::uint32_t const>();
  if (members.empty()) {
    return std::nullopt;
  }
  // A walk along the cells has come to the next cell of the class.
  auto const ahead = std::ranges::upper_bound(members, lastCell);
  lastCell = ahead == members.end() ? members.front() : *ahead;
  return found;
}

}  // namespace Zorv::Formulas
