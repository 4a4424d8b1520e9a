#pragma once

#include <cstddef>
#include <string>

namespace Zorv::Workbook {

/// Stream of bytes that can be read once.
class ByteSource {
public:
  ByteSource() = default;
  ByteSource(ByteSource const&) = delete;
  ByteSource& operator=(ByteSource const&) = delete;
  virtual ~ByteSource() = default;

  /// Reads up to `size` bytes, at least one unless the stream has ended, and returns their number.
  /// Throws PartError if the stream is damaged.
  virtual std::size_t read(char* bytes, std::size_t size) = 0;

  /// Name of the part, for messages.
  [[nodiscard]] virtual std::string const& getName() const noexcept = 0;
};

}  // namespace Zorv::Workbook
