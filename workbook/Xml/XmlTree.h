#pragma once

#include <string_view>

#include <pugixml.hpp>

#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// After the start of an element: reads up to its end, and appends it to a tree.
///
/// Names in the tree do not depend on the document's prefixes: those of the main namespace have no
/// prefix, the others that of getPrefix(). An element has one text between two tags, whatever
/// comments divide it. Returns the new element. Throws PartError beyond the limits.
pugi::xml_node readTree(XmlReader& reader, pugi::xml_node parent);

/// The name of an element of such a tree without its prefix. Borrows the element.
[[nodiscard]] inline std::string_view localName(pugi::xml_node node) noexcept {
  std::string_view const name = node.name();
  return name.substr(name.find(':') + 1);
}

/// Throws PartError if the starting element has another name, or the name in another namespace.
void requireRoot(XmlReader const& reader, XmlNamespace ns, std::string_view expectedName);

/// Reads the document's root element in the same way. The reader must be in front of it. Throws
/// PartError if the root has another name.
pugi::xml_node readRoot(XmlReader& reader, pugi::xml_document& document,
                        std::string_view expectedName);

}  // namespace Zorv::Workbook
