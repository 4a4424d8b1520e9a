#include "Formulas/Lookups/TextCopies.h"

#include <utility>

#include "Formulas/Lookups/Memory.h"

namespace Zorv::Formulas {

std::string_view TextCopies::add(std::string_view text) {
  // A long text does not end the chunk that short ones share.
  bool const isLong = text.size() > chunkSize / 8;
  char* const copy = isLong ? addChunk(text.size()) : takeRoom(text.size());
  text.copy(copy, text.size());
  _size += text.size();
  return {copy, text.size()};
}

char* TextCopies::addChunk(std::size_t size) {
  _chunks.push_back(std::make_unique_for_overwrite<char[]>(size));
  _chunkBytes += size;
  return _chunks.back().get();
}

char* TextCopies::takeRoom(std::size_t size) {
  if (size > _freeSize) {
    _free = addChunk(chunkSize);
    _freeSize = chunkSize;
  }
  _freeSize -= size;
  return std::exchange(_free, _free + size);
}

std::size_t TextCopies::memory() const noexcept { return _chunkBytes + memoryOf(_chunks); }

}  // namespace Zorv::Formulas
