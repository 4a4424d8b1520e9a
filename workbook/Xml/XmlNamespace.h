#pragma once

#include <cstdint>
#include <string_view>

namespace Zorv::Workbook {

/// Namespaces that workbooks use, whatever their prefixes in a file. The transitional and the
/// strict form of a namespace (ISO/IEC 29500-1 and -4) count as one.
enum class XmlNamespace : std::uint8_t {
  None,           ///< attributes without a prefix
  Spreadsheet,    ///< the main one; also elements that name none
  Relationships,  ///< relationship identities (`r:id`)
  Drawing,        ///< themes
  Compatibility,  ///< alternate content (ISO/IEC 29500-3)
  Extension2009,  ///< rules of the extension list (`x14`)
  ExtensionMain,  ///< formulas and ranges of these rules (`xm`)
  Xml,
  Other,
};

[[nodiscard]] XmlNamespace findNamespace(std::string_view uri) noexcept;

/// Prefix of the namespace's names in a tree; see readTree().
[[nodiscard]] std::string_view getPrefix(XmlNamespace ns) noexcept;

}  // namespace Zorv::Workbook
