#include "workbook/Xml/XmlText.h"

#include <gtest/gtest.h>

namespace Zorv::Workbook {
namespace {

TEST(XmlText, EscapedCharactersAreReplaced) {
  EXPECT_EQ(unescapeXstring("a_x000A_b"), "a\nb");
  EXPECT_EQ(unescapeXstring("_x20ac_"), "\xE2\x82\xAC");
  EXPECT_EQ(unescapeXstring("_xD83D__xDE00_"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(unescapeXstring("_x005F_x000A_"), "_x000A_");
}

TEST(XmlText, WhatIsNoEscapeStays) {
  for (char const* text : {"", "_", "a_b", "_x12_", "_x12G4_", "_x1234", "x000A_", "_X000A_"}) {
    EXPECT_EQ(unescapeXstring(text), text);
  }
}

TEST(XmlText, HalvesOfAPairAreReplacedByTheReplacementCharacter) {
  EXPECT_EQ(unescapeXstring("_xD83D_!"), "\xEF\xBF\xBD!");
  EXPECT_EQ(unescapeXstring("_xDE00_"), "\xEF\xBF\xBD");
}

TEST(XmlText, TrimsTheSpacesOfXmlAlone) {
  EXPECT_EQ(trimXmlSpaces(" \t\r\na b\n"), "a b");
  EXPECT_EQ(trimXmlSpaces("\xC2\xA0x"), "\xC2\xA0x");
}

TEST(XmlText, LineEndsAndSpacesOfAttributesAreNormalised) {
  std::string text = "a\r\nb\rc\td";
  char* end = text.data() + text.size();
  EXPECT_EQ(decodeXmlText(text.data(), end, false), nullptr);
  EXPECT_EQ(std::string(text.data(), end), "a\nb\nc\td");
  text = "a\r\nb\rc\td";
  end = text.data() + text.size();
  EXPECT_EQ(decodeXmlText(text.data(), end, true), nullptr);
  EXPECT_EQ(std::string(text.data(), end), "a b c d");
}

}  // namespace
}  // namespace Zorv::Workbook
