#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedAreas.h"

#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"

namespace Zorv::ConditionalFormatters {

void FollowedFormulaAreas::add(FormulaArea const& area, RangeOperands const& operands) {
  _operands.emplace(Key{area.table, area.range}, &operands);
}

FollowedAnswers const* FollowedFormulaAreas::find(DOM::Table const& table, TableRange const& area,
                                                  Formulas::AreaAspect aspect) const noexcept {
  auto const found = _operands.find(Key{&table, area});
  FollowedOperands const* const followed =
      found == _operands.end() ? nullptr : found->second->findFollowed();
  FollowedAnswers const* const answers = followed == nullptr ? nullptr : followed->getAnswers();
  return answers != nullptr && answers->knows(aspect) ? answers : nullptr;
}

}  // namespace Zorv::ConditionalFormatters
