#include "tool/Text/Delimited.h"

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

std::string fieldOf(std::string_view text, Separator separator) {
  std::string line;
  appendField(line, text, separator);
  return line;
}

TEST(Delimited, FieldsAfterCommasAreQuotedWhereTheyMustBe) {
  EXPECT_EQ(fieldOf("plain text", Separator::Comma), "plain text");
  EXPECT_EQ(fieldOf("a,b", Separator::Comma), "\"a,b\"");
  EXPECT_EQ(fieldOf("say \"no\"", Separator::Comma), "\"say \"\"no\"\"\"");
  EXPECT_EQ(fieldOf("", Separator::Comma), "");
}

TEST(Delimited, FieldsAfterTabsAreNeverQuoted) {
  EXPECT_EQ(fieldOf("a,\"b\"", Separator::Tab), "a,\"b\"");
  EXPECT_EQ(fieldOf("a\tb", Separator::Tab), "a b");
}

TEST(Delimited, FieldsArePrintable) {
  EXPECT_EQ(fieldOf("a\n\x1B[31mb,", Separator::Comma), "\"a  [31mb,\"");
}

}  // namespace
}  // namespace Zorv::Tool
