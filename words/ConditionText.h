#pragma once

#include <string>
#include <string_view>

#include "DOM/ConditionalFormatOperator.h"
#include "workbook/Rule.h"

/// Rules in words.
namespace Zorv::Words {

/// Name of a kind of rule by its type in the file: "colour scale" for `colorScale`; the type itself
/// if it has no other name.
[[nodiscard]] std::string describeType(std::string_view type);

// The words of a condition between the value and its operands: `>=`, `not between`, `begins with`.
[[nodiscard]] std::string_view describeComparison(DOM::UnaryConditionalFormatType type) noexcept;
[[nodiscard]] std::string_view describeInterval(DOM::BinaryConditionalFormatType type) noexcept;
[[nodiscard]] std::string_view describeMatch(DOM::TextConditionalFormatType type) noexcept;

/// A rule's condition, such as `cell > 5000`, `formula $D4<TODAY()` or `top 10 %`; the thresholds
/// of a visual rule; the name of its kind if the rule is not resolved.
[[nodiscard]] std::string describeCondition(Workbook::Rule const& rule);

/// All of a rule's ranges, for programs; as they are written if they cannot be read.
[[nodiscard]] std::string listRanges(Workbook::Rule const& rule);

/// A rule's ranges; the first and the number of the others if the list is long. Ranges that cannot
/// be read are shortened.
[[nodiscard]] std::string describeRanges(Workbook::Rule const& rule);

}  // namespace Zorv::Words
