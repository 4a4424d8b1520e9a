#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

#include <boost/sort/pdqsort/pdqsort.hpp>

namespace Zorv::ConditionalFormatters {

namespace {

bool isNumber(FloatNumber value) noexcept { return !std::isnan(value.get()); }

/// The best distinct numbers seen so far, in the order of the ranking.
template <class IsBetter>
class BestDistinct {
public:
  explicit BestDistinct(std::size_t capacity) noexcept : _capacity(capacity) {}

  void add(FloatNumber value) noexcept {
    if (_size == _capacity && !IsBetter()(value, _best[_size - 1])) {
      return;
    }
    auto* const end = _best.data() + _size;
    auto* const place = std::lower_bound(_best.data(), end, value, IsBetter());
    if (place != end && *place == value) {
      return;
    }
    _size = std::min(_size + 1, _capacity);
    auto* const newEnd = _best.data() + _size;
    std::move_backward(place, newEnd - 1, newEnd);
    *place = value;
  }

  [[nodiscard]] std::vector<FloatNumber> get() const {
    return {_best.begin(), _best.begin() + static_cast<std::ptrdiff_t>(_size)};
  }

private:
  std::array<FloatNumber, largestSelectedRank> _best;
  std::size_t _capacity;
  std::size_t _size = 0;
};

template <class IsBetter>
std::vector<FloatNumber> selectBy(std::vector<FloatNumber> const& values, std::size_t count) {
  BestDistinct<IsBetter> best(count);
  for (auto const value : values) {
    if (isNumber(value)) {
      best.add(value);
    }
  }
  auto selected = best.get();
  if (selected.empty() && !values.empty()) {
    selected.push_back(values.front());
  }
  return selected;
}

}  // namespace

void rankDistinct(std::vector<FloatNumber>& values, RankingOrder order) {
  auto const begin = values.begin();
  // Sorting needs a strict weak order, which numbers have only without NaN.
  auto const end = std::partition(begin, values.end(), isNumber);
  if (begin == end) {
    values.resize(std::min<std::size_t>(values.size(), 1));
    return;
  }
  // The branchless sort takes a third of the time: comparisons of random numbers are mispredicted.
  if (order == RankingOrder::LargestFirst) {
    boost::sort::pdqsort_branchless(begin, end, std::greater<>());
  } else {
    boost::sort::pdqsort_branchless(begin, end, std::less<>());
  }
  values.erase(std::unique(begin, end), values.end());
}

std::vector<FloatNumber> selectBest(std::vector<FloatNumber> const& values, RankingOrder order,
                                    std::size_t count) {
  return order == RankingOrder::LargestFirst ? selectBy<std::greater<>>(values, count)
                                             : selectBy<std::less<>>(values, count);
}

}  // namespace Zorv::ConditionalFormatters
