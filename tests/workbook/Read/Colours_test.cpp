#include "workbook/Read/Colours.h"

#include <gtest/gtest.h>

#include "DOM/StyleProps.h"

namespace Zorv::Workbook {
namespace {

using DOM::Colour;

class PaletteTest : public testing::Test {
protected:
  std::optional<Colour> read(char const* element,
                             AutomaticColour automatic = AutomaticColour::Ink) {
    pugi::xml_document document;
    document.load_string(element);
    return palette.read(document.document_element(), automatic);
  }

  Palette palette{getDefaultThemeColours()};
};

TEST_F(PaletteTest, ComponentsAreReadWithAndWithoutAlphaWhichDoesNotCount) {
  EXPECT_EQ(read("<color rgb='FF9C0006'/>"), (Colour{0x9C, 0, 6, 255}));
  EXPECT_EQ(read("<color rgb='009C0006'/>"), (Colour{0x9C, 0, 6, 255}));
  EXPECT_EQ(read("<color rgb='9c0006'/>"), (Colour{0x9C, 0, 6, 255}));
  EXPECT_EQ(read("<color rgb='red'/>"), std::nullopt);
  EXPECT_EQ(read("<color/>"), std::nullopt);
  EXPECT_EQ(read(""), std::nullopt);
}

TEST_F(PaletteTest, ThemeNumbersHaveLightBeforeDark) {
  EXPECT_EQ(read("<color theme='0'/>"), (Colour{255, 255, 255, 255}));
  EXPECT_EQ(read("<color theme='1'/>"), (Colour{0, 0, 0, 255}));
  EXPECT_EQ(read("<color theme='4'/>"), (Colour{0x4F, 0x81, 0xBD, 255}));
  EXPECT_EQ(read("<color theme='12'/>"), std::nullopt);
}

TEST_F(PaletteTest, TintsChangeTheLightness) {
  EXPECT_EQ(read("<color theme='1' tint='0.5'/>"), (Colour{128, 128, 128, 255}));
  EXPECT_EQ(read("<color theme='0' tint='-0.25'/>"), (Colour{191, 191, 191, 255}));
  EXPECT_EQ(read("<color theme='4' tint='0.79998168889431442'/>"), (Colour{0xDC, 0xE6, 0xF2, 255}));
  EXPECT_EQ(read("<color theme='4' tint='-0.249977111117893'/>"), (Colour{0x37, 0x60, 0x92, 255}));
  EXPECT_EQ(read("<color theme='1' tint='9'/>"), (Colour{255, 255, 255, 255}));
}

TEST_F(PaletteTest, IndexedColoursAreOfThePaletteOrTheSystem) {
  EXPECT_EQ(read("<color indexed='2'/>"), (Colour{255, 0, 0, 255}));
  EXPECT_EQ(read("<color indexed='10'/>"), (Colour{255, 0, 0, 255}));
  EXPECT_EQ(read("<color indexed='63'/>"), (Colour{0x33, 0x33, 0x33, 255}));
  EXPECT_EQ(read("<color indexed='64'/>"), (Colour{0, 0, 0, 255}));
  EXPECT_EQ(read("<color indexed='65'/>", AutomaticColour::Paper), (Colour{255, 255, 255, 255}));
}

TEST_F(PaletteTest, WorkbooksMayHaveIndexedColoursOfTheirOwn) {
  palette.setIndexed({{1, 2, 3, 255}});
  EXPECT_EQ(read("<color indexed='0'/>"), (Colour{1, 2, 3, 255}));
  EXPECT_EQ(read("<color indexed='1'/>"), (Colour{255, 255, 255, 255}));
}

TEST_F(PaletteTest, AutomaticColoursAreInkOrPaper) {
  EXPECT_EQ(read("<color auto='1'/>"), (Colour{0, 0, 0, 255}));
  EXPECT_EQ(read("<color auto='1'/>", AutomaticColour::Paper), (Colour{255, 255, 255, 255}));
}

TEST(ThemeColours, AreReadFromTheSchemeAndOtherwiseTheDefaultOnes) {
  pugi::xml_document document;
  document.load_string(
      "<theme><a:themeElements><a:clrScheme><a:dk1><a:sysClr lastClr='010203'/></a:dk1>"
      "<a:lt1><a:srgbClr val='FDFEFF'/></a:lt1><a:accent1><a:srgbClr val='112233'/></a:accent1>"
      "</a:clrScheme></a:themeElements></theme>");
  ThemeColours const colours = readThemeColours(document.document_element());
  EXPECT_EQ(colours[0], (Colour{0xFD, 0xFE, 0xFF, 255}));
  EXPECT_EQ(colours[1], (Colour{1, 2, 3, 255}));
  EXPECT_EQ(colours[4], (Colour{0x11, 0x22, 0x33, 255}));
  EXPECT_EQ(colours[5], getDefaultThemeColours()[5]);
}

}  // namespace
}  // namespace Zorv::Workbook
