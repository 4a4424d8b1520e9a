#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "tool/ProgressBar.h"
#include "tool/ResolveOutput.h"
#include "tool/SheetConditions.h"

namespace Zorv::Tool {

/// Hands the cells of one sheet that have a conditional style to an output, range by range, and
/// shows how many rows are done.
///
/// Borrows everything.
class SheetPass {
public:
  using Positions = ConditionalFormatters::TableResolver::Positions;

  SheetPass(DOM::Table const& table, ConditionalFormatters::TableResolver const& styles,
            SheetConditions const& conditions, ResolveOutput& output,
            ProgressBar& progress) noexcept
      : _table(table),
        _styles(styles),
        _conditions(conditions),
        _output(output),
        _progress(progress) {}

  /// Goes through one more range. A cell with a condition that cannot be evaluated is left out, and
  /// the conditions tell whoever listens to them.
  void resolve(TableRange const& range, Positions positions, unsigned threadCount);

private:
  void add(DOM::CellInfo const& cellInfo, DOM::SharedCellStylePtr const& style,
           std::span<std::uint32_t const> formats);
  void resolveRest(TableRange const& range, Positions positions,
                   std::optional<CellIndex> const& last);
  void moveTo(unsigned long row);

  DOM::Table const& _table;
  ConditionalFormatters::TableResolver const& _styles;
  SheetConditions const& _conditions;
  ResolveOutput& _output;
  ProgressBar& _progress;
  std::uint64_t _rowsDone = 0;  ///< above `_row`, of all ranges
  unsigned long _row = 0;
};

}  // namespace Zorv::Tool
