#include "ConditionalFormatters/WholeTable/CndFrmt_LineVerdicts.h"

#include <cstddef>

namespace Zorv::ConditionalFormatters {

namespace {

/// Most verdicts of columns that are kept, a byte each.
constexpr std::size_t columnVerdictLimit = std::size_t{1} << 24U;

}  // namespace

FormatIndices const& LineVerdicts::select(DOM::CellInfo const& cellInfo,
                                          FormatIndices const& formats) {
  unsigned long const row = cellInfo.getRowIndex();
  if (_all != &formats || _row != row) {
    _all = &formats;
    _row = row;
    _left = formats;
    _hasNewFalse = true;
  }
  if (_hasNewFalse) {
    std::erase_if(_left, [&](FormatIndex format) { return isFalseForRow(format, row); });
    _hasNewFalse = false;
  }
  return _left;
}

bool LineVerdicts::ask(FormatIndex format, PreparedCondition const& condition,
                       TestedCell const& cell, PassContext& pass) {
  Verdict* const known = find(format, cell);
  if (known == nullptr) {
    return condition.holds(cell, pass);
  }
  if (*known == Verdict::Unknown) {
    bool const holds = condition.holds(cell, pass);
    *known = holds ? Verdict::True : Verdict::False;
    _hasNewFalse = _hasNewFalse || !holds;
  }
  return *known == Verdict::True;
}

bool LineVerdicts::isFalseForRow(FormatIndex format, unsigned long row) const noexcept {
  return format < _ofRow.size() && _ofRow[format].verdict == Verdict::False &&
         _ofRow[format].row == row;
}

LineVerdicts::Verdict* LineVerdicts::find(FormatIndex format, TestedCell const& cell) {
  VerdictScope const scope = _table.getVerdictScope(format);
  unsigned long const column = cell.data.cellIndex.getColumn().get();
  if (scope == VerdictScope::Cell) {
    return nullptr;
  }
  std::size_t const formatCount = _table.getFormatRefs().size();
  if (scope == VerdictScope::Row) {
    _ofRow.resize(formatCount);
    OfRow& ofRow = _ofRow[format];
    unsigned long const row = cell.data.cellIndex.getRow().get();
    if (ofRow.row != row) {
      ofRow = {row, Verdict::Unknown};
    }
    return &ofRow.verdict;
  }
  if (formatCount * (column + 1) > columnVerdictLimit) {
    return nullptr;
  }
  _ofColumns.resize(formatCount);
  auto& ofColumns = _ofColumns[format];
  if (ofColumns.size() <= column) {
    ofColumns.resize(column + 1);
  }
  return &ofColumns[column];
}

}  // namespace Zorv::ConditionalFormatters
