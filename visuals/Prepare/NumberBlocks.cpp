#include "visuals/Prepare/NumberBlocks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace Zorv::Visuals {

namespace {

constexpr std::size_t sectionCount = 1024;

/// Cuts the way from the lowest to the highest number into sections of equal length.
class Sections {
public:
  Sections(double lowest, double highest) noexcept : _half(lowest / 2) {
    double const scale = sectionCount / (highest / 2 - _half);
    _scale = std::isfinite(scale) ? scale : 0;  // numbers too close to tell apart are in the first
  }

  /// A higher number is never in a lower section. In halves, since the difference of two finite
  /// numbers may be infinite.
  [[nodiscard]] std::size_t operator()(double number) const noexcept {
    return std::min(static_cast<std::size_t>((number / 2 - _half) * _scale), sectionCount - 1);
  }

private:
  double _half;
  double _scale = 0;
};

}  // namespace

/// Counts the numbers of each section, and sorts those of the sections of the two neighbours alone:
/// a selection among all numbers would move them about several times.
NumberBlocks::Neighbours NumberBlocks::select(std::size_t rank, double lowest,
                                              double highest) const {
  Sections const sectionOf(lowest, highest);
  std::array<std::size_t, sectionCount> counts{};
  for (auto const& block : _blocks) {
    for (double const number : block) {
      ++counts[sectionOf(number)];
    }
  }
  std::size_t const nextRank = std::min(rank + 1, _count - 1);
  std::size_t first = 0;
  std::size_t below = 0;
  while (below + counts[first] <= rank) {
    below += counts[first++];
  }
  std::size_t last = first;
  for (std::size_t upTo = below + counts[last]; upTo <= nextRank; upTo += counts[last]) {
    ++last;
  }
  std::vector<double> near;
  for (auto const& block : _blocks) {
    std::ranges::copy_if(block, std::back_inserter(near), [&](double number) {
      std::size_t const section = sectionOf(number);
      return first <= section && section <= last;
    });
  }
  auto const at = near.begin() + static_cast<std::ptrdiff_t>(rank - below);
  std::ranges::nth_element(near, at);
  return {*at, rank == nextRank ? *at : *std::min_element(at + 1, near.end())};
}

}  // namespace Zorv::Visuals
