#pragma once

#include <limits>
#include <string>
#include <variant>

#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ContextProvider.h"
#include "analysis/Check/CheckedSheet.h"

namespace Zorv::Analysis {

/// Numbers between two bounds.
struct NumberInterval {
  double lower = -std::numeric_limits<double>::infinity();
  double upper = std::numeric_limits<double>::infinity();
  bool lowerIsInside = true;
  bool upperIsInside = true;
};

/// Values whose text contains a text, begins or ends with it.
struct TextPattern {
  DOM::TextConditionalFormatType type = DOM::TextConditionalFormatType::Contains;
  std::string text;
};

/// The values for which a condition holds, if they can be told from the condition alone.
using ValueDomain = std::variant<std::monostate, NumberInterval, TextPattern>;

/// The domain of a condition that compares the cell with constants, by the library's semantics;
/// std::monostate for any other.
[[nodiscard]] ValueDomain findDomain(CheckedRule const& rule, CheckedSheet const& sheet,
                                     Formulas::ContextProvider const& provider);

/// True if every value of `inner` is in `outer`; false, too, if it cannot be told.
[[nodiscard]] bool isInside(ValueDomain const& inner, ValueDomain const& outer);

}  // namespace Zorv::Analysis
