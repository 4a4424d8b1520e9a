#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedOperands.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <utility>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Operands/CndFrmt_Threshold.h"
#include "DOM/RowBlocks.h"
#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/ValueKey.h"
#include "Formulas/ContextProvider.h"

namespace Zorv::ConditionalFormatters {

namespace {

using FormulaModel::ValueKey;

FloatNumber numberOfBits(ValueBits bits) noexcept {
  return FloatNumber(std::bit_cast<double>(bits));
}

std::uint64_t countAllPositions(TableRange const& range) noexcept {
  return range.isEmpty()
             ? 0
             : std::uint64_t{range.endRow - range.firstRow} * (range.endColumn - range.firstColumn);
}

}  // namespace

FollowedOperands::FollowedOperands(ValueContextProvider const& provider, DOM::Table const& table,
                                   std::vector<TableRange> const& ranges, OperandNeeds const& needs,
                                   Formulas::AreaAspects const& aspects)
    : _provider(provider),
      _table(table),
      _ranges(ranges),
      _needs(needs),
      _aspects(aspects),
      _equal(needs.occurrences) {
  if (!aspects.isEmpty()) {
    _answers.emplace(
        FollowedAnswers::Structures{_column, _ranking, _equal.getClasses(), _equal.getTexts()},
        aspects, provider.getFormulasContextProvider().getLocaleContext());
  }
  for (std::size_t range = 0; range < ranges.size(); ++range) {
    auto const blocks = DOM::RowBlocks::ofCells(table, ranges[range]);
    for (std::size_t block = 0; block < blocks.count(); ++block) {
      _toRead.push_back({range, blocks.at(block)});
    }
  }
  std::ranges::reverse(_toRead);
}

void FollowedOperands::prepareUntil(Clock::time_point end) {
  constexpr std::size_t manyNumbers = 65'536;
  while (!_isComplete && !_isHopeless && Clock::now() < end) {
    if (_unranked.size() >= manyNumbers || (_toRead.empty() && !_unranked.empty())) {
      flushNumbers();
    } else if (_toRead.empty()) {
      settle();
      _isComplete = true;
    } else {
      readAll(_toRead.back());
      _toRead.pop_back();
    }
  }
}

bool FollowedOperands::serves(OperandNeeds const& needs,
                              Formulas::AreaAspects const& aspects) const noexcept {
  bool const needsRanks = needs.ranking || needs.largest > 0 || needs.smallest > 0;
  // Without formats, values are those of the cells and not those of the provider.
  bool const servesFormats = (_needs.mean || !needs.mean) && (ranks() || !needsRanks) &&
                             (_needs.occurrences || !needs.occurrences) &&
                             (!_needs.isEmpty() || needs.isEmpty());
  return servesFormats && (_aspects.summary || !aspects.summary) &&
         (_aspects.order || !aspects.order) && (_aspects.classes || !aspects.classes);
}

bool FollowedOperands::isWorthFollowing(std::span<TableRange const> areas) const {
  constexpr std::size_t manyPairs = 1'000'000;
  if (areas.size() > manyPairs / std::max<std::size_t>(1, _ranges.size())) {
    return false;
  }
  std::uint64_t count = 0;
  for (TableRange const& range : _ranges) {
    for (TableRange const& area : areas) {
      count += countAllPositions(intersect(range, area));
    }
  }
  return count <= mostToRead();
}

std::uint64_t FollowedOperands::mostToRead() const noexcept {
  constexpr std::uint64_t few = 4096;
  constexpr std::uint64_t smallPart = 16;
  return std::max<std::uint64_t>(few, _column.size() / smallPart);
}

std::vector<CellIndex> FollowedOperands::valuesChanged(std::span<TableRange const> areas) {
  flushNumbers();
  _isEditing = true;
  if (_answers) {
    _answers->startEdit();
  }
  for (std::size_t range = 0; range < _ranges.size(); ++range) {
    for (TableRange const& area : areas) {
      TableRange const common = intersect(_ranges[range], area);
      if (!common.isEmpty()) {
        readAgain({range, common});
      }
    }
  }
  flushNumbers();
  _isEditing = false;
  if (_isComplete) {
    settle();
  }
  return _equal.takeFlipped();
}

ThresholdOperand FollowedOperands::getThreshold(
    DOM::TopBottomConditionalFormatOperator const& record) const {
  std::size_t const rank = thresholdRank(record, _ranking.count());
  return rank == 0 ? ThresholdOperand()
                   : ThresholdOperand{_ranking.at(rank, rankingOrderOf(record.getType())), rank};
}

std::size_t FollowedOperands::countBytes() const noexcept {
  return _column.countBytes() + _ranking.countBytes() + _equal.countBytes() +
         (_unranked.capacity() + _outdated.capacity()) * sizeof(FloatNumber);
}

void FollowedOperands::readAll(AreaOfRange const& part) {
  auto [cell, end] = _table.getRangeIterators(part.area);
  for (; cell != end; ++cell) {
    DOM::CellInfo const cellInfo = cell.getCellInfo();
    PositionKey const position = positionKeyOf(cellInfo.getRowIndex(), cellInfo.getColIndex());
    setValue(placeKeyOf(part.range, position), readBits(cellInfo));
  }
}

/// Values of cells that are gone are removed.
void FollowedOperands::readAgain(AreaOfRange const& part) {
  auto const known = _column.list(part.range, part.area);
  auto old = known.begin();
  auto [cell, end] = _table.getRangeIterators(part.area);
  for (; cell != end; ++cell) {
    DOM::CellInfo const cellInfo = cell.getCellInfo();
    PlaceKey const place =
        placeKeyOf(part.range, positionKeyOf(cellInfo.getRowIndex(), cellInfo.getColIndex()));
    for (; old != known.end() && old->place < place; ++old) {
      takeLater(old->place, old->value, FormulaValue());
    }
    bool const isKnown = old != known.end() && old->place == place;
    takeLater(place, isKnown ? (old++)->value : noValueBits, readValue(cellInfo));
  }
  for (; old != known.end(); ++old) {
    takeLater(old->place, old->value, FormulaValue());
  }
  takeReadings();
}

/// The classes of the old and the new value lie anywhere in much memory: they are fetched while
/// other cells are read.
void FollowedOperands::takeLater(PlaceKey place, ValueBits old, FormulaValue value) {
  constexpr std::size_t most = 32;
  if (countsEqual()) {
    _equal.prefetch(old);
    if (auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value)) {
      _equal.prefetch(bitsOfNumber(number->value.get()));
    }
  }
  _readings.push_back({place, std::move(value)});
  if (_readings.size() == most) {
    takeReadings();
  }
}

