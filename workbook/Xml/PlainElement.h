#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Element at the front of some bytes.
struct PlainElement {
  std::size_t size;       ///< bytes of the whole element
  std::string_view text;  ///< of its child
};

/// Finds `<name a="1" b="2"><child>text</child></name>` at the front of some bytes, written exactly
/// so: one space before each attribute, attributes of ASCII letters, nothing to be replaced in
/// values and in the text. Puts the attributes into `attributes`; what is in there is meaningless
/// where nothing is returned. Everything that is returned borrows from the bytes.
[[nodiscard]] std::optional<PlainElement> findPlainElement(std::string_view bytes,
                                                           std::string_view name,
                                                           std::string_view child,
                                                           std::vector<XmlAttribute>& attributes);

}  // namespace Zorv::Workbook
