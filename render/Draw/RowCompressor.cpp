#include "render/Draw/RowCompressor.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include <zlib.h>

namespace Zorv::Render::Draw {

namespace {

constexpr std::size_t pixelSize = 3;
constexpr std::size_t pairSize = 2 * pixelSize;
constexpr unsigned hashBits = 15;
/// Fewer pixels than that between changes are compressed with them.
constexpr std::size_t shortestRest = 6;

std::uint64_t loadEight(unsigned char const* bytes) noexcept {
  std::uint64_t value = 0;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

/// Two pixels.
std::uint64_t loadPair(unsigned char const* bytes) noexcept {
  std::uint64_t value = 0;
  std::memcpy(&value, bytes, pairSize);
  return value;
}

std::size_t hashPair(std::uint64_t pair) noexcept {
  constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
  return static_cast<std::size_t>(pair * factor >> (64U - hashBits));
}

/// The differences of all four bytes at once, each modulo 256.
std::uint32_t subtractBytes(std::uint32_t a, std::uint32_t b) noexcept {
  constexpr std::uint32_t highBits = 0x80808080;
  return ((a | highBits) - (b & ~highBits)) ^ ((a ^ ~b) & highBits);
}

}  // namespace

RowCompressor::RowCompressor(std::size_t width)
    : _previous(width),
      // The row at hand behind what matches may reach, some times over, so that it moves rarely.
      _window(4 * (DeflateBlock::farthestMatch + width * pixelSize) + sizeof(std::uint64_t)),
      _places(std::size_t{1} << hashBits) {
  // Deflate with a window of 32 KiB; the check bits make the number a multiple of 31.
  getOutput() = {0x78, 0x01};
}

void RowCompressor::addRow(std::span<std::uint32_t const> pixels) {
  constexpr unsigned char filterUp = 2;
  makeRoom();
  addByte(filterUp);
  for (std::size_t place = 0; place < pixels.size();) {
    std::size_t const change = findChange(pixels, place);
    addZeros((change - place) * pixelSize);
    place = findRest(pixels, change);
    addChanges(pixels, change, place);
  }
  std::ranges::copy(pixels, _previous.begin());
  if (_block.isFull()) {
    _block.write(_bits, false);
  }
}

void RowCompressor::finish() {
  _block.write(_bits, true);
  _bits.finish();
  for (unsigned shift = 32; shift > 0; shift -= 8) {
    getOutput().push_back(static_cast<unsigned char>(_checksum >> (shift - 8)));
  }
}

/// The first pixel from there on that differs from the one above.
std::size_t RowCompressor::findChange(std::span<std::uint32_t const> pixels,
                                      std::size_t from) const noexcept {
  constexpr std::size_t step = 16;
  while (from + step <= pixels.size() &&
         std::memcmp(&pixels[from], &_previous[from], step * sizeof(std::uint32_t)) == 0) {
    from += step;
  }
  while (from < pixels.size() && pixels[from] == _previous[from]) {
    ++from;
  }
  return from;
}

/// The first pixel from there on behind which enough are those above.
std::size_t RowCompressor::findRest(std::span<std::uint32_t const> pixels,
                                    std::size_t from) const noexcept {
  std::size_t unchanged = 0;
  for (; from < pixels.size() && unchanged < shortestRest; ++from) {
    unchanged = pixels[from] == _previous[from] ? unchanged + 1 : 0;
  }
  return from - unchanged;
}

/// Moves what matches may reach to the beginning of the window, if a row does not fit behind it.
void RowCompressor::makeRoom() {
  std::size_t const rowSize = 1 + _previous.size() * pixelSize;
  if (_end + rowSize + sizeof(std::uint64_t) <= _window.size()) {
    return;
  }
  std::size_t const kept = std::min(_end, DeflateBlock::farthestMatch);
  std::memmove(_window.data(), _window.data() + _end - kept, kept);
  _base += static_cast<std::uint32_t>(_end - kept);
  _end = kept;
}

void RowCompressor::addByte(unsigned char byte) {
  _window[_end++] = byte;
  _block.addLiteral(byte);
  _checksum = static_cast<std::uint32_t>(adler32(_checksum, &byte, 1));
}

void RowCompressor::addZeros(std::size_t count) {
  if (count == 0) {
    return;
  }
  std::memset(_window.data() + _end, 0, count);
  _end += count;
  countZeros(count);
  _block.addLiteral(0);
  std::size_t rest = count - 1;
  while (rest >= DeflateBlock::shortestMatch) {
    std::size_t const length = std::min(rest, DeflateBlock::longestMatch);
    _block.addMatch(length, 1);
    rest -= length;
  }
  for (; rest > 0; --rest) {
    _block.addLiteral(0);
  }
}

/// Zeros add the sum of the bytes to the sum of the sums, once each.
void RowCompressor::countZeros(std::size_t count) noexcept {
  constexpr std::uint64_t prime = 65'521;
  constexpr unsigned half = 16;
  std::uint64_t const sum = _checksum & 0xFFFFU;
  std::uint64_t const sums = _checksum >> half;
  _checksum = static_cast<std::uint32_t>((sums + count % prime * sum) % prime << half | sum);
}

void RowCompressor::addChanges(std::span<std::uint32_t const> pixels, std::size_t from,
                               std::size_t to) {
  std::size_t const begin = _end;
  unsigned char* target = _window.data() + begin;
  for (std::size_t i = from; i < to; ++i) {
    std::uint32_t const difference = subtractBytes(pixels[i], _previous[i]);
    target[0] = static_cast<unsigned char>(difference >> 16U);
    target[1] = static_cast<unsigned char>(difference >> 8U);
    target[2] = static_cast<unsigned char>(difference);
    target += pixelSize;
  }
  _end += (to - from) * pixelSize;
  _checksum =
      static_cast<std::uint32_t>(adler32_z(_checksum, _window.data() + begin, _end - begin));
  compress(begin, _end);
}

void RowCompressor::compress(std::size_t from, std::size_t to) {
  while (from < to) {
    std::size_t distance = 0;
    std::size_t const length = findMatch(from, to, distance);
    if (length > 0) {
      _block.addMatch(length, distance);
      from += length;
    } else {
      for (std::size_t i = 0; i < pixelSize; ++i) {
        _block.addLiteral(_window[from++]);
      }
    }
  }
}

/// The length in whole pixels of the last bytes like those at a place; 0 if there are none.
std::size_t RowCompressor::findMatch(std::size_t place, std::size_t end, std::size_t& distance) {
  if (end - place < pairSize) {
    return 0;
  }
  std::uint64_t const pair = loadPair(_window.data() + place);
  std::uint32_t& known = _places[hashPair(pair)];
  std::uint32_t const absolute = _base + static_cast<std::uint32_t>(place) + 1;
  std::uint32_t const before = std::exchange(known, absolute);
  distance = absolute - before;
  if (before <= _base || distance > DeflateBlock::farthestMatch ||
      loadPair(_window.data() + place - distance) != pair) {
    return 0;
  }
  std::size_t const most = std::min(end - place, DeflateBlock::longestMatch);
  std::size_t length = pairSize;
  while (length < most) {
    std::uint64_t const difference = loadEight(_window.data() + place + length) ^
                                     loadEight(_window.data() + place + length - distance);
    if (difference != 0) {
      length += static_cast<std::size_t>(std::countr_zero(difference)) / 8;
      break;
    }
    length += sizeof(std::uint64_t);
  }
  length = std::min(length, most);
  return length - length % pixelSize;
}

}  // namespace Zorv::Render::Draw
