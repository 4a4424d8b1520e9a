// Number formats, and texts that read as numbers, dates and times.
#include <algorithm>
#include <list>
#include <string>
#include <vector>

#include "DOM/Table.h"
#include "FormulaModel/FormulaException.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/OneTableDocument.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/NumberFormat.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/WorkBudget.h"
#include "fuzz/Fuzzing.h"

namespace {

using namespace Zorv;
using DOM::FormulaSyntaxTree::Expr;
using Formulas::OneTableDocument;
using OfficeUtils::DateSystem;
using OfficeUtils::LocaleContext;

constexpr unsigned systemCount = 2;
constexpr unsigned localeCount = 6;
constexpr char const* localeNames[localeCount] = {"en-US", "de-DE", "fr-CH",
                                                  "tr-TR", "ja-JP", "ar-EG"};

/// With a text in A1 and a number in B1.
constexpr char const* formulas[] = {
    "A1+0",        "VALUE(A1)",   "DATEVALUE(A1)", "TIMEVALUE(A1)",
    "TEXT(B1,A1)", "TEXT(A1,A1)", "FIXED(B1,2)",   "NUMBERVALUE(A1,\",\",\".\")",
    "DOLLAR(B1)",  "ROMAN(B1)",   "B1&\"\"",       "COUNTIF(B1,A1)"};

/// One table, read in each locale and date system. Made once: ICU takes longer for a locale than
/// all formulas do for a text.
class Bench {
public:
  Bench() {
    for (unsigned choice = 0; choice < systemCount * localeCount; ++choice) {
      LocaleContext const locale(localeNames[choice / systemCount],
                                 static_cast<DateSystem>(choice % systemCount));
      _documents.emplace_back(_table, Formulas::OneTableSettings{.locale = locale});
    }
    for (char const* const formula : formulas) {
      _formulas.push_back(Formulas::parseExpr(formula));
    }
  }

  OneTableDocument const& chooseDocument(Fuzzing::FuzzInput& input) const {
    unsigned const system = input.takeBelow(systemCount);
    auto const choice = systemCount * input.takeBelow(localeCount) + system;
    return *std::next(_documents.begin(), static_cast<std::ptrdiff_t>(choice));
  }

  void calculateAll(OneTableDocument const& document, std::string const& text,
                    FormulaValue const& number) {
    _table.setValue(0, 0, FormulaModel::FormulaString{text});
    _table.setValue(0, 1, number);
    WorkBudget budget(Fuzzing::formulaLimits);
    Formulas::EvaluationSession session;
    session.setBudget(&budget);
    Formulas::Context const context(document.getTableContext(_table), RowIndex(0), ColumnIndex(2),
                                    boost::none, DOM::RowID(0), DOM::ColumnID(0));
    for (Expr const& formula : _formulas) {
      Formulas::RuntimeDependenciesResolver resolver;
      try {
        static_cast<void>(
            Formulas::calcShiftedExpr(formula, 0, 0, context, document, resolver, session));
      } catch (FormulaModel::FormulaException const&) {
      } catch (Formulas::EvaluationLimitError const&) {
      }
    }
  }

private:
  DOM::Table _table;
  std::list<OneTableDocument> _documents;
  std::vector<Expr> _formulas;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static Bench bench;
  Fuzzing::FuzzInput input(data, size);
  OneTableDocument const& document = bench.chooseDocument(input);
  LocaleContext const& locale = document.getLocaleContext();
  double const number = input.takeNumber();
  std::string const text = input.takeRest();

  if (auto const format = OfficeUtils::NumberFormat::compile(text)) {
    static_cast<void>(format->formatNumber(number, locale));
    static_cast<void>(format->formatText(text));
  }

  OfficeUtils::PinnedMoment const moment(Fuzzing::getFixedMoment());
  FormulaValue const value = FormulaModel::FormulaNumber{FloatNumber(number)};
  try {
    bench.calculateAll(document, text, value);
  } catch (WorkEnded const&) {
  }
  auto const written = OfficeUtils::FormulaValueCast::toString(value, locale, nullptr);
  Fuzzing::require(!written.empty(), "every number has a text");
  return 0;
}
