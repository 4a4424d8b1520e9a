#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include <pugixml.hpp>

#include "workbook/Read/LoadState.h"
#include "workbook/Read/Relationships.h"
#include "workbook/Read/SharedStrings.h"
#include "workbook/Read/StylesReader.h"

namespace Zorv::Workbook {

/// Reader of a whole workbook, from its main part (ISO/IEC 29500-1, 18.2.27) on.
class WorkbookReader {
public:
  /// Borrows the state. Throws PartError if the archive is not a workbook.
  explicit WorkbookReader(LoadState& state);

  /// Throws PartError if a part is missing, damaged or beyond the limits.
  void read();

private:
  void readMainPart();
  void listSheets(pugi::xml_node workbook);
  void addSheet(pugi::xml_node element);
  void findSheetPart(std::string_view id, std::string const& place, Sheet& sheet);
  void checkSheetName(Sheet const& sheet);
  void readDefinedNames(pugi::xml_node workbook);
  void addDefinedName(pugi::xml_node element);
  void parse(DefinedName& name);
  void readExternalLinks(pugi::xml_node workbook);
  [[nodiscard]] ThemeColours readTheme();
  void readStyles(StylesReader& styles);
  [[nodiscard]] SharedStrings readSharedStrings(Palette& palette);
  void reportColours(Palette const& palette);
  void addFinding(std::string message);
  void addFinding(Sheet const& sheet, std::string message);

  /// The part of that kind that the workbook refers to; empty if there is none. A part that is
  /// missing from the archive becomes a finding.
  [[nodiscard]] std::string findPart(std::string_view kind);

  LoadState& _state;
  std::string _mainPart;
  Relationships _relationships;
  std::unordered_set<std::string> _sheetParts;  ///< case-folded
  std::unordered_set<std::string> _sheetNames;  ///< case-folded
};

}  // namespace Zorv::Workbook
