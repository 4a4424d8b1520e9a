#include "workbook/Read/VisualReader.h"

#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using TestSupport::WorkbookBuilder;
using Visuals::ColourScale;
using Visuals::DataBar;
using Visuals::IconSet;
using Visuals::ThresholdKind;

constexpr char const* namespaces =
    "xmlns:n='http://schemas.microsoft.com/office/spreadsheetml/2009/9/main' "
    "xmlns:m='http://schemas.microsoft.com/office/excel/2006/main'";

std::string mainList(std::string const& rules) {
  return "<conditionalFormatting sqref='A1:A9'>" + rules + "</conditionalFormatting>";
}

std::string extensionList(std::string const& rules) {
  return std::string("<extLst><ext ") + namespaces +
         "><n:conditionalFormattings><n:conditionalFormatting>" + rules +
         "<m:sqref>A1:A9</m:sqref></n:conditionalFormatting></n:conditionalFormattings></ext>"
         "</extLst>";
}

/// A rule of the main list that names its part {A} in the extension list.
std::string firstPart(std::string const& type, std::string const& drawing) {
  return "<cfRule type='" + type + "' priority='1'>" + drawing + "<extLst><ext " + namespaces +
         "><n:id>{A}</n:id></ext></extLst></cfRule>";
}

class VisualReaderTest : public testing::Test {
protected:
  /// Loads rules, of which the first must be resolved.
  Visuals::VisualFormat const& load(std::string const& afterRows) {
    _document = WorkbookBuilder().setSheet("", afterRows).load();
    auto const& rule = _document.getRules().at(0);
    if (rule.visual == nullptr) {
      throw std::runtime_error("not resolved: " + rule.unresolvedReason);
    }
    return *rule.visual;
  }
  template <class Kind>
  Kind const& loadKind(std::string const& afterRows) {
    return std::get<Kind>(load(afterRows).kind);
  }

  Document _document;
};

TEST_F(VisualReaderTest, AColourScaleHasItsPoints) {
  auto const& scale = loadKind<ColourScale>(mainList(
      "<cfRule type='colorScale' priority='1'><colorScale><cfvo type='min' val='0'/>"
      "<cfvo type='percentile' val='50'/><cfvo type='num' val='$B$1'/>"
      "<color rgb='FFF8696B'/><color rgb='FFFFEB84'/><color theme='4'/></colorScale></cfRule>"));
  ASSERT_EQ(scale.points.size(), 3U);
  EXPECT_EQ(scale.points[0].threshold.kind, ThresholdKind::Min);
  EXPECT_EQ(scale.points[0].threshold.text, "");
  EXPECT_EQ(scale.points[0].colour, (DOM::Colour{0xF8, 0x69, 0x6B}));
  EXPECT_EQ(scale.points[1].threshold.kind, ThresholdKind::Percentile);
  EXPECT_EQ(std::get<double>(scale.points[1].threshold.operand), 50);
  EXPECT_EQ(scale.points[2].threshold.kind, ThresholdKind::Number);
  EXPECT_EQ(scale.points[2].threshold.text, "$B$1");
  EXPECT_TRUE(
      std::holds_alternative<DOM::FormulaSyntaxTree::Expr>(scale.points[2].threshold.operand));
  EXPECT_EQ(scale.points[2].colour, (DOM::Colour{0x4F, 0x81, 0xBD}));
}

TEST_F(VisualReaderTest, AnOldDataBarHasNoAxisAndItsLengths) {
  auto const& bar = loadKind<DataBar>(
      mainList("<cfRule type='dataBar' priority='1'><dataBar showValue='0' maxLength='80'>"
               "<cfvo type='min'/><cfvo type='max'/><color rgb='FF638EC6'/></dataBar></cfRule>"));
  EXPECT_EQ(bar.axis, Visuals::BarAxis::None);
  EXPECT_EQ(bar.minLength, 10);
  EXPECT_EQ(bar.maxLength, 80);
  EXPECT_EQ(bar.fill, (DOM::Colour{0x63, 0x8E, 0xC6}));
  EXPECT_TRUE(bar.isGradient);
  EXPECT_FALSE(bar.showValue);
}

