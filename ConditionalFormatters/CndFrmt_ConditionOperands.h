#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

#include <boost/optional.hpp>

#include "FormulaModel/FormulaValue.h"
#include "Utils/CellIndex.h"
#include "Utils/FloatNumber.h"

// The operands that a condition tests a cell's value against.
namespace Zorv::ConditionalFormatters {

/// The value of the formula that a cell is compared with, or that is the condition itself. None if
/// the formula's result is a reference and no value.
struct ArgumentOperand {
  /// The value that was compared with, or the condition itself.
  boost::optional<FormulaValue> value;
};

/// The bounds of a "between" condition, both inclusive, as the record orders them.
struct BoundsOperand {
  boost::optional<FormulaValue> lower;  ///< none if the formula has no value
  boost::optional<FormulaValue> upper;  ///< none if the formula has no value
};

/// The text that is looked for. None if it is that of a formula without a value.
struct PatternOperand {
  boost::optional<std::string> pattern;  ///< the text in UTF-8
};

/// The arithmetic mean of the numbers in the ranges, and how many there are. NaN if there are none.
struct MeanOperand {
  FloatNumber mean;       ///< the arithmetic mean
  std::size_t count = 0;  ///< of the numbers
};

/// The last number that is among the top or the bottom, and its rank among distinct numbers,
/// from 1. No threshold and rank 0 if no number is inside.
struct ThresholdOperand {
  boost::optional<FloatNumber> threshold;  ///< the last number inside
  std::size_t rank = 0;                    ///< of the threshold, from 1
};

/// How often the cell's value occurs in the ranges, and the first cell that has it: the ranges in
/// their order, each row by row. A cell of two ranges counts twice.
struct OccurrenceOperand {
  std::size_t count = 0;             ///< of cells with the value
  boost::optional<CellIndex> first;  ///< the first of them; none if there is none
};

/// Unit of a date period.
enum class DateUnit : std::uint8_t { Day, Week, Month };

/// The limits of a date period at the moment asked about, both inclusive: serial days, or numbers
/// of weeks or months within the year, which may lie outside the year.
struct PeriodOperand {
  DateUnit unit;  ///< of `first` and `last`
  double first;   ///< inside the period
  double last;    ///< inside the period
};

/// The operands of a condition for one cell; std::monostate for a condition that has none, such as
/// "blank".
using ConditionOperands =
    std::variant<std::monostate, ArgumentOperand, BoundsOperand, PatternOperand, MeanOperand,
                 ThresholdOperand, OccurrenceOperand, PeriodOperand>;

}  // namespace Zorv::ConditionalFormatters
