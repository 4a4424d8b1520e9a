#pragma once

#include <cstdint>
#include <string_view>

namespace Zorv::Workbook {

/// The namespaces that workbooks use, whatever prefixes a writer gives them. The transitional and
/// the strict form of one (ISO/IEC 29500-1 and -4) count as the same.
enum class XmlNamespace : std::uint8_t {
  None,           ///< of attributes without a prefix
  Spreadsheet,    ///< the main one; also of elements that name none
  Relationships,  ///< of the identities of relationships (`r:id`)
  Drawing,        ///< of themes
  Compatibility,  ///< of alternate content (ISO/IEC 29500-3)
  Extension2009,  ///< of the extension list's later rules (`x14`)
  ExtensionMain,  ///< of formulas and areas in it (`xm`)
  Xml,
  Other,
};

[[nodiscard]] XmlNamespace findNamespace(std::string_view uri) noexcept;

/// The prefix under which a tree names what is in the namespace; see readTree().
[[nodiscard]] std::string_view getPrefix(XmlNamespace ns) noexcept;

}  // namespace Zorv::Workbook
