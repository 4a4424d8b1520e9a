#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Zorv::Render::Draw {

/// Canonical Huffman code of symbols (RFC 1951, 3.2.2).
struct HuffmanCode {
  std::vector<std::uint8_t> lengths;  ///< of each symbol's code in bits; 0: the symbol has none
  std::vector<std::uint16_t> codes;   ///< each with its first bit lowest, as it is written
};

/// The code of symbols that occur so often, none longer than `longest` bits. At least two symbols
/// have a code, as some decoders want.
[[nodiscard]] HuffmanCode makeHuffmanCode(std::span<std::uint32_t const> counts, unsigned longest);

}  // namespace Zorv::Render::Draw
