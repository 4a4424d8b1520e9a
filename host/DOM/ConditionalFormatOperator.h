#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include <boost/optional.hpp>
#include <boost/variant/variant.hpp>

#include "DOM/FormulaSyntaxTree/Expr.h"

// Records of the seven kinds of condition. Each stores its type as a byte. A type out of range is
// kept as it is; its meaning is up to the reader.
namespace Zorv::DOM {

/// Kinds of value, and date periods.
enum class NullaryConditionalFormatType : std::uint8_t {
  Blanks = 0,
  NoBlanks = 1,
  Errors = 2,
  NoErrors = 3,
  Yesterday = 4,
  Today = 5,
  Tomorrow = 6,
  Last7Days = 7,
  LastWeek = 8,
  ThisWeek = 9,
  NextWeek = 10,
  LastMonth = 11,
  ThisMonth = 12,
  NextMonth = 13,
};

/// Condition without arguments: on the kind of the value, or a date period relative to today.
class NullaryConditionalFormatOperator {
public:
  /// The condition of a type.
  explicit NullaryConditionalFormatOperator(NullaryConditionalFormatType type) noexcept
      : _type(type) {}
  /// The kind of value, or the date period.
  [[nodiscard]] NullaryConditionalFormatType getType() const noexcept { return _type; }

private:
  NullaryConditionalFormatType _type;
};

/// Comparisons with one formula.
enum class UnaryConditionalFormatType : std::uint8_t {
  Equal = 0,
  NotEqual = 1,
  Greater = 2,
  GreaterOrEqual = 3,
  Less = 4,
  LessOrEqual = 5,
  FormulaIsTrue = 6,
};

/// Comparison of the cell with a formula, or a formula that must be true.
class UnaryConditionalFormatOperator {
public:
  /// The formula is written as seen from the top-left cell of the format's ranges.
  UnaryConditionalFormatOperator(UnaryConditionalFormatType type,
                                 FormulaSyntaxTree::Expr argument) noexcept
      : _type(type), _argument(std::move(argument)) {}
  /// How the cell and the formula are compared.
  [[nodiscard]] UnaryConditionalFormatType getType() const noexcept { return _type; }
  /// The formula that the cell is compared with, or that is the condition itself.
  [[nodiscard]] FormulaSyntaxTree::Expr const& getArgument() const noexcept { return _argument; }

private:
  UnaryConditionalFormatType _type;
  FormulaSyntaxTree::Expr _argument;
};

/// Comparisons with two formulas.
enum class BinaryConditionalFormatType : std::uint8_t { Between = 0, NotBetween = 1 };

/// Condition that the cell lies between two formulas, both included, or does not.
class BinaryConditionalFormatOperator {
public:
  /// The formulas are written as seen from the top-left cell of the format's ranges.
  BinaryConditionalFormatOperator(BinaryConditionalFormatType type,
                                  FormulaSyntaxTree::Expr firstArgument,
                                  FormulaSyntaxTree::Expr secondArgument) noexcept
      : _type(type),
        _firstArgument(std::move(firstArgument)),
        _secondArgument(std::move(secondArgument)) {}
  /// Between, or not.
  [[nodiscard]] BinaryConditionalFormatType getType() const noexcept { return _type; }
  /// The lower bound.
  [[nodiscard]] FormulaSyntaxTree::Expr const& getFirstArgument() const noexcept {
    return _firstArgument;
  }
  /// The upper bound.
  [[nodiscard]] FormulaSyntaxTree::Expr const& getSecondArgument() const noexcept {
    return _secondArgument;
  }

private:
  BinaryConditionalFormatType _type;
  FormulaSyntaxTree::Expr _firstArgument;
  FormulaSyntaxTree::Expr _secondArgument;
};

/// Comparisons of texts.
enum class TextConditionalFormatType : std::uint8_t {
  Contains = 0,
  NotContains = 1,
  BeginsWith = 2,
  EndsWith = 3,
};

/// Comparison of the cell's text with a literal or with a formula.
class TextConditionalFormatOperator {
public:
  /// A literal, or a formula that is not null.
  using Argument = boost::variant<std::string, std::unique_ptr<FormulaSyntaxTree::Expr>>;

  /// A formula is written as seen from the top-left cell of the format's ranges.
  TextConditionalFormatOperator(TextConditionalFormatType type, Argument argument) noexcept
      : _type(type), _argument(std::move(argument)) {}
  /// Where the text is looked for.
  [[nodiscard]] TextConditionalFormatType getType() const noexcept { return _type; }
  /// The text that is looked for.
  [[nodiscard]] Argument const& getArgument() const noexcept { return _argument; }

private:
  TextConditionalFormatType _type;
  Argument _argument;
};

/// The end of the ranking.
enum class TopBottomConditionalFormatType : std::uint8_t { Top = 0, Bottom = 1 };

/// Condition that the cell is among the highest or lowest numbers of the ranges, by count or by
/// percentage.
class TopBottomConditionalFormatOperator {
public:
  /// `value` is a number of ranks, or a percentage.
  TopBottomConditionalFormatOperator(TopBottomConditionalFormatType type, std::uint32_t value,
                                     bool usePercent) noexcept
      : _type(type), _value(value), _usePercent(usePercent) {}
  /// The end of the ranking.
  [[nodiscard]] TopBottomConditionalFormatType getType() const noexcept { return _type; }
  /// How many ranks, or how many percent of them.
  [[nodiscard]] std::uint32_t getValue() const noexcept { return _value; }
  /// True if the value is a percentage.
  [[nodiscard]] bool getUsePercent() const noexcept { return _usePercent; }

private:
  TopBottomConditionalFormatType _type;
  std::uint32_t _value;
  bool _usePercent;
};

/// Comparisons with the mean.
enum class AboveAverageConditionalFormatType : std::uint8_t {
  Above = 0,
  EqualOrAbove = 1,
  Below = 2,
  EqualOrBelow = 3,
};

/// Condition that the cell is above or below the mean of the ranges, or, where a number of standard
/// deviations is given, that far from it.
class AboveAverageConditionalFormatOperator {
public:
  /// Without `stdDev` the cell is compared with the mean itself.
  explicit AboveAverageConditionalFormatOperator(
      AboveAverageConditionalFormatType type,
      boost::optional<std::uint32_t> stdDev = boost::none) noexcept
      : _type(type), _stdDev(stdDev) {}
  /// The side of the mean.
  [[nodiscard]] AboveAverageConditionalFormatType getType() const noexcept { return _type; }
  /// The number of standard deviations; none for the mean itself.
  [[nodiscard]] boost::optional<std::uint32_t> const& getStdDev() const noexcept { return _stdDev; }

private:
  AboveAverageConditionalFormatType _type;
  boost::optional<std::uint32_t> _stdDev;
};

/// How often a value occurs.
enum class UniquenessType : std::uint8_t { Duplicate = 0, Unique = 1 };

/// Condition that the cell's value occurs more than once, or exactly once, in the ranges.
struct UniquenessConditionalFormatOperator {
  UniquenessType type = UniquenessType::Duplicate;  ///< more than once, or exactly once
};

/// Condition of a conditional format. The order of the alternatives is part of the contract:
/// `which()` is the kind.
using ConditionalFormatOperator =
    boost::variant<NullaryConditionalFormatOperator, UnaryConditionalFormatOperator,
                   BinaryConditionalFormatOperator, TextConditionalFormatOperator,
                   TopBottomConditionalFormatOperator, AboveAverageConditionalFormatOperator,
                   UniquenessConditionalFormatOperator>;

}  // namespace Zorv::DOM
