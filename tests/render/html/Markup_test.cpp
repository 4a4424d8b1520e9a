#include "render/Html/Markup.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

struct MarkupRow {
  char const* name;
  std::string_view text;
  std::string_view expected;
};

std::string nameOfRow(testing::TestParamInfo<MarkupRow> const& row) { return row.param.name; }

class EscapedText : public testing::TestWithParam<MarkupRow> {};

TEST_P(EscapedText, StaysText) {
  std::string out;
  appendText(out, GetParam().text);
  EXPECT_EQ(out, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Markup, EscapedText,
    testing::Values(MarkupRow{"Plain", "a b\nc\td", "a b\nc\td"},
                    MarkupRow{"Script", "</td><script>alert(1)</script>",
                              "&lt;/td&gt;&lt;script&gt;alert(1)&lt;/script&gt;"},
                    MarkupRow{"QuotedAttribute", "\" onload='x", "&quot; onload=&#39;x"},
                    MarkupRow{"Entity", "&lt;&#60;", "&amp;lt;&amp;#60;"},
                    MarkupRow{"Comment", "--><!--", "--&gt;&lt;!--"},
                    MarkupRow{"ControlCharacters",
                              std::string_view("a\0b\x1B\r\x7F"
                                               "c",
                                               7),
                              "a b   c"},
                    MarkupRow{"BeyondAscii", "\xC3\xA4\xE2\x82\xAC", "\xC3\xA4\xE2\x82\xAC"}),
    nameOfRow);

class EscapedJson : public testing::TestWithParam<MarkupRow> {};

TEST_P(EscapedJson, StaysOneString) {
  std::string out;
  appendJson(out, GetParam().text);
  EXPECT_EQ(out, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Markup, EscapedJson,
                         testing::Values(MarkupRow{"Plain", "a b", "\"a b\""},
                                         MarkupRow{"EndOfScript", "</script><!--",
                                                   "\"\\u003c/script\\u003e\\u003c!--\""},
                                         MarkupRow{"QuotesAndBackslashes", "\"\\", "\"\\\"\\\\\""},
                                         MarkupRow{"LineEnd", "a\nb\rc", "\"a\\nb c\""},
                                         MarkupRow{"Ampersand", "&amp;", "\"\\u0026amp;\""}),
                         nameOfRow);

class SafeAddress : public testing::TestWithParam<MarkupRow> {};

TEST_P(SafeAddress, HasAKnownScheme) {
  EXPECT_EQ(findSafeAddress(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Markup, SafeAddress,
    testing::Values(MarkupRow{"Https", "https://example.com/?a=1&b=2",
                              "https://example.com/?a=1&b=2"},
                    MarkupRow{"UpperCase", "HTTP://EXAMPLE.COM", "HTTP://EXAMPLE.COM"},
                    MarkupRow{"Mail", "mailto:a@example.com", "mailto:a@example.com"},
                    MarkupRow{"Script", "javascript:alert(1)", ""},
                    MarkupRow{"ScriptAfterSpace", " javascript:alert(1)", ""},
                    MarkupRow{"ScriptWithTab", "java\tscript:alert(1)", ""},
                    MarkupRow{"Data", "data:text/html,<script>", ""},
                    MarkupRow{"File", "file:///etc/passwd", ""},
                    MarkupRow{"NoScheme", "example.com", ""},
                    MarkupRow{"SchemeAlone", "https://", ""},
                    MarkupRow{"LineEnd", "https://example.com/\nx", ""}),
    nameOfRow);

TEST(Markup, AddressesThatAreTooLongAreLeftOut) {
  EXPECT_EQ(findSafeAddress("https://" + std::string(5'000, 'a')), "");
}

TEST(Markup, NumbersAreShortAndBounded) {
  auto const write = [](double number) {
    std::string out;
    appendNumber(out, number);
    return out;
  };
  EXPECT_EQ(write(0), "0");
  EXPECT_EQ(write(-0.001), "0");
  EXPECT_EQ(write(64), "64");
  EXPECT_EQ(write(12.3456), "12.35");
  EXPECT_EQ(write(1e300), "10000000");
  EXPECT_EQ(write(-1e300), "-10000000");
  EXPECT_EQ(write(std::numeric_limits<double>::quiet_NaN()), "0");
}

TEST(Markup, LengthsHaveAUnitUnlessTheyAreZero) {
  EXPECT_EQ(toPixels(12.5), "12.5px");
  EXPECT_EQ(toPixels(0), "0");
}

TEST(Markup, ColoursShowTheirOpacity) {
  EXPECT_EQ(toCss({255, 199, 206}), "#ffc7ce");
  EXPECT_EQ(toCss({1, 2, 3, 128}), "#01020380");
}

}  // namespace
}  // namespace Zorv::Render
