#include <string>

#include "DOM/A1Notation.h"
#include "tool/Output/DiffOutput.h"
#include "tool/Output/FieldLines.h"
#include "words/ConditionText.h"
#include "words/DifferenceText.h"

namespace Zorv::Tool {

namespace {

/// Separated values: a line for each sheet, rule and cell that differs.
class DiffLines final : public DiffOutput {
public:
  DiffLines(VersionPair const& versions, OutputBuffer& out)
      : _versions(versions), _lines(versions.first.getOptions(), nullptr, out) {
    _lines.addHeadings(
        {"what", "sheet", "cells", "rule", "then", "change", "condition", "first", "second"});
  }

  void finish(bool /*isComplete*/) override {}

private:
  void printSheet(std::string const& name, bool isInFirst) override {
    _lines.addLine({"sheet", name, "", "", "", isInFirst ? "removed" : "added", "", "", ""});
  }

  void printRule(Analysis::RuleDifference const& difference) override {
    auto const& first = _versions.first.getDocument();
    auto const& second = _versions.second.getDocument();
    auto const& rule = difference.first != nullptr ? *difference.first : *difference.second;
    auto const& document = difference.first != nullptr ? first : second;
    _lines.addLine({"rule", document.getSheets()[rule.sheet].name, Words::listRanges(rule),
                    numberOf(difference.first), numberOf(difference.second),
                    Words::describeChange(difference), Words::describeCondition(rule),
                    Words::describeSide(first, difference.first, difference),
                    Words::describeSide(second, difference.second, difference)});
  }

  void printCell(Analysis::CellDifference const& difference) override {
    _lines.addLine({"cell", _versions.first.getDocument().getSheets()[difference.firstSheet].name,
                    DOM::A1Notation::toAddress(difference.cell), "", "", "changed", "",
                    Words::describeLook(difference.first), Words::describeLook(difference.second)});
  }

  [[nodiscard]] static std::string numberOf(Workbook::Rule const* rule) {
    return rule != nullptr ? std::to_string(rule->number) : std::string();
  }

  VersionPair const& _versions;
  FieldLines _lines;
};

}  // namespace

std::unique_ptr<DiffOutput> makeDiffLines(VersionPair const& versions, OutputBuffer& out) {
  return std::make_unique<DiffLines>(versions, out);
}

}  // namespace Zorv::Tool
