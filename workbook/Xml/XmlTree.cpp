#include "workbook/Xml/XmlTree.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "workbook/Quote.h"

namespace Zorv::Workbook {

namespace {

/// Builder of one tree: counts what it holds, and joins texts that comments or character data
/// divide.
class TreeBuilder {
public:
  TreeBuilder(XmlReader& reader, pugi::xml_node parent) : _reader(reader), _element(parent) {}

  void startElement() {
    flushText();
    count(1 + _reader.getAttributes().size());
    std::string name(getPrefix(_reader.getNamespace()));
    name += _reader.getName();
    _element = _element.append_child(name.c_str());
    for (XmlAttribute const& attribute : _reader.getAttributes()) {
      name = getPrefix(attribute.ns);
      name += attribute.name;
      _element.append_attribute(name.c_str()).set_value(std::string(attribute.value).c_str());
    }
  }

  void addText() { _text += _reader.getText(); }

  void endElement() {
    flushText();
    _element = _element.parent();
  }

  [[nodiscard]] pugi::xml_node getElement() const noexcept { return _element; }

private:
  void flushText() {
    if (!_text.empty()) {
      count(1);
      _element.append_child(pugi::node_pcdata).set_value(_text.c_str());
      _text.clear();
    }
  }

  void count(std::size_t items) {
    _itemCount += items;
    if (_itemCount > _reader.getLimits().treeItems ||
        _reader.getPosition() - _begin > _reader.getLimits().wholePartBytes) {
      _reader.fail(
          "more elements and attributes inside one element than are held in memory; save the "
          "workbook with fewer formats or rules and try again");
    }
  }

  XmlReader& _reader;
  pugi::xml_node _element;
  std::string _text;
  std::size_t _itemCount = 0;
  std::uint64_t _begin = _reader.getPosition();
};

}  // namespace

pugi::xml_node readTree(XmlReader& reader, pugi::xml_node parent) {
  std::size_t const depth = reader.getDepth();
  TreeBuilder builder(reader, parent);
  builder.startElement();
  pugi::xml_node const root = builder.getElement();
  for (;;) {
    switch (reader.next()) {
      case XmlReader::Event::Start:
        builder.startElement();
        break;
      case XmlReader::Event::Text:
        builder.addText();
        break;
      default:
        builder.endElement();
        if (reader.getDepth() < depth) {
          return root;
        }
    }
  }
}

void requireRoot(XmlReader const& reader, XmlNamespace ns, std::string_view expectedName) {
  bool const hasName = reader.getName() == expectedName;
  if (!hasName) {
    reader.fail(fmt::format("the root element is \"{}\" in place of \"{}\"",
                            quote(reader.getName()), expectedName));
  }
  if (reader.getNamespace() != ns) {
    reader.fail(
        fmt::format("the root element \"{}\" belongs to a namespace that no workbook uses for it; "
                    "save the workbook anew with a spreadsheet program and try again",
                    expectedName));
  }
}

pugi::xml_node readRoot(XmlReader& reader, pugi::xml_document& document,
                        std::string_view expectedName) {
  reader.next();
  requireRoot(reader, reader.getNamespace(), expectedName);
  pugi::xml_node const root = readTree(reader, document.root());
  reader.next();
  return root;
}

}  // namespace Zorv::Workbook
