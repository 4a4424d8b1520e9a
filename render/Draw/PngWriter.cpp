#include "render/Draw/PngWriter.h"

#include <zlib.h>

#include <array>
#include <cmath>
#include <vector>

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

}  // namespace

PngWriter::PngWriter(ByteSink const& sink, std::uint32_t width, std::uint32_t height, double scale)
    : _sink(sink), _compressor(width) {
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
}

void PngWriter::addRow(std::span<std::uint32_t const> pixels) {
  constexpr std::size_t chunkSize = 65'536;
  _compressor.addRow(pixels);
  if (_compressor.getOutput().size() >= chunkSize) {
    writeData();
  }
}

void PngWriter::writeData() {
  writeChunk("IDAT", _compressor.getOutput());
  _compressor.getOutput().clear();
}

void PngWriter::finish() {
  _compressor.finish();
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
