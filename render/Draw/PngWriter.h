#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "render/Draw/RowCompressor.h"
#include "render/Drawing.h"

namespace Zorv::Render::Draw {

/// Writes the rows of a picture as a PNG file (ISO/IEC 15948), opaque, in 24 bits, as they come: so
/// the picture need not be in memory.
///
/// Ownership: borrows the sink.
class PngWriter {
public:
  /// Writes the header. `scale`: pixels for each CSS pixel, from which programs take the size on
  /// paper. Throws std::bad_alloc, and what the sink throws; so do all operations.
  PngWriter(ByteSink const& sink, std::uint32_t width, std::uint32_t height, double scale);

  /// Adds a row from pixels of 32 bits, as cairo has them: blue in the lowest byte.
  void addRow(std::span<std::uint32_t const> pixels);
  /// Writes the rest of the file. Call it once, after the last row.
  void finish();

private:
  void writeData();
  void writeChunk(std::string_view type, std::span<unsigned char const> data) const;

  ByteSink const& _sink;
  RowCompressor _compressor;
};

}  // namespace Zorv::Render::Draw
