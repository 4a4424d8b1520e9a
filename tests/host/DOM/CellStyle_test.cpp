#include "DOM/CellStyle.h"

#include <memory>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

std::shared_ptr<RunProps const> bold(bool value = true) {
  RunProps props;
  props.bold = value;
  return std::make_shared<RunProps const>(props);
}

std::shared_ptr<RunProps const> italic() {
  RunProps props;
  props.italic = true;
  return std::make_shared<RunProps const>(props);
}

std::shared_ptr<ParaProps const> indented(unsigned steps) {
  ParaProps props;
  props.indent = steps;
  return std::make_shared<ParaProps const>(props);
}

std::shared_ptr<CellProps const> locked(bool value) {
  CellProps props;
  props.locked = value;
  return std::make_shared<CellProps const>(props);
}

std::shared_ptr<CellFormat const> format(char const* code) {
  return std::make_shared<CellFormat const>(CellFormat{code});
}

TEST(CellStyle, SetsNothingByDefault) {
  CellStyle const style;
  EXPECT_EQ(style.getRunProps(), nullptr);
  EXPECT_EQ(style.getParaProps(), nullptr);
  EXPECT_EQ(style.getCellProps(), nullptr);
  EXPECT_EQ(style.getCellFormat(), nullptr);
  EXPECT_TRUE(style.getParentUUID().isEmpty());
  EXPECT_TRUE(style.getNoteUUID().isEmpty());
}

TEST(CellStyle, MovesWithoutThrowing) {
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<CellStyle>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<CellStyle>);
}

TEST(CellStyleOverride, PropertiesOfTheSourceWinAndTheOthersStay) {
  CellStyle target;
  target.setRunProps(bold(false));
  target.setParaProps(indented(1));
  target.setCellProps(locked(true));
  CellStyle source;
  source.setRunProps(italic());
  source.setParaProps(indented(2));
  override(target, source);
  EXPECT_EQ(target.getRunProps()->bold, false);
  EXPECT_EQ(target.getRunProps()->italic, true);
  EXPECT_EQ(target.getParaProps()->indent, 2U);
  EXPECT_EQ(target.getCellProps()->locked, true);
}

TEST(CellStyleOverride, GroupsSharedWithOthersDoNotChange) {
  auto const targetsGroup = bold(false);
  auto const sourcesGroup = italic();
  CellStyle target;
  target.setRunProps(targetsGroup);
  CellStyle source;
  source.setRunProps(sourcesGroup);
  override(target, source);
  EXPECT_FALSE(targetsGroup->italic);
  EXPECT_FALSE(sourcesGroup->bold);
  EXPECT_NE(target.getRunProps(), targetsGroup);
  EXPECT_NE(target.getRunProps(), sourcesGroup);
}

TEST(CellStyleOverride, AGroupThatOnlyOneSetsIsSharedAndNotCopied) {
  CellStyle target;
  target.setCellProps(locked(true));
  auto const targetsGroup = target.getCellProps();
  CellStyle source;
  source.setRunProps(bold());
  override(target, source);
  EXPECT_EQ(target.getRunProps(), source.getRunProps());
  EXPECT_EQ(target.getCellProps(), targetsGroup);
}

TEST(CellStyleOverride, FormatNoteAndParentOfTheSourceReplaceTheTargetsWhole) {
  UUID const parent = UUID::generate();
  UUID const note = UUID::generate();
  CellStyle target;
  target.setCellFormat(format("0.00"));
  target.setParentUUID(UUID::generate());
  target.setNoteUUID(UUID::generate());
  CellStyle source;
  source.setCellFormat(format("0%"));
  source.setParentUUID(parent);
  source.setNoteUUID(note);
  override(target, source);
  EXPECT_EQ(target.getCellFormat(), source.getCellFormat());
  EXPECT_EQ(target.getParentUUID(), parent);
  EXPECT_EQ(target.getNoteUUID(), note);
}

TEST(CellStyleOverride, ASourceThatSetsNothingChangesNothing) {
  CellStyle target;
  target.setRunProps(bold());
  target.setCellFormat(format("0%"));
  target.setParentUUID(UUID::generate());
  target.setNoteUUID(UUID::generate());
  CellStyle const before = target;
  override(target, CellStyle());
  EXPECT_EQ(target, before);
  EXPECT_EQ(target.getRunProps(), before.getRunProps());
}

TEST(CellStyle, EqualityAndHashLookAtTheContent) {
  CellStyle a;
  a.setRunProps(bold());
  a.setParaProps(indented(1));
  a.setCellProps(locked(false));
  a.setCellFormat(format("0%"));
  CellStyle b;
  b.setRunProps(bold());
  b.setParaProps(indented(1));
  b.setCellProps(locked(false));
  b.setCellFormat(format("0%"));
  EXPECT_TRUE(a == b);
  EXPECT_EQ(hash_value(a), hash_value(b));
}

TEST(CellStyle, StylesThatDifferInOneThingAreDifferent) {
  CellStyle base;
  base.setRunProps(bold());
  auto const expectDifferent = [&](auto const& change) {
    CellStyle other = base;
    change(other);
    EXPECT_FALSE(other == base);
    EXPECT_NE(hash_value(other), hash_value(base));
  };
  expectDifferent([](CellStyle& style) { style.setRunProps(bold(false)); });
  expectDifferent([](CellStyle& style) { style.setRunProps(nullptr); });
  expectDifferent([](CellStyle& style) { style.setParaProps(indented(0)); });
  expectDifferent([](CellStyle& style) { style.setCellProps(locked(false)); });
  expectDifferent([](CellStyle& style) { style.setCellFormat(format("")); });
  expectDifferent([](CellStyle& style) { style.setParentUUID(UUID::generate()); });
  expectDifferent([](CellStyle& style) { style.setNoteUUID(UUID::generate()); });
  expectDifferent(
      [](CellStyle& style) { style.setParaProps(std::make_shared<ParaProps const>()); });
}

}  // namespace
}  // namespace Zorv::DOM
