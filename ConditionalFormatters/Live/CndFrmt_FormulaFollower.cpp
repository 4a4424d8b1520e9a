#include "ConditionalFormatters/Live/CndFrmt_FormulaFollower.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedFormula.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationLimitError.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Evaluates what formulas have in common for all cells. False if they meet a limit.
bool prepareFormulas(PreparedCondition const& condition, CellIndex cell, PreparedTable& prepared) {
  PassContext pass(prepared.getLookups(), OfficeUtils::PinnedMoment::readMoment(), {});
  try {
    for (PreparedFormula const* const formula : condition.listFormulas()) {
      formula->prepareFor(cell, pass.getSession());
    }
    return true;
  } catch (Formulas::EvaluationLimitError const&) {
    return false;
  }
}

/// Formats with like formulas and the same ranges follow one another.
template <class Area>
void addOnce(std::vector<Area>& areas, Area const& area) {
  if (areas.empty() || !(areas.back() == area)) {
    areas.push_back(area);
  }
}

}  // namespace

bool FormulaFollower::follow(FormatIndex format, FormatDependencies const& dependencies,
                             Reach const& reach, ReachedAreas& reached) {
  PreparedCondition const* const before = _prepared.findCondition(format);
  bool const areFollowed = std::ranges::all_of(
      reach.fixed, [&](auto const* fixed) { return isFollowed(dependencies.areaOf(*fixed)); });
  if (before == nullptr || before->hasGivenUp() || !areFollowed) {
    return false;
  }
  auto const& ranges = _prepared.getFormatRefs()[format].first;
  FormulaPlace const place{dependencies.getBaseCell(), ranges};
  auto after = _prepared.prepareAnother(format);
  if (!prepareFormulas(*after, place.baseCell, _prepared)) {
    return false;
  }
  auto const moves = findMoves(*before, *after, place);
  std::vector<ClassArea> classes;
  if (!moves || !appendReachOfRest(*after, dependencies, place, classes)) {
    return false;
  }
  for (NumberMove const& move : *moves) {
    for (TableRange const& range : ranges) {
      addOnce(reached.numbers, NumberArea{range, move.least, move.most, move.isOfCells});
    }
  }
  for (ClassArea const& area : classes) {
    addOnce(reached.classes, area);
  }
  _prepared.replaceCondition(format, std::move(after));
  return true;
}

bool FormulaFollower::isFollowed(FormulaArea const& area) const noexcept {
  using Formulas::AreaAspect;
  auto const knows = [&](bool isAsked, AreaAspect aspect) {
    return !isAsked || _prepared.findAnswers(area, aspect) != nullptr;
  };
  return !area.aspects.isEmpty() && knows(area.aspects.summary, AreaAspect::Summary) &&
         knows(area.aspects.order, AreaAspect::Order) &&
         knows(area.aspects.classes, AreaAspect::Classes);
}

bool FormulaFollower::appendReachOfRest(PreparedCondition const& condition,
                                        FormatDependencies const& dependencies,
                                        FormulaPlace const& place,
                                        std::vector<ClassArea>& areas) const {
  auto const& provider = _sources.provider.getFormulasContextProvider();
  auto const* const context = provider.getTableContext(_sources.table);
  for (PreparedFormula const* const formula : condition.listFormulas()) {
    auto const common = formula->findCommon();
    if (common->value != nullptr) {
      continue;
    }
    auto const rest =
        Formulas::findDependencies(*common->rest, PtrUtils::derefObtained(context), provider);
    for (auto const& reference : rest.references) {
      bool const isReached =
          !reference.corners.isRelative() && isFixedReached(reference, _sources.table, _changes);
      if (isReached && !appendCounted(reference, dependencies, place, areas)) {
        return false;
      }
    }
  }
  return true;
}

bool FormulaFollower::appendCounted(Formulas::Dependencies::Reference const& reference,
                                    FormatDependencies const& dependencies,
                                    FormulaPlace const& place,
                                    std::vector<ClassArea>& areas) const {
  if (!reference.countedCell || !place.isOwnCell(*reference.countedCell)) {
    return false;
  }
  auto const* const answers =
      _prepared.findAnswers(dependencies.areaOf(reference), Formulas::AreaAspect::Classes);
  auto const* const changed = answers == nullptr ? nullptr : answers->findChangedClasses();
  // Empty cells, and places without a cell, are counted as zero.
  if (changed == nullptr || std::ranges::count(*changed, Formulas::CriterionText(0.0)) > 0) {
    return false;
  }
  for (TableRange const& range : place.ranges) {
    areas.push_back({range, *changed});
  }
  return true;
}

}  // namespace Zorv::ConditionalFormatters
