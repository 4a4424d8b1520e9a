#include "DOM/SetProperties.h"

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// A program that uses the names of the visits for functions of its own. Argument-dependent lookup
// finds both families in every call below.
namespace Program {
namespace {

template <class Group, class Visitor>
std::string forEachSetMember(Group const& /*group*/, Visitor const& /*visitor*/) {
  return "each member";
}

template <class Visitor>
std::string forEachSetProperty(Zorv::DOM::CellStyle const& /*style*/, Visitor const& /*visitor*/) {
  return "each property";
}

TEST(SetProperties, AProgramsOwnFunctionsAreChosenForItsGroupsAndVisitors) {
  EXPECT_EQ(forEachSetMember(std::vector<Zorv::DOM::CellStyle>(), 1), "each member");
  EXPECT_EQ(forEachSetMember(Zorv::DOM::RunProps(), "no visitor"), "each member");
  EXPECT_EQ(forEachSetProperty(Zorv::DOM::CellStyle(), "no visitor"), "each property");
}

}  // namespace
}  // namespace Program

namespace Zorv::DOM {
namespace {

using testing::ElementsAre;

TEST(SetProperties, AreVisitedGroupByGroupInTheOrderOfTheirMembers) {
  CellStyle style;
  style.setRunProps(std::make_shared<RunProps>(RunProps{.fontName = "Arial", .bold = false}));
  style.setCellProps(std::make_shared<CellProps>(CellProps{.locked = true}));
  style.setParaProps(std::make_shared<ParaProps>(ParaProps{.indent = 2U}));
  style.setCellFormat(std::make_shared<CellFormat>(CellFormat{"0%"}));
  std::vector<std::string> names;
  forEachSetProperty(
      style, [&](std::string_view name, auto const& /*value*/) { names.emplace_back(name); });
  EXPECT_THAT(names, ElementsAre("locked", "fontName", "bold", "indent", "numberFormat"));
}

TEST(SetProperties, OfAGroupAreVisitedWithTheirValues) {
  double size = 0;
  forEachSetMember(RunProps{.fontSize = 10.5}, [&](std::string_view name, auto const& value) {
    if constexpr (std::is_same_v<decltype(value), double const&>) {
      EXPECT_EQ(name, "fontSize");
      size = value;
    }
  });
  EXPECT_EQ(size, 10.5);
}

}  // namespace
}  // namespace Zorv::DOM
