#pragma once

#include <map>
#include <memory>
#include <string>

#include <pugixml.hpp>

#include "DOM/StyleProps.h"

namespace Zorv::Workbook {

/// Number formats of a workbook by their identifiers: the built-in ones (ISO/IEC 29500-1, 18.8.30,
/// in their American form) and its own.
class NumberFormats {
public:
  /// Adds the `numFmt` elements under a node; they replace built-in ones of the same identifier.
  void add(pugi::xml_node numFmts);

  /// A format, which cell formats share; null for an unknown identifier, and for an empty code.
  [[nodiscard]] std::shared_ptr<DOM::CellFormat const> find(long identifier) const;

private:
  std::map<long, std::shared_ptr<DOM::CellFormat const>> _formats;
};

/// A format of that code; null for an empty code.
[[nodiscard]] std::shared_ptr<DOM::CellFormat const> shareFormat(std::string code);

}  // namespace Zorv::Workbook
