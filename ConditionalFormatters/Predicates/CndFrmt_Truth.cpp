#include "ConditionalFormatters/Predicates/CndFrmt_Truth.h"

#include "FormulaModel/FormulaException.h"
#include "OfficeUtils/FormulaValueCast.h"

namespace Zorv::ConditionalFormatters {

namespace {

namespace Cast = OfficeUtils::FormulaValueCast;

constexpr auto castMode = Cast::CastMode::Condition;

}  // namespace

bool isTrue(boost::optional<FormulaValue> const& argument,
            OfficeUtils::LocaleContext const& locale) {
  try {
    FormulaValue const value = argument ? *argument : FormulaModel::FormulaBoolean{false};
    return Cast::toBool(value, locale, castMode, false);
  } catch (FormulaModel::FormulaException const&) {
    return false;
  }
}

bool isTrueWithoutThrowing(boost::optional<FormulaValue> const& argument,
                           OfficeUtils::LocaleContext const& locale) {
  return argument && Cast::toBoolOpt(*argument, locale, castMode, false).value_or(false);
}

}  // namespace Zorv::ConditionalFormatters
