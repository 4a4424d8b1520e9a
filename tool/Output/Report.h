#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iosfwd>
#include <string>

#include "Utils/CellIndex.h"
#include "tool/Input/Selection.h"

namespace Zorv::Tool {

/// Messages of a command besides its output, as lines on standard error.
///
/// Borrows the stream and the selection.
class Report {
public:
  Report(std::ostream& err, Selection const& selection) noexcept
      : _err(err), _selection(selection) {}

  /// Prints the loader's findings, and the rules that are not resolved, with their reasons.
  void sayFindings() const;

  /// Prints that a condition could not be evaluated for a cell. After the first ten, only counts.
  void sayFailure(Workbook::Rule const& rule, CellIndex cell, std::exception_ptr const& problem);

  /// Prints that only existing cells are visited, since there are too many positions.
  void saySparse(std::size_t sheet, std::uint64_t positions) const;

  [[nodiscard]] std::uint64_t getFailureCount() const noexcept { return _failureCount; }

  /// Prints the number of failures, if there are any, and the line that counts the rules:
  /// `FILE: 3 rules read, 2 resolved, 1 not resolved (1 data bar); functions not known: FOO`.
  void saySummary() const;

private:
  [[nodiscard]] std::string placeOf(Workbook::Rule const& rule) const;

  std::ostream& _err;
  Selection const& _selection;
  std::uint64_t _failureCount = 0;
};

}  // namespace Zorv::Tool
