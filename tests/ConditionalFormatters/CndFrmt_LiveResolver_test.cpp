#include "ConditionalFormatters/CndFrmt_LiveResolver.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_LiveView.h"
#include "ConditionalFormatters/EditedDocument.h"
#include "ConditionalFormatters/LiveSheet.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/PinnedMoment.h"
#include "support/CountingValueContextProvider.h"
#include "support/RunningClock.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using TestSupport::EditedDocument;
using TestSupport::LiveSheet;

/// How a cell looks, and why.
struct Look {
  DOM::SharedCellStylePtr style;
  FormatIndices formats;
  std::string failure;

  friend bool operator==(Look const&, Look const&) = default;
};

using Looks = std::map<CellIndex, Look>;

std::string messageOf(std::exception_ptr const& exception) {
  try {
    std::rethrow_exception(exception);
  } catch (std::exception const& caught) {
    return caught.what();
  }
}

Look lookOf(ResolvedCell const& cell) {
  return {cell.style,
          {cell.formats.begin(), cell.formats.end()},
          cell.failure == nullptr ? std::string() : messageOf(cell.failure->exception)};
}

TablePass passOver(TableRange const& range, unsigned threadCount = 1) {
  return {.range = range,
          .positions = TablePass::Positions::All,
          .threadCount = threadCount,
          .onFailure = TablePass::OnFailure::Skip};
}

template <class Resolver>
Looks lookAt(Resolver const& resolver, TablePass const& pass) {
  Looks looks;
  resolver.visit(pass, [&](ResolvedCell const& cell) {
    looks.emplace(cell.cellInfo.getCellIndex(), lookOf(cell));
  });
  return looks;
}

/// Looks of all cells by a resolver that is made now.
Looks lookAnew(ConditionalFormattingPropsCalculator const& calculator,
               EditedDocument const& document) {
  calculator.clearTablesRangesCache();
  return lookAt(calculator.prepare(document.styles, document.table),
                passOver(EditedDocument::window));
}

bool looksAlike(Look const& a, Look const& b) {
  return a.style == b.style && a.failure.empty() == b.failure.empty();
}

bool holdsCell(std::vector<TableRange> const& areas, CellIndex cell) {
  return std::ranges::any_of(areas, [&](TableRange const& area) {
    return area.contains(cell.getRow().get(), cell.getColumn().get());
  });
}

std::string nameOf(CellIndex cell) {
  return "row " + std::to_string(cell.getRow().get()) + ", column " +
         std::to_string(cell.getColumn().get());
}

/// The first cell that differs, not all of them.
void expectSame(Looks const& looks, Looks const& expected) {
  for (auto const& [index, look] : expected) {
    auto const found = looks.find(index);
    Look const actual = found == looks.end() ? Look() : found->second;
    ASSERT_EQ(actual.formats, look.formats) << nameOf(index);
    ASSERT_EQ(actual.failure, look.failure) << nameOf(index);
    ASSERT_EQ(actual.style, look.style) << nameOf(index);
  }
  ASSERT_EQ(looks.size(), expected.size());
}

void expectDisjoint(std::vector<TableRange> const& areas) {
  EXPECT_LE(areas.size(), 16U);
  for (std::size_t a = 0; a < areas.size(); ++a) {
    for (std::size_t b = a + 1; b < areas.size(); ++b) {
      EXPECT_TRUE(intersect(areas[a], areas[b]).isEmpty()) << "areas " << a << " and " << b;
    }
  }
}

/// Looks that a view has told so far, as a window would paint them.
class Painted {
public:
  explicit Painted(LiveResolver const& live) : _view(live) {}

  void show(TableRange const& range) {
    _view.show(range);
    std::erase_if(_looks, [&](auto const& entry) {
      return !range.contains(entry.first.getRow().get(), entry.first.getColumn().get());
    });
  }

