#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedAnswers.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedOperands.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using FormulaModel::FormulaErrorCode;
using Formulas::AreaAspect;

constexpr Formulas::AreaAspects everyAspect{.summary = true, .order = true, .classes = true};

/// Answers of a walk over the cells of a column.
struct Walked {
  std::vector<double> numbers;  ///< in the order of the cells
  std::vector<FormulaValue> values;
  std::optional<FormulaErrorCode> firstError;
};

Walked walkOver(DOM::Table const& table, TableRange const& range) {
  Walked walked;
  auto [cell, end] = table.getRangeIterators(range);
  for (; cell != end; ++cell) {
    FormulaValue const& value = cell.getCellInfo().getCell()->value;
    if (value.which() == FormulaModel::FormulaValueKind::Empty) {
      continue;
    }
    walked.values.push_back(value);
    if (auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value)) {
      walked.numbers.push_back(number->value.get());
    }
    auto const* const error = boost::get<FormulaModel::FormulaError>(&value);
    if (error != nullptr && !walked.firstError) {
      walked.firstError = error->code;
    }
  }
  return walked;
}

bool hasText(FormulaValue const& value, std::string const& text) {
  auto const* const held = boost::get<FormulaModel::FormulaString>(&value);
  return held != nullptr && held->value == text;
}

FormulaValue drawAnswered(std::mt19937& random) {
  switch (random() % 12) {
    case 0:
      return empty();
    case 1:
      return boolean(random() % 2 == 0);
    case 2:
      return error(random() % 2 == 0 ? FormulaErrorCode::Value : FormulaErrorCode::Null);
    case 3:
      return number(random() % 2 == 0 ? 1e16 : -1e16);
    case 4:
    case 5:
      return text(std::string(random() % 2 * 20, 'x') + std::to_string(random() % 5));
    default:
      return number((static_cast<double>(random() % 200) - 60) * 0.1);
  }
}

/// Gives one value for each cell, if it is told one.
class OverridingProvider final : public ForwardingValueContextProvider {
public:
  explicit OverridingProvider(DOM::Table const& table)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    return value ? *value : ForwardingValueContextProvider::getCellValue(cellInfo);
  }

  std::optional<FormulaValue> value;
};

class FollowedAnswersTest : public testing::Test {
protected:
  static constexpr unsigned long rows = 40;

  void prepare(OperandNeeds const& needs = {}) {
    followed.emplace(provider, table, ranges, needs, everyAspect);
    followed->prepareUntil(FollowedOperands::Clock::now() + std::chrono::hours(1));
  }

  void change(unsigned long row, FormulaValue const& value) {
    table.setValue(row, 1, value);
    tell(row);
  }
  void tell(unsigned long row) {
    std::vector<TableRange> const areas{{row, 0, row + 1, 3}};
    static_cast<void>(followed->valuesChanged(areas));
  }

  [[nodiscard]] FollowedAnswers const& answers() const { return *followed->getAnswers(); }

  void expectAnswersOfAWalk() const {
    Walked const walked = walkOver(table, ranges.front());
    auto const& summary = answers().getSummary();
    double sum = 0;
    for (double const number : walked.numbers) {
      sum += number;
    }
    ASSERT_EQ(std::bit_cast<std::uint64_t>(summary.sum), std::bit_cast<std::uint64_t>(sum));
    ASSERT_EQ(summary.numberCount, walked.numbers.size());
    ASSERT_EQ(summary.valueCount, walked.values.size());
    ASSERT_EQ(summary.firstError, walked.firstError);
    auto sorted = walked.numbers;
    std::ranges::sort(sorted);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
      ASSERT_EQ(answers().numberAt(index), sorted[index]) << index;
    }
    for (double const number : {-1.0, 0.0, 1e16}) {
      auto const equal = static_cast<std::uint64_t>(std::ranges::count(sorted, number));
      ASSERT_EQ(answers().countAround(number).equal, equal) << number;
      ASSERT_EQ(answers().countEqual(TestSupport::number(number)), equal) << number;
    }
    for (char const* const wanted : {"0", "3", "xxxxxxxxxxxxxxxxxxxx1", "none"}) {
      ASSERT_EQ(
          answers().countEqual(text(wanted)),
          static_cast<std::uint64_t>(std::ranges::count_if(
              walked.values, [&](FormulaValue const& value) { return hasText(value, wanted); })));
    }
    ASSERT_EQ(answers().countEqual(boolean(true)),
              static_cast<std::uint64_t>(
                  std::ranges::count_if(walked.values, [](FormulaValue const& value) {
                    auto const* const truth = boost::get<FormulaModel::FormulaBoolean>(&value);
                    return truth != nullptr && truth->value;
                  })));
  }

  DOM::Table table;
  OverridingProvider provider{table};
  std::vector<TableRange> const ranges{{0, 1, rows, 2}};
  std::optional<FollowedOperands> followed;
};

