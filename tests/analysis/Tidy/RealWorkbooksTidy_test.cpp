// Real workbooks, tidied: writeTidied() compares every cell, and here every part is compared.
#include <filesystem>
#include <map>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/Tidy/TidyFile.h"

namespace Zorv::Analysis {
namespace {

std::string eraseFormats(std::string part) {
  for (std::string const name : {"conditionalFormatting", "x14:conditionalFormatting"}) {
    for (auto begin = part.find("<" + name + " "); begin != std::string::npos;
         begin = part.find("<" + name + " ")) {
      std::string const end = "</" + name + ">";
      part.erase(begin, part.find(end, begin) + end.size() - begin);
    }
  }
  return part;
}

TEST(RealWorkbooksTidy, ChangeInTheirConditionalFormatsAlone) {
  std::map<std::string, std::string> counts;
  for (auto const& entry : std::filesystem::directory_iterator(WORKBOOKS_FOLDER)) {
    if (entry.path().extension() != ".xlsx") {
      continue;
    }
    auto const file = TestSupport::tidyFile(entry.path());
    ASSERT_EQ(file.partsBefore.size(), file.partsAfter.size()) << entry.path();
    for (auto const& [name, bytes] : file.partsBefore) {
      std::string const& after = file.partsAfter.at(name);
      if (file.plan.contents.contains(name)) {
        EXPECT_EQ(eraseFormats(bytes), eraseFormats(after)) << entry.path() << " " << name;
      } else {
        EXPECT_EQ(bytes, after) << entry.path() << " " << name;
      }
    }
    if (!file.plan.changesNothing()) {
      counts[entry.path().filename().string()] = std::to_string(file.before.getRules().size()) +
                                                 " -> " +
                                                 std::to_string(file.after.getRules().size());
    }
  }
  EXPECT_THAT(counts, testing::ElementsAre(testing::Pair("acr_checklist.en.xlsx", "31 -> 8")));
}

}  // namespace
}  // namespace Zorv::Analysis
