#include "tool/Output/ProgressBar.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include <fmt/format.h>

#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

constexpr std::chrono::milliseconds betweenDrawings{100};
constexpr std::size_t barWidth = 20;
/// Keeps the line short enough for a narrow terminal: a wrapped line cannot be redrawn.
constexpr std::size_t longestName = 40;

}  // namespace

ProgressBar::ProgressBar(std::ostream& terminal, bool isTerminal, ReadClock readClock)
    : _terminal(terminal), _isTerminal(isTerminal), _readClock(std::move(readClock)) {}

ProgressBar::~ProgressBar() { clear(); }

void ProgressBar::begin(std::string_view what, std::uint64_t stepCount) {
  clear();
  if (_isTerminal) {
    _what = Words::cutToWidth(Words::toPrintable(what), longestName);
    _stepCount = std::max<std::uint64_t>(1, stepCount);
    _lastDrawn = _readClock();
  }
}

void ProgressBar::show(std::uint64_t stepsDone) {
  if (!_isTerminal) {
    return;
  }
  auto const now = _readClock();
  if (now - _lastDrawn >= betweenDrawings) {
    _lastDrawn = now;
    draw(std::min(stepsDone, _stepCount));
  }
}

void ProgressBar::clear() noexcept {
  if (_widthDrawn > 0) {
    _terminal << '\r' << std::string(_widthDrawn, ' ') << '\r' << std::flush;
    _widthDrawn = 0;
  }
}

void ProgressBar::draw(std::uint64_t stepsDone) {
  auto const filled = static_cast<std::size_t>(barWidth * stepsDone / _stepCount);
  auto const line = fmt::format("[{:<{}}] {:3} % {}", std::string(filled, '#'), barWidth,
                                100 * stepsDone / _stepCount, _what);
  _terminal << '\r' << line << std::flush;
  _widthDrawn = std::max(_widthDrawn, Words::displayWidth(line));
}

}  // namespace Zorv::Tool
