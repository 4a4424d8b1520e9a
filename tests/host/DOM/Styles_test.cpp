#include "DOM/Styles.h"

#include <memory>

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

TEST(NamedTableStyle, SetsNothingByDefault) {
  NamedTableStyle const style("Plain");
  EXPECT_EQ(style.getName(), "Plain");
  EXPECT_EQ(style.getRunProps(), nullptr);
  EXPECT_EQ(style.getParaProps(), nullptr);
  EXPECT_EQ(style.getCellProps(), nullptr);
  EXPECT_EQ(style.getCellFormat(), nullptr);
  EXPECT_TRUE(style.getParentUUID().isEmpty());
}

TEST(NamedTableStyle, SharesTheGroupsThatItIsGiven) {
  NamedTableStyle style;
  auto const run = std::make_shared<RunProps const>();
  auto const para = std::make_shared<ParaProps const>();
  auto const cell = std::make_shared<CellProps const>();
  auto const format = std::make_shared<CellFormat const>();
  UUID const parent = UUID::generate();
  style.setRunProps(run);
  style.setParaProps(para);
  style.setCellProps(cell);
  style.setCellFormat(format);
  style.setParentUUID(parent);
  EXPECT_EQ(style.getRunProps(), run);
  EXPECT_EQ(style.getParaProps(), para);
  EXPECT_EQ(style.getCellProps(), cell);
  EXPECT_EQ(style.getCellFormat(), format);
  EXPECT_EQ(style.getParentUUID(), parent);
}

TEST(Styles, AreFoundByExactIdentity) {
  Styles styles;
  UUID const uuid = UUID::generate();
  styles.getTableStyles().emplace(uuid, NamedTableStyle("Warning"));
  Styles const& document = styles;
  EXPECT_EQ(document.getTableStyles().at(uuid).getName(), "Warning");
  EXPECT_FALSE(document.getTableStyles().contains(UUID::generate()));
}

}  // namespace
}  // namespace Zorv::DOM