TEST_F(FollowedAnswersTest, AreThoseOfAWalkThroughRandomEdits) {
  for (std::uint32_t seed = 1; seed <= 8; ++seed) {
    std::mt19937 random(seed);
    for (unsigned long row = 0; row < rows; ++row) {
      table.setValue(row, 1, drawAnswered(random));
    }
    prepare(seed % 2 == 0 ? OperandNeeds{.mean = true, .occurrences = true} : OperandNeeds());
    for (int edit = 0; edit < 150; ++edit) {
      unsigned long const row = random() % rows;
      if (random() % 5 == 0) {
        table.removeCell(row, 1);
        tell(row);
      } else {
        change(row, drawAnswered(random));
      }
      ASSERT_NO_FATAL_FAILURE(expectAnswersOfAWalk()) << "seed " << seed << ", edit " << edit;
    }
  }
}

TEST_F(FollowedAnswersTest, AreNoneWhereAWalkDependsOnMoreThanTheOrder) {
  table.setValue(0, 1, number(1));
  prepare();
  for (AreaAspect const aspect : {AreaAspect::Summary, AreaAspect::Order, AreaAspect::Classes}) {
    EXPECT_TRUE(answers().knows(aspect));
  }
  change(1, number(-0.0));
  EXPECT_TRUE(answers().knows(AreaAspect::Summary));
  EXPECT_FALSE(answers().knows(AreaAspect::Order)) << "of two zeros the first one counts";
  EXPECT_TRUE(answers().knows(AreaAspect::Classes));
}

TEST_F(FollowedAnswersTest, AreNoneWhereACellIsAnErrorForFormulasAlone) {
  constexpr double limit = std::numeric_limits<double>::infinity();
  for (double const special : {limit, -limit, std::numeric_limits<double>::quiet_NaN()}) {
    table.setValue(0, 1, number(1));
    prepare();
    change(1, number(special));
    for (AreaAspect const aspect : {AreaAspect::Summary, AreaAspect::Order, AreaAspect::Classes}) {
      EXPECT_FALSE(answers().knows(aspect)) << special;
    }
    table.removeCell(1, 1);
  }
}

TEST_F(FollowedAnswersTest, AreOfTheAspectsThatWereAskedForAlone) {
  followed.emplace(provider, table, ranges, OperandNeeds(), Formulas::AreaAspects{.summary = true});
  EXPECT_TRUE(answers().knows(AreaAspect::Summary));
  EXPECT_FALSE(answers().knows(AreaAspect::Order));
  EXPECT_FALSE(answers().knows(AreaAspect::Classes));
  followed.emplace(provider, table, ranges, OperandNeeds{.mean = true});
  EXPECT_EQ(followed->getAnswers(), nullptr);
}

TEST_F(FollowedAnswersTest, AreNoneWhereTheProviderGivesOtherValuesThanCellsHold) {
  table.setValue(0, 1, number(1));
  table.setValue(1, 1, text("a"));
  prepare({.mean = true});
  EXPECT_TRUE(answers().knows(AreaAspect::Summary));
  provider.value = number(2);
  tell(0);
  EXPECT_FALSE(answers().knows(AreaAspect::Summary));
  EXPECT_EQ(followed->getMean().mean.get(), 2);
}

TEST_F(FollowedAnswersTest, AskNoProviderWhereFormulasAloneNeedTheValues) {
  table.setValue(0, 1, number(1));
  provider.value = number(2);
  prepare();
  EXPECT_EQ(answers().getSummary().sum, 1);
  EXPECT_TRUE(answers().knows(AreaAspect::Summary));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
