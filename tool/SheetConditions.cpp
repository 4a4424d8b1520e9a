#include "tool/SheetConditions.h"

#include <exception>
#include <utility>

#include "ConditionalFormatters/CndFrmt_FormatWalk.h"

namespace Zorv::Tool {

namespace CF = ConditionalFormatters;

SheetConditions::SheetConditions(CF::TableResolver const& resolver,
                                 CF::ConditionalFormatRefs const& formatRefs,
                                 std::vector<Workbook::Rule const*> const& rules,
                                 OnFailure onFailure)
    : _resolver(resolver),
      _formatRefs(formatRefs),
      _rules(formatRefs.size()),
      _onFailure(std::move(onFailure)) {
  for (std::size_t place = 0; place < formatRefs.size(); ++place) {
    _places[&formatRefs[place].second.get()] = place;
  }
  for (auto const* rule : rules) {
    if (rule->format != nullptr) {
      _rules[_places.at(rule->format)] = rule;
    }
  }
}

std::optional<bool> SheetConditions::holds(Workbook::Rule const& rule,
                                           DOM::CellInfo const& cellInfo) const {
  try {
    return _resolver.holds(_places.at(rule.format), cellInfo);
  } catch (std::exception const& error) {
    _onFailure(rule, cellInfo, error.what());
    return std::nullopt;
  }
}

std::optional<std::vector<Workbook::Rule const*>> SheetConditions::findDeciding(
    DOM::CellInfo const& cellInfo) const {
  std::vector<Workbook::Rule const*> deciding;
  std::size_t place = 0;
  auto const ask = [&](DOM::CellInfo const& asked) { return _resolver.holds(place, asked); };
  try {
    CF::walkFormats(
        _formatRefs, cellInfo,
        [&](CF::ConditionalFormatRef const& formatRef) {
          place = static_cast<std::size_t>(&formatRef - _formatRefs.data());
          return &ask;
        },
        [&]() -> DOM::CellInfo const& { return cellInfo; },
        [&](CF::ConditionalFormatRef const& formatRef) {
          deciding.push_back(&ruleOf(place));
          return CF::stepAfter(formatRef.second);
        });
  } catch (std::exception const& error) {
    _onFailure(ruleOf(place), cellInfo, error.what());
    return std::nullopt;
  }
  return deciding;
}

}  // namespace Zorv::Tool