TEST_F(VisualReaderTest, TheExtensionsPartOfABarDecides) {
  auto const& bar = loadKind<DataBar>(
      mainList(firstPart("dataBar",
                         "<dataBar showValue='0'><cfvo type='min'/><cfvo type='max'/>"
                         "<color rgb='FF638EC6'/></dataBar>")) +
      extensionList("<n:cfRule type='dataBar' id='{A}'><n:dataBar minLength='0' maxLength='100' "
                    "border='1' gradient='0' direction='rightToLeft' axisPosition='middle' "
                    "negativeBarBorderColorSameAsPositive='0'><n:cfvo type='autoMin'/>"
                    "<n:cfvo type='num'><m:f>25</m:f></n:cfvo><n:borderColor rgb='FF010203'/>"
                    "<n:negativeFillColor rgb='FFFF0000'/><n:negativeBorderColor rgb='FF00FF00'/>"
                    "<n:axisColor rgb='FF000000'/></n:dataBar></n:cfRule>"));
  EXPECT_EQ(bar.minimum.kind, ThresholdKind::AutoMin);
  EXPECT_EQ(std::get<double>(bar.maximum.operand), 25);
  EXPECT_EQ(bar.minLength, 0);
  EXPECT_EQ(bar.maxLength, 100);
  EXPECT_EQ(bar.fill, (DOM::Colour{0x63, 0x8E, 0xC6}));
  EXPECT_EQ(bar.border, (DOM::Colour{1, 2, 3}));
  EXPECT_EQ(bar.negativeFill, (DOM::Colour{255, 0, 0}));
  EXPECT_EQ(bar.negativeBorder, (DOM::Colour{0, 255, 0}));
  EXPECT_EQ(bar.axisColour, (DOM::Colour{0, 0, 0}));
  EXPECT_FALSE(bar.isGradient);
  EXPECT_EQ(bar.axis, Visuals::BarAxis::Middle);
  EXPECT_EQ(bar.direction, Visuals::BarDirection::RightToLeft);
  EXPECT_FALSE(bar.showValue);
  ASSERT_EQ(_document.getRules().size(), 1U);
}

TEST_F(VisualReaderTest, AnExtendedBarHasDefaultsOfItsOwn) {
  auto const& bar = loadKind<DataBar>(extensionList(
      "<n:cfRule type='dataBar' priority='3'><n:dataBar negativeBarColorSameAsPositive='1'>"
      "<n:cfvo type='min'/><n:cfvo type='max'/><n:fillColor rgb='FF638EC6'/>"
      "<n:borderColor rgb='FF010203'/><n:negativeFillColor rgb='FFFF0000'/>"
      "<n:negativeBorderColor rgb='FF00FF00'/></n:dataBar></n:cfRule>"));
  EXPECT_EQ(bar.axis, Visuals::BarAxis::Automatic);
  EXPECT_EQ(bar.fill, (DOM::Colour{0x63, 0x8E, 0xC6}));
  EXPECT_FALSE(bar.border);
  EXPECT_FALSE(bar.negativeFill);
  EXPECT_FALSE(bar.negativeBorder);
  EXPECT_EQ(bar.direction, Visuals::BarDirection::Context);
}

TEST_F(VisualReaderTest, AnIconSetHasItsSteps) {
  auto const& set = loadKind<IconSet>(
      mainList("<cfRule type='iconSet' priority='1'><iconSet iconSet='4Rating' reverse='1' "
               "showValue='0'><cfvo type='percent' val='0'/><cfvo type='num' val='3' gte='0'/>"
               "<cfvo type='formula' val='MAX($B$1:$B$3)'/><cfvo type='percentile' val='90'/>"
               "</iconSet></cfRule>"));
  EXPECT_EQ(set.name, Visuals::IconSetName::Rating4);
  ASSERT_EQ(set.steps.size(), 4U);
  EXPECT_TRUE(set.steps[0].orEqual);
  EXPECT_FALSE(set.steps[1].orEqual);
  EXPECT_EQ(set.steps[2].kind, ThresholdKind::Formula);
  EXPECT_TRUE(set.isReversed);
  EXPECT_FALSE(set.showValue);
  EXPECT_TRUE(set.ownIcons.empty());
}

