#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace Zorv::Tool {

/// A line on a terminal that says how far some work is, drawn over itself: `[####      ]  42 %
/// Sales`. Work that is done in no time draws nothing.
///
/// Whoever writes to the same terminal clears the bar before; the destructor clears it too, so that
/// nothing of it is left however the work ends.
///
/// Borrows the stream. Not for use from several threads at once.
class ProgressBar {
public:
  using Clock = std::chrono::steady_clock;
  using ReadClock = std::function<Clock::time_point()>;

  /// Nothing is ever written unless the stream is a terminal.
  ProgressBar(std::ostream& terminal, bool isTerminal, ReadClock readClock = &Clock::now);
  ProgressBar(ProgressBar const&) = delete;
  ProgressBar& operator=(ProgressBar const&) = delete;
  ~ProgressBar();

  /// What is worked on, and in how many steps; the bar stands at 0.
  void begin(std::string_view what, std::uint64_t stepCount);

  /// So many steps are done. Draws where the last drawing is old enough.
  void show(std::uint64_t stepsDone);

  /// Takes the bar off the terminal until it is drawn again.
  void clear() noexcept;

private:
  void draw(std::uint64_t stepsDone);

  std::ostream& _terminal;
  bool _isTerminal;
  ReadClock _readClock;
  Clock::time_point _lastDrawn;
  std::string _what;
  std::uint64_t _stepCount = 0;
  std::size_t _widthDrawn = 0;  ///< 0 where nothing is drawn
};

}  // namespace Zorv::Tool
