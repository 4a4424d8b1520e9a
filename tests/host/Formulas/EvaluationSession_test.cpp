#include "Formulas/EvaluationSession.h"

#include <chrono>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/LookupCache.h"
#include "Formulas/ParseExpr.h"
#include "OfficeUtils/Moment.h"
#include "OfficeUtils/PinnedMoment.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

using namespace std::chrono_literals;
using OfficeUtils::Clock;
using std::chrono::sys_days;

constexpr Clock::TimePoint inForce = sys_days(2024y / 2 / 29) + 6h;
constexpr Clock::TimePoint fixedMoment = sys_days(2026y / 11 / 21) + 12h;

std::string calcIn(EvaluationSession& session, std::string_view formula) {
  FormulaDocument document;
  RuntimeDependenciesResolver resolver;
  Context const context(&document.sheet(), RowIndex(0), ColumnIndex(0), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  return describe(calcShiftedExpr(parseExpr(formula), 0, 0, context, document, resolver, session));
}

TEST(EvaluationSession, FormulasSeeTheMomentOfTheSession) {
  OfficeUtils::ScopedClock const clock(inForce);
  LookupCache cache;
  OfficeUtils::Moment moment(fixedMoment);
  EvaluationSession session(cache, moment);
  EXPECT_EQ(calcIn(session, "TODAY()"), "46347");
  EXPECT_EQ(calcIn(session, "NOW()"), "46347.5");
  EXPECT_EQ(calcIn(session, "DATEVALUE(\"21 Nov\")"), "46347") << "of this year";
}

TEST(EvaluationSession, WithoutAMomentFormulasReadTheClock) {
  OfficeUtils::ScopedClock const clock(inForce);
  LookupCache cache;
  EvaluationSession session(cache);
  EXPECT_EQ(calcIn(session, "NOW()"), "45351.25");
  EXPECT_EQ(calcIn(session, "DATEVALUE(\"21 Nov\")"), "45617");
}

TEST(EvaluationSession, TheMomentOfTheSessionComesBeforeAPinnedOne) {
  OfficeUtils::PinnedMoment const pinned(inForce);
  LookupCache cache;
  OfficeUtils::Moment moment(fixedMoment);
  EvaluationSession session(cache, moment);
  EXPECT_EQ(calcIn(session, "NOW()"), "46347.5");
}

}  // namespace
}  // namespace Zorv::Formulas
