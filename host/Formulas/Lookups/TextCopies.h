#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace Zorv::Formulas {

/// Copies of texts, side by side in chunks that stay where they are, also when the copies as a
/// whole are moved.
class TextCopies {
public:
  /// A copy of a text, which lasts as long as this object.
  [[nodiscard]] std::string_view add(std::string_view text);

  /// The bytes of all texts.
  [[nodiscard]] std::size_t size() const noexcept { return _size; }
  /// The bytes that they take.
  [[nodiscard]] std::size_t memory() const noexcept;

private:
  static constexpr std::size_t chunkSize = 2048;

  char* addChunk(std::size_t size);
  /// Room for a short text.
  char* takeRoom(std::size_t size);

  std::vector<std::unique_ptr<char[]>> _chunks;
  char* _free = nullptr;  ///< in the last chunk of short texts
  std::size_t _freeSize = 0;
  std::size_t _size = 0;
  std::size_t _chunkBytes = 0;
};

}  // namespace Zorv::Formulas
