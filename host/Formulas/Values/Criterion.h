#pragma once

#include <string_view>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/Limits/StepMeter.h"
#include "Formulas/Values/Value.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// A criterion of COUNTIF and similar functions (ISO/IEC 29500-1, 18.17.7.62): a value to equal, or
/// a text such as `>5`, `<>done` or `a*`.
///
/// Texts compare without regard to letter case; `=` and `<>` know wildcards. Borrows the text of
/// its value; allocates nothing.
class Criterion {
public:
  using Operator = DOM::FormulaSyntaxTree::Operator;

  /// `value` is a single value of any kind, errors too.
  Criterion(Value const& value, OfficeUtils::LocaleContext const& locale);

  /// True for a single value that fulfils it. Counts the steps of matching a pattern and of reading
  /// a number from a text.
  [[nodiscard]] bool matches(Value const& value, StepMeter& steps) const;

  /// True where positions without a cell fulfil it; the same as matches() for an empty value.
  [[nodiscard]] bool matchesEmpty() const noexcept { return _matchesEmpty; }

  /// The comparison of a value with the operand, which is a number, a text, a truth value or an
  /// error.
  [[nodiscard]] Operator op() const noexcept { return _op; }
  [[nodiscard]] Value const& operand() const noexcept { return _operand; }
  /// True where texts are matched with a pattern.
  [[nodiscard]] bool isPattern() const noexcept {
    return _hasWildcards && (_op == Operator::Equal || _op == Operator::NotEqual);
  }
  /// True for `=` and `<>` without an operand, which match empty cells and all others.
  [[nodiscard]] bool asksForEmptyCells() const noexcept {
    return _hasOperator && _operand.isText() && _operand.asText().empty();
  }
  /// True where exactly the values equal to the operand fulfil it. A text that reads as a number is
  /// equal to the number.
  [[nodiscard]] bool isEquality() const noexcept {
    return _op == Operator::Equal && !_hasWildcards && !_matchesEmpty;
  }

private:
  void readText(std::string_view text);
  void readOperand(std::string_view text);
  [[nodiscard]] bool decideEmpty() const noexcept;
  [[nodiscard]] bool equals(Value const& value, StepMeter& steps) const;
  [[nodiscard]] bool equalsNumber(Value const& value, StepMeter& steps) const;
  [[nodiscard]] bool equalsText(std::string_view text, StepMeter& steps) const;
  [[nodiscard]] bool isOrdered(Value const& value) const noexcept;

  OfficeUtils::LocaleContext const* _locale;
  Operator _op = Operator::Equal;
  Value _operand;
  bool _hasOperator = false;  ///< it was written, as in `=5`
  bool _hasWildcards = false;
  bool _matchesEmpty = false;
};

}  // namespace Zorv::Formulas
