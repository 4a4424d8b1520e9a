#include "render/Html/CellMarkup.h"

#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/MakePicture.h"
#include "visuals/DataBar.h"

namespace Zorv::Render {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class CellMarkupTest : public testing::Test {
protected:
  std::string contentOf(PictureCell const& cell) {
    std::string out;
    CellMarkup(made.sheet(), styles, graphics).appendContent(out, cell);
    return out;
  }
  std::string classesOf(PictureCell const& cell) {
    std::string out;
    CellMarkup(made.sheet(), styles, graphics).appendClasses(out, cell, {});
    return out;
  }
  /// The style sheet after the classes of a cell with a look, which `edit` makes.
  template <class Edit>
  std::string styleOf(Edit const& edit,
                      DOM::HorizontalAlignment horizontal = DOM::HorizontalAlignment::Left) {
    edit(made.sheet().looks.emplace_back());
    auto& cell = made.add(0, 0, "x");
    cell.look = static_cast<std::uint32_t>(made.sheet().looks.size() - 1);
    cell.horizontal = horizontal;
    styles = {};
    (void)classesOf(cell);
    return styles.getText();
  }

  TestSupport::MadePicture made{1, 4};
  StyleSheet styles;
  PageGraphics graphics;
};

TEST_F(CellMarkupTest, TextIsEscaped) {
  EXPECT_EQ(contentOf(made.add(0, 0, "<b>&")), "&lt;b&gt;&amp;");
}

TEST_F(CellMarkupTest, LinksNeedASafeScheme) {
  made.sheet().links = {"https://example.com/\"x", "javascript:alert(1)", "#Sheet2!A1"};
  auto& cell = made.add(0, 0, "go");
  cell.link = 1;
  EXPECT_EQ(contentOf(cell),
            "<a href=\"https://example.com/&quot;x\" rel=\"noopener noreferrer\" "
            "target=\"_blank\">go</a>");
  cell.link = 2;
  EXPECT_EQ(contentOf(cell), "go");
  cell.link = 3;
  EXPECT_EQ(contentOf(cell), "<a href=\"#\" data-place=\"Sheet2!A1\">go</a>");
}

TEST_F(CellMarkupTest, RunsOfARichTextHaveClasses) {
  Font bold;
  bold.bold = true;
  made.sheet().richTexts = {{{.text = "a<", .font = bold}, {.text = "b", .font = {}}}};
  auto& cell = made.add(0, 0, "a<b");
  cell.runs = 1;
  EXPECT_EQ(contentOf(cell),
            "<span><span class=\"s1\">a&lt;</span><span class=\"s2\">b</span></span>");
  EXPECT_THAT(styles.getText(), HasSubstr(".s1{font:bold 11pt/1.2"));
}

TEST_F(CellMarkupTest, ASplitTextStandsAtBothEdges) {
  auto& cell = made.add(0, 0, "$5.00");
  cell.splitAt = 1;
  EXPECT_EQ(contentOf(cell), "<span>$</span><span>5.00</span>");
  EXPECT_THAT(classesOf(cell), StartsWith(" sp"));
}

TEST_F(CellMarkupTest, TextThatIsTooLongRunsIntoFreeNeighboursAndNoFurther) {
  auto& cell = made.add(0, 1, "a text that is far too long for its column");
  cell.freeLeft = 1;
  cell.freeRight = 2;
  EXPECT_THAT(classesOf(cell), HasSubstr(" o"));
  EXPECT_THAT(styles.getText(), HasSubstr("{clip-path:inset(0 -128px 0 -64px)}"));
  cell.text = "abc";
  EXPECT_EQ(classesOf(cell), "") << "it fits";
}

TEST_F(CellMarkupTest, TextThatRunsOverInASheetFromRightToLeftHasItsNextColumnsAtItsLeft) {
  made.sheet().rightToLeft = true;
  for (std::uint32_t column = 0; column < 4; ++column) {
    made.sheet().columns[column].size = 10 * (column + 1);
  }
  auto& cell = made.add(0, 1, "a text that is far too long for its column");
  cell.freeLeft = 2;
  cell.freeRight = 1;
  EXPECT_THAT(classesOf(cell), HasSubstr(" o"));
  EXPECT_THAT(styles.getText(), HasSubstr("{clip-path:inset(0 -10px 0 -70px)}"));
}

TEST_F(CellMarkupTest, TextThatIsTooLongIsCutWhereNoNeighbourIsFree) {
  auto& cell = made.add(0, 1, "a text that is far too long for its column");
  EXPECT_EQ(classesOf(cell), " x");
  cell.text = "abc";
  EXPECT_EQ(classesOf(cell), "") << "it fits";
  made.sheet().rows[0].size = 10;
  EXPECT_EQ(classesOf(cell), " x") << "the row is low";
  made.sheet().looks[0].shrinksToFit = true;
  EXPECT_EQ(classesOf(cell), " x k") << "the script makes it smaller";
}

TEST_F(CellMarkupTest, ANumberIsNotCutOnceMore) {
  auto& cell = made.add(0, 1, "12345678.12");
  EXPECT_EQ(classesOf(cell), " x");
  cell.content = CellContent::Number;
  EXPECT_EQ(classesOf(cell), "");
  made.sheet().looks[0].shrinksToFit = true;
  EXPECT_EQ(classesOf(cell), " x k");
}

TEST_F(CellMarkupTest, TextIsCutUnlessItFitsInAnyFont) {
  auto& cell = made.add(0, 0);
  cell.content = CellContent::Text;
  for (auto const& [text, isCut] : {std::pair("grove", false),
                                    {"grovel", true},
                                    {"GROV", false},
                                    {"GROVE", true},
                                    {"mmmmm", true},
                                    {"\u5927\u5927", true}}) {
    cell.text = text;
    EXPECT_EQ(classesOf(cell), isCut ? " x" : "") << text;
  }
}

TEST_F(CellMarkupTest, ColoursOfScalesAndSectionsStandAboveTheLook) {
  auto& cell = made.add(0, 0, "5");
  cell.scaleColour = DOM::Colour{1, 2, 3};
  cell.textColour = DOM::Colour{255, 0, 0};
  (void)classesOf(cell);
  EXPECT_THAT(styles.getText(), HasSubstr("{background:#010203!important}"));
  EXPECT_THAT(styles.getText(), HasSubstr("{color:#ff0000!important}"));
}

TEST_F(CellMarkupTest, BarsLieWhereTheirExtentSays) {
  Visuals::DataBar bar;
  bar.fill = DOM::Colour{0, 0, 255};
  bar.isGradient = false;
  auto& cell = made.add(0, 0, "5");
  cell.bar = Visuals::ShownBar{.format = 0,
                               .extent = {.from = 0.25, .to = 0.75, .axis = 0.25},
                               .isNegative = false,
                               .bar = &bar};
  EXPECT_EQ(contentOf(cell),
            "<svg class=\"b\" aria-hidden=\"true\">"
            "<rect x=\"25%\" width=\"50%\" height=\"100%\" fill=\"#0000ff\"/>"
            "<line x1=\"25%\" x2=\"25%\" y2=\"100%\" stroke=\"#000000\" stroke-dasharray=\"2 2\"/>"
            "</svg>5");
  bar.direction = Visuals::BarDirection::RightToLeft;
  cell.bar->extent = {.from = 0, .to = 0.1, .axis = {}};
  EXPECT_THAT(contentOf(cell), HasSubstr("<rect x=\"90%\" width=\"10%\""));
}

TEST_F(CellMarkupTest, GradientsOfBarsBeginAtTheAxis) {
  Visuals::DataBar bar;
  bar.fill = DOM::Colour{0, 0, 255};
  auto& cell = made.add(0, 0);
  cell.bar = Visuals::ShownBar{
      .format = 0, .extent = {.from = 0.5, .to = 1, .axis = 0.5}, .isNegative = false, .bar = &bar};
  EXPECT_THAT(contentOf(cell), HasSubstr("fill=\"url(#g1)\""));
  EXPECT_THAT(graphics.getMarkup(), Not(HasSubstr("x1=\"1\"")));
  cell.bar->isNegative = true;
  EXPECT_THAT(contentOf(cell), HasSubstr("fill=\"url(#g2)\""));
  EXPECT_THAT(graphics.getMarkup(), HasSubstr("<linearGradient id=\"g2\" x1=\"1\" x2=\"0\">"));
}

TEST_F(CellMarkupTest, IconsHaveANameAndOneDefinition) {
  auto& cell = made.add(0, 0, "5");
  cell.icon = Visuals::Icon{.set = Visuals::IconSetName::Arrows3, .index = 2};
  auto const content = contentOf(cell);
  EXPECT_THAT(content, StartsWith("<svg class=\"i\" role=\"img\" aria-label=\""));
  EXPECT_THAT(content, HasSubstr("<use href=\"#g1\"/></svg>5"));
  EXPECT_EQ(contentOf(cell), content);
  EXPECT_THAT(graphics.getMarkup(), HasSubstr("<symbol id=\"g1\""));
  cell.icon->set = Visuals::IconSetName::NoIcons;
  EXPECT_EQ(contentOf(cell), "5");
}

TEST_F(CellMarkupTest, FillsAreBackgrounds) {
  EXPECT_THAT(styleOf([](Look& look) {
                look.fill.pattern = DOM::FillPattern::Solid;
                look.fill.colour = {255, 199, 206};
              }),
              HasSubstr("background:#ffc7ce"));
  EXPECT_THAT(styleOf([](Look& look) {
                look.fill.pattern = DOM::FillPattern::LightUp;
                look.fill.colour = {255, 255, 0};
                look.fill.patternColour = {1, 2, 3};
              }),
              HasSubstr("background:repeating-linear-gradient(135deg,#010203 0 1px,#0000 1px 4px),"
                        "#ffff00"));
  EXPECT_THAT(styleOf([](Look& look) {
                look.fill.pattern = DOM::FillPattern::Gradient;
                look.fill.gradient.emplace().degree = 90;
                look.fill.gradient->stops = {{0, {255, 0, 0}}, {1, {0, 0, 255}}};
              }),
              HasSubstr("background:linear-gradient(180deg,#ff0000 0%,#0000ff 100%)"));
}

TEST_F(CellMarkupTest, GradientsFromARectangleOutwardsAreDrawn) {
  auto& fill = made.sheet().looks.emplace_back().fill;
  fill.pattern = DOM::FillPattern::Gradient;
  auto& gradient = fill.gradient.emplace();
  gradient.type = DOM::GradientType::Path;
  gradient.left = gradient.right = gradient.top = gradient.bottom = 0.5;
  gradient.stops = {{0, {255, 0, 0}}, {1, {0, 0, 255}}};
  auto& cell = made.add(0, 0, "x");
  cell.look = 1;
  EXPECT_EQ(contentOf(cell), "<svg class=\"b\" aria-hidden=\"true\"><use href=\"#g1\"/></svg>x");
  EXPECT_EQ(classesOf(cell), " g");
  EXPECT_THAT(graphics.getMarkup(), HasSubstr("<polygon points=\"0,0 0.5,0.5 0.5,0.5 0,1\""));
}

TEST_F(CellMarkupTest, FontsHaveFallbacksAndAreBounded) {
  EXPECT_THAT(styleOf([](Look& look) {
                look.font.name = "Calibri";
                look.font.size = 14;
                look.font.italic = true;
              }),
              HasSubstr("font:italic 14pt/1.2 'Calibri','Carlito',sans-serif;"));
  EXPECT_THAT(styleOf([](Look& look) {
                look.font.name = "x;}*{display:none";
                look.font.size = 1e9;
              }),
              HasSubstr("font:500pt/1.2 sans-serif;"));
}

TEST_F(CellMarkupTest, AlignmentAndIndentAreOfTheSameSide) {
  auto const indent = [](Look& look) { look.indent = 9; };
  EXPECT_THAT(styleOf(indent), HasSubstr("padding-left:12px;"));
  EXPECT_THAT(styleOf(indent, DOM::HorizontalAlignment::Right),
              HasSubstr("justify-content:right;text-align:right;padding-right:12px;"));
  EXPECT_THAT(styleOf([](Look& look) { look.vertical = DOM::VerticalAlignment::Top; }),
              HasSubstr("align-items:flex-start"));
  EXPECT_THAT(styleOf([](Look& look) { look.wraps = true; }), HasSubstr("white-space:pre-wrap"));
}

TEST_F(CellMarkupTest, TurnedTextHasAnElementOfItsOwn) {
  EXPECT_THAT(styleOf([](Look& look) { look.rotation = 90; }),
              HasSubstr("&>span{writing-mode:vertical-rl;transform:rotate(180deg)}"));
  EXPECT_EQ(contentOf(made.sheet().cells.back()), "<span>x</span>");
  EXPECT_THAT(styleOf([](Look& look) { look.rotation = 45; }), HasSubstr("rotate(-45deg)"));
  EXPECT_THAT(styleOf([](Look& look) { look.isStacked = true; }),
              HasSubstr("text-orientation:upright"));
}

}  // namespace
}  // namespace Zorv::Render
