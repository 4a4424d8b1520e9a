#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"

#include <algorithm>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Operands/CndFrmt_Threshold.h"

namespace Zorv::ConditionalFormatters {

namespace {

OperandNeeds findRankNeeds(DOM::TopBottomConditionalFormatOperator const& record) {
  auto const rank = selectableRank(record);
  if (!rank) {
    return {.ranking = true};
  }
  return rankingOrderOf(record.getType()) == RankingOrder::LargestFirst
             ? OperandNeeds{.largest = *rank}
             : OperandNeeds{.smallest = *rank};
}

}  // namespace

OperandNeeds& OperandNeeds::operator|=(OperandNeeds const& other) noexcept {
  mean = mean || other.mean;
  largest = std::max(largest, other.largest);
  smallest = std::max(smallest, other.smallest);
  ranking = ranking || other.ranking;
  occurrences = occurrences || other.occurrences;
  return *this;
}

OperandNeeds findOperandNeeds(DOM::ConditionalFormatOperator const& record) {
  if (auto const* const ranked = boost::get<DOM::TopBottomConditionalFormatOperator>(&record)) {
    return findRankNeeds(*ranked);
  }
  return {.mean = boost::get<DOM::AboveAverageConditionalFormatOperator>(&record) != nullptr,
          .occurrences = boost::get<DOM::UniquenessConditionalFormatOperator>(&record) != nullptr};
}

}  // namespace Zorv::ConditionalFormatters
