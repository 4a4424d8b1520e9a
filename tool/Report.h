#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iosfwd>
#include <string>

#include "Utils/CellIndex.h"
#include "tool/Selection.h"

namespace Zorv::Tool {

/// What a command has to say beside its output: lines for standard error.
///
/// Borrows the stream and the selection.
class Report {
public:
  Report(std::ostream& err, Selection const& selection) noexcept
      : _err(err), _selection(selection) {}

  /// Says what the loader found, and which rules are not resolved and why.
  void sayFindings() const;

  /// Says that a condition could not be evaluated for a cell. After the first ones, counts only.
  void sayFailure(Workbook::Rule const& rule, CellIndex cell, std::exception_ptr const& problem);

  /// Says that empty positions were left out, since there are too many.
  void saySparse(std::size_t sheet, std::uint64_t positions) const;

  [[nodiscard]] std::uint64_t getFailureCount() const noexcept { return _failureCount; }

  /// The count of failures, where there were any, and the line that counts the rules:
  /// `FILE: 3 rules read, 2 resolved, 1 not resolved (1 data bar); functions not known: FOO`.
  void saySummary() const;

private:
  [[nodiscard]] std::string placeOf(Workbook::Rule const& rule) const;

  std::ostream& _err;
  Selection const& _selection;
  std::uint64_t _failureCount = 0;
};

}  // namespace Zorv::Tool
