#include "tool/Input/SheetRange.h"

#include <string>

#include <gtest/gtest.h>

#include "DOM/A1Notation.h"

namespace Zorv::Tool {
namespace {

/// The sheet in brackets and the range; `none` for a text that is no range.
std::string describeRange(std::string_view text) {
  auto const parsed = parseSheetRange(text);
  return parsed ? (parsed->sheet ? "[" + *parsed->sheet + "]" : "") +
                      DOM::A1Notation::toAddress(parsed->range)
                : "none";
}

TEST(SheetRange, MayNameItsSheet) {
  constexpr std::pair<char const*, char const*> cases[] = {
      {"B7", "B7"},
      {"A1:C9", "A1:C9"},
      {"Sheet1!B7", "[Sheet1]B7"},
      {"'Sheet 1'!A:C", "[Sheet 1]A1:C1048576"},
      {"Sheet 1!3:5", "[Sheet 1]A3:XFD5"},
      {"'It''s'!B7", "[It's]B7"},
      {"Hey!!B7", "[Hey!]B7"},
      {"'a!b'!B7", "[a!b]B7"},
  };
  for (auto const& [text, expected] : cases) {
    EXPECT_EQ(describeRange(text), expected) << text;
  }
}

TEST(SheetRange, OfAnythingElseIsNone) {
  for (auto const* text : {"", "!", "!B7", "Sheet1!", "Sheet1", "''!B7", "'Sheet1!B7", "'It's'!B7",
                           "'!B7", "Sheet1!B0"}) {
    EXPECT_EQ(describeRange(text), "none") << text;
  }
}

}  // namespace
}  // namespace Zorv::Tool
