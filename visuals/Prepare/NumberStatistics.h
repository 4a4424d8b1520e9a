#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Parallel/CndFrmt_PassResources.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/TableRange.h"
#include "visuals/Prepare/NumberBlocks.h"

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
    ConditionalFormatters::PassResources resources;
  };

  /// Collects from the existing cells of the ranges, each cell once. Keeps the numbers themselves
  /// only if percentiles are to be asked. Spends a step of the budget for each cell, and memory for
  /// the numbers that it keeps. Throws what the provider and the budget throw.
  NumberStatistics(Source const& source, bool withPercentiles);

  /// 0 without numbers.
  [[nodiscard]] double getLowest() const noexcept { return _count == 0 ? 0 : _lowest; }
  [[nodiscard]] double getHighest() const noexcept { return _count == 0 ? 0 : _highest; }

  /// The percentile as PERCENTILE.INC gives it, for 0 to 100; 0 without numbers. Linear.
  [[nodiscard]] double findPercentile(double percentile) const;

private:
  /// The numbers of one row block.
  struct Block {
    std::size_t count = 0;
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -std::numeric_limits<double>::infinity();
    std::vector<double> numbers{};  ///< empty if they are not kept
  };

  class BlockReader;

  void add(Block& block);

  std::size_t _count = 0;
  double _lowest = std::numeric_limits<double>::infinity();
  double _highest = -std::numeric_limits<double>::infinity();
  NumberBlocks _numbers;
};

}  // namespace Zorv::Visuals
