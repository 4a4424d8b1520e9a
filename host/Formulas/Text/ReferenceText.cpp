#include "Formulas/Text/ReferenceText.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "Formulas/Text/Characters.h"
#include "Formulas/Text/SheetName.h"

namespace Zorv::Formulas {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::NameReference;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::StructuredReference;

namespace {

/// A column's name in the brackets of a structured reference.
std::string bracketColumn(std::string_view name) {
  constexpr std::string_view special = "[]#'@";
  std::string text = "[";
  for (char const c : name) {
    text += special.find(c) == std::string_view::npos ? "" : "'";
    text += c;
  }
  return text + ']';
}

std::string writeSheet(ExprParts const& parts, std::uint32_t sheet) {
  if (sheet == noIndex) {
    return {};
  }
  return parts.texts[sheet].empty() ? "#REF!" : writeSheetPrefix(parts.texts[sheet]);
}

bool isWholeColumns(CellReference const& reference) noexcept {
  return reference.firstRow == 0 && reference.lastRow == DOM::Table::rowCount - 1 &&
         !reference.firstRowIsRelative && !reference.lastRowIsRelative;
}

bool isWholeRows(CellReference const& reference) noexcept {
  return reference.firstColumn == 0 && reference.lastColumn == DOM::Table::columnCount - 1 &&
         !reference.firstColumnIsRelative && !reference.lastColumnIsRelative;
}

std::string writeColumns(ExprParts const& parts, StructuredReference const& reference) {
  auto text = bracketColumn(parts.texts[reference.firstColumn]);
  if (parts.texts[reference.firstColumn] != parts.texts[reference.lastColumn]) {
    text += ':' + bracketColumn(parts.texts[reference.lastColumn]);
  }
  return text;
}

/// The content of the outer brackets: a part that stands alone needs none of its own.
std::string joinParts(std::vector<std::string> const& parts) {
  if (parts.size() == 1 && parts.front().find("]:[") == std::string::npos) {
    auto const bare = parts.front().substr(1, parts.front().size() - 2);
    if (bare == trimSpaces(bare)) {
      return bare;
    }
  }
  return fmt::format("{}", fmt::join(parts, ","));
}

void addPart(std::vector<std::string>& parts, bool isSelected, char const* text) {
  if (isSelected) {
    parts.emplace_back(text);
  }
}

}  // namespace

std::string writeReference(ExprParts const& parts, CellReference const& reference) {
  auto first =
      DOM::A1Notation::toText({.row = {reference.firstRow, reference.firstRowIsRelative},
                               .column = {reference.firstColumn, reference.firstColumnIsRelative}});
  auto last =
      DOM::A1Notation::toText({.row = {reference.lastRow, reference.lastRowIsRelative},
                               .column = {reference.lastColumn, reference.lastColumnIsRelative}});
  if (isWholeColumns(reference)) {
    // Absolute rows are written as `$1`.
    first.resize(first.rfind('$'));
    last.resize(last.rfind('$'));
  } else if (isWholeRows(reference)) {
    constexpr std::size_t firstColumn = std::string_view("$A").size();
    constexpr std::size_t lastColumn = std::string_view("$XFD").size();
    first.erase(0, firstColumn);
    last.erase(0, lastColumn);
  } else if (reference.isSingleCell()) {
    return writeSheet(parts, reference.sheet) + first;
  }
  return writeSheet(parts, reference.sheet) + first + ':' + last;
}

std::string writeReference(ExprParts const& parts, StructuredReference const& reference) {
  std::string text = reference.list == noIndex ? std::string() : parts.texts[reference.list];
  bool const isThisRowAlone = reference.thisRow && !reference.headers && !reference.totals;
  std::vector<std::string> inBrackets;
  if (reference.headers && reference.data && reference.totals) {
    inBrackets.emplace_back("[#All]");
  } else {
    addPart(inBrackets, reference.headers, "[#Headers]");
    addPart(inBrackets, reference.data && (reference.headers || reference.totals), "[#Data]");
    addPart(inBrackets, reference.totals, "[#Totals]");
    addPart(inBrackets, reference.thisRow && !isThisRowAlone, "[#This Row]");
  }
  if (reference.firstColumn != noIndex) {
    inBrackets.push_back(writeColumns(parts, reference));
  }
  return text + fmt::format("[{}{}]", isThisRowAlone ? "@" : "", joinParts(inBrackets));
}

std::string writeReference(ExprParts const& parts, NameReference const& name) {
  return writeSheet(parts, name.sheet) + parts.texts[name.name];
}

}  // namespace Zorv::Formulas
