#include "analysis/Tidy/CanonicalXml.h"

#include <algorithm>
#include <utility>

#include "workbook/Xml/XmlText.h"

namespace Zorv::Analysis {

namespace {

using Workbook::XmlAttribute;
using Workbook::XmlNamespace;
using Workbook::XmlReader;

// XML cannot hold these characters, so they keep names and texts apart.
constexpr char opening = '\x01';
constexpr char closing = '\x02';
constexpr char attributeMark = '\x03';
constexpr char valueMark = '\x04';

/// The reader takes the prefix `xmlns` of a declaration for that of an unknown namespace.
bool isDeclarationOrIdentity(XmlAttribute const& attribute) noexcept {
  return attribute.name == "xmlns" ||
         (attribute.ns == XmlNamespace::Other &&
          (attribute.name == "uid" || attribute.value.find("://") != std::string_view::npos));
}

std::string describeAttribute(XmlAttribute const& attribute) {
  std::string text(1, attributeMark);
  text += Workbook::getPrefix(attribute.ns);
  text += attribute.name;
  text += valueMark;
  text += attribute.value;
  return text;
}

/// Spaces between elements say nothing.
void moveText(std::string& from, std::string& to) {
  if (!Workbook::trimXmlSpaces(from).empty()) {
    to += valueMark;
    to += from;
  }
  from.clear();
}

}  // namespace

void appendStart(std::string& text, XmlReader const& reader,
                 std::vector<std::string_view> const& leftOut) {
  text += opening;
  text += Workbook::getPrefix(reader.getNamespace());
  text += reader.getName();
  if (reader.getNamespace() == XmlNamespace::Other) {
    text += std::to_string(reader.getPosition());
  }
  std::vector<std::string> attributes;
  for (XmlAttribute const& attribute : reader.getAttributes()) {
    bool const isLeftOut = attribute.ns == XmlNamespace::None &&
                           std::ranges::find(leftOut, attribute.name) != leftOut.end();
    if (!isLeftOut && !isDeclarationOrIdentity(attribute)) {
      attributes.push_back(describeAttribute(attribute));
    }
  }
  std::ranges::sort(attributes);
  for (std::string const& attribute : attributes) {
    text += attribute;
  }
}

void appendElement(std::string& text, XmlReader& reader) {
  std::size_t const depth = reader.getDepth();
  appendStart(text, reader);
  std::string content;
  for (;;) {
    switch (reader.next()) {
      case XmlReader::Event::Start:
        moveText(content, text);
        appendStart(text, reader);
        break;
      case XmlReader::Event::Text:
        content += reader.getText();
        break;
      default:
        moveText(content, text);
        text += closing;
        if (reader.getDepth() < depth) {
          return;
        }
    }
  }
}

void eraseEmptyElements(std::string& text, std::string_view name) {
  std::string const element = opening + std::string(name) + closing;
  for (auto at = text.find(element); at != std::string::npos; at = text.find(element, at)) {
    text.erase(at, element.size());
  }
}

}  // namespace Zorv::Analysis
