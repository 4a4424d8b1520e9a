#include "Formulas/Lookups/EqualValues.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Formulas/Values/Cells.h"
#include "host/Formulas/FormulaDocument.h"
#include "support/Sanitized.h"

namespace Zorv::Formulas {

namespace {

using FormulaModel::FormulaBoolean;
using FormulaModel::FormulaEmpty;
using FormulaModel::FormulaError;
using FormulaModel::FormulaNumber;
using FormulaModel::FormulaString;

/// A cell's value, and names of the classes to which it belongs; no name where it has none.
struct Labelled {
  FormulaValue value;
  std::string forCriteria;
  std::string forSearches;
};

Labelled number(double value, std::string const& label) {
  return {FormulaNumber{FloatNumber(value)}, "number " + label, "number " + label};
}

Labelled text(std::string const& value, std::string const& label) {
  return {FormulaString{value}, "text " + label, "text " + label};
}

Labelled numberAsText(std::string const& value, std::string const& label) {
  return {FormulaString{value}, "number " + label, "text " + value};
}

/// One of the values for which equality is anything but plain.
Labelled chooseOddValue(std::size_t choice) {
  static std::vector<Labelled> const values = {
      number(0.0, "0"),
      number(-0.0, "0"),
      numberAsText("0", "0"),
      numberAsText("17", "17"),
      numberAsText("1.7E1", "17"),
      text("abc", "abc"),
      text("ABC", "abc"),
      text("\xC3\xA4", "ae"),
      text("\xC3\x84", "ae"),
      text("", "empty"),
      text("\xFF", "stray"),
      {FormulaBoolean{true}, "true", "true"},
      {FormulaBoolean{false}, "false", "false"},
      {FormulaString{"TRUE"}, "text true", "text true"},
      {FormulaError{FormulaErrorCode::NotAvailable}, "#N/A", "#N/A"},
      {FormulaError{FormulaErrorCode::DivisionByZero}, "#DIV/0!", "#DIV/0!"},
      {FormulaEmpty(), "", ""},
  };
  return values[choice % values.size()];
}

/// A table with enough cells for several pieces and many bands, and what is known of them.
class LargeTable {
public:
  static constexpr std::uint32_t rows = 14'000;
  static constexpr std::uint32_t columns = 5;

  explicit LargeTable(unsigned seed) : _generator(seed), _cells(std::size_t{rows} * columns) {
    for (std::uint32_t row = 0; row < rows; ++row) {
      for (std::uint32_t column = 0; column < columns; ++column) {
        setAtRandom(row, column);
      }
    }
  }

  /// Sets or removes a cell.
  void setAtRandom(std::uint32_t row, std::uint32_t column) {
    Labelled& cell = _cells[row * columns + column];
    if (choose(10) == 0) {
      cell = Labelled();
      _document.sheet().table.removeCell(row, column);
    } else {
      cell = chooseValue();
      _document.sheet().table.setValue(row, column, cell.value);
    }
  }
  [[nodiscard]] std::size_t choose(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(_generator);
  }