  /// Refreshes, and compares: every difference is told, and nothing but differences.
  void refresh(Looks const& now, unsigned threadCount) {
    Looks const before = _looks;
    std::optional<CellIndex> last;
    _view.refresh(
        [&](ResolvedCell const& cell) {
          CellIndex const index = cell.cellInfo.getCellIndex();
          EXPECT_TRUE(!last || *last < index) << "in order: " << nameOf(index);
          last = index;
          Look const look = lookOf(cell);
          auto const known = before.find(index);
          EXPECT_FALSE(looksAlike(look, known == before.end() ? Look() : known->second))
              << "told without a difference: " << nameOf(index);
          _looks[index] = look;
        },
        threadCount);
    for (auto const& [index, look] : now) {
      if (_view.getRange().contains(index.getRow().get(), index.getColumn().get())) {
        auto const painted = _looks.find(index);
        EXPECT_TRUE(looksAlike(look, painted == _looks.end() ? Look() : painted->second))
            << "stale: " << nameOf(index);
      }
    }
  }

private:
  LiveView _view;
  Looks _looks;
};

void prepareAll(LiveResolver& live) {
  while (live.prepareSome(std::chrono::milliseconds(1))) {
  }
}

class LiveEdits : public testing::TestWithParam<std::uint32_t> {};

TEST_P(LiveEdits, AnswersAreThoseOfANewResolverAndDifferencesAreExact) {
  constexpr int editCount = 14;
  EditedDocument document(GetParam());
  std::optional<OfficeUtils::ScopedClock> clock(std::in_place, document.getMoment());
  ConditionalFormattingPropsCalculator const calculator(document.makeProvider());
  LiveResolver live = calculator.follow(document.styles, document.table);
  if (GetParam() % 5 == 0) {
    live.check({.report = [](UntoldChange const& change) { ADD_FAILURE() << describe(change); }});
  }
  Painted painted(live);
  Looks before = lookAnew(calculator, document);
  for (int edit = 0; edit < editCount && !HasFailure(); ++edit) {
    SCOPED_TRACE("edit " + std::to_string(edit));
    std::vector<Change> changes;
    for (unsigned long part = document.draw(3) + 1; part > 0; --part) {
      document.edit(changes);
    }
    clock.reset();
    clock.emplace(document.getMoment());

    auto const areas = live.apply(changes);
    expectDisjoint(areas);
    if (document.draw(3) != 0) {
      prepareAll(live);
    }
    Looks const now = lookAnew(calculator, document);
    for (auto const& [index, look] : now) {
      EXPECT_TRUE(looksAlike(look, before.at(index)) || holdsCell(areas, index))
          << "not in an area: " << nameOf(index);
    }
    unsigned const threads = std::vector<unsigned>{1, 2, 7}[document.draw(3)];
    if (document.draw(3) != 0) {
      expectSame(lookAt(live, passOver(EditedDocument::window, threads)), now);
    }
    if (document.draw(3) == 0) {
      painted.show(document.drawRange());
    }
    if (document.draw(3) != 0) {
      painted.refresh(now, threads);
    }
    before = now;
  }
}

/// CNDFRMT_LIVE_SEEDS asks for more seeds than usual.
std::uint32_t countSeeds() {
  constexpr std::uint32_t usual = 120;
  char const* const asked = std::getenv("CNDFRMT_LIVE_SEEDS");
  return asked == nullptr ? usual : static_cast<std::uint32_t>(std::stoul(asked));
}

INSTANTIATE_TEST_SUITE_P(Seeds, LiveEdits, testing::Range(std::uint32_t{1}, countSeeds() + 1));

constexpr TableRange wholeSheet{0, 0, DOM::Table::rowCount, DOM::Table::columnCount};

std::string stylesOfColumn(LiveResolver const& live, LiveSheet const& sheet, unsigned long column,
                           unsigned long rows) {
  std::string styles;
  for (unsigned long row = 0; row < rows; ++row) {
    styles += live.resolve(sheet.table.getCellInfo(row, column)) ? "+" : "-";
  }
  return styles;
}

