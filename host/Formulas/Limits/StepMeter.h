#pragma once

#include <cstddef>
#include <cstdint>

namespace Zorv {
class WorkBudget;
}  // namespace Zorv

namespace Zorv::Formulas {

/// Counter of the steps of one evaluation after the other.
///
/// A step is about the reading of one cell or element, some nanoseconds. Work is counted where it
/// is done: walks count their elements, searches their comparisons, functions of texts their
/// characters. An evaluation may take up to `mostSteps`; all of them together spend from the
/// budget, in lumps, so that counting costs next to nothing. Borrows the budget. Threads: for one
/// thread.
class StepMeter {
public:
  /// Of one evaluation, which then has taken some seconds.
  static constexpr std::uint64_t mostSteps = 500'000'000;

  /// `budget` may be null.
  explicit StepMeter(WorkBudget* budget = nullptr) noexcept : _budget(budget) {}

  /// Begins another evaluation.
  void begin() noexcept {
    _drawn = 0;
    _leftBefore = _left;
  }

  /// The steps that the evaluation has taken since it began.
  [[nodiscard]] std::uint64_t countSteps() const noexcept { return _leftBefore + _drawn - _left; }

  /// Throws EvaluationLimitError when the evaluation takes more than `mostSteps`, and whatever
  /// WorkBudget::spend() throws.
  void spend(std::uint64_t steps) {
    if (steps > _left) {
      draw(steps);
    }
    _left -= steps;
  }

private:
  /// Takes so many steps from the budget that `steps` are left at least.
  [[gnu::noinline]] void draw(std::uint64_t steps);

  WorkBudget* _budget;
  std::uint64_t _left = 0;        ///< of those that were drawn
  std::uint64_t _drawn = 0;       ///< since the evaluation began
  std::uint64_t _leftBefore = 0;  ///< when the evaluation began
};

/// The steps of a walk, which are spent in lumps: a count that can stay in a register.
class StepRun {
public:
  explicit StepRun(StepMeter& meter) noexcept : _meter(&meter) {}

  void count(std::uint64_t steps) {
    _pending += steps;
    if (_pending >= lump) {
      _meter->spend(_pending);
      _pending = 0;
    }
  }
  /// Spends what is left; to be called at the end.
  void end() { _meter->spend(_pending); }

private:
  static constexpr std::uint64_t lump = 1024;

  StepMeter* _meter;
  std::uint64_t _pending = 0;
};

/// The steps of reading or writing so many bytes once: those of a text, or of values.
[[nodiscard]] constexpr std::uint64_t stepsOfBytes(std::size_t bytes) noexcept {
  constexpr std::size_t bytesInStep = 32;
  return bytes / bytesInStep;
}

/// The steps of sorting some numbers.
[[nodiscard]] constexpr std::uint64_t stepsOfSort(std::uint64_t count) noexcept {
  std::uint64_t steps = 0;
  for (std::uint64_t rest = count; rest > 1; rest /= 2) {
    steps += count;
  }
  return steps;
}

}  // namespace Zorv::Formulas
