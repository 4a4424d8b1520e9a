#pragma once

#include <string>

#include <boost/optional.hpp>

#include "FormulaModel/FormulaValue.h"
#include "OfficeUtils/LocaleContext.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Formatter of numbers that replaces the general format.
///
/// Threads: format() may be called concurrently.
class ZORV_HOST_EXPORT GeneralNumberFormatter {
public:
  GeneralNumberFormatter() = default;
  GeneralNumberFormatter(GeneralNumberFormatter const&) = delete;
  GeneralNumberFormatter& operator=(GeneralNumberFormatter const&) = delete;
  virtual ~GeneralNumberFormatter();

  /// The text of a number.
  [[nodiscard]] virtual std::string format(FloatNumber number,
                                           LocaleContext const& locale) const = 0;
};

}  // namespace Zorv::OfficeUtils

/// Casts of values to another kind, by the rules of spreadsheets. Threads: may be called
/// concurrently.
namespace Zorv::OfficeUtils::FormulaValueCast {

/// Set of casting rules; each has a number.
enum class CastMode : unsigned {
  /// A number is true unless it is zero. A boolean keeps its value. An empty value is false. A text
  /// must name a truth value in any letter case, in English or in the locale's own words.
  Condition = 585,
};

/// The truth value of a value. `strict` also refuses texts that name a truth value.
/// Throws FormulaException for an error value and for a text that names no truth value.
[[nodiscard]] ZORV_HOST_EXPORT bool toBool(FormulaModel::FormulaValue const& value,
                                           LocaleContext const& locale, CastMode mode, bool strict);

/// The result of toBool(), or nothing where it throws, for callers that expect many such values.
[[nodiscard]] ZORV_HOST_EXPORT boost::optional<bool> toBoolOpt(
    FormulaModel::FormulaValue const& value, LocaleContext const& locale, CastMode mode,
    bool strict);

/// The text of a value: a number in general format with at most 15 significant digits and the
/// locale's decimal separator; TRUE or FALSE; the text of an error; the empty text for an empty
/// value. A `formatter` that is not null formats numbers instead.
[[nodiscard]] ZORV_HOST_EXPORT std::string toString(FormulaModel::FormulaValue const& value,
                                                    LocaleContext const& locale,
                                                    GeneralNumberFormatter const* formatter);

}  // namespace Zorv::OfficeUtils::FormulaValueCast
