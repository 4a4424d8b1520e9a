#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Zorv::Render::Draw {

/// Writer of bits, the lowest first, as RFC 1951 packs them.
class BitWriter {
public:
  /// Adds up to 32 bits.
  void add(std::uint32_t bits, unsigned count) {
    _pending |= std::uint64_t{bits} << _pendingCount;
    _pendingCount += count;
    if (_pendingCount >= wordBits) {
      addBytes(sizeof(std::uint32_t));
    }
  }
  /// Fills the last byte with zeros.
  void finish() { addBytes((_pendingCount + 7) / 8); }

  /// The whole bytes so far, which the caller may take away.
  [[nodiscard]] std::vector<unsigned char>& getBytes() noexcept { return _bytes; }

private:
  static constexpr unsigned wordBits = 32;

  void addBytes(std::size_t count) {
    std::array<unsigned char, sizeof(std::uint32_t)> bytes{};
    for (std::size_t i = 0; i < count; ++i) {
      bytes[i] = static_cast<unsigned char>(_pending >> (8 * i));
    }
    _bytes.insert(_bytes.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    _pending >>= 8 * count;
    _pendingCount -= std::min(_pendingCount, static_cast<unsigned>(8 * count));
  }

  std::vector<unsigned char> _bytes;
  std::uint64_t _pending = 0;
  unsigned _pendingCount = 0;
};

/// Block of a deflate stream (RFC 1951): literal bytes and matches, coded by how often they occur.
class DeflateBlock {
public:
  static constexpr std::size_t longestMatch = 258;
  static constexpr std::size_t shortestMatch = 3;
  static constexpr std::size_t farthestMatch = 32'768;

  DeflateBlock() { _tokens.reserve(mostTokens); }

  void addLiteral(unsigned char byte) {
    _tokens.push_back(byte);
    ++_literals[byte];
  }
  /// Bytes that repeat those `distance` bytes before.
  void addMatch(std::size_t length, std::size_t distance);

  /// No more tokens belong into one block, as later ones may occur with other frequencies.
  [[nodiscard]] bool isFull() const noexcept { return _tokens.size() >= mostTokens; }
  /// Writes the block and empties it.
  void write(BitWriter& bits, bool isLast);

private:
  static constexpr std::size_t mostTokens = 65'536;
  static constexpr std::size_t literalCount = 286;  ///< bytes, the end of the block, lengths
  static constexpr std::size_t distanceCount = 30;

  std::vector<std::uint32_t> _tokens;  ///< a literal, or a length above 16 bits of its distance
  std::array<std::uint32_t, literalCount> _literals{};
  std::array<std::uint32_t, distanceCount> _distances{};
};

}  // namespace Zorv::Render::Draw
