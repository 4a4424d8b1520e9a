#include "render/Draw/HuffmanCode.h"

#include <algorithm>
#include <queue>
#include <utility>

namespace Zorv::Render::Draw {

namespace {

/// The symbols that occur, and the first ones if there are fewer than two.
std::vector<std::size_t> findSymbols(std::span<std::uint32_t const> counts) {
  std::vector<std::size_t> symbols;
  for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
    if (counts[symbol] > 0) {
      symbols.push_back(symbol);
    }
  }
  for (std::size_t symbol = 0; symbols.size() < 2; ++symbol) {
    if (counts[symbol] == 0) {
      symbols.push_back(symbol);
    }
  }
  return symbols;
}

/// Depths of the symbols in the tree that joins the two rarest nodes again and again. Nodes of one
/// count are taken in order, so that equal counts give equal codes.
std::vector<unsigned> findDepths(std::span<std::uint32_t const> counts,
                                 std::vector<std::size_t> const& symbols) {
  using Node = std::pair<std::uint64_t, std::size_t>;  // count and index
  std::priority_queue<Node, std::vector<Node>, std::greater<>> open;
  std::vector<std::size_t> parents(2 * symbols.size() - 1);
  for (std::size_t i = 0; i < symbols.size(); ++i) {
    open.emplace(counts[symbols[i]], i);
  }
  for (std::size_t joined = symbols.size(); joined < parents.size(); ++joined) {
    Node const first = open.top();
    open.pop();
    Node const second = open.top();
    open.pop();
    parents[first.second] = parents[second.second] = joined;
    open.emplace(first.first + second.first, joined);
  }
  std::vector<unsigned> depths(parents.size());
  for (std::size_t node = parents.size() - 1; node-- > 0;) {
    depths[node] = depths[parents[node]] + 1;
  }
  depths.resize(symbols.size());
  return depths;
}

/// How many codes have each length, after those that are too long became shorter. The sum of
/// 2^-length of all codes must be 1: less wastes bits, and decoders refuse it.
std::vector<std::uint32_t> countLengths(std::vector<unsigned> const& depths, unsigned longest) {
  std::vector<std::uint32_t> counts(longest + 1);
  std::uint64_t used = 0;  // in codes of the longest length
  for (unsigned const depth : depths) {
    unsigned const length = std::min(depth, longest);
    ++counts[length];
    used += std::uint64_t{1} << (longest - length);
  }
  // A shorter code makes room for itself and for one of the longest, both one bit longer than it.
  for (; used > std::uint64_t{1} << longest; --used) {
    unsigned length = longest - 1;
    while (counts[length] == 0) {
      --length;
    }
    --counts[length];
    counts[length + 1] += 2;
    --counts[longest];
  }
  return counts;
}

std::uint16_t reverseBits(std::uint32_t code, unsigned count) noexcept {
  std::uint32_t reversed = 0;
  for (unsigned i = 0; i < count; ++i) {
    reversed = reversed << 1U | (code >> i & 1U);
  }
  return static_cast<std::uint16_t>(reversed);
}

}  // namespace

HuffmanCode makeHuffmanCode(std::span<std::uint32_t const> counts, unsigned longest) {
  std::vector<std::size_t> symbols = findSymbols(counts);
  std::vector<std::uint32_t> lengthCounts = countLengths(findDepths(counts, symbols), longest);
  std::ranges::stable_sort(symbols, std::greater<>(),
                           [&](std::size_t symbol) { return counts[symbol]; });
  HuffmanCode code{std::vector<std::uint8_t>(counts.size()),
                   std::vector<std::uint16_t>(counts.size())};
  std::vector<std::uint32_t> nextCodes(longest + 2);
  std::size_t next = 0;
  for (unsigned length = 1; length <= longest; ++length) {
    for (std::uint32_t i = 0; i < lengthCounts[length]; ++i) {
      code.lengths[symbols[next++]] = static_cast<std::uint8_t>(length);
    }
    nextCodes[length + 1] = (nextCodes[length] + lengthCounts[length]) * 2;
  }
  for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
    if (unsigned const length = code.lengths[symbol]; length > 0) {
      code.codes[symbol] = reverseBits(nextCodes[length]++, length);
    }
  }
  return code;
}

}  // namespace Zorv::Render::Draw
