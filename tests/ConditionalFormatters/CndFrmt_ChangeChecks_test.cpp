#include "ConditionalFormatters/CndFrmt_ChangeChecks.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/LiveSheet.h"

namespace Zorv::ConditionalFormatters {
namespace {

using TestSupport::LiveSheet;
using TestSupport::number;

/// A sheet with a checked resolver; `edit` changes it behind the resolver's back.
struct CheckedSheet {
  template <class Edit>
  std::vector<std::string> findUntold(Edit const& edit) {
    std::vector<std::string> found;
    LiveResolver live = sheet.follow();
    live.check({.report = [&](UntoldChange const& change) { found.push_back(describe(change)); },
                .cellCount = 40});
    EXPECT_TRUE(live.apply({}).empty());
    edit();
    areas = live.apply({});
    lookAfterwards = live.resolve(sheet.table.getCellInfo(0, 0)) != nullptr;
    return found;
  }

  LiveSheet sheet;
  std::vector<TableRange> areas;
  bool lookAfterwards = false;
};

std::vector<TableRange> const allOfTheSheet{{0, 0, DOM::Table::rowCount, DOM::Table::columnCount}};

TEST(ChangeChecks, NameTheCellAndTheFormatOfAValueThatWasNotTold) {
  CheckedSheet checked;
  checked.sheet.setColumn(0, {1, 9});
  checked.sheet.addRule("A1:A2", LiveSheet::isTrue("FALSE"));
  checked.sheet.addRule("A1:A2", LiveSheet::isTrue("A1>5"));
  auto const found = checked.findUntold([&] { checked.sheet.table.setValue(0, 0, number(8)); });
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found.front(),
            "A1: format 1 did not hold before and holds now, but no change that was told reaches "
            "the cell");
  EXPECT_EQ(checked.areas, allOfTheSheet);
}

TEST(ChangeChecks, FindAMeanThatIsOutOfDateAndPrepareItAnew) {
  CheckedSheet checked;
  checked.sheet.setColumn(0, {5, 1, 1, 1});
  checked.sheet.addRule("A1:A4", LiveSheet::isAboveAverage());
  std::vector<std::string> found;
  LiveResolver live = checked.sheet.follow();
  EXPECT_NE(live.resolve(checked.sheet.table.getCellInfo(0, 0)), nullptr);
  checked.sheet.table.setValue(3, 0, number(100));
  live.check({.report = [&](UntoldChange const& change) { found.push_back(describe(change)); },
              .cellCount = 40});
  EXPECT_EQ(live.apply({}), allOfTheSheet);
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found.front(),
            "A1: format 0 holds by the known values and not by those of now, but no change that "
            "was told reaches what it compares with");
  EXPECT_EQ(live.resolve(checked.sheet.table.getCellInfo(0, 0)), nullptr);
}

TEST(ChangeChecks, FindFormatsThatWereNotTold) {
  CheckedSheet checked;
  checked.sheet.setColumn(0, {1, 9});
  auto const found =
      checked.findUntold([&] { checked.sheet.addRule("A1:A2", LiveSheet::isTrue("A1<5")); });
  EXPECT_EQ(found, std::vector<std::string>{
                       "the formats of the table or their ranges changed, which was not told"});
  EXPECT_TRUE(checked.lookAfterwards);
}

TEST(ChangeChecks, AreSilentAboutWhatIsTold) {
  LiveSheet sheet;
  sheet.setColumn(0, {5, 1, 1, 1});
  sheet.addRule("A1:A4", LiveSheet::isAboveAverage());
  sheet.addRule("A1:A4", LiveSheet::isTrue("RAND()>0.5"));
  LiveResolver live = sheet.follow();
  live.check({.report = [](UntoldChange const& change) { ADD_FAILURE() << describe(change); }});
  for (int edit = 0; edit < 20; ++edit) {
    sheet.table.setValue(3, 0, number(edit % 2 == 0 ? 100 : 1));
    live.apply({ValuesChanged{&sheet.table, {{3, 0, 4, 1}}}});
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
