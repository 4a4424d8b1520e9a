#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RuledDocument.h"
#include "tool/Output/CheckOutput.h"

namespace Zorv::Tool {
namespace {

std::string printFindings(Terminal const& terminal) {
  TestSupport::RuledDocument ruled;
  auto const selection = ruled.select();
  std::vector<Analysis::CheckFinding> const findings{
      {.code = Analysis::CheckCode::NeverHolds,
       .severity = Analysis::Severity::Warning,
       .sheet = 0,
       .ranges = {{0, 0, 9, 1}},
       .rules = {3},
       .reason = "its first bound, 9, is above its second, 1"}};
  std::ostringstream stream;
  OutputBuffer out(stream);
  printCheckText(selection, findings, terminal, out);
  out.flush();
  std::string const text = stream.str();
  return text.substr(0, text.find("\n\n") + 1);  // without the advice
}

TEST(CheckText, FitsTheTerminal) {
  EXPECT_EQ(printFindings({.width = 50}),
            "warning: Sheet1!A1:A9: rule 3 never holds: its\n"
            "    first bound, 9, is above its second, 1\n"
            "    [never-holds]\n");
}

TEST(CheckText, KeepsALineForAFindingWhereThereIsNoTerminal) {
  EXPECT_EQ(printFindings({}),
            "warning: Sheet1!A1:A9: rule 3 never holds: its first bound, 9, is above its second, 1 "
            "[never-holds]\n");
}

}  // namespace
}  // namespace Zorv::Tool
