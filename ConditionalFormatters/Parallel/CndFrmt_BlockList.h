#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "DOM/RowBlocks.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The row blocks of several ranges, one range after the other. Costs what the ranges cost, however
/// many blocks they have.
class BlockList {
public:
  void add(DOM::RowBlocks const& blocks) {
    if (blocks.count() > 0) {
      _parts.push_back({blocks, count()});
      _count += blocks.count();
    }
  }

  [[nodiscard]] std::size_t count() const noexcept { return _count; }

  /// The block at an index below count(). Logarithmic in the number of ranges.
  [[nodiscard]] TableRange at(std::size_t index) const noexcept {
    auto const next = std::ranges::upper_bound(_parts, index, {}, &Part::firstIndex);
    Part const& part = *(next - 1);
    return part.blocks.at(index - part.firstIndex);
  }

private:
  struct Part {
    DOM::RowBlocks blocks;
    std::size_t firstIndex;  ///< of its first block in the list
  };

  std::vector<Part> _parts;  ///< without empty ones
  std::size_t _count = 0;
};

}  // namespace Zorv::ConditionalFormatters
