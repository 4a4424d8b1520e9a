#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatedCells.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <boost/sort/pdqsort/pdqsort.hpp>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_Pieces.h"
#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

namespace {

struct Place {
  std::uint32_t row;
  std::uint32_t column;
};

/// A value as a key, and the number of its cell.
///
/// Numbers are their own keys. So are booleans and errors: NaNs are left out, which leaves their
/// bits to tell the other kinds by. Texts have a hash for a key.
struct Entry {
  std::uint64_t key;
  std::uint64_t cell;
};

struct TextEntry {
  std::uint64_t key;
  std::uint64_t cell;
  std::string const* text;
};

constexpr std::uint64_t quietNaN = 0x7FF8'0000'0000'0000;
constexpr std::uint64_t booleanKeys = quietNaN | 0x100U;
constexpr std::uint64_t errorKeys = quietNaN | 0x200U;

class KeyOf : public boost::static_visitor<std::uint64_t> {
public:
  std::uint64_t operator()(FormulaModel::FormulaNumber const& number) const noexcept {
    // The two zeros are equal, and have different bits.
    double const value = number.value.get();
    return std::bit_cast<std::uint64_t>(value == 0.0 ? 0.0 : value);
  }
  std::uint64_t operator()(FormulaModel::FormulaString const& string) const noexcept {
    return std::hash<std::string>()(string.value);
  }
  std::uint64_t operator()(FormulaModel::FormulaBoolean const& boolean) const noexcept {
    return booleanKeys | static_cast<std::uint64_t>(boolean.value);
  }
  std::uint64_t operator()(FormulaModel::FormulaError const& error) const noexcept {
    return errorKeys | static_cast<std::uint64_t>(error.code);
  }
  std::uint64_t operator()(FormulaModel::FormulaEmpty const& /*empty*/) const noexcept { return 0; }
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
  Pieces<TextEntry> texts;
  Pieces<Entry> others;
};

class CollectBand {
public:
  explicit CollectBand(unsigned pieceBits) noexcept : _pieceBits(pieceBits) {}

  void add(DOM::CellInfo const& cellInfo, FormulaValue value) {
    if (!isComparable(value)) {
      return;
    }
    std::uint64_t const key = boost::apply_visitor(KeyOf(), value);
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
    _band.texts = Pieces(_texts, _pieceBits);
    _band.others = Pieces(_others, _pieceBits);
    return std::move(_band);
  }

private:
  unsigned _pieceBits;
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

/// The entries of one piece of all bands, sorted by key.
template <class AnyEntry>
std::vector<AnyEntry> gatherPiece(std::vector<Band> const& bands, Pieces<AnyEntry> Band::*pieces,
                                  std::size_t piece) {
  std::vector<AnyEntry> gathered;
  for (Band const& band : bands) {
    for (AnyEntry entry : (band.*pieces).at(piece)) {
      entry.cell += band.firstCell;
      gathered.push_back(entry);
    }
  }
  // Keys compare in one instruction: nothing to mispredict.
  boost::sort::pdqsort_branchless(gathered.begin(), gathered.end(), hasLessKey);
  return gathered;
}

void markPiece(std::vector<Band> const& bands, std::size_t piece, Marks& marks) {
  auto others = gatherPiece(bands, &Band::others, piece);
  forEachGroup(std::span(others), hasLessKey,
               [&](std::span<Entry const> equal) { markIfSeveral(equal, marks); });
  auto texts = gatherPiece(bands, &Band::texts, piece);
  forEachGroup(std::span(texts), hasLessKey, [&](std::span<TextEntry> sameHash) {
    boost::sort::pdqsort(sameHash.begin(), sameHash.end(), hasLessText);
    forEachGroup(sameHash, hasLessText,
                 [&](std::span<TextEntry const> equal) { markIfSeveral(equal, marks); });
  });
}

}  // namespace

CellSet findRepeatedCells(CollectedRanges const& from) {
  unsigned const pieceBits = choosePieceBits(from.table);
  std::vector<Band> bands;
  std::size_t cellCount = 0;
  collectInBands(
      from, [&] { return CollectBand(pieceBits); },
      [&](Band& band) {
        band.firstCell = cellCount;
        cellCount += band.places.size();
        bands.push_back(std::move(band));
      });

  Marks isRepeated(cellCount);
  auto const makeWorker = [&] {
    return [&](std::size_t piece) {
      markPiece(bands, piece, isRepeated);
      return piece;
    };
  };
  auto const deliver = [](std::size_t /*piece*/) {};
  OrderedParallel(std::size_t{1} << pieceBits, from.threadCount, makeWorker, deliver).run();

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
