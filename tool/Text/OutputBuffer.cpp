#include "tool/Text/OutputBuffer.h"

#include <chrono>
#include <ostream>
#include <utility>

namespace Zorv::Tool {

OutputBuffer::OutputBuffer(std::ostream& out) : _out(out) {
  _text.reserve(blockSize + blockSize / 4);
}

void OutputBuffer::setEarlyEnd(std::string text) {
  // The entries so far belong before the new end.
  writeBlock();
  std::scoped_lock const lock(_mutex);
  _earlyEnd = std::move(text);
}

void OutputBuffer::setLastEnd(std::string text) {
  std::scoped_lock const lock(_mutex);
  _lastEnd = std::move(text);
}

void OutputBuffer::flush() {
  writeBlock();
  std::scoped_lock const lock(_mutex);
  _out.flush();
}

bool OutputBuffer::endEarly() {
  std::unique_lock const lock(_mutex, std::chrono::seconds(1));
  if (lock) {
    _ended = true;
    _out << _earlyEnd << _lastEnd << std::flush;
  }
  return lock.owns_lock();
}

void OutputBuffer::writeBlock() {
  std::scoped_lock const lock(_mutex);
  if (!_ended) {
    _out.write(_text.data(), static_cast<std::streamsize>(_text.size()));
  }
  _text.clear();
}

}  // namespace Zorv::Tool
