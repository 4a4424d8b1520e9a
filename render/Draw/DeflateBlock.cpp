#include "render/Draw/DeflateBlock.h"

#include <algorithm>
#include <bit>

#include "render/Draw/HuffmanCode.h"

namespace Zorv::Render::Draw {

namespace {

constexpr std::size_t endOfBlock = 256;
constexpr unsigned distanceBits = 16;
constexpr std::uint32_t distanceMask = 0xFFFF;

/// Symbol of a length or a distance, and the bits behind it (RFC 1951, 3.2.5).
struct SymbolWithBits {
  std::uint32_t symbol = 0;
  std::uint32_t bits = 0;
  unsigned bitCount = 0;
};

/// Values from 0 in groups of doubling size: 2^`steps` symbols share a number of bits.
constexpr SymbolWithBits findGroup(std::uint32_t value, unsigned steps) noexcept {
  auto const width = static_cast<unsigned>(std::bit_width(value));
  unsigned const bitCount = width > steps + 1 ? width - steps - 1 : 0;
  std::uint32_t const step = value >> bitCount;
  return {(bitCount << steps) + step, value - (step << bitCount), bitCount};
}

SymbolWithBits findLength(std::size_t length) noexcept {
  if (length == DeflateBlock::longestMatch) {
    return {285, 0, 0};
  }
  SymbolWithBits found =
      findGroup(static_cast<std::uint32_t>(length - DeflateBlock::shortestMatch), 2);
  found.symbol += endOfBlock + 1;
  return found;
}

SymbolWithBits findDistance(std::size_t distance) noexcept {
  return findGroup(static_cast<std::uint32_t>(distance - 1), 1);
}

/// Lengths of codes as the head of a block has them: a symbol, and bits that count repetitions.
struct LengthRun {
  std::uint8_t symbol = 0;
  std::uint8_t bits = 0;
  std::uint8_t bitCount = 0;
};

/// Runs of zeros are put together (RFC 1951, 3.2.7); codes that repeat each other are rare.
std::vector<LengthRun> findLengthRuns(std::vector<std::uint8_t> const& lengths) {
  constexpr std::size_t shortestRun = 3;
  constexpr std::size_t shortestLongRun = 11;
  constexpr std::size_t longestRun = 138;
  std::vector<LengthRun> runs;
  for (std::size_t i = 0; i < lengths.size();) {
    auto const from = lengths.begin() + static_cast<std::ptrdiff_t>(i);
    auto const end =
        std::find_if(from, lengths.end(), [](std::uint8_t value) { return value != 0; });
    std::size_t const zeros = std::min(static_cast<std::size_t>(end - from), longestRun);
    if (zeros >= shortestLongRun) {
      runs.push_back({18, static_cast<std::uint8_t>(zeros - shortestLongRun), 7});
    } else if (zeros >= shortestRun) {
      runs.push_back({17, static_cast<std::uint8_t>(zeros - shortestRun), 3});
    } else {
      runs.push_back({lengths[i], 0, 0});
    }
    i += zeros >= shortestRun ? zeros : 1;
  }
  return runs;
}

/// The codes of literals and distances, at the head of a block.
void writeCodes(BitWriter& bits, HuffmanCode const& literals, HuffmanCode const& distances) {
  constexpr std::array<std::uint8_t, 19> order{16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                               11, 4,  12, 3, 13, 2, 14, 1, 15};
  constexpr unsigned longestLengthCode = 7;
  std::vector<std::uint8_t> lengths = literals.lengths;
  lengths.insert(lengths.end(), distances.lengths.begin(), distances.lengths.end());
  auto const runs = findLengthRuns(lengths);
  std::array<std::uint32_t, order.size()> counts{};
  for (LengthRun const& run : runs) {
    ++counts.at(run.symbol);
  }
  HuffmanCode const code = makeHuffmanCode(counts, longestLengthCode);
  bits.add(static_cast<std::uint32_t>(literals.lengths.size() - 257), 5);
  bits.add(static_cast<std::uint32_t>(distances.lengths.size() - 1), 5);
  bits.add(static_cast<std::uint32_t>(order.size() - 4), 4);
  for (std::uint8_t const symbol : order) {
    bits.add(code.lengths[symbol], 3);
  }
  for (LengthRun const& run : runs) {
    bits.add(code.codes[run.symbol], code.lengths[run.symbol]);
    bits.add(run.bits, run.bitCount);
  }
}

}  // namespace

void DeflateBlock::addMatch(std::size_t length, std::size_t distance) {
  _tokens.push_back(static_cast<std::uint32_t>(length << distanceBits | (distance - 1)));
  ++_literals.at(findLength(length).symbol);
  ++_distances.at(findDistance(distance).symbol);
}

void DeflateBlock::write(BitWriter& bits, bool isLast) {
  constexpr unsigned longestCode = 15;
  constexpr std::uint32_t ownCodes = 2;
  _literals[endOfBlock] = 1;
  HuffmanCode const literals = makeHuffmanCode(_literals, longestCode);
  HuffmanCode const distances = makeHuffmanCode(_distances, longestCode);
  bits.add(isLast ? 1 : 0, 1);
  bits.add(ownCodes, 2);
  writeCodes(bits, literals, distances);
  auto const addSymbol = [&bits](HuffmanCode const& code, SymbolWithBits const& symbol) {
    unsigned const length = code.lengths[symbol.symbol];
    bits.add(code.codes[symbol.symbol] | symbol.bits << length, length + symbol.bitCount);
  };
  for (std::uint32_t const token : _tokens) {
    std::size_t const length = token >> distanceBits;
    if (length == 0) {
      bits.add(literals.codes[token], literals.lengths[token]);
    } else {
      addSymbol(literals, findLength(length));
      addSymbol(distances, findDistance((token & distanceMask) + 1));
    }
  }
  bits.add(literals.codes[endOfBlock], literals.lengths[endOfBlock]);
  _tokens.clear();
  _literals.fill(0);
  _distances.fill(0);
}

}  // namespace Zorv::Render::Draw
