#include "ConditionalFormatters/WholeTable/CndFrmt_CellExplainer.h"

#include <algorithm>

#include "ConditionalFormatters/Formats/CndFrmt_FormatWalk.h"
#include "DOM/SetProperties.h"

namespace Zorv::ConditionalFormatters {

namespace {

FailureSkipper makeFailureSkipper() noexcept {
  return FailureSkipper({.range = {}, .onFailure = TablePass::OnFailure::Skip});
}

bool isEvaluated(FormatExplanation const& format) noexcept {
  return format.outcome == FormatOutcome::Holds || format.outcome == FormatOutcome::DoesNotHold ||
         format.outcome == FormatOutcome::Failed;
}

/// Which format decides each property: the first that sets it.
class PropertyOwners {
public:
  [[nodiscard]] PropertyShare share(std::string_view property, FormatIndex format) {
    auto const found = std::ranges::find(_owned, property, &Owned::property);
    if (found != _owned.end()) {
      return {property, found->format};
    }
    _owned.push_back({property, format});
    return {property, boost::none};
  }

private:
  struct Owned {
    std::string_view property;
    FormatIndex format;
  };

  std::vector<Owned> _owned;
};

}  // namespace

CellExplainer::CellExplainer(PreparedTable const& table, PassRequest const& request,
                             OfficeUtils::Clock::TimePoint moment)
    : _table(table),
      _request(request),
      _resolver(table, request, moment),
      _pass(table.getLookups(), moment, request.resources) {}

CellExplanation CellExplainer::explain(DOM::CellInfo const& cellInfo) {
  CellExplanation explanation;
  explanation.formats.resize(_table.getFormatRefs().size());
  auto skipFailure = makeFailureSkipper();
  auto const* const failure = skipFailure([&] { explanation.style = _resolver.resolve(cellInfo); },
                                          [&] { return _resolver.getLastEvaluated(); });
  findOutcomes(cellInfo, failure, explanation);
  findOperands(cellInfo, explanation);
  if (failure == nullptr) {
    shareProperties(explanation);
  }
  return explanation;
}

void CellExplainer::findOutcomes(DOM::CellInfo const& cellInfo, CellFailure const* failure,
                                 CellExplanation& explanation) const {
  FormatIndex const last = _resolver.getLastEvaluated();
  for (FormatIndex const format : findFormatsOn(_table.getFormatRefs(), cellInfo)) {
    FormatExplanation& entry = explanation.formats[format];
    if (format > last) {
      entry.outcome = FormatOutcome::NotReached;
      entry.endedBy = last;
    } else if (failure != nullptr && format == last) {
      entry.outcome = FormatOutcome::Failed;
      entry.failure = failure->exception;
    } else {
      bool const holds = std::ranges::binary_search(_resolver.getHolding(), format);
      entry.outcome = holds ? FormatOutcome::Holds : FormatOutcome::DoesNotHold;
    }
  }
}

void CellExplainer::findOperands(DOM::CellInfo const& cellInfo, CellExplanation& explanation) {
  auto skipFailure = makeFailureSkipper();
  TestedCell tested{{FormulaValue(), cellInfo.getCellIndex()}, cellInfo.getCell() != nullptr};
  for (FormatIndex format = 0; format < explanation.formats.size(); ++format) {
    FormatExplanation& entry = explanation.formats[format];
    if (!isEvaluated(entry)) {
      continue;
    }
    // Operands that cannot be evaluated leave the entry without any: the failure of the format
    // itself is told already.
    skipFailure(
        [&] {
          if (!explanation.value) {
            tested.data.value = _table.getProvider().getCellValue(cellInfo);
            explanation.value = tested.data.value;
          }
          auto const& condition = _table.getOrCreateCondition(format, _request);
          entry.operands = condition.findOperands(tested, _pass);
        },
        [&] { return format; });
  }
}

void CellExplainer::shareProperties(CellExplanation& explanation) const {
  PropertyOwners owners;
  for (FormatIndex const format : _resolver.getHolding()) {
    DOM::forEachSetProperty(
        _table.getStyleSequences().flattenedStyleOf(format),
        [&](std::string_view name, auto const& /*value*/) {
          explanation.formats[format].properties.push_back(owners.share(name, format));
        });
  }
}

}  // namespace Zorv::ConditionalFormatters
