// Number formats, and texts that read as numbers, dates and times.
#include <cmath>
#include <string>

#include "DOM/Table.h"
#include "FormulaModel/FormulaException.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/OneTableDocument.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/NumberFormat.h"
#include "fuzz/Fuzzing.h"

namespace {

using namespace Zorv;

char const* const localeNames[] = {"en-US", "de-DE", "fr-CH", "tr-TR", "ja-JP", "ar-EG"};

/// Calculates `formula`, which may refer to a text in A1 and a number in B1.
std::string calculate(char const* formula, DOM::Table const& table,
                      Formulas::OneTableDocument const& document) {
  Formulas::RuntimeDependenciesResolver resolver;
  Formulas::Context const context(document.getTableContext(table), RowIndex(0), ColumnIndex(2),
                                  boost::none, DOM::RowID(0), DOM::ColumnID(0));
  try {
    return Fuzzing::describe(
        Formulas::calcExpr(Formulas::parseExpr(formula), context, document, resolver));
  } catch (FormulaModel::FormulaException const&) {
    return "not evaluated";
  } catch (Formulas::EvaluationLimitError const&) {
    return "too much";
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Fuzzing::FuzzInput input(data, size);
  auto const system = static_cast<OfficeUtils::DateSystem>(input.takeBelow(2));
  OfficeUtils::LocaleContext const locale(localeNames[input.takeBelow(std::size(localeNames))],
                                          system);
  double const number = input.takeNumber();
  std::string const text = input.takeRest();

  if (auto const format = OfficeUtils::NumberFormat::compile(text)) {
    static_cast<void>(format->formatNumber(number, locale));
    static_cast<void>(format->formatText(text));
  }

  OfficeUtils::ScopedClock const clock(Fuzzing::getFixedMoment());
  DOM::Table table;
  FormulaValue const value = FormulaModel::FormulaNumber{FloatNumber(number)};
  table.setValue(0, 0, FormulaModel::FormulaString{text});
  table.setValue(0, 1, value);
  Formulas::OneTableDocument const document(table, {.locale = locale});
  for (char const* formula : {"A1+0", "VALUE(A1)", "DATEVALUE(A1)", "TIMEVALUE(A1)", "TEXT(B1,A1)",
                              "TEXT(A1,A1)", "NUMBERVALUE(A1,\",\",\".\")", "FIXED(B1,2)",
                              "DOLLAR(B1)", "ROMAN(B1)", "B1&\"\"", "COUNTIF(B1,A1)"}) {
    static_cast<void>(calculate(formula, table, document));
  }
  auto const written = OfficeUtils::FormulaValueCast::toString(value, locale, nullptr);
  Fuzzing::require(!written.empty(), "every number has a text");
  return 0;
}
