#pragma once

#include <zlib.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

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
  void deflateRow(int flush);
  void writeData();
  void writeChunk(std::string_view type, std::span<unsigned char const> data) const;

  struct Deflater {
    z_stream stream{};
    Deflater();
    Deflater(Deflater const&) = delete;
    Deflater& operator=(Deflater const&) = delete;
    ~Deflater();
  };

  ByteSink const& _sink;
  Deflater _deflater;
  std::vector<std::uint32_t> _previous;  ///< the row above; black above the first one
  std::vector<unsigned char> _filtered;  ///< the filter, then red, green, blue of each pixel
  std::vector<unsigned char> _output;
};

}  // namespace Zorv::Render::Draw
