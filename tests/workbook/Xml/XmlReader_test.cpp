#include "workbook/Xml/XmlReader.h"

#include <algorithm>
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Package/PartError.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {
namespace {

/// Hands out a text in pieces of a few bytes, so that every token is cut somewhere.
class PieceSource final : public ByteSource {
public:
  PieceSource(std::string text, std::size_t piece) : _text(std::move(text)), _piece(piece) {}

  std::size_t read(char* bytes, std::size_t size) override {
    std::size_t const count = std::min({size, _piece, _text.size() - _at});
    std::memcpy(bytes, _text.data() + _at, count);
    _at += count;
    return count;
  }
  [[nodiscard]] std::string const& getName() const noexcept override { return _name; }

private:
  std::string _text;
  std::size_t _piece;
  std::size_t _at = 0;
  std::string _name = "part.xml";
};

/// All events of a document in short notation.
std::string describe(std::string const& text, std::size_t piece = 7, Limits const& limits = {}) {
  XmlReader reader(std::make_unique<PieceSource>(text, piece), limits);
  std::string events;
  for (;;) {
    switch (reader.next()) {
      case XmlReader::Event::Start:
        events += "<" + std::string(getPrefix(reader.getNamespace()));
        events += reader.getName();
        for (XmlAttribute const& attribute : reader.getAttributes()) {
          events += " " + std::string(getPrefix(attribute.ns));
          events += std::string(attribute.name) + "='" + std::string(attribute.value) + "'";
        }
        events += ">";
        break;
      case XmlReader::Event::End:
        events += "</" + std::string(getPrefix(reader.getNamespace()));
        events += std::string(reader.getName()) + ">";
        break;
      case XmlReader::Event::Text:
        events += reader.getText();
        break;
      case XmlReader::Event::Finished:
        return events;
    }
  }
}

std::string problemOf(std::string const& text, Limits const& limits = {}) {
  try {
    return "read as " + describe(text, 7, limits);
  } catch (PartError const& error) {
    EXPECT_EQ(error.getPart(), "part.xml");
    return error.getProblem();
  }
}

TEST(XmlReader, GivesElementsAttributesAndTextsInOrder) {
  EXPECT_EQ(describe("<a x='1' y=\"2\"><b/>text<c >more</c\n></a>"),
            "<a x='1' y='2'><b></b>text<c>more</c></a>");
}

TEST(XmlReader, ReadsTheSameWhereverTheBytesAreCut) {
  std::string const text =
      "\xEF\xBB\xBF<?xml version=\"1.0\"?><!-- <x> --><a b='&lt;&#x20AC;&#65;'>\xC3\xA4&amp;"
      "<![CDATA[<&]]>\r\n</a><!-- end -->\n";
  std::string const expected =
      "<a b='<\xE2\x82\xAC"
      "A'>\xC3\xA4&<&\n</a>";
  for (std::size_t piece = 1; piece <= text.size(); ++piece) {
    EXPECT_EQ(describe(text, piece), expected) << piece;
  }
}

TEST(XmlReader, ReadsTagsAndTextsOfAnyLength) {
  constexpr std::size_t everything = 1'000'000;
  for (unsigned const length :
       {1'000U, 2'000U, 4'000U, 8'000U, 33'000U, 65'000U, 66'000U, 140'000U}) {
    std::string word = "x";
    while (word.size() < length) {
      word += "\xE2\x82\xAC";
    }
    std::string const text = "<a><b c='" + word + "'></b>" + word + "<d>1</d></a>";
    EXPECT_EQ(describe(text, everything), text) << length;
    EXPECT_EQ(describe(text, 1'000), text) << length;
  }
}

TEST(XmlReader, ResolvesPrefixesToKnownNamespaces) {
  EXPECT_EQ(describe("<s:a xmlns:s='http://purl.oclc.org/ooxml/spreadsheetml/main' "
                     "xmlns:rel='http://schemas.openxmlformats.org/officeDocument/2006/"
                     "relationships' rel:id='1'/>")
                .substr(0, 2),
            "<a");
  EXPECT_EQ(describe("<p:a xmlns:p='http://schemas.microsoft.com/office/spreadsheetml/2009/9/main'>"
                     "<a xmlns='urn:unknown'/><q:b/></p:a>"),
            "<x14:a other:p='http://schemas.microsoft.com/office/spreadsheetml/2009/9/main'>"
            "<other:a xmlns='urn:unknown'></other:a><other:b></other:b></x14:a>");
}

TEST(XmlReader, FindsAttributesByNamespaceAndName) {
  XmlReader reader(
      std::make_unique<PieceSource>("<a id='plain' xmlns:q='http://purl.oclc.org/ooxml/"
                                    "officeDocument/relationships' q:id='related'/>",
                                    64),
      Limits());
  reader.next();
  EXPECT_EQ(reader.getAttribute("id"), "plain");
  EXPECT_EQ(reader.getAttribute("id", XmlNamespace::Relationships), "related");
  EXPECT_FALSE(reader.getAttribute("other"));
}

TEST(XmlReader, ForgetsPrefixesAtTheEndOfTheirElement) {
  EXPECT_EQ(describe("<a><b xmlns='urn:x'/><b/></a>"),
            "<a><other:b xmlns='urn:x'></other:b><b></b></a>");
}

TEST(XmlReader, ChoosesTheFirstAlternativeThatItUnderstands) {
  std::string const namespaces =
      "xmlns:mc='http://schemas.openxmlformats.org/markup-compatibility/2006' "
      "xmlns:n='http://schemas.microsoft.com/office/spreadsheetml/2009/9/main' xmlns:u='urn:u'";
  XmlReader reader(
      std::make_unique<PieceSource>(
          "<a " + namespaces +
              "><mc:AlternateContent><mc:Choice Requires='u'><unknown/></mc:Choice>"
              "<mc:Choice Requires='n'><known/></mc:Choice><mc:Fallback><late/></mc:Fallback>"
              "</mc:AlternateContent><mc:AlternateContent><mc:Choice Requires='n u'><x/>"
              "</mc:Choice><mc:Fallback><fallback/></mc:Fallback></mc:AlternateContent></a>",
          9),
      Limits());
  std::string names;
  for (auto event = reader.next(); event != XmlReader::Event::Finished; event = reader.next()) {
    names += event == XmlReader::Event::Start ? std::string(reader.getName()) + " " : "";
  }
  EXPECT_EQ(names, "a known fallback ");
}

TEST(XmlReader, TakesPlainElementsOfTheMainNamespace) {
  XmlReader reader(
      std::make_unique<PieceSource>(
          "<a><c r=\"1\"><v>x</v></c><c r='2'><v>y</v></c><c r=\"3\"><v>z</v></c></a>", 128),
      Limits());
  EXPECT_FALSE(reader.takePlainElement("c", "v"));
  reader.next();
  EXPECT_EQ(reader.takePlainElement("c", "v"), "x");
  EXPECT_EQ(reader.getAttribute("r"), "1");
  EXPECT_EQ(reader.getDepth(), 1U);
  EXPECT_FALSE(reader.takePlainElement("c", "v"));
  reader.next();
  EXPECT_EQ(reader.getAttribute("r"), "2");
  EXPECT_EQ(reader.readElementText(), "");
  EXPECT_EQ(reader.takePlainElement("c", "v"), "z");
  EXPECT_EQ(reader.next(), XmlReader::Event::End);
  EXPECT_EQ(reader.next(), XmlReader::Event::Finished);
}

TEST(XmlReader, TakesNoPlainElementElsewhere) {
  Limits limits;
  limits.xmlDepth = 3;
  limits.xmlAttributes = 2;
  for (char const* const text :
       {"<a xmlns='urn:x'><c><v>1</v></c></a>", "<a><b><c><v>1</v></c></b></a>",
        "<a/><c><v>1</v></c>", "<a><c r=\"1\" s=\"2\" t=\"3\"><v>1</v></c></a>"}) {
    XmlReader reader(std::make_unique<PieceSource>(text, 128), limits);
    reader.next();
    if (std::string_view(text).starts_with("<a><b>")) {
      reader.next();
    }
    EXPECT_FALSE(reader.takePlainElement("c", "v")) << text;
  }
}

TEST(XmlReader, KnowsWhetherSpacesAreKept) {
  XmlReader reader(std::make_unique<PieceSource>(
                       "<a><b xml:space='preserve'><c/><d xml:space='default'/></b></a>", 64),
                   Limits());
  reader.next();
  EXPECT_FALSE(reader.keepsSpaces());
  reader.next();
  EXPECT_TRUE(reader.keepsSpaces());
  reader.next();
  EXPECT_TRUE(reader.keepsSpaces());
  reader.next();
  reader.next();
  EXPECT_FALSE(reader.keepsSpaces());
}

TEST(XmlReader, ReadsUtf16InBothOrdersWithAndWithoutAMark) {
  std::u16string const text = u"<a b='\u20AC'>\U0001F600</a>";
  for (bool const little : {true, false}) {
    for (bool const marked : {true, false}) {
      std::string bytes;
      for (char16_t const unit : (marked ? u"\uFEFF" : u"") + text) {
        char const low = static_cast<char>(unit & 0xFF);
        char const high = static_cast<char>(unit >> 8);
        bytes += little ? low : high;
        bytes += little ? high : low;
      }
      EXPECT_EQ(describe(bytes, 3), "<a b='\xE2\x82\xAC'>\xF0\x9F\x98\x80</a>");
    }
  }
}

TEST(XmlReader, RefusesBytesThatAreNoText) {
  for (std::string const& bytes :
       {std::string("<a>\xFF</a>"), std::string("<a>\xC3</a>"), std::string("<a>\xC0\x80</a>"),
        std::string("<a>\xED\xA0\x80</a>"), std::string("<a>\0</a>", 8), std::string("<a>\xC3")}) {
    EXPECT_EQ(problemOf(bytes),
              "is written neither in UTF-8 nor in UTF-16, as XML in a workbook must be; the file "
              "is damaged, fetch it anew or save it again");
  }
}

TEST(XmlReader, RefusesDocumentTypesAndEntitiesOfTheirOwn) {
  EXPECT_THAT(problemOf("<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"),
              testing::StartsWith("a document type declaration"));
  EXPECT_EQ(problemOf("<a>&b;</a>"), "an entity that XML does not define");
  EXPECT_EQ(problemOf("<a b='&nbsp;'/>"), "an entity that XML does not define");
  EXPECT_EQ(problemOf("<a>&#0;</a>"), "an entity that XML does not define");
  EXPECT_EQ(problemOf("<a>&#xD800;</a>"), "an entity that XML does not define");
  EXPECT_EQ(problemOf("<a>&#x110000;</a>"), "an entity that XML does not define");
  EXPECT_EQ(problemOf("<a>fish & chips</a>"), "an ampersand that begins no entity");
}

TEST(XmlReader, RefusesWhatIsNotWellFormed) {
  EXPECT_THAT(problemOf("<a><b></a>"), testing::StartsWith("the end of an element \"a\""));
  EXPECT_THAT(problemOf("<a><b>"), testing::StartsWith("the XML ends before it is complete"));
  EXPECT_THAT(problemOf(""), testing::StartsWith("the XML ends before it is complete"));
  EXPECT_THAT(problemOf("<a b"), testing::StartsWith("the XML ends inside a tag"));
  EXPECT_THAT(problemOf("<a><!-- "), testing::StartsWith("the XML ends inside a comment"));
  EXPECT_THAT(problemOf("<a><![CDATA[ "), testing::StartsWith("the XML ends inside character"));
  EXPECT_EQ(problemOf("<a/><b/>"), "a second root element");
  EXPECT_EQ(problemOf("<a b/>"), "an attribute without a quoted value");
  EXPECT_EQ(problemOf("<a b=c/>"), "an attribute without a quoted value");
  EXPECT_EQ(problemOf("<a <b/>"), "a tag inside a tag");
  EXPECT_EQ(problemOf("< a/>"), "a tag without a name");
  EXPECT_THAT(problemOf("text"), testing::StartsWith("text outside the root element"));
}

TEST(XmlReader, RefusesWhatIsBeyondTheLimits) {
  Limits limits;
  limits.xmlDepth = 3;
  EXPECT_EQ(problemOf("<a><b><c/></b></a>", limits), "read as <a><b><c></c></b></a>");
  EXPECT_THAT(problemOf("<a><b><c><d/></c></b></a>", limits),
              testing::StartsWith("more than 3 elements inside one another"));
  limits.xmlTokenBytes = 65'536;
  EXPECT_THAT(problemOf("<a b='" + std::string(70'000, 'x') + "'/>", limits),
              testing::StartsWith("a tag or a text longer than 65536 bytes"));
  EXPECT_THAT(problemOf("<a>" + std::string(70'000, 'x') + "</a>", limits),
              testing::StartsWith("a tag or a text longer than 65536 bytes"));
}

TEST(XmlReader, SkipsAnElementWithAllThatIsInIt) {
  XmlReader reader(std::make_unique<PieceSource>("<a><b><b>x</b>y</b><c/></a>", 5), Limits());
  reader.next();
  reader.next();
  reader.skipElement();
  reader.next();
  EXPECT_EQ(reader.getName(), "c");
}

TEST(XmlReader, ReadsTheTextThatStandsInAnElementDirectly) {
  XmlReader reader(std::make_unique<PieceSource>("<a>x<b>y</b><!-- n -->z<![CDATA[!]]></a>", 5),
                   Limits());
  reader.next();
  EXPECT_EQ(reader.readElementText(), "xz!");
  EXPECT_EQ(reader.next(), XmlReader::Event::Finished);
}

TEST(XmlTree, NamesAreThoseOfTheNamespacesWhateverThePrefixes) {
  XmlReader reader(std::make_unique<PieceSource>(
                       "<q:a xmlns:q='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
                       "xmlns:z='http://schemas.microsoft.com/office/excel/2006/main' k='v'>"
                       "<z:f>A1</z:f><q:b/></q:a>",
                       11),
                   Limits());
  pugi::xml_document document;
  pugi::xml_node const root = readRoot(reader, document, "a");
  EXPECT_STREQ(root.name(), "a");
  EXPECT_STREQ(root.attribute("k").value(), "v");
  EXPECT_STREQ(root.child("xm:f").text().get(), "A1");
  EXPECT_TRUE(root.child("b"));
}

TEST(XmlTree, AnotherRootThanExpectedIsRefused) {
  XmlReader reader(std::make_unique<PieceSource>("<html/>", 11), Limits());
  pugi::xml_document document;
  EXPECT_THROW(readRoot(reader, document, "a"), PartError);
}

TEST(XmlReader, TellsWhereTagsBeginAndEnd) {
  std::string const text =
      "<?xml version=\"1.0\"?><!-- <b> --><a x='>'>t<!-- <c> --><b y=\"1\" /> <c>u&amp;</c></a>";
  XmlReader reader(std::make_unique<PieceSource>(text, 3), Limits());
  std::string tags;
  for (auto event = reader.next(); event != XmlReader::Event::Finished; event = reader.next()) {
    if (event != XmlReader::Event::Text) {
      tags += text.substr(reader.getTagPosition(), reader.getPosition() - reader.getTagPosition());
      tags += '|';
    }
  }
  // The end of an empty element is its only tag.
  EXPECT_EQ(tags, "<a x='>'>|<b y=\"1\" />|<b y=\"1\" />|<c>|</c>|</a>|");
}

}  // namespace
}  // namespace Zorv::Workbook
