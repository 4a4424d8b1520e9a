#pragma once

#include <cstddef>
#include <vector>

#include <boost/optional.hpp>
#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/SharedStyle.h"

namespace Zorv::ConditionalFormatters {

/// Joins cells, or the runs of some rows after those of the rows above, into rectangles of one
/// style.
class StyleRunBuilder {
public:
  /// Adds the next cell in row order; nothing is added for a null style.
  void addCell(unsigned long row, unsigned long column, DOM::SharedCellStylePtr const& style);

  /// Adds runs that another builder finished: of the next rows, ordered as it ordered them.
  void addRuns(std::vector<StyleRun> runs);

  /// The runs of everything added, ordered by first row, then by first column.
  [[nodiscard]] std::vector<StyleRun> finish();

private:
  void endRun();
  void join(StyleRun run);

  std::vector<StyleRun> _runs;
  boost::optional<StyleRun> _unfinished;                         ///< of the row that is being added
  boost::unordered_map<unsigned long, std::size_t> _lowestRuns;  ///< the last run, by first column
};

}  // namespace Zorv::ConditionalFormatters
