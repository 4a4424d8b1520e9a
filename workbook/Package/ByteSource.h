#pragma once

#include <cstddef>
#include <string>

namespace Zorv::Workbook {

/// A stream of bytes, read once from its beginning to its end.
class ByteSource {
public:
  ByteSource() = default;
  ByteSource(ByteSource const&) = delete;
  ByteSource& operator=(ByteSource const&) = delete;
  virtual ~ByteSource() = default;

  /// Reads up to `size` bytes, at least one unless the stream has ended; returns how many.
  /// Throws PartError where the stream is damaged.
  virtual std::size_t read(char* bytes, std::size_t size) = 0;

  /// The part that is read, for messages.
  [[nodiscard]] virtual std::string const& getName() const noexcept = 0;
};

}  // namespace Zorv::Workbook
