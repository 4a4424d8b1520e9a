#include "render/Build/Resolution.h"

#include <algorithm>
#include <exception>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"

namespace Zorv::Render {

namespace {

namespace CF = ConditionalFormatters;
using DOM::Table;

/// True for whole rows and columns, and for ranges that end where the sheet ends.
bool isUnbounded(TableRange const& range) noexcept {
  return range.endRow == Table::rowCount || range.endColumn == Table::columnCount;
}

std::string describeFailure(std::exception_ptr const& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (std::exception const& exception) {
    return exception.what();
  }
}

/// Takes memory from a budget in lumps.
class MemoryLumps {
public:
  /// Borrows the budget; null for none.
  explicit MemoryLumps(WorkBudget* budget) noexcept : _budget(budget) {}

  void count(std::uint64_t bytes) {
    constexpr std::uint64_t lump = 65'536;
    _pending += bytes;
    if (_budget != nullptr && _pending >= lump) {
      _budget->takeMemory(std::exchange(_pending, 0));
    }
  }

private:
  WorkBudget* _budget;
  std::uint64_t _pending = 0;
};

/// The first failures of a sheet's cells, and the number of the others.
class FailureList {
public:
  FailureList(std::string const& sheet, std::vector<std::string>& findings) noexcept
      : _sheet(sheet), _findings(findings) {}

  void add(DOM::CellInfo const& cell, std::exception_ptr const& failure) {
    constexpr std::size_t most = 10;
    if (++_count <= most) {
      _findings.push_back(fmt::format(
          "{}, cell {}: is drawn without the conditional format that fails there: {}", _sheet,
          DOM::A1Notation::toAddress(cell.getCellIndex()), describeFailure(failure)));
    } else {
      ++_others;
    }
  }

  void finish() const {
    if (_others > 0) {
      _findings.push_back(
          fmt::format("{}: conditional formats fail in {} more cells", _sheet, _others));
    }
  }

private:
  std::string const& _sheet;
  std::vector<std::string>& _findings;
  std::size_t _count = 0;
  std::size_t _others = 0;
};

}  // namespace

DecidedPosition const* Resolution::find(unsigned long row, unsigned long column) const noexcept {
  auto const placeOf = [](DecidedPosition const& position) {
    return std::pair<unsigned long, unsigned long>(position.row, position.column);
  };
  std::pair const wanted(row, column);
  auto const found = std::ranges::lower_bound(positions, wanted, {}, placeOf);
  return found != positions.end() && placeOf(*found) == wanted ? &*found : nullptr;
}

SheetResolver::SheetResolver(Workbook::Document const& document, PictureOptions const& options)
    : _document(document),
      _options(options),
      _resolver(document, options.localeName, options.timeZone) {}

Workbook::SheetRules SheetResolver::listRules(std::size_t sheet) const {
  return {_document, sheet,
          _resolver.getCalculator().getConditionalFormatRefs(*_document.getSheets()[sheet].table)};
}

CF::TablePass SheetResolver::makePass(std::size_t index, TableRange const& bounds,
                                      std::vector<std::string>& findings) const {
  Workbook::Sheet const& sheet = _document.getSheets()[index];
  CF::TablePass pass{.range = bounds,
                     .positions = CF::TablePass::Positions::Areas,
                     .threadCount = _options.threadCount,
                     .onFailure = CF::TablePass::OnFailure::Skip,
                     .budget = _options.budget};
  TableRange const used = sheet.table->getUsedRange();
  for (Workbook::Rule const& rule : _document.getRulesOfSheet(index)) {
    if (!rule.isResolved()) {
      continue;
    }
    for (TableRange const& range : rule.ranges) {
      TableRange const part =
          intersect(range, isUnbounded(range) ? intersect(used, bounds) : bounds);
      if (!part.isEmpty()) {
        pass.areas.push_back(part);
      }
    }
  }
  std::uint64_t const count = CF::TableResolver::countPositions(pass);
  if (count > _options.positionLimit) {
    findings.push_back(
        fmt::format("{}: the ranges of the rules have {} positions; conditional formats are drawn "
                    "in existing cells alone",
                    sheet.name, count));
    pass.positions = CF::TablePass::Positions::Existing;
    pass.areas.clear();
  }
  return pass;
}

Resolution SheetResolver::resolve(std::size_t index, TableRange const& bounds,
                                  Workbook::SheetRules const& rules, Decisions& decisions,
                                  std::vector<std::string>& findings) const {
  Workbook::Sheet const& sheet = _document.getSheets()[index];
  Resolution resolution;
  auto const resolver = _resolver.prepare(index);
  FailureList failures(sheet.name, findings);
  MemoryLumps memory(_options.budget);
  resolver.getVisualResolver().visit(
      makePass(index, bounds, findings), [&](Visuals::VisualCell const& cell) {
        auto const& resolved = cell.resolved;
        if (resolved.failure != nullptr) {
          failures.add(resolved.cellInfo, resolved.failure->exception);
        } else if (cell.failure != nullptr) {
          failures.add(resolved.cellInfo, cell.failure->exception);
        }
        if (!resolved.style && cell.visuals.isEmpty()) {
          return;
        }
        memory.count(sizeof(DecidedPosition) + (cell.visuals.isEmpty() ? 0 : sizeof(cell.visuals)));
        DecidedPosition position;
        position.row = static_cast<std::uint32_t>(resolved.cellInfo.getRowIndex());
        position.column = static_cast<std::uint32_t>(resolved.cellInfo.getColIndex());
        position.decision = decisions.intern(resolved.formats, rules.rulesOf(cell.visuals));
        position.style = resolved.style;
        if (!cell.visuals.isEmpty()) {
          resolution.visuals.push_back(cell.visuals);
          position.visuals = static_cast<std::uint32_t>(resolution.visuals.size());
        }
        resolution.positions.push_back(std::move(position));
      });
  failures.finish();
  return resolution;
}

}  // namespace Zorv::Render
