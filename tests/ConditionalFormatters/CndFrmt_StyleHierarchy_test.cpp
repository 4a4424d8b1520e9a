#include "ConditionalFormatters/CndFrmt_StyleHierarchy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "support/Documents.h"

namespace Zorv::DOM {
namespace {

using namespace TestSupport;
using testing::ElementsAre;

constexpr auto anyMode = TrackChangesViewMode::Final;

UUID const grandparentID = makeUUID(1);
UUID const parentID = makeUUID(2);
UUID const noteID = makeUUID(9);

CellStyle makeChild(UUID const& parent) {
  CellStyle style;
  style.setParentUUID(parent);
  style.setNoteUUID(noteID);
  return style;
}

auto makeFormat(char const* code) { return std::make_shared<CellFormat const>(CellFormat{code}); }

auto makeFont(std::optional<bool> bold, std::optional<double> size) {
  return makeProps<RunProps>([&](RunProps& props) {
    props.bold = bold;
    props.fontSize = size;
  });
}

/// A grandparent and a parent that inherits from it.
class StyleHierarchyTest : public testing::Test {
protected:
  Styles styles;
  NamedTableStyle& grandparent = addStyle(styles, grandparentID);
  NamedTableStyle& parent = addStyle(styles, parentID, grandparentID);

