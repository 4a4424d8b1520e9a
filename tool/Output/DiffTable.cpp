#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "tool/Output/ColumnWidths.h"
#include "tool/Output/DiffOutput.h"
#include "tool/Text/TextTable.h"
#include "words/ConditionText.h"
#include "words/DifferenceText.h"

namespace Zorv::Tool {

namespace {

using Analysis::RuleDifference;
using Workbook::Rule;

std::string describeNumber(Rule const* rule) {
  return rule != nullptr ? std::to_string(rule->number) : "-";
}

std::string describeTotal(std::uint64_t count, char const* what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

class DiffTable final : public DiffOutput {
public:
  DiffTable(VersionPair const& versions, Terminal const& terminal, OutputBuffer& out)
      : _versions(versions), _terminal(terminal), _out(out) {}

  void finish(bool isComplete) override {
    endTable();
    if (hasDifferences()) {
      _out.text() +=
          fmt::format("\n{}{}, {} different{}\n",
                      countSheets() > 0 ? describeTotal(countSheets(), "sheet") + ", " : "",
                      describeTotal(countRules(), "rule"), describeTotal(countCells(), "cell"),
                      isComplete ? "" : " so far");
      _out.endEntry();
    }
  }

private:
  enum class Part : std::uint8_t { None, Sheets, Rules, Cells };

  void printSheet(std::string const& name, bool isInFirst) override {
    beginTable(Part::Sheets, {{"SHEET", ColumnWidths::name}, {"ONLY IN", ColumnWidths::value}});
    _table->addRow({name, (isInFirst ? _versions.first : _versions.second).getFile()});
  }

  void printRule(RuleDifference const& difference) override {
    beginTable(Part::Rules, {{"SHEET", ColumnWidths::name},
                             {"RULE", ColumnWidths::number},
                             {"THEN", ColumnWidths::number},
                             {"CHANGE", ColumnWidths::name},
                             {"CONDITION", ColumnWidths::condition},
                             {"FIRST", ColumnWidths::style},
                             {"SECOND", ColumnWidths::style}});
    auto const& document = (difference.first ? _versions.first : _versions.second).getDocument();
    Rule const& rule = difference.first ? *difference.first : *difference.second;
    _table->addRow(
        {document.getSheets()[rule.sheet].name, describeNumber(difference.first),
         describeNumber(difference.second), Words::describeChange(difference),
         Words::describeCondition(rule),
         Words::describeSide(_versions.first.getDocument(), difference.first, difference),
         Words::describeSide(_versions.second.getDocument(), difference.second, difference)});
  }

  void printCell(Analysis::CellDifference const& difference) override {
    beginTable(Part::Cells, {{"SHEET", ColumnWidths::name},
                             {"CELL", ColumnWidths::number},
                             {"FIRST", ColumnWidths::style},
                             {"SECOND", ColumnWidths::style}});
    _table->addRow({_versions.first.getDocument().getSheets()[difference.firstSheet].name,
                    DOM::A1Notation::toAddress(difference.cell),
                    Words::describeLook(difference.first), Words::describeLook(difference.second)});
  }

  void beginTable(Part part, std::vector<TextTable::Column> columns) {
    if (_part == part) {
      return;
    }
    endTable();
    _out.text() += _part == Part::None ? "" : "\n";
    _part = part;
    _table.emplace(std::move(columns), _out, _terminal);
  }

  void endTable() {
    if (_table) {
      _table->finish();
      _table.reset();
    }
  }

  VersionPair const& _versions;
  Terminal const& _terminal;
  OutputBuffer& _out;
  Part _part = Part::None;
  std::optional<TextTable> _table;
};

}  // namespace

std::unique_ptr<DiffOutput> makeDiffTable(VersionPair const& versions, Terminal const& terminal,
                                          OutputBuffer& out) {
  return std::make_unique<DiffTable>(versions, terminal, out);
}

}  // namespace Zorv::Tool
