#include "workbook/Xml/XmlTree.h"

#include <string>

#include <fmt/format.h>

namespace Zorv::Workbook {

namespace {

/// Appends the starting element without its contents.
pugi::xml_node appendElement(XmlReader const& reader, pugi::xml_node parent) {
  std::string name(getPrefix(reader.getNamespace()));
  name += reader.getName();
  pugi::xml_node element = parent.append_child(name.c_str());
  for (XmlAttribute const& attribute : reader.getAttributes()) {
    name = getPrefix(attribute.ns);
    name += attribute.name;
    element.append_attribute(name.c_str()).set_value(std::string(attribute.value).c_str());
  }
  return element;
}

}  // namespace

pugi::xml_node readTree(XmlReader& reader, pugi::xml_node parent) {
  std::size_t const depth = reader.getDepth();
  pugi::xml_node const root = appendElement(reader, parent);
  for (pugi::xml_node element = root;;) {
    switch (reader.next()) {
      case XmlReader::Event::Start:
        element = appendElement(reader, element);
        break;
      case XmlReader::Event::Text:
        element.append_child(pugi::node_pcdata).set_value(std::string(reader.getText()).c_str());
        break;
      default:
        if (reader.getDepth() < depth) {
          return root;
        }
        element = element.parent();
    }
  }
}

pugi::xml_node readRoot(XmlReader& reader, pugi::xml_document& document,
                        std::string_view expectedName) {
  reader.next();
  if (reader.getName() != expectedName) {
    reader.fail(fmt::format("the root element is \"{}\" in place of \"{}\"", reader.getName(),
                            expectedName));
  }
  pugi::xml_node const root = readTree(reader, document.root());
  reader.next();
  return root;
}

}  // namespace Zorv::Workbook