  [[nodiscard]] Area area(std::uint32_t firstRow, std::uint32_t firstColumn, std::uint32_t endRow,
                          std::uint32_t endColumn) {
    return {&_document.sheet(), firstRow, firstColumn, endRow, endColumn};
  }
  [[nodiscard]] DOM::Table& getTable() { return _document.sheet().table; }
  [[nodiscard]] OfficeUtils::LocaleContext const& locale() const {
    return _document.getLocaleContext();
  }
  [[nodiscard]] Labelled const& at(std::uint32_t row, std::uint32_t column) const {
    static Labelled const none;
    return row < rows && column < columns ? _cells[row * columns + column] : none;
  }

private:
  Labelled chooseValue() {
    auto const figures = std::to_string(choose(20'000));
    switch (choose(8)) {
      case 0:
        return text("Item " + figures, "item " + figures);
      case 1:
        return text("ITEM " + figures, "item " + figures);
      case 2:
        return numberAsText(figures, figures);
      case 3:
        return chooseOddValue(choose(100));
      default:
        return number(std::stod(figures), figures);
    }
  }

  std::mt19937 _generator;
  FormulaDocument _document;
  std::vector<Labelled> _cells;
};

/// The positions of an area by the classes of their values.
std::map<std::string, std::vector<std::uint32_t>> sortPlainly(LargeTable const& table,
                                                              Area const& area, Equality equality) {
  std::map<std::string, std::vector<std::uint32_t>> positions;
  std::uint32_t const endRow = std::min(area.endRow, LargeTable::rows);
  for (std::uint32_t row = area.firstRow; row < endRow; ++row) {
    for (std::uint32_t column = area.firstColumn; column < area.endColumn; ++column) {
      Labelled const& cell = table.at(row, column);
      auto const& label = equality == Equality::Criterion ? cell.forCriteria : cell.forSearches;
      if (!label.empty()) {
        positions[label].push_back((row - area.firstRow) * area.width() + column -
                                   area.firstColumn);
      }
    }
  }
  return positions;
}

std::unique_ptr<EqualValues> makeTogether(LargeTable const& table, Area const& area,
                                          Equality equality, std::size_t helperCount) {
  SharedWork work;
  std::vector<std::jthread> helpers;
  for (std::size_t i = 0; i < helperCount; ++i) {
    helpers.emplace_back([&] { work.help(); });
  }
  auto values = std::make_unique<EqualValues>(area, equality, table.locale(), work);
  work.close();
  return values;
}

void expectClasses(EqualValues const& values,
                   std::map<std::string, std::vector<std::uint32_t>> const& expected) {
  std::set<std::vector<std::uint32_t>> classes;
  std::vector<std::uint32_t> members;
  for (std::uint32_t number = 0; number < values.classCount(); ++number) {
    std::vector<std::uint32_t> positions;
    ASSERT_EQ(values.countOf(number), values.membersOf(number).size());
    for (std::uint32_t const cell : values.membersOf(number)) {
      ASSERT_EQ(values.classOf(cell), number);
      positions.push_back(values.positionOf(cell));
      members.push_back(cell);
    }
    ASSERT_TRUE(std::ranges::is_sorted(positions));
    if (!positions.empty()) {
      classes.insert(positions);
    }
  }
  std::set<std::vector<std::uint32_t>> expectedClasses;
  for (auto const& [label, positions] : expected) {
    expectedClasses.insert(positions);
  }
  EXPECT_TRUE(classes == expectedClasses);
  std::ranges::sort(members);
  std::vector<std::uint32_t> all(values.size());
  std::iota(all.begin(), all.end(), 0U);
  EXPECT_TRUE(members == all);
}

/// Asks for the value of each position, from the first one on or with a hint that is of no use.
void expectFound(EqualValues const& values, Area const& area,
                 std::map<std::string, std::vector<std::uint32_t>> const& expected,
                 bool withWrongHints) {
  std::uint32_t lastCell = 0;
  std::uint32_t const width = area.width();
  for (auto const& [label, positions] : expected) {
    for (std::uint32_t const position : positions) {
      Value const value = readCell(area, position / width, position % width);
      bool const isConverted = value.isText() && label.starts_with("number");
      if (isConverted) {
        continue;  // who asks converts it, too
      }
      lastCell = withWrongHints ? position % (values.size() + 7) : lastCell;
      auto const found = values.find(value, lastCell);
      ASSERT_TRUE(found.has_value()) << label;
      ASSERT_EQ(values.countOf(*found), positions.size()) << label;
      ASSERT_EQ(values.positionOf(values.membersOf(*found).front()), positions.front()) << label;
    }
  }
}

class EqualValuesTest : public testing::Test {
protected:
  LargeTable table{3};
};

TEST_F(EqualValuesTest, ClassesAreThoseOfAWalkWhoeverHelps) {
  auto const helperCounts =
      TestSupport::sanitized ? std::vector<std::size_t>{6} : std::vector<std::size_t>{0, 1, 6};
  for (Area const& area :
       {table.area(0, 0, LargeTable::rows, LargeTable::columns), table.area(777, 1, 13'000, 4),
        table.area(0, 2, DOM::Table::rowCount, 3), table.area(10, 0, 12, LargeTable::columns),
        table.area(DOM::Table::rowCount - 200, 0, DOM::Table::rowCount, 1)}) {
    for (Equality const equality : {Equality::Criterion, Equality::Search}) {
      auto const expected = sortPlainly(table, area, equality);
      for (std::size_t const helperCount : helperCounts) {
        auto const values = makeTogether(table, area, equality, helperCount);
        expectClasses(*values, expected);
        EXPECT_EQ(values->classCount(), expected.size());
      }
    }
  }
}

TEST_F(EqualValuesTest, FindsEveryValueWithAnyHint) {
  Area const area = table.area(0, 0, LargeTable::rows, LargeTable::columns);
  for (Equality const equality : {Equality::Criterion, Equality::Search}) {
    auto const expected = sortPlainly(table, area, equality);
    auto const values = makeTogether(table, area, equality, 1);
    expectFound(*values, area, expected, false);
    expectFound(*values, area, expected, true);
  }
}

TEST_F(EqualValuesTest, FindsNoValueThatIsNotThere) {
  Area const area = table.area(0, 0, LargeTable::rows, LargeTable::columns);
  auto const values = makeTogether(table, area, Equality::Criterion, 0);
  std::uint32_t lastCell = 0;
  for (Value const& value :
       {Value::number(0.5), Value::number(-1), Value::text("Item"), Value::text("17"), Value(),
        Value::error(FormulaErrorCode::Null), Value::missing(), Value::reference(area)}) {
    EXPECT_EQ(values->find(value, lastCell), std::nullopt);
  }
}

TEST_F(EqualValuesTest, FollowsCellsThatChangeAppearAndDisappear) {
  for (Area const& area :
       {table.area(0, 2, DOM::Table::rowCount, 3), table.area(777, 1, 13'000, 4)}) {
    for (Equality const equality : {Equality::Criterion, Equality::Search}) {
      auto values = makeTogether(table, area, equality, 0);
      for (std::uint32_t const changes : {1U, 1U, 1U, 2U, 7U, 40U, 200U}) {
        std::vector<TableRange> areas;
        for (std::uint32_t change = 0; change < changes; ++change) {
          auto const row = static_cast<std::uint32_t>(table.choose(LargeTable::rows - 2));
          auto const column = static_cast<std::uint32_t>(table.choose(LargeTable::columns));
          table.setAtRandom(row, column);
          table.setAtRandom(row + 1, column);
          areas.push_back({row, column == 0 ? 0 : column - 1, row + 2, column + 1});
        }
        ASSERT_TRUE(values->follow(areas).has_value());
        auto const expected = sortPlainly(table, area, equality);
        ASSERT_NO_FATAL_FAILURE(expectClasses(*values, expected)) << changes;
        ASSERT_NO_FATAL_FAILURE(expectFound(*values, area, expected, changes > 7)) << changes;
      }
    }
  }
}

TEST_F(EqualValuesTest, ForgetsWhatIsNotThereAnyMore) {
  DOM::Table& edited = table.getTable();
  edited.setValue(5, 0, FormulaString{"The only one"});
  auto const values = makeTogether(table, table.area(0, 0, 1'000, 1), Equality::Criterion, 0);
  std::uint32_t lastCell = 0;
  EXPECT_TRUE(values->find(Value::text("the ONLY one"), lastCell).has_value());
  edited.setValue(5, 0, FormulaString{"Another one"});
  auto const edits = values->follow(std::vector<TableRange>{{5, 0, 6, 1}});
  ASSERT_TRUE(edits.has_value());
  ASSERT_EQ(edits->size(), 1U);
  EXPECT_EQ(edits->front().position, 5U);
  EXPECT_EQ(values->find(Value::text("the ONLY one"), lastCell), std::nullopt);
  EXPECT_EQ(values->find(Value::text("another one"), lastCell), edits->front().after);
}

/// The cell whose text was read first gets another one, and the others move in memory.
TEST_F(EqualValuesTest, KeepsTextsOfCellsThatChange) {
  DOM::Table& edited = table.getTable();
  for (unsigned long const row : {5UL, 500UL}) {
    edited.setValue(row, 0, FormulaString{"Twice the same text"});
  }
  auto const values = makeTogether(table, table.area(0, 0, 1'000, 1), Equality::Criterion, 0);
  edited.setValue(5, 0, FormulaNumber{FloatNumber(0.5)});
  ASSERT_TRUE(values->follow(std::vector<TableRange>{{5, 0, 6, 1}}).has_value());
  edited.deleteColumns(1, 4);
  edited.removeCell(500, 0);
  edited.setValue(501, 0, FormulaString{"TWICE the same text"});
  std::uint32_t lastCell = 0;
  auto const known = values->find(Value::text("twice the same TEXT"), lastCell);
  ASSERT_TRUE(known.has_value());
  auto const edits = values->follow(std::vector<TableRange>{{500, 0, 502, 1}});
  ASSERT_TRUE(edits.has_value());
  EXPECT_EQ(edits->back().after, known);
}

TEST_F(EqualValuesTest, IsBuiltAgainAfterManyChanges) {
  Area const area = table.area(0, 0, LargeTable::rows, 1);
  auto values = makeTogether(table, area, Equality::Search, 0);
  EXPECT_FALSE(values->follow(std::vector<TableRange>{{0, 0, 1'200, 1}}).has_value());

  values = makeTogether(table, area, Equality::Search, 0);
  std::size_t const before = values->memory();
  bool isFollowed = true;
  unsigned long number = 0;
  for (; isFollowed && number < 2'000; ++number) {
    table.getTable().setValue(7, 0, FormulaNumber{FloatNumber(static_cast<double>(number) + 0.5)});
    isFollowed = values->follow(std::vector<TableRange>{{7, 0, 8, 1}}).has_value();
    EXPECT_LE(values->memory(), before + before / 4);
  }
  EXPECT_FALSE(isFollowed) << "values that no cell has any more are kept";
  EXPECT_GT(number, 500U);
}

TEST_F(EqualValuesTest, IsBuiltAgainWhereTextsAreLong) {
  for (unsigned long row = 0; row < 100; ++row) {
    table.getTable().setValue(row, 0, FormulaString{std::string(40, 'a') + std::to_string(row)});
  }
  auto const values = makeTogether(table, table.area(0, 0, 100, 1), Equality::Search, 0);
  EXPECT_TRUE(values->borrowsTexts());
  EXPECT_FALSE(values->follow({}).has_value());
  auto const others = makeTogether(table, table.area(100, 0, 200, 1), Equality::Search, 0);
  EXPECT_FALSE(others->borrowsTexts());
}

TEST_F(EqualValuesTest, TakesTheMemoryThatItSays) {
  Area const area = table.area(0, 0, LargeTable::rows, LargeTable::columns);
  auto const values = makeTogether(table, area, Equality::Search, 0);
  std::size_t const cells = values->size();
  std::size_t const classes = values->classCount();
  // Three numbers a cell; for a class its key, its first member and two slots at least.
  EXPECT_GE(values->memory(), 12 * cells + 28 * classes);
  // A text of about ten bytes is copied.
  EXPECT_LE(values->memory(), 12 * cells + 75 * classes + 100'000);
}

}  // namespace

}  // namespace Zorv::Formulas
