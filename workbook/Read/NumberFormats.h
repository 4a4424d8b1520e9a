#pragma once

#include <map>
#include <string>

#include <pugixml.hpp>

namespace Zorv::Workbook {

/// The number formats of a workbook by their numbers: the built-in ones (ISO/IEC 29500-1, 18.8.30,
/// in the American form) and its own.
class NumberFormats {
public:
  /// Adds the `numFmt` elements under a node; they replace built-in ones of the same number.
  void add(pugi::xml_node numFmts);

  /// The code of a format, or the empty text for an unknown number.
  [[nodiscard]] std::string findCode(long number) const;

private:
  std::map<long, std::string> _codes;
};

}  // namespace Zorv::Workbook
