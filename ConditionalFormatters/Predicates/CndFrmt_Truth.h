#pragma once

#include <boost/optional.hpp>

#include "FormulaModel/FormulaValue.h"
#include "OfficeUtils/LocaleContext.h"

// The truth of a formula. A formula without a value counts as false, and so does one whose value
// has no truth.
namespace Zorv::ConditionalFormatters {

/// Casts the value by FormulaValueCast::toBool(), which refuses by a FormulaException. Passes on
/// every other exception.
[[nodiscard]] bool isTrue(boost::optional<FormulaValue> const& argument,
                          OfficeUtils::LocaleContext const& locale);

/// The same answer without an exception for a refused cast. Sheets in which every second cell gives
/// an error are common, and throwing costs as much as a hundred casts.
[[nodiscard]] bool isTrueWithoutThrowing(boost::optional<FormulaValue> const& argument,
                                         OfficeUtils::LocaleContext const& locale);

}  // namespace Zorv::ConditionalFormatters
