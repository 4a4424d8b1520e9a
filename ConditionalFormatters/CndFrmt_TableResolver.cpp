#include "ConditionalFormatters/CndFrmt_TableResolver.h"

#include "ConditionalFormatters/Formats/CndFrmt_FormulaBaseCell.h"
#include "ConditionalFormatters/Formats/CndFrmt_Positions.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellExplainer.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellResolver.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_ResolvePass.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RunsPass.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_VerdictPass.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

using OfficeUtils::PinnedMoment;

namespace {

// Callers who ask about one cell ask about others, too: the requests name no area.

PassRequest requestAllFormats(WorkBudget* budget = nullptr) noexcept {
  return {.resources = {.threadCount = 1, .budget = budget}};
}

PassRequest requestOneFormat() noexcept { return {.asksOneFormat = true}; }

}  // namespace

DOM::SharedCellStylePtr TableResolver::resolve(DOM::CellInfo const& cellInfo) const {
  return CellResolver(*_prepared, requestAllFormats(), PinnedMoment::readMoment())
      .resolve(cellInfo);
}

bool TableResolver::holds(std::size_t format, DOM::CellInfo const& cellInfo) const {
  FormatIndex const index = _prepared->checkFormat(format);
  return ConditionAsker(*_prepared, index, requestOneFormat(), PinnedMoment::readMoment())
      .holds(cellInfo);
}

ConditionOperands TableResolver::findOperands(std::size_t format,
                                              DOM::CellInfo const& cellInfo) const {
  FormatIndex const index = _prepared->checkFormat(format);
  return ConditionAsker(*_prepared, index, requestOneFormat(), PinnedMoment::readMoment())
      .findOperands(cellInfo);
}

CellExplanation TableResolver::explain(DOM::CellInfo const& cellInfo, WorkBudget* budget) const {
  return CellExplainer(*_prepared, requestAllFormats(budget), PinnedMoment::readMoment())
      .explain(cellInfo);
}

CellIndex TableResolver::getFormulaBaseCell(std::size_t format) const {
  return formulaBaseCell(_prepared->getFormatRefs()[_prepared->checkFormat(format)].first);
}

void TableResolver::visit(TablePass const& pass, CellVisitor const& visitor) const {
  resolveCells(*_prepared, pass, visitor);
}

void TableResolver::visitWithWorkers(TablePass const& pass,
                                     MakeCellWorker const& makeWorker) const {
  resolveCells(*_prepared, pass, makeWorker);
}

void TableResolver::visitVerdicts(std::size_t format, TablePass const& pass,
                                  VerdictVisitor const& visitor) const {
  judgeCells(*_prepared, _prepared->checkFormat(format), pass, visitor);
}

std::vector<StyleRun> TableResolver::resolveRuns(TablePass const& pass) const {
  return resolveIntoRuns(*_prepared, pass);
}

std::uint64_t TableResolver::countFormatted(TableRange const& range) const {
  return ConditionalFormatters::countPositions(clip(_prepared->listRanges(), range));
}

std::uint64_t TableResolver::countFormatted(std::size_t format, TableRange const& range) const {
  FormatIndex const index = _prepared->checkFormat(format);
  return ConditionalFormatters::countPositions(
      clip(_prepared->getFormatRefs()[index].first, range));
}

std::uint64_t TableResolver::countPositions(TablePass const& pass) {
  return ConditionalFormatters::countPositions(clip(pass.areas, pass.range));
}

}  // namespace Zorv::ConditionalFormatters
