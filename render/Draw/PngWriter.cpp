#include "render/Draw/PngWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

namespace Zorv::Render::Draw {

namespace {

using BigEndian = std::array<unsigned char, 4>;

BigEndian toBigEndian(std::uint32_t value) noexcept {
  return {static_cast<unsigned char>(value >> 24U), static_cast<unsigned char>(value >> 16U),
          static_cast<unsigned char>(value >> 8U), static_cast<unsigned char>(value)};
}

template <class Bytes>
std::string_view toView(Bytes const& bytes) noexcept {
  return {reinterpret_cast<char const*>(bytes.data()), bytes.size()};
}

void append(std::vector<unsigned char>& bytes, std::uint32_t value) {
  BigEndian const parts = toBigEndian(value);
  bytes.insert(bytes.end(), parts.begin(), parts.end());
}

/// The differences of all four bytes at once, each modulo 256.
std::uint32_t subtractBytes(std::uint32_t a, std::uint32_t b) noexcept {
  constexpr std::uint32_t highBits = 0x80808080;
  return ((a | highBits) - (b & ~highBits)) ^ ((a ^ ~b) & highBits);
}

}  // namespace

PngWriter::Deflater::Deflater() {
  // Rows of sheets repeat each other, so that the quickest level already finds nearly everything.
  if (deflateInit(&stream, Z_BEST_SPEED) != Z_OK) {
    throw std::bad_alloc();
  }
}

PngWriter::Deflater::~Deflater() { deflateEnd(&stream); }

PngWriter::PngWriter(ByteSink const& sink, std::uint32_t width, std::uint32_t height, double scale)
    : _sink(sink),
      _previous(width),
      _filtered(std::size_t{width} * 3 + 1),
      _output(std::size_t{1} << 16U) {
  constexpr std::string_view signature = "\x89PNG\r\n\x1A\n";
  _sink(signature);
  std::vector<unsigned char> header;
  append(header, width);
  append(header, height);
  // 8 bits a channel, red, green and blue, without interlacing.
  header.insert(header.end(), {8, 2, 0, 0, 0});
  writeChunk("IHDR", header);
  constexpr double pixelsPerMetre = 96 / 0.0254;
  std::vector<unsigned char> resolution;
  auto const density = static_cast<std::uint32_t>(std::lround(pixelsPerMetre * scale));
  append(resolution, density);
  append(resolution, density);
  resolution.push_back(1);
  writeChunk("pHYs", resolution);
  _deflater.stream.next_out = _output.data();
  _deflater.stream.avail_out = static_cast<uInt>(_output.size());
}

void PngWriter::addRow(std::span<std::uint32_t const> pixels) {
  // Each row is written as its difference to the one above: mostly zeros.
  constexpr unsigned char filterUp = 2;
  _filtered[0] = filterUp;
  if (std::ranges::equal(pixels, _previous)) {
    std::fill(_filtered.begin() + 1, _filtered.end(), static_cast<unsigned char>(0));
  } else {
    std::size_t place = 1;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      std::uint32_t const difference = subtractBytes(pixels[i], _previous[i]);
      _filtered[place++] = static_cast<unsigned char>(difference >> 16U);
      _filtered[place++] = static_cast<unsigned char>(difference >> 8U);
      _filtered[place++] = static_cast<unsigned char>(difference);
    }
    std::ranges::copy(pixels, _previous.begin());
  }
  deflateRow(Z_NO_FLUSH);
}

void PngWriter::deflateRow(int flush) {
  z_stream& stream = _deflater.stream;
  stream.next_in = flush == Z_FINISH ? nullptr : _filtered.data();
  stream.avail_in = flush == Z_FINISH ? 0 : static_cast<uInt>(_filtered.size());
  int result = Z_OK;
  do {
    result = deflate(&stream, flush);
    if (stream.avail_out == 0) {
      writeData();
    }
  } while (stream.avail_in != 0 || (flush == Z_FINISH && result != Z_STREAM_END));
}

void PngWriter::writeData() {
  z_stream& stream = _deflater.stream;
  writeChunk("IDAT", std::span(_output).first(_output.size() - stream.avail_out));
  stream.next_out = _output.data();
  stream.avail_out = static_cast<uInt>(_output.size());
}

void PngWriter::finish() {
  deflateRow(Z_FINISH);
  writeData();
  writeChunk("IEND", {});
}

void PngWriter::writeChunk(std::string_view type, std::span<unsigned char const> data) const {
  auto const size = static_cast<std::uint32_t>(data.size());
  _sink(toView(toBigEndian(size)));
  _sink(type);
  _sink(toView(data));
  uLong checksum =
      crc32(0, reinterpret_cast<Bytef const*>(type.data()), static_cast<uInt>(type.size()));
  checksum = size == 0 ? checksum : crc32(checksum, data.data(), size);
  _sink(toView(toBigEndian(static_cast<std::uint32_t>(checksum))));
}

}  // namespace Zorv::Render::Draw
