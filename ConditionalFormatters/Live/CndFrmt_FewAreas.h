#pragma once

#include <cstddef>
#include <vector>

#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

inline void appendAll(std::vector<TableRange> const& ranges, std::vector<TableRange>& areas) {
  areas.insert(areas.end(), ranges.begin(), ranges.end());
}

/// At most `most` disjoint areas, by rows and then by columns, that hold every position of some
/// areas. Exact as long as so few areas can be; otherwise areas are joined that leave out little.
///
/// `n log n` for n areas, and linear in the rectangles into which they fall apart where these are
/// few. Requires `most > 0`.
[[nodiscard]] std::vector<TableRange> joinIntoFew(std::vector<TableRange> const& areas,
                                                  std::size_t most);

}  // namespace Zorv::ConditionalFormatters
