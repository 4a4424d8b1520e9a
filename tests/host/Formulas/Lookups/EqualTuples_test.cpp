#include "Formulas/Lookups/EqualTuples.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Formulas/Lookups/EqualValues.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

/// Two columns of a table, of which the second one is compared from its 21st row on, and their
/// classes.
class TwoColumns {
public:
  static constexpr std::uint32_t rows = 600;

  TwoColumns() {
    for (std::uint32_t row = 0; row < rows; ++row) {
      setAtRandom(row, 0);
      setAtRandom(row, 1);
    }
    for (std::uint32_t column = 0; column < 2; ++column) {
      columns[column] = build(column);
    }
  }

  void setAtRandom(std::uint32_t row, std::uint32_t column) {
    auto const drawn = _random() % 12;
    if (drawn == 0) {
      table.removeCell(row, column);
    } else {
      auto const number = static_cast<double>(drawn == 1 ? _random() % 1'000 : drawn);
      table.setValue(row, column, FormulaModel::FormulaNumber{FloatNumber(number)});
    }
  }
  [[nodiscard]] std::unique_ptr<EqualValues> build(std::uint32_t column) {
    SharedWork work;
    return std::make_unique<EqualValues>(Area{&document.sheet(), 0, column, 1'000, column + 1},
                                         Equality::Criterion, document.getLocaleContext(), work);
  }
  [[nodiscard]] static EqualTuples makeTuples(EqualValues const& first, EqualValues const& second) {
    return EqualTuples(std::array{ClassesOfArea(first, 0, 500), ClassesOfArea(second, 20, 520)});
  }

  FormulaDocument document;
  DOM::Table& table = document.sheet().table;
  std::array<std::unique_ptr<EqualValues>, 2> columns;

private:
  std::mt19937 _random{3};
};

/// The positions of each class that has cells.
std::set<std::vector<std::uint32_t>> listClasses(EqualTuples const& tuples) {
  std::set<std::vector<std::uint32_t>> classes;
  for (std::uint32_t index = 0; index < tuples.classCount(); ++index) {
    std::vector<std::uint32_t> positions;
    for (std::uint32_t const cell : tuples.membersOf(index)) {
      positions.push_back(tuples.positionOf(cell));
    }
    if (!positions.empty()) {
      classes.insert(std::move(positions));
    }
  }
  return classes;
}

TEST(EqualTuples, FollowEditsOfTheirColumns) {
  TwoColumns two;
  auto tuples = TwoColumns::makeTuples(*two.columns[0], *two.columns[1]);
  std::mt19937 random(7);
  for (int round = 0; round < 60; ++round) {
    std::array<std::vector<ClassEdit>, 2> edits;
    for (std::uint32_t column = 0; column < 2; ++column) {
      std::vector<TableRange> areas;
      for (auto count = random() % 4; count > 0; --count) {
        // Many of them lie around the ends of both areas.
        auto const row = static_cast<std::uint32_t>(random() % 2 == 0 ? random() % TwoColumns::rows
                                                                      : 490 + random() % 40);
        two.setAtRandom(row, column);
        areas.push_back({row, column, row + 1, column + 1});
      }
      auto followed = two.columns[column]->follow(areas);
      if (!followed) {
        GTEST_FAIL() << "too many new values in round " << round;
      }
      edits[column] = std::move(*followed);
    }
    ASSERT_TRUE(tuples.follow(std::array<std::span<ClassEdit const>, 2>{edits[0], edits[1]}));
    auto const first = two.build(0);
    auto const second = two.build(1);
    ASSERT_EQ(listClasses(tuples), listClasses(TwoColumns::makeTuples(*first, *second)))
        << "in round " << round;
    for (std::uint32_t cell = 0; cell < tuples.size(); ++cell) {
      std::uint32_t const position = tuples.positionOf(cell);
      std::array const tuple{two.columns[0]->classOf(two.columns[0]->firstCellAt(position)),
                             two.columns[1]->classOf(two.columns[1]->firstCellAt(position + 20))};
      ASSERT_EQ(tuples.find(tuple), tuples.classOf(cell)) << "in round " << round;
    }
  }
}

TEST(EqualTuples, SeeCellsThatMoveBehindWithinTheAreas) {
  TwoColumns two;
  auto const follow = [&](std::uint32_t column, std::uint32_t row) {
    std::vector<TableRange> const areas{{0, column, 30, column + 1},
                                        {row, column, row + 1, column + 1}};
    auto edits = two.columns[column]->follow(areas);
    return edits ? *edits : std::vector<ClassEdit>();
  };
  for (std::uint32_t row = 0; row < 30; ++row) {
    two.table.removeCell(row, 0);
  }
  static_cast<void>(follow(0, 499));
  auto tuples = TwoColumns::makeTuples(*two.columns[0], *two.columns[1]);
  for (std::uint32_t row : {0U, 1U, 2U, 499U}) {
    two.table.setValue(row, 0, FormulaModel::FormulaNumber{FloatNumber(777)});
  }
  two.table.setValue(519, 1, FormulaModel::FormulaNumber{FloatNumber(777)});
  auto const first = follow(0, 499);
  auto const second = follow(1, 519);
  ASSERT_TRUE(tuples.follow(std::array<std::span<ClassEdit const>, 2>{first, second}));
  EXPECT_EQ(listClasses(tuples), listClasses(TwoColumns::makeTuples(*two.build(0), *two.build(1))));
}

}  // namespace

}  // namespace Zorv::Formulas
