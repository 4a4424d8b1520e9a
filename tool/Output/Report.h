#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"
#include "tool/Input/Selection.h"
#include "tool/Output/Problem.h"

namespace Zorv::Tool {

/// Messages of a command besides its output, as lines on standard error.
///
/// A sentence that is true of many rules is one line with their numbers. Every line is made
/// printable, and shortened if it is very long.
///
/// Borrows the stream and the selection.
class Report {
public:
  Report(std::ostream& err, Selection const& selection) noexcept
      : _err(err), _selection(selection) {}

  /// Prints the loader's findings, the rules that are not resolved, with their reasons, and those
  /// that refer to what the document lacks.
  void sayFindings() const;

  /// Counts a cell for which a condition could not be evaluated. Throws the problem if it is a lack
  /// of memory.
  void addFailure(Workbook::Rule const& rule, CellIndex cell, std::exception_ptr const& problem);

  /// Prints that ranges of these rules are looked at inside of `used` alone, which may be none.
  void sayClipped(std::size_t sheet, std::vector<std::size_t> const& ruleNumbers,
                  std::vector<TableRange> const& used);

  /// Prints that only existing cells are visited, since there are too many positions.
  void saySparse(std::size_t sheet, std::uint64_t positions);

  /// Prints what was done.
  void tell(std::string_view message) const { say(message); }

  /// Prints what could not be done as the file means it.
  void addFinding(std::string_view message);

  /// Numbers of findings of `check`, by their weight.
  struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
  };

  /// Has the summary begin with the findings of `check`. Errors and warnings are not clean.
  void setChecked(FindingCounts const& counts) noexcept { _checked = counts; }

  /// Remembers that the work ended early.
  void setIncomplete() noexcept { _isComplete = false; }

  /// Prints the rules that failed, and the line that counts the rules:
  /// `FILE: 3 rules read, 2 resolved, 1 not resolved (1 data bar); functions not known: FOO`.
  void saySummary() const;

  [[nodiscard]] bool isComplete() const noexcept { return _isComplete; }
  [[nodiscard]] std::size_t countFailedRules() const noexcept { return _failures.size(); }
  /// The names of the sheets of which not every position was looked at.
  [[nodiscard]] std::vector<std::string> const& getClippedSheets() const noexcept {
    return _clippedSheets;
  }
  /// The problems of the selected rules: those not resolved, then doubts, then failures.
  [[nodiscard]] std::vector<Problem> listProblems() const;
  /// True if everything was read, resolved and evaluated as the file means it.
  [[nodiscard]] bool isClean() const;

private:
  void say(std::string_view message) const;
  void sayProblems(std::vector<Problem> const& problems) const;
  [[nodiscard]] std::vector<Problem> listStaticProblems() const;
  void addClippedSheet(std::size_t sheet);
  [[nodiscard]] std::string const& nameOf(std::size_t sheet) const;
  [[nodiscard]] std::string placeOf(Workbook::Rule const& rule) const;

  std::ostream& _err;
  Selection const& _selection;
  std::map<std::size_t, Problem> _failures;  ///< by the rule's number
  std::vector<std::string> _clippedSheets;
  std::optional<FindingCounts> _checked;  ///< nothing for other commands
  bool _isComplete = true;
  bool _hasFindings = false;
};

}  // namespace Zorv::Tool
