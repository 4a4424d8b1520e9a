#pragma once

#include <cstddef>
#include <vector>

#include <boost/optional.hpp>
#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/CndFrmt_StyleRun.h"
#include "DOM/SharedStyle.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A run that may still grow. It borrows the style: threads that share a style would contend for
/// its reference count.
struct OpenStyleRun {
  TableRange range;
  DOM::SharedCellStylePtr const* style;
};

/// Joins runs that are given in order of first row, then first column, with the runs right above
/// them. Gives OpenStyleRuns, or StyleRuns.
template <class Run>
class StyleRunJoiner {
public:
  /// Adds the next run, or extends the run above that it continues.
  void join(OpenStyleRun const& run);
  /// Adds the next run, which continues no other.
  void append(OpenStyleRun const& run);

  /// All runs, in the order in which they were added.
  [[nodiscard]] std::vector<Run> finalize();

private:
  std::vector<Run> _runs;
  boost::unordered_map<unsigned long, std::size_t> _lowestRuns;  ///< the last run, by first column
};

extern template class StyleRunJoiner<OpenStyleRun>;
extern template class StyleRunJoiner<StyleRun>;

/// Joins the cells of a row block into rectangles of one style.
class BlockRunsBuilder {
public:
  /// Adds the next cell in row order; nothing is added for a null style. Borrows the style.
  void addCell(unsigned long row, unsigned long column, DOM::SharedCellStylePtr const& style);

  /// All runs, in order of first row, then first column.
  [[nodiscard]] std::vector<OpenStyleRun> finalize();

private:
  void endRun();

  StyleRunJoiner<OpenStyleRun> _joiner;
  boost::optional<OpenStyleRun> _unfinished;  ///< of the current row
};

/// Joins the runs of one row block after the other.
class TableRunsBuilder {
public:
  /// Adds the runs of the next block.
  void addBlock(TableRange const& block, std::vector<OpenStyleRun> const& runs);

  /// All runs, in order of first row, then first column.
  [[nodiscard]] std::vector<StyleRun> finalize() { return _joiner.finalize(); }

private:
  StyleRunJoiner<StyleRun> _joiner;
};

}  // namespace Zorv::ConditionalFormatters
