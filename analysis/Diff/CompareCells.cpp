#include "analysis/Diff/CompareCells.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "DOM/CellStyle.h"
#include "DOM/Table.h"
#include "OfficeUtils/PinnedMoment.h"
#include "analysis/Diff/ComparedAreas.h"
#include "workbook/DocumentResolver.h"

namespace Zorv::Analysis {

namespace {

namespace CF = ConditionalFormatters;

using Areas = std::vector<TableRange>;

/// One sheet of one version, ready to be resolved.
class VersionSheet {
public:
  VersionSheet(DocumentVersion const& version, std::size_t sheet, CompareOptions const& options)
      : _moment(version.moment),
        _document(*version.document, options.localeName, options.timeZone),
        _sheet(_document.prepare(sheet)) {}

  void visit(CF::TablePass const& pass, Visuals::VisualVisitor const& visitor) const {
    OfficeUtils::PinnedMoment const moment(_moment);
    _sheet.getVisualResolver().visit(pass, visitor);
  }

private:
  OfficeUtils::Clock::TimePoint _moment;
  Workbook::DocumentResolver _document;
  Workbook::SheetResolver _sheet;
};

CellLook lookOf(Visuals::VisualCell const& cell) {
  return {cell.resolved.style, cell.visuals,
          cell.resolved.failure != nullptr || cell.failure != nullptr};
}

/// Comparison of two versions of a sheet, band of rows by band of rows.
class SheetComparison {
public:
  SheetComparison(VersionSheet const& first, VersionSheet const& second,
                  CompareOptions const& options, std::pair<std::size_t, std::size_t> sheets,
                  DifferenceVisitor const& visitor) noexcept
      : _first(first),
        _second(second),
        _options(options),
        _sheets(std::move(sheets)),
        _visitor(visitor) {}

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
    _first.visit(pass, [this](Visuals::VisualCell const& cell) { _looks.push_back(lookOf(cell)); });
    // Both passes go through the same positions in the same order.
    std::size_t next = 0;
    _second.visit(pass, [&](Visuals::VisualCell const& cell) {
      CellLook const& first = _looks[next++];
      CellLook const second = lookOf(cell);
      if (!isSameLook(first, second)) {
        _visitor(
            {_sheets.first, _sheets.second, cell.resolved.cellInfo.getCellIndex(), first, second});
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

bool isSameBar(Visuals::ShownBar const& a, Visuals::ShownBar const& b) noexcept {
  return a.extent == b.extent && a.getFill() == b.getFill() && a.getBorder() == b.getBorder() &&
         a.bar->isGradient == b.bar->isGradient && a.bar->direction == b.bar->direction &&
         (!a.extent.axis || a.bar->axisColour == b.bar->axisColour);
}

/// Equality of two values that may be missing.
template <class Value, class IsSame>
bool areSame(std::optional<Value> const& a, std::optional<Value> const& b, IsSame const& isSame) {
  return a && b ? isSame(*a, *b) : a.has_value() == b.has_value();
}

bool isSameVisuals(Visuals::CellVisuals const& a, Visuals::CellVisuals const& b) {
  using Visuals::ShownIcon;
  using Visuals::ShownScale;
  return a.showValue == b.showValue && areSame(a.bar, b.bar, &isSameBar) &&
         areSame(a.icon, b.icon,
                 [](ShownIcon const& x, ShownIcon const& y) { return x.icon == y.icon; }) &&
         areSame(a.scale, b.scale, [](ShownScale const& x, ShownScale const& y) {
           return x.colour == y.colour && x.isBehindFill == y.isBehindFill;
         });
}

/// Parts of areas inside some bounds; all areas if there are none.
Areas clip(Areas areas, std::vector<TableRange> const& bounds) {
  if (bounds.empty()) {
    return areas;
  }
  Areas clipped;
  for (TableRange const& bound : bounds) {
    for (TableRange const& area : areas) {
      if (TableRange const inside = intersect(area, bound); !inside.isEmpty()) {
        clipped.push_back(inside);
      }
    }
  }
  return clipped;
}

}  // namespace

bool isSameLook(CellLook const& a, CellLook const& b) noexcept {
  return a.hasFailed == b.hasFailed && (a.style == b.style || styleOf(a) == styleOf(b)) &&
         isSameVisuals(a.visuals, b.visuals);
}

std::uint64_t compareSheets(DocumentVersion const& first, std::size_t firstSheet,
                            DocumentVersion const& second, std::size_t secondSheet,
                            CompareOptions const& options, DifferenceVisitor const& visitor) {
  Areas areas =
      clip(findComparedAreas({first.document, firstSheet}, {second.document, secondSheet}),
           options.ranges);
  if (areas.empty()) {
    return 0;
  }
  VersionSheet const a(first, firstSheet, options);
  VersionSheet const b(second, secondSheet, options);
  return SheetComparison(a, b, options, {firstSheet, secondSheet}, visitor)
      .compare(0, DOM::Table::rowCount, std::move(areas));
}

}  // namespace Zorv::Analysis
