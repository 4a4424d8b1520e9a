#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"
#include "DOM/Cell.h"
#include "DOM/Table.h"

// A host that uses the names of the style hierarchy for its own functions. Its types are made of
// those of the document model, or stand beside them in a call, so that argument-dependent lookup
// finds both families of functions in every call below.
namespace Host {
namespace {

using Zorv::DOM::Cell;
using Zorv::DOM::CellProps;
using Zorv::DOM::CellStyle;
using Zorv::DOM::NamedTableStyle;
using Zorv::DOM::ParaProps;
using Zorv::DOM::RunProps;
using Zorv::DOM::TrackChangesViewMode;

using Cells = std::vector<Cell>;

/// A style sheet of another kind: the names of its styles.
struct Theme {
  std::vector<std::string> styleNames;
};

template <class List, class Item>
std::string getParent(List& /*list*/, Item const& /*item*/) {
  return "parent";
}

template <class Item>
std::string override(std::shared_ptr<Item>& /*target*/,
                     std::shared_ptr<Item const> const& /*source*/) {
  return "override";
}

template <class List, class Visitor>
std::string forEachStyleInHierarchy(List& /*list*/, NamedTableStyle const* /*start*/,
                                    Visitor const& /*visitor*/) {
  return "each";
}

template <class List, class Item, class Get>
std::string overrideWithParentStyles(List& /*list*/, std::shared_ptr<Item>& /*target*/,
                                     NamedTableStyle const* /*start*/, Get const& /*get*/) {
  return "parents";
}

template <class List>
std::string overrideCellProps(List& /*list*/, std::shared_ptr<CellProps>& /*target*/,
                              CellStyle const& /*style*/) {
  return "cell";
}

template <class List>
std::string overrideRunPropsWithTracked(List& /*list*/, std::shared_ptr<RunProps>& /*target*/,
                                        CellStyle const& /*style*/, TrackChangesViewMode /*mode*/) {
  return "run";
}

template <class List>
std::string overrideParaPropsWithTracked(List& /*list*/, std::shared_ptr<ParaProps>& /*target*/,
                                         CellStyle const& /*style*/,
                                         TrackChangesViewMode /*mode*/) {
  return "para";
}

template <class List>
std::string findCellFormat(List& /*list*/, CellStyle const& /*style*/) {
  return "format";
}

template <class List>
std::string getOverridenAllPropsWithParentStyles(List& /*list*/, CellStyle const& /*style*/,
                                                 TrackChangesViewMode /*mode*/) {
  return "all";
}

constexpr auto mode = TrackChangesViewMode::Final;

TEST(StyleHierarchyNames, AHostsOwnFunctionsAreChosenForItsTypes) {
  Cells cells(1);
  EXPECT_EQ(getParent(cells, cells.front()), "parent");
  auto target = std::make_shared<Cell>();
  EXPECT_EQ(override(target, std::shared_ptr<Cell const>()), "override");
}

TEST(StyleHierarchyNames, AHostsOwnFunctionsAreChosenForItsStyleSheet) {
  Theme theme;
  NamedTableStyle const named;
  CellStyle const style;
  std::shared_ptr<CellProps> cell;
  std::shared_ptr<RunProps> run;
  std::shared_ptr<ParaProps> para;
  EXPECT_EQ(getParent(theme, style), "parent");
  EXPECT_EQ(forEachStyleInHierarchy(theme, &named, [](NamedTableStyle const&) {}), "each");
  EXPECT_EQ(overrideWithParentStyles(theme, run, &named, &NamedTableStyle::getRunProps), "parents");
  EXPECT_EQ(overrideCellProps(theme, cell, style), "cell");
  EXPECT_EQ(overrideRunPropsWithTracked(theme, run, style, mode), "run");
  EXPECT_EQ(overrideParaPropsWithTracked(theme, para, style, mode), "para");
  EXPECT_EQ(findCellFormat(theme, style), "format");
  EXPECT_EQ(getOverridenAllPropsWithParentStyles(theme, style, mode), "all");
}

TEST(StyleHierarchyNames, AHostsOwnFunctionsAreChosenForItsVisitorsAndGroups) {
  Zorv::DOM::Styles const styles;
  NamedTableStyle const named;
  EXPECT_EQ(forEachStyleInHierarchy(styles, &named, std::string("no visitor")), "each");
  auto target = std::make_shared<Cell>();
  EXPECT_EQ(overrideWithParentStyles(styles, target, &named,
                                     [](NamedTableStyle const&) { return nullptr; }),
            "parents");
  std::shared_ptr<RunProps> run;
  EXPECT_EQ(overrideWithParentStyles(styles, run, &named, std::string("no getter")), "parents");
}

}  // namespace
}  // namespace Host
