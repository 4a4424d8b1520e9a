#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace Zorv::Tool {

/// Progress line on a terminal, redrawn in place: `[####      ]  42 % Sales`. Work that takes no
/// noticeable time draws nothing.
///
/// Other writers to the same terminal clear the bar first. The destructor clears it, too.
///
/// Borrows the stream. Not thread-safe.
class ProgressBar {
public:
  using Clock = std::chrono::steady_clock;
  using ReadClock = std::function<Clock::time_point()>;

  /// Writes nothing if the stream is not a terminal.
  ProgressBar(std::ostream& terminal, bool isTerminal, ReadClock readClock = &Clock::now);
  ProgressBar(ProgressBar const&) = delete;
  ProgressBar& operator=(ProgressBar const&) = delete;
  ~ProgressBar();

  /// Starts at 0 of so many steps; `what` names the work.
  void begin(std::string_view what, std::uint64_t stepCount);

  /// Sets the number of steps done. Redraws at most ten times a second.
  void show(std::uint64_t stepsDone);

  /// Erases the bar until it is drawn again.
  void clear() noexcept;

private:
  void draw(std::uint64_t stepsDone);

  std::ostream& _terminal;
  bool _isTerminal;
  ReadClock _readClock;
  Clock::time_point _lastDrawn;
  std::string _what;
  std::uint64_t _stepCount = 0;
  std::size_t _widthDrawn = 0;  ///< 0 if nothing is drawn
};

}  // namespace Zorv::Tool