ValuesChanged changedCell(LiveSheet const& sheet, unsigned long row, unsigned long column) {
  return {&sheet.table, {{row, column, row + 1, column + 1}}};
}

TEST(LiveResolver, ReachesTheCellsWhoseFormulasReferToTheChange) {
  LiveSheet sheet;
  sheet.addRule("C1:F9", LiveSheet::isTrue("$A1>5"));
  sheet.addRule("H2:H9", LiveSheet::isTrue("B1>5"));
  LiveResolver live = sheet.follow();
  EXPECT_EQ(live.apply({changedCell(sheet, 3, 0)}), (std::vector<TableRange>{{3, 2, 4, 6}}));
  EXPECT_EQ(live.apply({changedCell(sheet, 3, 1)}), (std::vector<TableRange>{{4, 7, 5, 8}}));
  EXPECT_TRUE(live.apply({changedCell(sheet, 3, 9)}).empty());
  EXPECT_TRUE(live.apply({}).empty());
}

TEST(LiveResolver, ForgetsIndexesOfRangesThatChanged) {
  constexpr unsigned long rows = 2000;
  LiveSheet sheet;
  for (unsigned long row = 0; row < rows; ++row) {
    sheet.table.setValue(row, 0, TestSupport::number(static_cast<double>(row)));
  }
  sheet.addRule("C1:C2000", LiveSheet::isTrue("COUNTIF(A$1:A$2000,ROW()-1)=2"));
  LiveResolver live = sheet.follow();
  EXPECT_EQ(stylesOfColumn(live, sheet, 2, 4), "----");
  auto const countStyled = [&] {
    std::size_t styled = 0;
    live.visit(passOver({0, 2, rows, 3}),
               [&](ResolvedCell const& cell) { styled += cell.style ? 1 : 0; });
    return styled;
  };
  EXPECT_EQ(countStyled(), 0U);
  sheet.table.setValue(2, 0, TestSupport::number(3));
  live.apply({changedCell(sheet, 2, 0)});
  EXPECT_EQ(countStyled(), 1U);
}

TEST(LiveResolver, FollowsCellsThatAreFoundOnlyByEvaluation) {
  for (char const* formula : {"OFFSET($A$1,3,1)>5", "INDIRECT(\"B4\")>5",
                              "SUM($A$1:INDEX($B$4:$C$4,2))>5", "SUMIF($A$1:$A$4,1,$B$1)>5"}) {
    LiveSheet sheet;
    sheet.setColumn(0, {1, 1, 1, 1});
    sheet.addRule("D1", LiveSheet::isTrue(formula));
    LiveResolver live = sheet.follow();
    EXPECT_EQ(stylesOfColumn(live, sheet, 3, 1), "-") << formula;
    sheet.table.setValue(3, 1, TestSupport::number(9));
    EXPECT_FALSE(live.apply({changedCell(sheet, 3, 1)}).empty()) << formula;
    EXPECT_EQ(stylesOfColumn(live, sheet, 3, 1), "+") << formula;
  }
}

TEST(LiveResolver, AsksAFormulaAgainThatGaveUpForCellsThatChanged) {
  LiveSheet sheet;
  sheet.setColumn(0, {9, 9, 9, 1});
  sheet.addRule("A1:A4", LiveSheet::isTrue("IF(A1>5,LAMBDA(f,f(f))(LAMBDA(f,f(f))),TRUE)"));
  LiveResolver live = sheet.follow();
  auto const countFailures = [&] {
    std::size_t failures = 0;
    live.visit(passOver({0, 0, 4, 1}),
               [&](ResolvedCell const& cell) { failures += cell.failure != nullptr ? 1 : 0; });
    return failures;
  };
  EXPECT_EQ(countFailures(), 4U);
  sheet.setColumn(0, {1, 1, 1});
  EXPECT_EQ(live.apply({ValuesChanged{&sheet.table, {{0, 0, 3, 1}}}}),
            (std::vector<TableRange>{{0, 0, 4, 1}}));
  EXPECT_EQ(countFailures(), 0U);
}

