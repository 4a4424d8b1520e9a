#include "analysis/Diff/CompareCells.h"

#include <memory>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "DOM/CellStyle.h"
#include "DOM/Table.h"
#include "OfficeUtils/PinnedMoment.h"
#include "analysis/Diff/ComparedAreas.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Analysis {

namespace {

namespace CF = ConditionalFormatters;

using Areas = std::vector<TableRange>;

/// One sheet of one version, ready to be resolved.
class VersionSheet {
public:
  VersionSheet(DocumentVersion const& version, std::size_t sheet, CompareOptions const& options)
      : _moment(version.moment),
        _table(*version.document->getSheets()[sheet].table),
        _calculator(std::make_unique<Workbook::DocumentValueProvider>(
            *version.document, options.localeName, options.timeZone)),
        _resolver(_calculator.prepare(version.document->getStyles(), _table)) {}

  void visit(CF::TablePass const& pass, CF::CellVisitor const& visitor) const {
    OfficeUtils::PinnedMoment const moment(_moment);
    _resolver.visit(pass, visitor);
  }

private:
  OfficeUtils::Clock::TimePoint _moment;
  DOM::Table const& _table;
  CF::ConditionalFormattingPropsCalculator _calculator;
  CF::TableResolver _resolver;
};

CellLook lookOf(CF::ResolvedCell const& cell) { return {cell.style, cell.failure != nullptr}; }

/// Comparison of two versions of a sheet, band of rows by band of rows.
class SheetComparison {
public:
  SheetComparison(VersionSheet const& first, VersionSheet const& second,
                  CompareOptions const& options, std::pair<std::size_t, std::size_t> sheets,
                  DifferenceVisitor const& visitor) noexcept
      : _first(first), _second(second), _options(options), _sheets(sheets), _visitor(visitor) {}

  /// Returns the number of positions.
  std::uint64_t compare(unsigned long firstRow, unsigned long endRow, Areas areas) {
    constexpr std::uint64_t positionsAtATime = 65'536;
    CF::TablePass pass{.range = {firstRow, 0, endRow, DOM::Table::columnCount},
                       .positions = CF::TablePass::Positions::Areas,
                       .threadCount = _options.threadCount,
                       .onFailure = CF::TablePass::OnFailure::Skip,
                       .areas = std::move(areas),
                       .budget = _options.budget};
    std::erase_if(pass.areas,
                  [&](TableRange const& area) { return intersect(area, pass.range).isEmpty(); });
    std::uint64_t const count = CF::TableResolver::countPositions(pass);
    if (count > positionsAtATime && endRow - firstRow > 1) {
      unsigned long const middle = firstRow + (endRow - firstRow) / 2;
      compare(firstRow, middle, pass.areas);
      compare(middle, endRow, std::move(pass.areas));
    } else if (count > 0) {
      compare(pass);
    }
    return count;
  }

private:
  void compare(CF::TablePass const& pass) {
    _looks.clear();
    _first.visit(pass, [this](CF::ResolvedCell const& cell) { _looks.push_back(lookOf(cell)); });
    // Both passes go through the same positions in the same order.
    std::size_t next = 0;
    _second.visit(pass, [&](CF::ResolvedCell const& cell) {
      CellLook const& first = _looks[next++];
      CellLook const second = lookOf(cell);
      if (!isSameLook(first, second)) {
        _visitor({_sheets.first, _sheets.second, cell.cellInfo.getCellIndex(), first, second});
      }
    });
  }

  VersionSheet const& _first;
  VersionSheet const& _second;
  CompareOptions const& _options;
  std::pair<std::size_t, std::size_t> _sheets;
  DifferenceVisitor const& _visitor;
  std::vector<CellLook> _looks;
};

DOM::CellStyle const& styleOf(CellLook const& look) noexcept {
  static DOM::CellStyle const none;
  return look.style ? look.style->get() : none;
}

}  // namespace

bool isSameLook(CellLook const& a, CellLook const& b) noexcept {
  return a.hasFailed == b.hasFailed && (a.style == b.style || styleOf(a) == styleOf(b));
}

std::uint64_t compareSheets(DocumentVersion const& first, std::size_t firstSheet,
                            DocumentVersion const& second, std::size_t secondSheet,
                            CompareOptions const& options, DifferenceVisitor const& visitor) {
  Areas areas = findComparedAreas({first.document, firstSheet}, {second.document, secondSheet});
  if (areas.empty()) {
    return 0;
  }
  VersionSheet const a(first, firstSheet, options);
  VersionSheet const b(second, secondSheet, options);
  return SheetComparison(a, b, options, {firstSheet, secondSheet}, visitor)
      .compare(0, DOM::Table::rowCount, std::move(areas));
}

}  // namespace Zorv::Analysis
