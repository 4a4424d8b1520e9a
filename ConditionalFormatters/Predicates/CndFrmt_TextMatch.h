#pragma once

#include <string>

#include "DOM/ConditionalFormatOperator.h"

// Tests of a cell's text against a pattern, byte by byte: letter case matters, nothing is trimmed.
// Every text contains, begins and ends with the empty pattern.
namespace Zorv::ConditionalFormatters {

using TextTest = bool (*)(std::string const& cellText, std::string const& pattern);

/// The test of a kind of record; never null, and false for every text where the kind is unknown.
[[nodiscard]] TextTest findTextTest(DOM::TextConditionalFormatType type) noexcept;

}  // namespace Zorv::ConditionalFormatters
