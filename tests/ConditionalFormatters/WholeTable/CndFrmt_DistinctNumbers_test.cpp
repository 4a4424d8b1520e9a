#include "ConditionalFormatters/WholeTable/CndFrmt_DistinctNumbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {

namespace {

using namespace TestSupport;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr RankingOrder bothOrders[] = {RankingOrder::LargestFirst, RankingOrder::SmallestFirst};

/// A table of one column.
class Column {
public:
  explicit Column(std::vector<FormulaValue> const& values)
      : _ranges{{0, 0, values.size(), 1}}, _provider(_table) {
    for (unsigned long row = 0; row < values.size(); ++row) {
      _table.setValue(row, 0, values[row]);
    }
  }

  [[nodiscard]] DistinctNumbers find(unsigned threadCount) const {
    return DistinctNumbers({_provider, _table, _ranges, {threadCount}});
  }

private:
  DOM::Table _table;
  std::vector<TableRange> _ranges;
  PlainValueContextProvider _provider;
};

std::vector<double> rankAll(DistinctNumbers const& numbers, RankingOrder order) {
  std::vector<double> ranking;
  for (std::size_t rank = 1; rank <= numbers.count(); ++rank) {
    ranking.push_back(numbers.at(rank, order).get());
  }
  return ranking;
}

TEST(DistinctNumbers, AreRankedFromEitherEnd) {
  DistinctNumbers const numbers = Column({number(-1), number(3), number(0.5), number(3),
                                          number(-infinity), number(infinity), number(-2)})
                                      .find(1);
  EXPECT_EQ(rankAll(numbers, RankingOrder::LargestFirst),
            (std::vector<double>{infinity, 3, 0.5, -1, -2, -infinity}));
  EXPECT_EQ(rankAll(numbers, RankingOrder::SmallestFirst),
            (std::vector<double>{-infinity, -2, -1, 0.5, 3, infinity}));
}

TEST(DistinctNumbers, OtherValuesAreNone) {
  DistinctNumbers const numbers =
      Column({text("1"), boolean(true), empty(), error(FormulaModel::FormulaErrorCode::Value)})
          .find(1);
  EXPECT_EQ(numbers.count(), 0);
}

TEST(DistinctNumbers, TheTwoZerosAreOne) {
  DistinctNumbers const numbers = Column({number(-0.0), number(0.0), number(-0.0)}).find(1);
  EXPECT_EQ(rankAll(numbers, RankingOrder::LargestFirst), (std::vector<double>{0.0}));
}

TEST(DistinctNumbers, ANaNCountsOnlyWhereThereIsNothingElse) {
  EXPECT_EQ(Column({number(nan), number(7), number(nan)}).find(1).count(), 1);
  DistinctNumbers const onlyNaNs = Column({number(nan), text("a"), number(-nan)}).find(1);
  ASSERT_EQ(onlyNaNs.count(), 1);
  for (RankingOrder const order : bothOrders) {
    EXPECT_TRUE(std::isnan(onlyNaNs.at(1, order).get()));
  }
}

/// So many that they are sorted in several pieces, about half of them repeated.
std::vector<FormulaValue> makeManyValues() {
  std::mt19937 random(11);
  std::uniform_int_distribution<int> draw(-60'000, 60'000);
  std::vector<FormulaValue> values;
  for (int i = 0; i < 100'000; ++i) {
    int const drawn = draw(random);
    switch (drawn % 7) {
      case 0:
        values.push_back(text("text"));
        break;
      case 1:
        values.push_back(number(drawn % 2 == 0 ? nan : -0.0));
        break;
      default:
        values.push_back(number(drawn * 0.25));
    }
  }
  return values;
}

TEST(DistinctNumbers, OfManyCellsAreThoseOfTheRankingOnAnyNumberOfThreads) {
  auto const values = makeManyValues();
  Column const column(values);
  for (RankingOrder const order : bothOrders) {
    std::vector<FloatNumber> ranking;
    for (FormulaValue const& value : values) {
      if (auto const* const it = boost::get<FormulaModel::FormulaNumber>(&value)) {
        ranking.push_back(it->value);
      }
    }
    rankDistinct(ranking, order);
    for (unsigned const threadCount : {1U, 2U, 7U}) {
      DistinctNumbers const numbers = column.find(threadCount);
      ASSERT_EQ(numbers.count(), ranking.size());
      for (std::size_t rank = 1; rank <= ranking.size(); rank += rank < 100 ? 1 : 997) {
        ASSERT_EQ(numbers.at(rank, order).get(), ranking[rank - 1].get()) << "rank " << rank;
      }
      ASSERT_EQ(numbers.at(ranking.size(), order).get(), ranking.back().get());
    }
  }
}

}  // namespace

}  // namespace Zorv::ConditionalFormatters
