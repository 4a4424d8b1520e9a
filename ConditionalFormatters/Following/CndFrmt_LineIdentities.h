#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_LineMoves.h"

namespace Zorv::ConditionalFormatters {

/// The identities of a sheet's rows, or of its columns, which follow edits of these.
///
/// Neighbouring lines with consecutive identities are kept as one run: an untouched sheet is one,
/// and an edit adds two or three, or none next to others. Costs: a question, a binary search; an
/// edit, a step for each run.
class LineIdentities {
public:
  /// Neighbouring lines with consecutive identities.
  struct Run {
    unsigned long first;     ///< the line
    unsigned long end;       ///< the line after the last one
    unsigned long identity;  ///< of the first line
  };

  /// `length`: how many lines there are. `bits`: identities have at most so many.
  LineIdentities(unsigned long length, unsigned bits);

  /// Requires a line of the sheet.
  [[nodiscard]] unsigned long identityOf(unsigned long line) const noexcept;
  /// The line with an identity; none if it was deleted. The first question after an edit sorts the
  /// runs.
  [[nodiscard]] std::optional<unsigned long> find(unsigned long identity);

  /// False where identities run out, or where there are so many runs that edits are slow.
  [[nodiscard]] bool canFollow(LineMoves const& moves) const noexcept;
  /// Requires that it can follow them.
  void follow(LineMoves const& moves);

  /// All lines, by ascending identities.
  [[nodiscard]] std::vector<Run> listByIdentity() const;

private:
  void follow(AxisEdit const& edit);
  /// Appends lines of some runs to the new ones.
  void appendLines(std::vector<Run> const& before, unsigned long first, unsigned long end);
  void appendNew(unsigned long count);
  /// Appends consecutive identities.
  void append(unsigned long identity, unsigned long count);

  unsigned long _length;
  unsigned long _mostGiven;
  unsigned long _given = 0;      ///< how many identities there are; the last one is the largest
  std::vector<Run> _runs;        ///< ascending, without gaps
  std::vector<Run> _byIdentity;  ///< the same; none after an edit
};

}  // namespace Zorv::ConditionalFormatters
