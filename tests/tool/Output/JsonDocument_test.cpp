#include "tool/Output/JsonDocument.h"

#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/RuledDocument.h"
#include "tool/Output/ResolveOutput.h"

namespace Zorv::Tool {
namespace {

class JsonSummaryTest : public testing::Test {
protected:
  nlohmann::json summary() { return nlohmann::json::parse(toJsonSummary(_selection, _report)); }

  TestSupport::RuledDocument _ruled;
  Selection _selection{_ruled.select()};
  std::ostringstream _err;
  Report _report{_err, _selection};
};

TEST_F(JsonSummaryTest, ListsEachProblemOnce) {
  _ruled.addUnresolvedRule("dataBar", "it draws");
  _ruled.addRule("A1:A9").doubts = {"refers to the unknown name \"Rate\""};
  _ruled.addRule("B1:B9");
  auto const failure = std::make_exception_ptr(std::runtime_error("too much"));
  for (unsigned long row = 3; row < 5; ++row) {
    _report.addFailure(_ruled.document.getRules()[2], {RowIndex(row), ColumnIndex(1UL)}, failure);
  }
  auto const json = summary();
  EXPECT_EQ(json["read"], 3);
  EXPECT_EQ(json["resolved"], 2);
  EXPECT_EQ(json["doubtful"], 1);
  EXPECT_EQ(json["failed"], 1);
  EXPECT_EQ(json["complete"], true);
  EXPECT_EQ(json["problems"].dump(),
            R"([{"problem":"notResolved","ranges":"A1","reason":"it draws","rule":0,)"
            R"("sheet":"Sheet1"},)"
            R"({"problem":"doubtful","ranges":"A1:A9","reason":"refers to the unknown name )"
            R"(\"Rate\"","rule":1,"sheet":"Sheet1"},)"
            R"({"cells":2,"firstCell":"B4","problem":"failed","ranges":"B1:B9",)"
            R"("reason":"too much","rule":2,"sheet":"Sheet1"}])");
}

TEST_F(JsonSummaryTest, SaysWhatIsMissing) {
  _report.saySparse(0, 6'000'000);
  _report.setIncomplete();
  EXPECT_EQ(summary()["clippedSheets"].dump(), R"(["Sheet1"])");
  EXPECT_EQ(summary()["complete"], false);
}

TEST_F(JsonSummaryTest, TheEarlyEndClosesTheSheetThatIsOpen) {
  std::ostringstream out;
  OutputBuffer buffer(out);
  OfficeUtils::LocaleContext const locale;
  auto const output = makeResolveJson(_selection, locale, _report, buffer);
  auto const& sheet = _ruled.document.getSheets()[0];
  output->beginSheet(sheet);
  EXPECT_TRUE(buffer.endEarly());
  auto const json = nlohmann::json::parse(out.str());
  EXPECT_EQ(json["sheets"][0]["cells"].size(), 0U);
  EXPECT_EQ(json["summary"]["complete"], false);
}

}  // namespace
}  // namespace Zorv::Tool
