#pragma once

#include <map>
#include <string>

#include <pugixml.hpp>

namespace Zorv::Workbook {

/// Number formats of a workbook by their identifiers: the built-in ones (ISO/IEC 29500-1, 18.8.30,
/// in their American form) and its own.
class NumberFormats {
public:
  /// Adds the `numFmt` elements under a node; they replace built-in ones of the same identifier.
  void add(pugi::xml_node numFmts);

  /// The code of a format; empty for an unknown identifier.
  [[nodiscard]] std::string findCode(long identifier) const;

private:
  std::map<long, std::string> _codes;
};

}  // namespace Zorv::Workbook
