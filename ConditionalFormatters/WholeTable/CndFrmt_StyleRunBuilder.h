#pragma once

#include <cstddef>
#include <vector>

#include <boost/optional.hpp>
#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/SharedStyle.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A run of a TableResolver while others may still join it. It borrows the style: threads that
/// share one would wait for each other at its count of references.
struct OpenStyleRun {
  TableRange range;
  DOM::SharedCellStylePtr const* style;
};

/// Joins runs that come ordered by first row, then by first column, with those that they go on
/// below. Gives OpenStyleRuns, or StyleRuns.
template <class Run>
class StyleRunJoiner {
public:
  /// Adds the next run, where it goes on no other.
  void join(OpenStyleRun const& run);
  /// Adds one of which it is known that no other goes on.
  void append(OpenStyleRun const& run);

  /// The runs of everything added, ordered as it came.
  [[nodiscard]] std::vector<Run> finish();

private:
  std::vector<Run> _runs;
  boost::unordered_map<unsigned long, std::size_t> _lowestRuns;  ///< the last run, by first column
};

extern template class StyleRunJoiner<OpenStyleRun>;
extern template class StyleRunJoiner<StyleRun>;

/// Joins the cells of a band into rectangles of one style.
class BandRunsBuilder {
public:
  /// Adds the next cell in row order; nothing is added for a null style. Borrows the style.
  void addCell(unsigned long row, unsigned long column, DOM::SharedCellStylePtr const& style);

  /// The runs of everything added, ordered by first row, then by first column.
  [[nodiscard]] std::vector<OpenStyleRun> finish();

private:
  void endRun();

  StyleRunJoiner<OpenStyleRun> _joiner;
  boost::optional<OpenStyleRun> _unfinished;  ///< of the row that is being added
};

/// Joins the runs of one band after the other.
class TableRunsBuilder {
public:
  /// Adds the runs of the next band.
  void addBand(TableRange const& band, std::vector<OpenStyleRun> const& runs);

  /// The runs of everything added, ordered by first row, then by first column.
  [[nodiscard]] std::vector<StyleRun> finish() { return _joiner.finish(); }

private:
  StyleRunJoiner<StyleRun> _joiner;
};

}  // namespace Zorv::ConditionalFormatters
