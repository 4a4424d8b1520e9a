#pragma once

#include <string>

#include <boost/optional.hpp>

#include "FormulaModel/FormulaValue.h"
#include "OfficeUtils/LocaleContext.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Writes numbers as text in a form of its own, in place of the general format.
///
/// Threads: format() may be called from several threads at once.
class ZORV_HOST_EXPORT GeneralNumberFormatter {
public:
  GeneralNumberFormatter() = default;
  GeneralNumberFormatter(GeneralNumberFormatter const&) = delete;
  GeneralNumberFormatter& operator=(GeneralNumberFormatter const&) = delete;
  virtual ~GeneralNumberFormatter();

  [[nodiscard]] virtual std::string format(FloatNumber number,
                                           LocaleContext const& locale) const = 0;
};

}  // namespace Zorv::OfficeUtils

/// Casts of values to another kind, by the rules of spreadsheets. Safe to call from several
/// threads.
namespace Zorv::OfficeUtils::FormulaValueCast {

/// A set of casting rules, by its number.
enum class CastMode : unsigned {
  /// Numbers are true when they are not zero, booleans are what they are, an empty value is false,
  /// and a text is the truth value that it names in any case of letters, in English or in the
  /// locale's own words.
  Condition = 585,
};

/// The truth of a value. `strict` refuses texts that name a truth value, too.
/// Throws FormulaException for an error value and for a text that names no truth value.
[[nodiscard]] ZORV_HOST_EXPORT bool toBool(FormulaModel::FormulaValue const& value,
                                           LocaleContext const& locale, CastMode mode, bool strict);

/// What toBool() answers, or nothing where it throws: for callers that meet many such values.
[[nodiscard]] ZORV_HOST_EXPORT boost::optional<bool> toBoolOpt(
    FormulaModel::FormulaValue const& value, LocaleContext const& locale, CastMode mode,
    bool strict);

/// The text of a value: a number in general format with at most 15 significant digits and the
/// locale's decimal separator, or as `formatter` writes it when there is one; TRUE or FALSE; the
/// text of an error; the empty text for an empty value.
[[nodiscard]] ZORV_HOST_EXPORT std::string toString(FormulaModel::FormulaValue const& value,
                                                    LocaleContext const& locale,
                                                    GeneralNumberFormatter const* formatter);

}  // namespace Zorv::OfficeUtils::FormulaValueCast
