#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace Zorv::Visuals {

/// Finite numbers, kept in the blocks in which they came, and selected by their rank.
class NumberBlocks {
public:
  /// The number at a rank, and the next one; the same twice at the last rank.
  struct Neighbours {
    double at;
    double next;
  };

  void add(std::vector<double> numbers) {
    if (!numbers.empty()) {
      _count += numbers.size();
      _blocks.push_back(std::move(numbers));
    }
  }

  [[nodiscard]] std::size_t count() const noexcept { return _count; }

  /// The numbers at a rank, which counts from 0 and lies below count(). No number is lower than
  /// `lowest` or higher than `highest`. Linear; allocates little unless most numbers are close to
  /// the one that is looked for.
  [[nodiscard]] Neighbours select(std::size_t rank, double lowest, double highest) const;

private:
  std::vector<std::vector<double>> _blocks;
  std::size_t _count = 0;
};

}  // namespace Zorv::Visuals