TEST(LiveResolver, CountsRowsThatWereDeletedAtTheEndOfARange) {
  struct Case {
    char const* name;
    DOM::ConditionalFormatOperator condition;
    std::vector<double> values;
    char const* before;
    char const* after;
  };
  Case cases[] = {
      {"a mean", LiveSheet::isAboveAverage(), {1, 2, 3, 100}, "---+", "--+-"},
      {"a rank",
       DOM::TopBottomConditionalFormatOperator(DOM::TopBottomConditionalFormatType::Top, 1, false),
       {1, 2, 3, 100},
       "---+",
       "--+-"},
      {"repeated values",
       DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Duplicate},
       {1, 2, 3, 3},
       "--++",
       "----"},
  };
  for (Case& each : cases) {
    SCOPED_TRACE(each.name);
    LiveSheet sheet;
    sheet.setColumn(0, each.values);
    sheet.addRule("A1:A4", std::move(each.condition));
    LiveResolver live = sheet.follow();
    EXPECT_EQ(stylesOfColumn(live, sheet, 0, 4), each.before);
    sheet.table.deleteRows(3, 1);
    auto const areas =
        live.apply({LinesChanged{&sheet.table, Axis::Rows, LineEdit::Delete, 3, 1, 0}});
    EXPECT_TRUE(holdsCell(areas, CellIndex(RowIndex(2), ColumnIndex(0))));
    EXPECT_EQ(stylesOfColumn(live, sheet, 0, 4), each.after);
  }
}

TEST(LiveResolver, FollowsFormulasWhoseFirstCellWasMoved) {
  LiveSheet sheet;
  sheet.addRule("A1 C5:C40", LiveSheet::isTrue("$B1>5"));
  sheet.table.setValue(27, 1, TestSupport::number(9));
  LiveResolver live = sheet.follow();
  EXPECT_EQ(live.resolve(sheet.table.getCellInfo(30, 2)), nullptr);
  sheet.table.moveRows(0, 1, 20);
  auto const areas = live.apply({LinesChanged{&sheet.table, Axis::Rows, LineEdit::Move, 0, 1, 20}});
  EXPECT_NE(live.resolve(sheet.table.getCellInfo(30, 2)), nullptr);
  EXPECT_TRUE(holdsCell(areas, CellIndex(RowIndex(30), ColumnIndex(2))));
}

TEST(LiveResolver, AnEditOfRowsReachesNoRowBeforeItWhereFormulasReferToTheirOwnRow) {
  LiveSheet sheet;
  sheet.setColumn(0, {1, 9, 1, 9, 1, 9});
  sheet.addRule("A1:A6", LiveSheet::isTrue("A1>5"));
  LiveResolver live = sheet.follow();
  sheet.table.deleteRows(3, 1);
  EXPECT_EQ(live.apply({LinesChanged{&sheet.table, Axis::Rows, LineEdit::Delete, 3, 1, 0}}),
            (std::vector<TableRange>{{3, 0, 6, 1}}));
}

TEST(LiveResolver, KeepsWhatAChangeDoesNotReach) {
  std::atomic<std::size_t> reads = 0;
  LiveSheet sheet;
  sheet.setColumn(0, {1, 2, 3, 100});
  sheet.addRule("A1:A4", LiveSheet::isAboveAverage());
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<TestSupport::CountingValueContextProvider>(sheet.table, reads));
  LiveResolver live = calculator.follow(sheet.styles, sheet.table);
  EXPECT_NE(live.resolve(sheet.table.getCellInfo(3, 0)), nullptr);
  EXPECT_EQ(reads, 5U);
  sheet.table.setValue(0, 1, TestSupport::number(1));
  EXPECT_TRUE(live.apply({changedCell(sheet, 0, 1)}).empty());
  EXPECT_NE(live.resolve(sheet.table.getCellInfo(3, 0)), nullptr);
  EXPECT_EQ(reads, 6U);
}

