#pragma once

#include <algorithm>
#include <boost/sort/pdqsort/pdqsort.hpp>
#include <vector>

namespace Zorv::ConditionalFormatters {

/// Sorts values and drops the repeated ones. Borders of ranges often come in order, or are few and
/// repeated, which this sort makes use of.
template <class Value>
void sortUnique(std::vector<Value>& values) {
  boost::sort::pdqsort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
}

}  // namespace Zorv::ConditionalFormatters
