#include "records/JsonText.h"

#include <string>

#include <gtest/gtest.h>

namespace Zorv::Records {
namespace {

std::string quoted(std::string const& text) {
  std::string json;
  appendJsonText(json, text);
  return json;
}

TEST(JsonText, TextsAreQuotedAndEscaped) {
  EXPECT_EQ(quoted("plain"), "\"plain\"");
  EXPECT_EQ(quoted("a\"b\\c"), R"("a\"b\\c")");
  EXPECT_EQ(quoted("a\nb\x1B"), R"("a\nb\u001b")");
  EXPECT_EQ(quoted("\xC2\x9B"
                   "2J"),
            R"("\u009b2J")");
  EXPECT_EQ(quoted("\xE2\x80\xAE"), R"("\u202e")");
  EXPECT_EQ(quoted("\xFF"), "\"\xEF\xBF\xBD\"");
  EXPECT_EQ(quoted("\xC3\xA4"), "\"\xC3\xA4\"");
}

TEST(JsonText, ValuesKeepTheirKind) {
  auto const json = [](FormulaValue const& value) {
    std::string text;
    appendJsonValue(text, value);
    return text;
  };
  EXPECT_EQ(json(FormulaValue()), "null");
  EXPECT_EQ(json(FormulaModel::FormulaNumber{FloatNumber(167.9)}), "167.9");
  EXPECT_EQ(json(FormulaModel::FormulaString{"a\"b"}), R"("a\"b")");
  EXPECT_EQ(json(FormulaModel::FormulaBoolean{true}), "true");
  EXPECT_EQ(json(FormulaModel::FormulaError{FormulaModel::FormulaErrorCode::Name}),
            R"({"error":"#NAME?"})");
}

}  // namespace
}  // namespace Zorv::Records
