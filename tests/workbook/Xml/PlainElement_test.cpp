#include "workbook/Xml/PlainElement.h"

#include <string>

#include <gtest/gtest.h>

namespace Zorv::Workbook {
namespace {

/// The attributes and the text of a `c` with a `v`; "other" where it is not plainly written.
std::string describePlain(std::string const& text) {
  std::vector<XmlAttribute> attributes;
  auto const found = findPlainElement(text, "c", "v", attributes);
  if (!found) {
    return "other";
  }
  std::string result;
  for (XmlAttribute const& attribute : attributes) {
    result += std::string(attribute.name) + '=' + std::string(attribute.value) + ' ';
  }
  return result + std::string(found->text) + '|' + text.substr(found->size);
}

TEST(PlainElement, IsFoundWithItsAttributesAndText) {
  EXPECT_EQ(describePlain("<c r=\"A1\" s=\"5\" t=\"s\"><v>12</v></c><c"), "r=A1 s=5 t=s 12|<c");
  EXPECT_EQ(describePlain("<c><v></v></c>"), "|");
  EXPECT_EQ(describePlain("<c r=\"\"><v> a > b\n</v></c> "), "r=  a > b\n| ");
}

TEST(PlainElement, IsWrittenExactlyOneWay) {
  for (char const* const text : {"",
                                 "<",
                                 "<c",
                                 "<cv r=\"1\"><v>1</v></cv>",
                                 " <c><v>1</v></c>",
                                 "<p:c><v>1</v></p:c>",
                                 "<c r='A1'><v>1</v></c>",
                                 "<c  r=\"A1\"><v>1</v></c>",
                                 "<c\nr=\"A1\"><v>1</v></c>",
                                 "<c r =\"A1\"><v>1</v></c>",
                                 "<c r=\"A1\" ><v>1</v></c>",
                                 "<c r=\"A1\"s=\"1\"><v>1</v></c>",
                                 "<c r=\"A&#49;\"><v>1</v></c>",
                                 "<c r=\"A<\"><v>1</v></c>",
                                 "<c r=\"A\t1\"><v>1</v></c>",
                                 "<c xmlns=\"urn:x\"><v>1</v></c>",
                                 "<c a:b=\"1\"><v>1</v></c>",
                                 "<c =\"1\"><v>1</v></c>",
                                 "<c r><v>1</v></c>",
                                 "<c/>",
                                 "<c></c>",
                                 "<c> <v>1</v></c>",
                                 "<c><v>1</v> </c>",
                                 "<c><v a=\"1\">1</v></c>",
                                 "<c><v/></c>",
                                 "<c><w>1</w></c>",
                                 "<c><vv>1</vv></c>",
                                 "<c><v>1&amp;</v></c>",
                                 "<c><v>1\r\n</v></c>",
                                 "<c><v><![CDATA[1]]></v></c>",
                                 "<c><v>1</v ></c>",
                                 "<c><v>1</v></c >",
                                 "<c><f>1</f><v>1</v></c>"}) {
    EXPECT_EQ(describePlain(text), "other") << text;
  }
}

TEST(PlainElement, IsFoundOnlyAsAWhole) {
  std::string const whole = "<c r=\"A1\" t=\"s\"><v>12</v></c>";
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(describePlain(whole.substr(0, size)), "other") << size;
  }
  EXPECT_EQ(describePlain(whole), "r=A1 t=s 12|");
}

}  // namespace
}  // namespace Zorv::Workbook
