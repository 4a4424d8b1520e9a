#pragma once

#include <string>
#include <vector>

#include <pugixml.hpp>

#include "workbook/Read/Relationships.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/StylesReader.h"

namespace Zorv::Workbook {

/// Reads a whole workbook, beginning with its main part (ISO/IEC 29500-1, 18.2.27).
class WorkbookReader {
public:
  /// Borrows the state. Throws PartError where the archive holds no workbook.
  explicit WorkbookReader(LoadState& state);

  /// Throws PartError where a part is missing, damaged or beyond the limits.
  void read();

private:
  void readMainPart();
  void listSheets(pugi::xml_node workbook);
  void addSheet(pugi::xml_node element);
  void readDefinedNames(pugi::xml_node workbook);
  void addDefinedName(pugi::xml_node element);
  [[nodiscard]] ThemeColours readTheme();
  void readStyles(StylesReader& styles);
  [[nodiscard]] std::vector<std::string> readSharedStrings();

  /// The part of that kind to which the workbook points, or the empty text where there is none; one
  /// that is missing is reported.
  [[nodiscard]] std::string findPart(std::string_view kind);

  LoadState& _state;
  std::string _mainPart;
  Relationships _relationships;
};

}  // namespace Zorv::Workbook
