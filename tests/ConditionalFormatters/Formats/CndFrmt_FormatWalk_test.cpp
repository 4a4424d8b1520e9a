#include "ConditionalFormatters/Formats/CndFrmt_FormatWalk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "DOM/Table.h"
#include "support/Documents.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

/// Holds or not, and writes down that it was asked and that it went.
class ScriptedOperator : public Operator {
public:
  ScriptedOperator(bool answer, std::string name, std::vector<std::string>& log)
      : _answer(answer), _name(std::move(name)), _log(log) {}
  ScriptedOperator(ScriptedOperator const&) = delete;
  ScriptedOperator& operator=(ScriptedOperator const&) = delete;
  ~ScriptedOperator() override { _log.push_back("~" + _name); }

  [[nodiscard]] bool operator()(FormulaValueData const&) const override {
    _log.push_back("judge " + _name);
    return _answer;
  }

private:
  bool _answer;
  std::string _name;
  std::vector<std::string>& _log;
};

class FormatWalkTest : public testing::Test {
protected:
  /// Adds a format over the judged cell, whose condition answers so.
  void add(bool answer, bool stop, TableRange const& range = {0, 0, 1, 1}) {
    auto const& format = addFormat(table, {range}, holdsAlways(), UUID(), stop);
    refs.emplace_back(std::vector{range}, std::cref(format));
    answers.push_back(answer);
  }

  void walk() {
    FormulaValueData const data{number(1), table.getCellInfo(0, 0).getCellIndex()};
    DOM::CellInfo const cell = table.getCellInfo(0, 0);
    walkFormats(
        refs, findFormatsOn(refs, cell),
        [&](FormatIndex index) {
          log.push_back("make " + std::to_string(index));
          return [condition = std::make_unique<ScriptedOperator>(
                      answers[index], std::to_string(index), log)](FormulaValueData const& asked) {
            return (*condition)(asked);
          };
        },
        [&]() -> FormulaValueData const& {
          log.emplace_back("value");
          return data;
        },
        [&](FormatIndex index) { log.push_back("holds " + std::to_string(index)); });
  }

  DOM::Table table;
  ConditionalFormatRefs refs;
  std::vector<bool> answers;
  std::vector<std::string> log;
};

TEST_F(FormatWalkTest, JudgesFormatByFormatAndLetsEachOperatorGoBeforeTheNext) {
  add(false, false);
  add(true, false);
  walk();
  EXPECT_THAT(log, ElementsAre("make 0", "value", "judge 0", "~0",  //
                               "make 1", "value", "judge 1", "holds 1", "~1"));
}

TEST_F(FormatWalkTest, StopsBehindAFormatThatHoldsAndStops) {
  add(false, true);
  add(true, true, {3, 3, 4, 4});
  add(true, true);
  add(true, false);
  walk();
  EXPECT_THAT(log, ElementsAre("make 0", "value", "judge 0", "~0",  //
                               "make 2", "value", "judge 2", "holds 2", "~2"));
}

TEST_F(FormatWalkTest, WithoutFormatsThereIsNothingToDo) {
  walk();
  EXPECT_THAT(log, IsEmpty());
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