  [[nodiscard]] CellStyle flatten(CellStyle const& style) const {
    return getOverridenAllPropsWithParentStyles(styles, style, anyMode);
  }
};

TEST_F(StyleHierarchyTest, AParentIsFoundByItsIdentity) {
  Styles const& constStyles = styles;
  EXPECT_EQ(getParent(constStyles, makeChild(parentID)), &parent);
  EXPECT_EQ(getParent(constStyles, parent), &grandparent);
  EXPECT_EQ(getParent(constStyles, grandparent), nullptr);
  // Between two identities, before the first and after the last.
  addStyle(styles, makeUUID(5));
  for (UUID const& unknown : {UUID(), makeUUID(3), makeUUID(6)}) {
    EXPECT_EQ(getParent(constStyles, makeChild(unknown)), nullptr) << unknown.toString();
  }
  Styles const noStyles;
  EXPECT_EQ(getParent(noStyles, makeChild(parentID)), nullptr);
}

TEST_F(StyleHierarchyTest, TheFarthestAncestorIsVisitedFirst) {
  std::vector<NamedTableStyle const*> visited;
  auto const visit = [&](NamedTableStyle const& style) { visited.push_back(&style); };
  forEachStyleInHierarchy(styles, &parent, visit);
  EXPECT_THAT(visited, ElementsAre(&grandparent, &parent));
  visited.clear();
  forEachStyleInHierarchy(styles, static_cast<NamedTableStyle const*>(nullptr), visit);
  EXPECT_TRUE(visited.empty());
}

TEST_F(StyleHierarchyTest, AStyleWithoutParentAndGroupsFlattensToNothingButItsNote) {
  CellStyle const flat = flatten(makeChild(UUID()));
  EXPECT_EQ(flat.getRunProps(), nullptr);
  EXPECT_EQ(flat.getParaProps(), nullptr);
  EXPECT_EQ(flat.getCellProps(), nullptr);
  EXPECT_EQ(flat.getCellFormat(), nullptr);
  EXPECT_EQ(flat.getNoteUUID(), noteID);
  EXPECT_TRUE(flat.getParentUUID().isEmpty());
}

TEST_F(StyleHierarchyTest, TheNearestStyleThatSetsAPropertyDecidesIt) {
  grandparent.setRunProps(makeFont(true, 8.0));
  parent.setRunProps(makeFont(false, std::nullopt));
  CellStyle const flat = flatten(makeChild(parentID));
  ASSERT_NE(flat.getRunProps(), nullptr);
  EXPECT_EQ(flat.getRunProps()->bold, false);
  EXPECT_EQ(flat.getRunProps()->fontSize, 8.0);
  EXPECT_TRUE(flat.getParentUUID().isEmpty());

  CellStyle child = makeChild(parentID);
  child.setRunProps(makeFont(true, std::nullopt));
  EXPECT_EQ(flatten(child).getRunProps()->bold, true);
  EXPECT_EQ(flatten(child).getRunProps()->fontSize, 8.0);
}

TEST_F(StyleHierarchyTest, EveryGroupIsFlattened) {
  grandparent.setParaProps(makeProps<ParaProps>([](ParaProps& props) {
    props.wrapText = true;
    props.indent = 1;
  }));
  parent.setParaProps(makeProps<ParaProps>([](ParaProps& props) { props.indent = 2; }));
  grandparent.setCellProps(makeProps<CellProps>([](CellProps& props) {
    props.locked = true;
    props.hidden = true;
  }));
  parent.setCellProps(makeProps<CellProps>([](CellProps& props) { props.hidden = false; }));
  CellStyle child = makeChild(parentID);
  child.setParaProps(makeProps<ParaProps>([](ParaProps& props) { props.shrinkToFit = true; }));
  child.setCellProps(makeProps<CellProps>(
      [](CellProps& props) { props.verticalAlignment = VerticalAlignment::Top; }));

  CellStyle const flat = flatten(child);
  EXPECT_EQ(flat.getRunProps(), nullptr);
  EXPECT_EQ(flat.getParaProps()->wrapText, true);
  EXPECT_EQ(flat.getParaProps()->indent, 2U);
  EXPECT_EQ(flat.getParaProps()->shrinkToFit, true);
  EXPECT_EQ(flat.getCellProps()->locked, true);
  EXPECT_EQ(flat.getCellProps()->hidden, false);
  EXPECT_EQ(flat.getCellProps()->verticalAlignment, VerticalAlignment::Top);
}

TEST_F(StyleHierarchyTest, TheNearestCellFormatIsTakenWholeAndShared) {
  auto const far = makeFormat("0.0");
  auto const near = makeFormat("0%");
  auto const own = makeFormat("@");
  EXPECT_EQ(flatten(makeChild(parentID)).getCellFormat(), nullptr);
  grandparent.setCellFormat(far);
  EXPECT_EQ(flatten(makeChild(parentID)).getCellFormat(), far);
  parent.setCellFormat(near);
  EXPECT_EQ(flatten(makeChild(parentID)).getCellFormat(), near);
  CellStyle child = makeChild(parentID);
  child.setCellFormat(own);
  EXPECT_EQ(flatten(child).getCellFormat(), own);
}

TEST_F(StyleHierarchyTest, AParentThatDoesNotExistEndsTheChain) {
  grandparent.setRunProps(makeFont(true, std::nullopt));
  grandparent.setCellFormat(makeFormat("0.0"));
  parent.setRunProps(makeFont(std::nullopt, 8.0));
  parent.setParentUUID(makeUUID(7));
  CellStyle const flat = flatten(makeChild(parentID));
  EXPECT_EQ(flat.getRunProps()->fontSize, 8.0);
  EXPECT_EQ(flat.getRunProps()->bold, std::nullopt);
  EXPECT_EQ(flat.getCellFormat(), nullptr);
}

TEST_F(StyleHierarchyTest, StylesOfTheDocumentAreCopiedAndNeverChanged) {
  auto const far = makeFont(true, 8.0);
  auto const near = makeFont(false, std::nullopt);
  grandparent.setRunProps(far);
  parent.setRunProps(near);
  RunProps const farBefore = *far;
  RunProps const nearBefore = *near;
  CellStyle const flat = flatten(makeChild(parentID));
  EXPECT_NE(flat.getRunProps(), far);
  EXPECT_NE(flat.getRunProps(), near);
  EXPECT_TRUE(*far == farBefore);
  EXPECT_TRUE(*near == nearBefore);
  // A group that one style alone sets is a copy, too.
  parent.setRunProps(nullptr);
  EXPECT_NE(flatten(makeChild(parentID)).getRunProps(), far);
}

TEST_F(StyleHierarchyTest, TheModeDoesNotMatter) {
  grandparent.setRunProps(makeFont(true, 8.0));
  CellStyle const child = makeChild(parentID);
  for (int const mode : {0, 1, 2, 3, 4}) {
    EXPECT_TRUE(getOverridenAllPropsWithParentStyles(
                    styles, child, static_cast<TrackChangesViewMode>(mode)) == flatten(child))
        << mode;
  }
}

TEST(StyleGroupOverride, FollowsWhichGroupsAreSet) {
  std::shared_ptr<RunProps const> const none;
  std::shared_ptr<RunProps> target;
  override(target, none);
  EXPECT_EQ(target, nullptr);

  auto const source = makeFont(true, 8.0);
  override(target, source);
  ASSERT_NE(target, nullptr);
  EXPECT_NE(target, source);
  EXPECT_TRUE(*target == *source);

  RunProps const* const copy = target.get();
  override(target, makeFont(false, std::nullopt));
  EXPECT_EQ(target.get(), copy);
  EXPECT_EQ(target->bold, false);
  EXPECT_EQ(target->fontSize, 8.0);
  EXPECT_EQ(source->bold, true);

  override(target, none);
  EXPECT_EQ(target.get(), copy);
  EXPECT_EQ(target->bold, false);
}

}  // namespace
}  // namespace Zorv::DOM