TEST_F(VisualReaderTest, WithoutANameTheIconsAreTrafficLights) {
  EXPECT_EQ(
      loadKind<IconSet>(mainList("<cfRule type='iconSet'><iconSet><cfvo type='percent' val='0'/>"
                                 "<cfvo type='percent' val='33'/><cfvo type='percent' val='67'/>"
                                 "</iconSet></cfRule>"))
          .name,
      Visuals::IconSetName::TrafficLights3One);
}

TEST_F(VisualReaderTest, OwnIconsAreOnesOfAnySet) {
  auto const& set = loadKind<IconSet>(extensionList(
      "<n:cfRule type='iconSet' priority='1'><n:iconSet iconSet='3Stars' custom='1'>"
      "<n:cfvo type='percent'><m:f>0</m:f></n:cfvo><n:cfvo type='percent'><m:f>33</m:f></n:cfvo>"
      "<n:cfvo type='num' gte='0'><m:f>Other!$A$1</m:f></n:cfvo>"
      "<n:cfIcon iconSet='3Flags' iconId='2'/><n:cfIcon iconSet='NoIcons' iconId='0'/>"
      "<n:cfIcon iconSet='5Boxes' iconId='4'/></n:iconSet></n:cfRule>"));
  EXPECT_EQ(set.name, Visuals::IconSetName::Stars3);
  EXPECT_EQ(set.steps[2].text, "Other!$A$1");
  EXPECT_THAT(set.ownIcons, testing::ElementsAre(Visuals::Icon{Visuals::IconSetName::Flags3, 2},
                                                 Visuals::Icon{Visuals::IconSetName::NoIcons, 0},
                                                 Visuals::Icon{Visuals::IconSetName::Boxes5, 4}));
}

TEST_F(VisualReaderTest, AFormulaOfTheExtensionIsTheRulesCondition) {
  EXPECT_TRUE(load(extensionList("<n:cfRule type='dataBar' priority='1'><m:f>B1</m:f><n:dataBar>"
                                 "<n:cfvo type='min'/><n:cfvo type='max'/></n:dataBar></n:cfRule>"))
                  .condition);
  EXPECT_TRUE(load(mainList(firstPart("dataBar",
                                      "<dataBar><cfvo type='min'/><cfvo type='max'/>"
                                      "</dataBar>")) +
                   extensionList("<n:cfRule type='dataBar' id='{A}'><m:f>B1</m:f><n:dataBar>"
                                 "<n:cfvo type='min'/><n:cfvo type='max'/></n:dataBar></n:cfRule>"))
                  .condition);
  EXPECT_THAT(_document.getRules()[0].formulas, testing::ElementsAre("B1"));
  // That of the main list is none.
  EXPECT_FALSE(load(mainList("<cfRule type='dataBar'><formula>B1</formula><dataBar>"
                             "<cfvo type='min'/><cfvo type='max'/></dataBar></cfRule>"))
                   .condition);
}

TEST_F(VisualReaderTest, ARuleCountsIfOneOfItsPartsCanBeRead) {
  std::string const part = extensionList(
      "<n:cfRule type='dataBar' id='{A}'><n:dataBar><n:cfvo type='min'/><n:cfvo type='max'/>"
      "</n:dataBar></n:cfRule>");
  EXPECT_EQ(std::get<DataBar>(load(mainList(firstPart("dataBar", "<dataBar/>")) + part).kind).axis,
            Visuals::BarAxis::Automatic);
  EXPECT_EQ(_document.getRules()[0].unresolvedReason, "");
  std::string const good =
      mainList(firstPart("dataBar", "<dataBar><cfvo type='min'/><cfvo type='max'/></dataBar>"));
  EXPECT_EQ(
      std::get<DataBar>(load(good + extensionList("<n:cfRule type='dataBar' id='{A}'><n:dataBar/>"
                                                  "</n:cfRule>"))
                            .kind)
          .axis,
      Visuals::BarAxis::None);
  EXPECT_THAT(_document.getFindings().at(0).message,
              testing::EndsWith("has a part in the extension list that is left out: a data bar has "
                                "two thresholds, not 0"));
}

