#include "workbook/Xml/XmlNamespace.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace Zorv::Workbook {

namespace {

struct KnownNamespace {
  std::string_view uri;
  XmlNamespace ns;
};

constexpr std::array knownNamespaces{
    KnownNamespace{"", XmlNamespace::Spreadsheet},
    KnownNamespace{"http://schemas.openxmlformats.org/spreadsheetml/2006/main",
                   XmlNamespace::Spreadsheet},
    KnownNamespace{"http://purl.oclc.org/ooxml/spreadsheetml/main", XmlNamespace::Spreadsheet},
    KnownNamespace{"http://schemas.openxmlformats.org/officeDocument/2006/relationships",
                   XmlNamespace::Relationships},
    KnownNamespace{"http://purl.oclc.org/ooxml/officeDocument/relationships",
                   XmlNamespace::Relationships},
    KnownNamespace{"http://schemas.openxmlformats.org/drawingml/2006/main", XmlNamespace::Drawing},
    KnownNamespace{"http://purl.oclc.org/ooxml/drawingml/main", XmlNamespace::Drawing},
    KnownNamespace{"http://schemas.openxmlformats.org/markup-compatibility/2006",
                   XmlNamespace::Compatibility},
    KnownNamespace{"http://schemas.microsoft.com/office/spreadsheetml/2009/9/main",
                   XmlNamespace::Extension2009},
    KnownNamespace{"http://schemas.microsoft.com/office/excel/2006/main",
                   XmlNamespace::ExtensionMain},
    KnownNamespace{"http://www.w3.org/XML/1998/namespace", XmlNamespace::Xml},
};

}  // namespace

XmlNamespace findNamespace(std::string_view uri) noexcept {
  auto const* const found =
      std::find_if(knownNamespaces.begin(), knownNamespaces.end(),
                   [uri](KnownNamespace const& known) { return known.uri == uri; });
  return found == knownNamespaces.end() ? XmlNamespace::Other : found->ns;
}

std::string_view getPrefix(XmlNamespace ns) noexcept {
  constexpr std::array<std::string_view, 9> prefixes{
      "", "", "r:", "a:", "mc:", "x14:", "xm:", "xml:", "other:"};
  return prefixes.at(static_cast<std::size_t>(ns));
}

}  // namespace Zorv::Workbook
