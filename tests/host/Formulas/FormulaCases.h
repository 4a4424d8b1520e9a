#pragma once

#include <initializer_list>
#include <string_view>

#include <gtest/gtest.h>

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

}  // namespace Zorv::Formulas
