#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "render/Draw/DeflateBlock.h"

namespace Zorv::Render::Draw {

/// Compressor of the rows of a PNG into a zlib stream (RFC 1950).
///
/// Rows of sheets are hardly ever new: most pixels are those of the row above, and the others
/// repeat characters that were drawn before. It steps over the former several at a time and looks
/// for the latter pixel by pixel, which takes about a fifth of the time of a compressor for any
/// bytes, at the same size.
class RowCompressor {
public:
  explicit RowCompressor(std::size_t width);

  /// Adds a row as its differences to the one above: pixels of 32 bits, blue in the lowest byte;
  /// the highest byte does not count.
  void addRow(std::span<std::uint32_t const> pixels);
  /// Ends the stream. Call it once.
  void finish();

  /// Bytes of the stream, which the caller may take away between rows.
  [[nodiscard]] std::vector<unsigned char>& getOutput() noexcept { return _bits.getBytes(); }

private:
  [[nodiscard]] std::size_t findChange(std::span<std::uint32_t const> pixels,
                                       std::size_t from) const noexcept;
  [[nodiscard]] std::size_t findRest(std::span<std::uint32_t const> pixels,
                                     std::size_t from) const noexcept;
  void makeRoom();
  void addByte(unsigned char byte);
  void addZeros(std::size_t count);
  void addChanges(std::span<std::uint32_t const> pixels, std::size_t from, std::size_t to);
  void compress(std::size_t from, std::size_t to);
  [[nodiscard]] std::size_t findMatch(std::size_t place, std::size_t end, std::size_t& distance);
  void countZeros(std::size_t count) noexcept;

  std::vector<std::uint32_t> _previous;  ///< the row above; black above the first one
  std::vector<unsigned char> _window;    ///< the last bytes of the stream before compression
  std::size_t _end = 0;                  ///< of what is in the window
  std::uint32_t _base = 0;               ///< bytes before the window
  std::vector<std::uint32_t> _places;    ///< by hash of two pixels: the place behind the last ones
  DeflateBlock _block;
  BitWriter _bits;
  std::uint32_t _checksum = 1;  ///< Adler-32
};

}  // namespace Zorv::Render::Draw
