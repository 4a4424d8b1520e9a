#include "workbook/PrintNames.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"

namespace Zorv::Workbook {

namespace {

/// The first part of a list, up to a comma outside of a quoted sheet name; it is removed from
/// `list` with the comma.
std::string_view takePart(std::string_view& list) noexcept {
  bool isQuoted = false;
  std::size_t end = 0;
  for (; end < list.size() && (isQuoted || list[end] != ','); ++end) {
    isQuoted = isQuoted != (list[end] == '\'');
  }
  std::string_view const part = list.substr(0, end);
  list.remove_prefix(std::min(list.size(), end + 1));
  return part;
}

/// The ranges of a reserved name of a sheet; those that cannot be read are left out.
std::vector<TableRange> listRanges(Document const& document, std::size_t sheet,
                                   std::string_view name) {
  std::vector<TableRange> ranges;
  auto const& names = document.getDefinedNames();
  auto const found = std::ranges::find_if(names, [&](DefinedName const& defined) {
    return defined.sheet == sheet && defined.name == name;
  });
  std::string_view list = found != names.end() ? std::string_view(found->formulaText) : "";
  while (!list.empty()) {
    std::string_view const part = takePart(list);
    std::size_t const sheetEnd = part.rfind('!');
    auto const range = DOM::A1Notation::parseRange(
        sheetEnd == std::string_view::npos ? part : part.substr(sheetEnd + 1));
    if (range) {
      ranges.push_back(*range);
    }
  }
  return ranges;
}

}  // namespace

std::vector<TableRange> findPrintAreas(Document const& document, std::size_t sheet) {
  return listRanges(document, sheet, "_xlnm.Print_Area");
}

PrintTitles findPrintTitles(Document const& document, std::size_t sheet) {
  PrintTitles titles;
  for (TableRange const& range : listRanges(document, sheet, "_xlnm.Print_Titles")) {
    bool const areRows = range.firstColumn == 0 && range.endColumn == DOM::Table::columnCount;
    (areRows ? titles.rows : titles.columns) = range;
  }
  return titles;
}

}  // namespace Zorv::Workbook
