#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"

#include <utility>

#include "ConditionalFormatters/Operators/CndFrmt_SameKindComparison.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ContextProvider.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::ConditionalFormatters {

namespace {

// A function object and not a function: the stored wrapper then calls it without a second jump.
template <class SameKindComparison>
struct ComparePresent {
  bool operator()(FormulaValue const& cellValue,
                  boost::optional<FormulaValue> const& argument) const {
    return argument && SameKindComparison()(cellValue, *argument);
  }
};

// Holds the locale by value: the provider's may change or go after the operator was built.
class IsTrue {
public:
  explicit IsTrue(OfficeUtils::LocaleContext locale) noexcept : _locale(std::move(locale)) {}

  bool operator()(FormulaValue const& /*cellValue*/,
                  boost::optional<FormulaValue> const& argument) const {
    return argument ? cast(*argument) : cast(FormulaModel::FormulaBoolean{false});
  }

private:
  // False where the cast is refused. It is asked for without an exception: sheets where every
  // second cell gives an error are common, and throwing costs a hundred casts.
  [[nodiscard]] bool cast(FormulaValue const& value) const {
    namespace Cast = OfficeUtils::FormulaValueCast;
    return Cast::toBoolOpt(value, _locale, Cast::CastMode::Condition, false).value_or(false);
  }

  OfficeUtils::LocaleContext _locale;
};

using Compare = std::function<bool(FormulaValue const&, boost::optional<FormulaValue> const&)>;

// Empty for an unknown kind: calling it then throws.
Compare chooseComparison(DOM::UnaryConditionalFormatType type,
                         OfficeUtils::LocaleContext const& locale) {
  using Type = DOM::UnaryConditionalFormatType;
  switch (type) {
    case Type::Equal:
      return ComparePresent<IsEqual>();
    case Type::NotEqual:
      return ComparePresent<IsNotEqual>();
    case Type::Greater:
      return ComparePresent<IsGreater>();
    case Type::GreaterOrEqual:
      return ComparePresent<IsGreaterOrEqual>();
    case Type::Less:
      return ComparePresent<IsLess>();
    case Type::LessOrEqual:
      return ComparePresent<IsLessOrEqual>();
    case Type::FormulaIsTrue:
      return IsTrue(locale);
  }
  return {};
}

}  // namespace

UnaryOperator::UnaryOperator(DOM::UnaryConditionalFormatOperator const& record,
                             DOM::Table const& table,
                             Formulas::ContextProvider const& contextProvider, CellIndex baseCell)
    : _calculator(table, contextProvider, baseCell),
      _argument(record.getArgument()),
      // Every kind asks for the locale, though one alone keeps it.
      _compare(chooseComparison(record.getType(), contextProvider.getLocaleContext())) {}

bool UnaryOperator::operator()(FormulaValueData const& data) const {
  return judge(data, [&](std::size_t, DOM::FormulaSyntaxTree::Expr const& argument) {
    return _calculator.calculate(argument, data.cellIndex);
  });
}

}  // namespace Zorv::ConditionalFormatters
