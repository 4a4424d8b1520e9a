#include "Formulas/Lookups/EqualValues.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

#include "DOM/RowBlocks.h"
#include "Formulas/Evaluation/Cells.h"
#include "Formulas/Evaluation/ValueText.h"
#include "Formulas/TableContext.h"

namespace Zorv::Formulas {

namespace {

/// Classes are fetched in two steps, so many cells apart, before they are asked for.
constexpr std::uint32_t cellsAhead = 4;

/// What a cell is to a criterion: a text that reads as a number is that number.
Value asCriteriaSee(Value const& value, OfficeUtils::LocaleContext const& locale) {
  if (!value.isText()) {
    return value;
  }
  auto const number = readValue(value.asText(), locale);
  return number && std::isfinite(*number) ? Value::number(*number) : value;
}

}  // namespace

/// Sorts the cells into classes, stage by stage.
class EqualValues::Making {
public:
  Making(EqualValues& made, Area const& area, LookupKind kind,
         OfficeUtils::LocaleContext const& locale)
      : _made(made),
        _area(area),
        _blocks(DOM::RowBlocks::ofCells(area.table->getTable(), area.toTableRange())),
        _isForCriteria(kind == LookupKind::CriterionClasses),
        _locale(locale),
        _bands(_blocks.count()),
        _firstCells(_bands.size()),
        _pieces(made._values.pieceCount()) {}

  void run(SharedWork& work) {
    work.run(_bands.size(), [this](std::size_t band) { readBand(band); });
    placeAll();
    work.run(_pieces.size(), [this](std::size_t piece) { classifyPiece(piece); });
    joinAll();
    work.run(_bands.size(), [this](std::size_t band) { numberBand(band); });
    work.run(_pieces.size(), [this](std::size_t piece) { settlePiece(piece); });
  }

private:
  /// What is known of a piece of the values.
  struct Piece {
    std::uint32_t firstMember = 0;
    std::vector<std::uint32_t> ends;  ///< of each class among the members of all
  };

  void readBand(std::size_t number) {
    Area const area = Area::of(*_area.table, _blocks.at(number));
    std::uint32_t const firstRow = area.firstRow - _area.firstRow;
    CellBand band;
    band.reserve(std::min<std::uint64_t>(maxCellCount(area), DOM::RowBlocks::cellsPerBlock));
    forEachCell(area, [&](std::uint32_t row, std::uint32_t column, Value const& value) {
      if (!value.isEmpty()) {
        band.add((firstRow + row) * _area.width() + column,
                 _isForCriteria ? asCriteriaSee(value, _locale) : value);
      }
      return true;
    });
    band.partition(_made._values.partitions());
    _bands[number] = std::move(band);
  }

  /// Says where the cells of each band and the members of each piece go.
  void placeAll() {
    std::uint32_t cellCount = 0;
    for (std::size_t number = 0; number < _bands.size(); ++number) {
      _firstCells[number] = cellCount;
      cellCount += static_cast<std::uint32_t>(_bands[number].positions().size());
    }
    std::uint32_t memberCount = 0;
    for (std::size_t number = 0; number < _pieces.size(); ++number) {
      _pieces[number].firstMember = memberCount;
      for (CellBand const& band : _bands) {
        memberCount += static_cast<std::uint32_t>(band.sizeOf(number));
      }
    }
    _made.resizeCells(cellCount);
  }

  void classifyPiece(std::size_t number) {
    ValuePiece values;
    values.reserve(endOfMembers(number) - _pieces[number].firstMember, countTexts(number));
    std::vector<std::uint32_t> counts = numberValues(number, values);
    values.shrink();
    _made._values.put(number, std::move(values));

    // Each class is filled from its first place on, which ends at its end.
    std::exclusive_scan(counts.begin(), counts.end(), counts.begin(), _pieces[number].firstMember);
    std::span<std::uint32_t> const members = _made.members();
    forEachEntry(number, [&](std::size_t band, CellBand::Entry const& entry) {
      members[counts[entry.link]++] = _firstCells[band] + entry.cell;
    });
    _pieces[number].ends = std::move(counts);
  }

