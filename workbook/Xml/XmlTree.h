#pragma once

#include <string_view>

#include <pugixml.hpp>

#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// After the start of an element: reads on to its end, and appends it to a tree.
///
/// The tree's names are the same whatever prefixes the document uses: those of the main namespace
/// have no prefix, the others the one of getPrefix(). Returns the new element.
pugi::xml_node readTree(XmlReader& reader, pugi::xml_node parent);

/// The same for the document's root element, wherever the reader stands before it; the root must
/// have the name given. Throws PartError where it has another.
pugi::xml_node readRoot(XmlReader& reader, pugi::xml_document& document,
                        std::string_view expectedName);

}  // namespace Zorv::Workbook
