#pragma once

#include <cstddef>
#include <iosfwd>
#include <mutex>
#include <string>
#include <string_view>

namespace Zorv::Tool {

/// Text that is written to a stream in large blocks of whole entries, such as lines.
///
/// Borrows the stream. Threads: one thread appends; any thread may end the text early.
class OutputBuffer {
public:
  explicit OutputBuffer(std::ostream& out);
  OutputBuffer(OutputBuffer const&) = delete;
  OutputBuffer& operator=(OutputBuffer const&) = delete;
  ~OutputBuffer() = default;

  /// The text of the entry that is being written; append to it.
  [[nodiscard]] std::string& text() noexcept { return _text; }

  /// Ends an entry. Writes a block when enough has come together.
  void endEntry() {
    if (_text.size() >= blockSize) {
      writeBlock();
    }
  }

  /// Sets what endEarly() writes after the last entry.
  void setEarlyEnd(std::string text);

  /// Sets what endEarly() writes last, after the other text.
  void setLastEnd(std::string text);

  /// Writes what is left, and flushes the stream.
  void flush();

  /// Ends the text from another thread, for a process that ends while the work goes on: writes the
  /// text of setEarlyEnd() after the blocks so far. Nothing is written afterwards. Returns false if
  /// the stream is busy for a second, and then writes nothing.
  bool endEarly();

private:
  static constexpr std::size_t blockSize = 65'536;

  void writeBlock();

  std::ostream& _out;
  std::string _text;
  std::timed_mutex _mutex;  ///< guards the stream and what follows
  std::string _earlyEnd;
  std::string _lastEnd;
  bool _ended = false;
};

}  // namespace Zorv::Tool
