#include "workbook/Read/SharedStrings.h"

#include <string_view>

#include <fmt/format.h>

#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

/// After the start of a `t` element: reads its text. Leading and trailing spaces count only with
/// xml:space.
std::string readText(XmlReader& reader) {
  bool const keepsSpaces = reader.keepsSpaces();
  std::string const text = reader.readElementText();
  return unescapeXstring(keepsSpaces ? std::string_view(text) : trimXmlSpaces(text));
}

}  // namespace

std::string readTextItem(XmlReader& reader) {
  std::size_t const depth = reader.getDepth();
  std::string text;
  for (;;) {
    auto const event = reader.next();
    if (event == XmlReader::Event::End && reader.getDepth() < depth) {
      return text;
    }
    if (event != XmlReader::Event::Start) {
      continue;
    }
    if (reader.is("t")) {
      text += readText(reader);
      if (text.size() > reader.getLimits().xmlTokenBytes) {
        reader.fail(fmt::format("a text longer than {} bytes", reader.getLimits().xmlTokenBytes));
      }
    } else if (!reader.is("r")) {
      reader.skipElement();
    }
  }
}

std::vector<std::string> readSharedStrings(XmlReader& reader, MemoryCounter& memory) {
  std::vector<std::string> strings;
  for (auto event = reader.next(); event != XmlReader::Event::Finished; event = reader.next()) {
    if (event != XmlReader::Event::Start || !reader.is("si")) {
      continue;
    }
    if (strings.size() >= reader.getLimits().sharedTexts) {
      reader.fail(fmt::format("the workbook has more than {} shared texts, which is the limit",
                              reader.getLimits().sharedTexts));
    }
    strings.push_back(readTextItem(reader));
    memory.take(sizeof(std::string) + strings.back().size());
  }
  return strings;
}

}  // namespace Zorv::Workbook
