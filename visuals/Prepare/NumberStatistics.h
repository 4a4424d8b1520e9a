#pragma once

#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"

namespace Zorv::Visuals {

/// The number that visual formats draw: a finite one; nothing for any other value.
[[nodiscard]] inline std::optional<double> findNumber(FormulaValue const& value) noexcept {
  auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value);
  return number != nullptr && std::isfinite(number->value.get())
             ? std::optional(number->value.get())
             : std::nullopt;
}

/// The numbers in some ranges.
class NumberStatistics {
public:
  /// Where the numbers are. Borrows everything.
  struct Source {
    DOM::Table const& table;
    ConditionalFormatters::ValueContextProvider const& provider;
    std::vector<TableRange> const& ranges;
    WorkBudget* budget;
  };

  /// Collects from the existing cells of the ranges, each cell once. Keeps the numbers themselves
  /// only if percentiles are to be asked.
  NumberStatistics(Source const& source, bool withPercentiles);

  /// 0 without numbers.
  [[nodiscard]] double getLowest() const noexcept { return _lowest; }
  [[nodiscard]] double getHighest() const noexcept { return _highest; }

  /// The percentile as PERCENTILE.INC gives it, for 0 to 100; 0 without numbers. Linear, since it
  /// selects: reorders the numbers.
  [[nodiscard]] double findPercentile(double percentile);

private:
  void add(double number, bool withPercentiles);

  std::size_t _count = 0;
  double _lowest = 0;
  double _highest = 0;
  std::vector<double> _numbers;
};

}  // namespace Zorv::Visuals