  [[nodiscard]] std::size_t countTexts(std::size_t piece) {
    std::size_t count = 0;
    forEachEntry(piece, [&](std::size_t /*band*/, CellBand::Entry const& entry) {
      count += entry.key.isText() ? 1 : 0;
    });
    return count;
  }

  /// Links the entries of a piece with their values; returns how many each value has.
  [[nodiscard]] std::vector<std::uint32_t> numberValues(std::size_t piece, ValuePiece& values) {
    std::vector<std::uint32_t> counts;
    forEachEntry(piece, [&](std::size_t band, CellBand::Entry& entry) {
      entry.link = values.obtain(_bands[band].valueOf(entry));
      if (entry.link == counts.size()) {
        counts.push_back(0);
      }
      ++counts[entry.link];
    });
    counts.shrink_to_fit();
    return counts;
  }

  void joinAll() {
    for (CellBand& band : _bands) {
      band.forgetTexts();
    }
    _made._values.join();
    _made.resizeClasses(_made._values.size());
  }

  void numberBand(std::size_t number) {
    CellBand band = std::move(_bands[number]);
    std::ranges::copy(band.positions(), _made.positions().begin() + _firstCells[number]);
    auto const classes = _made.classesOfCells().subspan(_firstCells[number]);
    for (std::size_t piece = 0; piece < _pieces.size(); ++piece) {
      std::uint32_t const firstClass = _made._values.firstNumber(piece);
      for (CellBand::Entry const& entry : band.entriesOf(piece)) {
        classes[entry.cell] = firstClass + entry.link;
      }
    }
  }

  void settlePiece(std::size_t number) {
    std::uint32_t const firstClass = _made._values.firstNumber(number);
    std::ranges::copy(_pieces[number].ends, _made.ends().begin() + firstClass);
    _made._values.settle(number);
  }

  [[nodiscard]] std::uint32_t endOfMembers(std::size_t piece) const noexcept {
    return piece + 1 == _pieces.size() ? _made.size() : _pieces[piece + 1].firstMember;
  }

  /// Calls `visit(band, entry)` for the entries of a piece, in the order of their cells.
  template <class Visit>
  void forEachEntry(std::size_t piece, Visit const& visit) {
    for (std::size_t band = 0; band < _bands.size(); ++band) {
      for (CellBand::Entry& entry : _bands[band].entriesOf(piece)) {
        visit(band, entry);
      }
    }
  }

  EqualValues& _made;
  Area _area;
  DOM::RowBlocks _blocks;
  bool _isForCriteria;
  OfficeUtils::LocaleContext const& _locale;
  std::vector<CellBand> _bands;
  std::vector<std::uint32_t> _firstCells;  ///< of each band, among those of all
  std::vector<Piece> _pieces;
};

EqualValues::EqualValues(Area const& area, LookupKind kind,
                         OfficeUtils::LocaleContext const& locale, SharedWork& work)
    : _values(maxCellCount(area)) {
  Making(*this, area, kind, locale).run(work);
}

std::optional<std::uint32_t> EqualValues::find(Value const& value,
                                               std::uint32_t& lastCell) const noexcept {
  std::uint32_t const next = lastCell + 1;
  if (next < size() && _values.isNumberOf(classOf(next), value)) {
    lastCell = next;
    // Here and not in a function of its own, which compilers leave out as one without effects.
    std::uint32_t const soon = classOf(std::min(next + cellsAhead, size() - 1));
    std::uint32_t const later = classOf(std::min(next + 2 * cellsAhead, size() - 1));
    _values.prepare(later);
    prepare(later);
    _values.completePreparing(soon);
    return classOf(next);
  }
  auto const found = _values.find(value);
  if (found) {
    // Whoever walks along the cells has come to the next one of the class.
    auto const members = membersOf(*found);
    auto const ahead = std::ranges::upper_bound(members, lastCell);
    lastCell = ahead == members.end() ? members.front() : *ahead;
  }
  return found;
}

std::size_t EqualValues::memory() const noexcept {
  return CellClasses::memory() + _values.memory();
}

}  // namespace Zorv::Formulas
