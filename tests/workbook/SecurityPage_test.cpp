// The limits that SECURITY.md names are those of the program.

#include <cstdint>
#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "Formulas/FormulaParseError.h"
#include "Formulas/Limits/StepMeter.h"
#include "Formulas/ParseExpr.h"
#include "workbook/Limits.h"

namespace Zorv::Workbook {
namespace {

/// The rows of the page's tables of two columns: the second cell by the first.
std::map<std::string, std::string> readRows() {
  std::ifstream page(SECURITY_PAGE);
  std::map<std::string, std::string> rows;
  for (std::string line; std::getline(page, line);) {
    auto const middle = line.find(" | ");
    if (line.starts_with("| ") && line.ends_with(" |") && middle != std::string::npos) {
      rows[line.substr(2, middle - 2)] = line.substr(middle + 3, line.size() - middle - 5);
    }
  }
  return rows;
}

/// `4,000,000`
std::string withCommas(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3; at -= 3) {
    text.insert(at - 3, ",");
  }
  return text;
}

/// `32 MiB`, `4 GiB`
std::string inBytes(std::uint64_t bytes) {
  constexpr std::uint64_t mebibyte = 1'048'576;
  constexpr std::uint64_t perGibibyte = 1'024;
  return bytes % (mebibyte * perGibibyte) == 0
             ? std::to_string(bytes / mebibyte / perGibibyte) + " GiB"
             : std::to_string(bytes / mebibyte) + " MiB";
}

TEST(SecurityPage, NamesTheLimitsOfTheLoader) {
  auto const rows = readRows();
  Limits const limits;
  std::map<std::string, std::string> const expected{
      {"parts in the archive", withCommas(limits.partCount)},
      {"bytes of a file that is read from a pipe", inBytes(limits.pipeBytes)},
      {"unpacked bytes of all parts that are read", inBytes(limits.unpackedBytes)},
      {"unpacked bytes of a part that is held as a whole", inBytes(limits.wholePartBytes)},
      {"elements, attributes and texts that are held together", withCommas(limits.treeItems)},
      {"unpacked by packed bytes of a part, after its first " + inBytes(limits.ratioFreeBytes),
       withCommas(limits.unpackRatio)},
      {"depth of nested elements", withCommas(limits.xmlDepth)},
      {"bytes of a tag, or of the text between two tags", inBytes(limits.xmlTokenBytes)},
      {"attributes of an element", withCommas(limits.xmlAttributes)},
      {"sheets", withCommas(limits.sheets)},
      {"cells", withCommas(limits.cells)},
      {"texts that cells share", withCommas(limits.sharedTexts)},
      {"cell formats, and differential formats", withCommas(limits.formats) + " each"},
      {"defined names", withCommas(limits.definedNames)},
      {"tables of a sheet with a style; further ones are shown without",
       withCommas(limits.styledTables)},
      {"cells that formulas without results refer to", withCommas(limits.calculatedPositions)},
      {"steps of such formulas, about the reading of one cell each",
       withCommas(limits.calculatedSteps)},
      {"bytes of the texts that they yield", inBytes(limits.calculatedTextBytes)},
      {"cells that array formulas fill, if the file has fewer", withCommas(limits.arrayCells)},
      {"rules", withCommas(limits.rules)},
      {"ranges of all rules", withCommas(limits.ruleAreas)}};
  for (auto const& [limit, most] : expected) {
    auto const row = rows.find(limit);
    ASSERT_NE(row, rows.end()) << "no row \"" << limit << '"';
    EXPECT_EQ(row->second, most) << limit;
  }
}

TEST(SecurityPage, NamesTheLimitsOfFormulas) {
  auto rows = readRows();
  EXPECT_EQ(rows["steps, about the reading of one cell each"],
            withCommas(Formulas::StepMeter::mostSteps));
  constexpr std::size_t mostCharacters = 8'192;
  EXPECT_EQ(rows["characters of its text"], withCommas(mostCharacters));
  std::string const text = '"' + std::string(mostCharacters - 2, 'x') + '"';
  EXPECT_NO_THROW(static_cast<void>(Formulas::parseExpr(text)));
  EXPECT_THROW(static_cast<void>(Formulas::parseExpr(text + ' ')), Formulas::FormulaParseError);
}

}  // namespace
}  // namespace Zorv::Workbook