TEST_F(VisualReaderTest, PrioritiesOrderVisualAndConditionalFormats) {
  auto const icons = [](std::string const& priority) {
    return "<cfRule type='colorScale' priority='" + priority +
           "'><colorScale><cfvo type='min'/><cfvo type='max'/><color rgb='FF000000'/>"
           "<color rgb='FFFFFFFF'/></colorScale></cfRule>";
  };
  load(mainList(icons("5") + "<cfRule type='uniqueValues' priority='3'/>" + icons("2") +
                "<cfRule type='duplicateValues' priority='4'/>"));
  auto const& formats = _document.getSheets()[0].visualFormats;
  ASSERT_EQ(formats.size(), 2U);
  EXPECT_EQ(formats[0].get(), _document.getRules()[2].visual);
  EXPECT_EQ(formats[0]->formatsBefore, 0U);
  EXPECT_EQ(formats[1].get(), _document.getRules()[0].visual);
  EXPECT_EQ(formats[1]->formatsBefore, 2U);
}

struct DamagedVisual {
  char const* rule;
  char const* reason;
};

class DamagedVisuals : public testing::TestWithParam<DamagedVisual> {};

TEST_P(DamagedVisuals, HaveAReason) {
  Document const document = WorkbookBuilder().setSheet("", mainList(GetParam().rule)).load();
  EXPECT_EQ(document.getRules().at(0).visual, nullptr);
  EXPECT_THAT(document.getRules()[0].unresolvedReason, testing::StartsWith(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    VisualReader, DamagedVisuals,
    testing::Values(
        DamagedVisual{"<cfRule type='dataBar'/>", "the rule has no dataBar element"},
        DamagedVisual{"<cfRule type='dataBar'><dataBar><cfvo type='min'/></dataBar></cfRule>",
                      "a data bar has two thresholds, not 1"},
        DamagedVisual{
            "<cfRule type='dataBar'><dataBar><cfvo/><cfvo type='max'/></dataBar></cfRule>",
            "a threshold names no type"},
        DamagedVisual{"<cfRule type='dataBar'><dataBar><cfvo type='most'/></dataBar></cfRule>",
                      "type=\"most\" is not known"},
        DamagedVisual{"<cfRule type='dataBar'><dataBar><cfvo type='num'/></dataBar></cfRule>",
                      "a threshold of the type num has no value"},
        DamagedVisual{"<cfRule type='dataBar'><dataBar><cfvo type='num' val='1+'/></dataBar>"
                      "</cfRule>",
                      "the formula \"1+\" cannot be read: "},
        DamagedVisual{"<cfRule type='dataBar'><dataBar minLength='x'><cfvo type='min'/>"
                      "<cfvo type='max'/></dataBar></cfRule>",
                      "minLength=\"x\" is no number"},
        DamagedVisual{"<cfRule type='colorScale'><colorScale><cfvo type='min'/><cfvo type='max'/>"
                      "<color rgb='FF000000'/></colorScale></cfRule>",
                      "a colour scale has two or three thresholds and as many colours, not 2 and "
                      "1"},
        DamagedVisual{"<cfRule type='colorScale'><colorScale><cfvo type='min'/><cfvo type='max'/>"
                      "<color rgb='FF000000'/><color rgb='red'/></colorScale></cfRule>",
                      "a colour of the scale cannot be read"},
        DamagedVisual{"<cfRule type='iconSet'><iconSet iconSet='9Moons'/></cfRule>",
                      "the icon set \"9Moons\" is not known"},
        DamagedVisual{"<cfRule type='iconSet'><iconSet iconSet='4Rating'>"
                      "<cfvo type='min'/></iconSet></cfRule>",
                      "the set 4Rating has 4 icons, and the rule 1 thresholds"},
        DamagedVisual{"<cfRule type='iconSet'><iconSet custom='1'><cfvo type='min'/>"
                      "<cfvo type='min'/><cfvo type='min'/></iconSet></cfRule>",
                      "the rule has 0 icons of its own for 3 thresholds"},
        DamagedVisual{"<cfRule type='iconSet'><iconSet custom='1'><cfvo type='min'/>"
                      "<cfvo type='min'/><cfvo type='min'/><cfIcon iconSet='3Flags' iconId='3'/>"
                      "</iconSet></cfRule>",
                      "the set 3Flags has no icon \"3\""}));

struct FaultyVisual {
  char const* rule;
  std::vector<char const*> findings;
};

class FaultyVisuals : public testing::TestWithParam<FaultyVisual> {};

TEST_P(FaultyVisuals, AreReadAndTold) {
  Document const document = WorkbookBuilder().setSheet("", GetParam().rule).load();
  EXPECT_NE(document.getRules().at(0).visual, nullptr);
  std::vector<std::string> messages;
  for (Finding const& finding : document.getFindings()) {
    EXPECT_EQ(finding.sheet, "Sheet1");
    EXPECT_EQ(finding.range, "A1:A9");
    messages.push_back(finding.message);
  }
  EXPECT_THAT(messages, testing::ElementsAreArray(GetParam().findings));
}

INSTANTIATE_TEST_SUITE_P(
    VisualReader, FaultyVisuals,
    testing::Values(
        FaultyVisual{"<conditionalFormatting sqref='A1:A9'><cfRule type='dataBar' priority='1'>"
                     "<dataBar showValue='maybe' minLength='-5' maxLength='250'><cfvo type='min'/>"
                     "<cfvo type='max' gte='2'/></dataBar></cfRule></conditionalFormatting>",
                     {"rule 0 has gte=\"2\", which is neither true nor false; it counts as true",
                      "rule 0 has minLength=\"-5\", which is not from 0 to 100; it counts as 0",
                      "rule 0 has maxLength=\"250\", which is not from 0 to 100; it counts as 100",
                      "rule 0 has showValue=\"maybe\", which is neither true nor false; it counts "
                      "as true"}},
        FaultyVisual{"<conditionalFormatting sqref='A1:A9'><cfRule type='dataBar' priority='1'>"
                     "<dataBar minLength='60' maxLength='40'><cfvo type='min'/><cfvo type='max'/>"
                     "</dataBar></cfRule></conditionalFormatting>",
                     {"rule 0 has a maxLength of 40 below its minLength of 60; both count as 60"}},
        FaultyVisual{"<conditionalFormatting sqref='A1:A9'><cfRule type='iconSet' priority='1'>"
                     "<iconSet reverse='so' custom='or'><cfvo type='min'/><cfvo type='percent' "
                     "val='33'/><cfvo type='percent' val='67'/></iconSet></cfRule>"
                     "</conditionalFormatting>",
                     {"rule 0 has reverse=\"so\", which is neither true nor false; it counts as "
                      "false",
                      "rule 0 has custom=\"or\", which is neither true nor false; it counts as "
                      "false"}}));

TEST_F(VisualReaderTest, FaultsOfThePartInTheExtensionListAreThoseOfTheRule) {
  load(mainList(firstPart("dataBar",
                          "<dataBar><cfvo type='min'/><cfvo type='max'/>"
                          "<color rgb='FF00FF00'/></dataBar>")) +
       extensionList("<n:cfRule type='dataBar' id='{A}'><n:dataBar gradient='no' border='x'>"
                     "<n:cfvo type='autoMin'/><n:cfvo type='autoMax'/></n:dataBar></n:cfRule>"));
  ASSERT_EQ(_document.getFindings().size(), 2U);
  EXPECT_EQ(_document.getFindings()[0].message,
            "rule 0 has gradient=\"no\", which is neither true nor false; it counts as true");
  EXPECT_EQ(_document.getFindings()[1].message,
            "rule 0 has border=\"x\", which is neither true nor false; it counts as false");
}

}  // namespace
}  // namespace Zorv::Workbook
