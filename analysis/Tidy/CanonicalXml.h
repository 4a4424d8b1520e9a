#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbook/Xml/XmlReader.h"

// XML as a text that is equal for elements that say the same: prefixes, declarations of namespaces,
// the order of attributes and the way of writing characters make no difference.
namespace Zorv::Analysis {

/// Appends the start of the reader's element. Attributes without a namespace that `leftOut` names
/// are left out, and so are the identities (`uid`) that programs give to elements. An element of an
/// unknown namespace equals no other.
void appendStart(std::string& text, Workbook::XmlReader const& reader,
                 std::vector<std::string_view> const& leftOut = {});

/// After the start of an element: reads up to its end, and appends it.
void appendElement(std::string& text, Workbook::XmlReader& reader);

/// Erases the elements of a name, of the main namespace, that have neither attributes nor content.
void eraseEmptyElements(std::string& text, std::string_view name);

}  // namespace Zorv::Analysis
