#pragma once

#include <cstddef>
#include <vector>

#include <boost/optional.hpp>
#include <boost/unordered_map.hpp>

#include "DOM/SharedStyle.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A run of a TableResolver while others may still join it. It borrows the style: threads that
/// share one would wait for each other at its count of references.
struct OpenStyleRun {
  TableRange range;
  DOM::SharedCellStylePtr const* style;
};

/// Joins cells, or the runs of some rows after those of the rows above, into rectangles of one
/// style.
class StyleRunBuilder {
public:
  /// Adds the next cell in row order; nothing is added for a null style. Borrows the style.
  void addCell(unsigned long row, unsigned long column, DOM::SharedCellStylePtr const& style);

  /// Adds runs that another builder finished: those of the next rows, a band, ordered as it ordered
  /// them.
  void addRuns(TableRange const& band, std::vector<OpenStyleRun> const& runs);

  /// The runs of everything added, ordered by first row, then by first column.
  [[nodiscard]] std::vector<OpenStyleRun> finish();

private:
  void endRun();
  void join(OpenStyleRun const& run);

  std::vector<OpenStyleRun> _runs;
  boost::optional<OpenStyleRun> _unfinished;                     ///< of the row that is being added
  boost::unordered_map<unsigned long, std::size_t> _lowestRuns;  ///< the last run, by first column
};

}  // namespace Zorv::ConditionalFormatters
