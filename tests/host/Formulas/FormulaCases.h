#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Formulas/EvaluationLimitError.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

/// A formula and its result as describe() writes it.
struct FormulaCase {
  std::string_view formula;
  std::string_view result;
};

/// Checks formulas over one document, all of them whatever fails; evaluated at once, and with the
/// calls in them evaluated beforehand.
inline void expectResults(FormulaDocument& document,
                          std::initializer_list<FormulaCase> const& cases) {
  for (FormulaCase const& test : cases) {
    EXPECT_EQ(document.calc(test.formula), test.result) << test.formula;
    EXPECT_EQ(document.calcFolded(test.formula), test.result) << test.formula << ", folded";
  }
}

/// Checks that the evaluation of a formula meets a limit of the engine, which a part of the message
/// names.
inline void expectLimit(FormulaDocument& document, std::string_view formula,
                        std::string_view partOfMessage) {
  try {
    ADD_FAILURE() << formula << " is " << document.calc(formula);
  } catch (EvaluationLimitError const& error) {
    EXPECT_THAT(error.what(), ::testing::HasSubstr(std::string(partOfMessage))) << formula;
  }
}

}  // namespace Zorv::Formulas
