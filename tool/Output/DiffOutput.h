#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "OfficeUtils/Clock.h"
#include "analysis/Diff/CompareCells.h"
#include "analysis/Diff/CompareRules.h"
#include "tool/Input/Selection.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"

namespace Zorv::Tool {

/// Two versions of a workbook.
struct VersionPair {
  Selection first;
  Selection second;
};

/// Output of `diff`: takes sheets, then rules, then cells, each in the order of the first version.
class DiffOutput {
public:
  DiffOutput() = default;
  DiffOutput(DiffOutput const&) = delete;
  DiffOutput& operator=(DiffOutput const&) = delete;
  virtual ~DiffOutput() = default;

  void addSheet(std::string const& name, bool isInFirst) {
    ++_sheetCount;
    printSheet(name, isInFirst);
  }
  void addRule(Analysis::RuleDifference const& difference) {
    ++_ruleCount;
    printRule(difference);
  }
  void addCell(Analysis::CellDifference const& difference) {
    ++_cellCount;
    printCell(difference);
  }
  /// Must be called once, at the end. `isComplete` is false if the work ended early.
  virtual void finish(bool isComplete) = 0;

  [[nodiscard]] bool hasDifferences() const noexcept {
    return _sheetCount + _ruleCount + _cellCount > 0;
  }

protected:
  [[nodiscard]] std::uint64_t countSheets() const noexcept { return _sheetCount; }
  [[nodiscard]] std::uint64_t countRules() const noexcept { return _ruleCount; }
  [[nodiscard]] std::uint64_t countCells() const noexcept { return _cellCount; }

private:
  virtual void printSheet(std::string const& name, bool isInFirst) = 0;
  virtual void printRule(Analysis::RuleDifference const& difference) = 0;
  virtual void printCell(Analysis::CellDifference const& difference) = 0;

  std::uint64_t _sheetCount = 0;
  std::uint64_t _ruleCount = 0;
  std::uint64_t _cellCount = 0;
};

/// The moments of the two versions.
using MomentPair = std::pair<OfficeUtils::Clock::TimePoint, OfficeUtils::Clock::TimePoint>;

/// Tables of the rules and the cells, and a line that counts them. Nothing if nothing differs.
[[nodiscard]] std::unique_ptr<DiffOutput> makeDiffTable(VersionPair const& versions,
                                                        Terminal const& terminal,
                                                        OutputBuffer& out);

[[nodiscard]] std::unique_ptr<DiffOutput> makeDiffJson(VersionPair const& versions,
                                                       MomentPair const& moments,
                                                       OutputBuffer& out);

/// A line of separated values for each difference, in the format of the options.
[[nodiscard]] std::unique_ptr<DiffOutput> makeDiffLines(VersionPair const& versions,
                                                        OutputBuffer& out);

}  // namespace Zorv::Tool