TEST(LiveResolver, IgnoresTheFormatsOfOtherTables) {
  LiveSheet sheet;
  sheet.addRule("A1:A4", LiveSheet::isAboveAverage());
  DOM::Table const other;
  LiveResolver live = sheet.follow();
  EXPECT_TRUE(live.apply({FormatsChanged{&other}}).empty());
  EXPECT_EQ(live.apply({FormatsChanged{&sheet.table}}), (std::vector<TableRange>{{0, 0, 4, 1}}));
  EXPECT_EQ(live.apply({AnythingChanged()}), (std::vector<TableRange>{{0, 0, 4, 1}}));
}

TEST(LiveResolver, TellsWhenTimeChangesAnswers) {
  auto const noon = TestSupport::noonOn21November();
  OfficeUtils::PinnedMoment const pinned(noon + std::chrono::microseconds(300));
  LiveSheet sheet;
  sheet.addRule("A1:A4", LiveSheet::isTrue("A1>5"));
  EXPECT_EQ(sheet.follow().nextChange(), std::nullopt);
  sheet.addRule("A1:A4", LiveSheet::isTrue("A1=TODAY()"));
  EXPECT_EQ(sheet.follow().nextChange(), noon + std::chrono::hours(12));
  sheet.addRule("A1:A4", LiveSheet::isTrue("A1<NOW()"));
  EXPECT_EQ(sheet.follow().nextChange(), noon + std::chrono::seconds(1));
}

class FailingHost : public testing::TestWithParam<std::uint32_t> {};

TEST_P(FailingHost, LeavesAResolverThatAnswersRightly) {
  EditedDocument document(GetParam());
  OfficeUtils::ScopedClock const clock(document.getMoment());
  ConditionalFormattingPropsCalculator const calculator(document.makeProvider());
  LiveResolver live = calculator.follow(document.styles, document.table);
  LiveView view(live);
  view.show(EditedDocument::window);
  view.refresh([](ResolvedCell const& /*cell*/) {});
  constexpr int mostAddedFormats = 4;
  int addedFormats = 0;
  bool hasFailed = true;
  for (long call = 1; hasFailed; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    std::vector<Change> changes;
    document.setRandomValue(document.table, document.draw(9), document.draw(4));
    changes.emplace_back(ValuesChanged{&document.table, {{0, 0, 9, 4}}});
    if (document.draw(2) == 0) {
      document.editLines(changes);
    }
    if (document.draw(2) == 0) {
      // Each further format asks the host more, so that there would be more and more calls to fail.
      if (addedFormats < mostAddedFormats) {
        document.addRandomFormat();
        ++addedFormats;
      }
      changes.emplace_back(FormatsChanged{&document.table});
    }
    if (call % 2 == 0) {
      prepareAll(live);
    }
    document.failAt(call);
    hasFailed = false;
    try {
      static_cast<void>(live.prepareSome(std::chrono::milliseconds(1)));
      static_cast<void>(live.apply(changes));
    } catch (std::runtime_error const&) {
      hasFailed = true;
    }
    document.failAt(0);
    Looks const now = lookAnew(calculator, document);
    expectSame(lookAt(live, passOver(EditedDocument::window)), now);
    std::size_t told = 0;
    view.refresh([&](ResolvedCell const& cell) {
      ++told;
      EXPECT_EQ(cell.style, now.at(cell.cellInfo.getCellIndex()).style);
    });
    if (hasFailed) {
      EXPECT_EQ(live.apply({}), std::vector<TableRange>{wholeSheet});
      EXPECT_TRUE(live.apply({}).empty() || live.nextChange());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, FailingHost, testing::Range(std::uint32_t{1}, std::uint32_t{4}));

}  // namespace
}  // namespace Zorv::ConditionalFormatters
