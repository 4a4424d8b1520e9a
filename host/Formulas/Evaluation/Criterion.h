#pragma once

#include <string_view>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/Evaluation/Value.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// A condition on cells, as COUNTIF and its kin take it (ISO/IEC 29500-1, 18.17.7.62): a value to
/// equal, or a text such as `>5`, `<>done` or `a*`.
///
/// Texts compare without regard to letter case, and with wildcards where they are to be equal.
/// Borrows the text of the value it is made of; allocates nothing.
class Criterion {
public:
  using Operator = DOM::FormulaSyntaxTree::Operator;

  /// `value` is a single value of any kind, errors too.
  Criterion(Value const& value, OfficeUtils::LocaleContext const& locale);

  /// Whether a single value fulfils it.
  [[nodiscard]] bool matches(Value const& value) const;

  /// Whether positions without a cell fulfil it; matches() says the same of an empty value.
  [[nodiscard]] bool matchesEmpty() const noexcept { return _matchesEmpty; }

  /// What it says: how a value must stand to the operand, which is a number, a text, a truth value
  /// or an error.
  [[nodiscard]] Operator op() const noexcept { return _op; }
  [[nodiscard]] Value const& operand() const noexcept { return _operand; }
  /// Whether texts are compared with a pattern.
  [[nodiscard]] bool isPattern() const noexcept {
    return _hasWildcards && (_op == Operator::Equal || _op == Operator::NotEqual);
  }
  /// Whether it is `=` or `<>` alone, which tell empty cells from all others.
  [[nodiscard]] bool asksForEmptyCells() const noexcept {
    return _hasOperator && _operand.isText() && _operand.asText().empty();
  }
  /// Whether it is fulfilled by the values that are equal to the operand and by nothing else; texts
  /// that read as a number are equal to it.
  [[nodiscard]] bool isEquality() const noexcept {
    return _op == Operator::Equal && !_hasWildcards && !_matchesEmpty;
  }

private:
  void readText(std::string_view text);
  void readOperand(std::string_view text);
  [[nodiscard]] bool decideEmpty() const noexcept;
  [[nodiscard]] bool equals(Value const& value) const;
  [[nodiscard]] bool equalsNumber(Value const& value) const;
  [[nodiscard]] bool equalsText(std::string_view text) const noexcept;
  [[nodiscard]] bool isOrdered(Value const& value) const noexcept;

  OfficeUtils::LocaleContext const* _locale;
  Operator _op = Operator::Equal;
  Value _operand;
  bool _hasOperator = false;  ///< it was written, as in `=5`
  bool _hasWildcards = false;
  bool _matchesEmpty = false;
};

}  // namespace Zorv::Formulas
