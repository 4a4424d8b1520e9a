#include "Formulas/Lookups/ClassAggregates.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Formulas/Lookups/EqualValues.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {

namespace {

/// Classes in column A, and numbers in column B whose sums are rounded.
class SummedColumns {
public:
  static constexpr std::uint32_t rows = 400;

  SummedColumns() {
    for (std::uint32_t row = 0; row < rows; ++row) {
      setAtRandom(row, 0);
      setAtRandom(row, 1);
    }
    SharedWork work;
    classes.emplace(Area{&document.sheet(), 0, 0, 1'000, 1}, Equality::Criterion,
                    document.getLocaleContext(), work);
  }

  void setAtRandom(std::uint32_t row, std::uint32_t column) {
    auto const drawn = static_cast<double>(_random() % 20);
    if (drawn == 0) {
      table.removeCell(row, column);
    } else if (column == 0) {
      // Small numbers make classes of many cells, large ones of about eight.
      setNumber(row, 0, drawn < 10 ? drawn : 10 + static_cast<double>(_random() % 25));
    } else if (drawn == 1) {
      table.setValue(row, 1, FormulaModel::FormulaError{FormulaModel::FormulaErrorCode::Value});
    } else {
      setNumber(row, 1, drawn * 0.1);
    }
  }
  void setNumber(std::uint32_t row, std::uint32_t column, double number) {
    table.setValue(row, column, FormulaModel::FormulaNumber{FloatNumber(number)});
  }
  /// Of the rows 11 to 350.
  [[nodiscard]] ClassAggregates build() {
    return {ClassesOfArea(*classes, 10, 350), 1, Area{&document.sheet(), 10, 1, 350, 2}};
  }

  FormulaDocument document;
  DOM::Table& table = document.sheet().table;
  std::optional<EqualValues> classes;

private:
  std::mt19937 _random{11};
};

std::vector<std::string> listAggregates(ClassAggregates const& aggregates,
                                        CellClasses const& classes) {
  std::vector<std::string> result;
  for (std::uint32_t index = 0; index < classes.classCount(); ++index) {
    Aggregate const* const found = aggregates.find(index);
    if (found == nullptr) {
      result.emplace_back("none");
    } else if (found->error) {
      result.emplace_back("error");
    } else {
      std::array<char, 99> text{};
      std::snprintf(text.data(), text.size(), "%a %a %a %d", found->sum, found->min, found->max,
                    static_cast<int>(found->count));
      result.emplace_back(text.data());
    }
  }
  return result;
}

TEST(ClassAggregates, FollowCellsThatChangeTheirClassOrTheirValue) {
  SummedColumns columns;
  ClassAggregates aggregates = columns.build();
  std::mt19937 random(2);
  for (int round = 0; round < 150; ++round) {
    std::vector<TableRange> areas;
    for (auto count = 1 + random() % 4; count > 0; --count) {
      auto const row = static_cast<std::uint32_t>(random() % SummedColumns::rows);
      auto const column = static_cast<std::uint32_t>(random() % 2);
      columns.setAtRandom(row, column);
      areas.push_back({row, column, row + 1, column + 1});
    }
    auto const edits = columns.classes->follow(areas);
    ASSERT_TRUE(edits.has_value());
    ASSERT_TRUE(aggregates.follow(*edits, areas));
    ASSERT_EQ(listAggregates(aggregates, *columns.classes),
              listAggregates(columns.build(), *columns.classes))
        << "in round " << round;
  }
}

TEST(ClassAggregates, AreBuiltAgainAfterManyNewValues) {
  SummedColumns columns;
  ClassAggregates aggregates = columns.build();
  EXPECT_FALSE(aggregates.follow({}, std::vector<TableRange>{{0, 0, 300, 9}}));
}

TEST(ClassAggregates, TakeTheMemoryThatTheySay) {
  SummedColumns columns;
  ClassAggregates const aggregates = columns.build();
  EXPECT_GE(aggregates.memory(), std::size_t{8} * 300);
}

}  // namespace

}  // namespace Zorv::Formulas