void FollowedOperands::takeReadings() {
  for (Reading const& reading : _readings) {
    setValue(reading.place, takeBits(reading.value));
  }
  _readings.clear();
}

void FollowedOperands::flushNumbers() {
  if (_isEditing || !_outdated.empty()) {
    _ranking.change(_unranked, _outdated);
  } else if (!_unranked.empty()) {
    _ranking.insertMany(_unranked);
  }
  _unranked.clear();
  _outdated.clear();
}

ValueBits FollowedOperands::readBits(DOM::CellInfo const& cellInfo) {
  return _needs.isEmpty() ? takeBits(cellInfo.getCell()->value) : takeBits(readValue(cellInfo));
}

FormulaValue FollowedOperands::readValue(DOM::CellInfo const& cellInfo) {
  FormulaValue const& ofCell = cellInfo.getCell()->value;
  if (_needs.isEmpty()) {
    return ofCell;
  }
  FormulaValue value = _provider.getCellValue(cellInfo);
  if (_answers) {
    _answers->noteRead(value, ofCell);
  }
  return value;
}

ValueBits FollowedOperands::takeBits(FormulaValue const& value) {
  if (auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value)) {
    if (_answers) {
      _answers->noteNumber(number->value.get());
    }
    return bitsOfNumber(number->value.get());
  }
  bool const keepsAll = _needs.occurrences || _answers;
  if (!keepsAll || value.which() == FormulaModel::FormulaValueKind::Empty) {
    return noValueBits;
  }
  if (auto const* const text = boost::get<FormulaModel::FormulaString>(&value)) {
    return takeText(text->value);
  }
  return FormulaModel::makeValueKey(value, std::hash<std::string>()).bits();
}

/// Texts that need not be told from each other have one index.
ValueBits FollowedOperands::takeText(std::string_view text) {
  if (!countsEqual()) {
    return ValueKey::ofTextIndex(0).bits();
  }
  auto const index = _equal.getOrCreateText(
      text, _aspects.classes ? _answers->noteText(text) : TextClasses::hashOf(text));
  _isHopeless = _isHopeless || !index;
  return index ? ValueKey::ofTextIndex(*index).bits() : noValueBits;
}

void FollowedOperands::setValue(PlaceKey place, ValueBits bits) {
  ValueBits const old = _column.set(place, bits);
  if (old != bits) {
    if (isNumberBits(old) && ranks()) {
      _outdated.push_back(numberOfBits(old));
    }
    if (isNumberBits(bits) && ranks()) {
      _unranked.push_back(numberOfBits(bits));
    }
    if (_answers) {
      _answers->noteChange(place, old, bits);
    }
    if (countsEqual()) {
      _equal.change(positionOfPlace(place), old, bits, _isEditing);
    }
  }
}

void FollowedOperands::settle() {
  bool const needsSum = _needs.mean || _aspects.summary;
  FloatNumber const sum = needsSum ? _column.sum() : FloatNumber(0);
  FloatNumber const count(static_cast<double>(_column.countNumbers()));
  _mean = {sum / count, _column.countNumbers()};
  if (_aspects.order) {
    _ranking.indexCounts();
  }
  if (_answers) {
    _answers->settle(sum);
  }
}

}  // namespace Zorv::ConditionalFormatters
