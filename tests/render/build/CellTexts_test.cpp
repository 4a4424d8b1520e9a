#include "render/Build/CellTexts.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

using DOM::HorizontalAlignment;
using FormulaModel::FormulaValue;

FormulaValue number(double value) { return FormulaModel::FormulaNumber{FloatNumber(value)}; }
FormulaValue text(std::string value) { return FormulaModel::FormulaString{std::move(value)}; }

/// Writes values in one style.
class Writer {
public:
  explicit Writer(std::string code = {}, DOM::ParaProps const& para = {},
                  DOM::RunProps const& run = {}) {
    DOM::CellStyle style;
    if (!code.empty()) {
      style.setCellFormat(
          std::make_shared<DOM::CellFormat const>(DOM::CellFormat{std::move(code)}));
    }
    style.setParaProps(std::make_shared<DOM::ParaProps const>(para));
    style.setRunProps(std::make_shared<DOM::RunProps const>(run));
    _style = _factory.create(std::move(style));
    _looks = std::make_unique<Looks>(_style.get(), _locale);
  }

  [[nodiscard]] CellText write(FormulaValue const& value, double width = 64,
                               bool rightToLeft = false) {
    return CellTexts(_locale, rightToLeft).write(value, _looks->find(nullptr, nullptr), width);
  }

private:
  OfficeUtils::LocaleContext _locale;
  DOM::SharedObjectFactory _factory;
  DOM::SharedCellStylePtr _style;
  std::unique_ptr<Looks> _looks;
};

TEST(CellTexts, GeneralNumbersAreCutToTheWidth) {
  struct Case {
    double number;
    double width;
    std::string_view text;
  };
  for (Case const& test : std::initializer_list<Case>{
           {1.0 / 3, 64, "0.333333"},
           {1.0 / 3, 200, "0.333333333"},
           {1.0 / 3, 26, "0.3"},
           {123456789, 64, "1.23E+08"},
           {123456789, 68, "123456789"},
           {-5, 19, "-5"},
           {5, 5, "#"},
           {123456789012.0, 200, "1.23457E+11"},
       }) {
    EXPECT_EQ(Writer().write(number(test.number), test.width).text, test.text)
        << test.number << " in " << test.width;
  }
}

TEST(CellTexts, NumbersInOtherFormatsAreRowsOfHashesWhereTheyAreTooWide) {
  EXPECT_EQ(Writer("0.00").write(number(12345.678)).text, "12345.68");
  EXPECT_EQ(Writer("0.00").write(number(123456789.678)).text, "#######");
  EXPECT_EQ(Writer("0.00").write(number(123456789.678), 20).text, "##");
  EXPECT_EQ(Writer("yyyy-mm-dd").write(number(-1)).text, "#######");
  EXPECT_EQ(Writer("yyyy-mm-dd").write(number(1), 200).text, "1900-01-01");
  EXPECT_EQ(Writer("0.00", {}, {.fontSize = 22.0}).write(number(12345.678)).text, "####");
}

TEST(CellTexts, BuiltInDatesAreThoseOfTheLocale) {
  EXPECT_EQ(Writer("mm-dd-yy").write(number(46265), 80).text, "8/31/2026");
  EXPECT_EQ(Writer("m/d/yy h:mm").write(number(46265.5), 200).text, "8/31/2026 12:00");
  EXPECT_EQ(Writer("mm-dd-yyyy").write(number(46265), 80).text, "08-31-2026");
}

TEST(CellTexts, NumbersThatAreTurnedOrShrunkAreNotCut) {
  EXPECT_EQ(Writer("0.00", {.shrinkToFit = true}).write(number(123456789.5)).text, "123456789.50");
  EXPECT_EQ(Writer({}, {.textRotation = 90}).write(number(1.0 / 3), 20).text, "0.333333333");
  EXPECT_EQ(Writer("0.00", {.wrapText = true, .shrinkToFit = true}).write(number(123456789.5)).text,
            "#######");
}

TEST(CellTexts, TruthValuesAndErrorsAreCentredOrRowsOfHashes) {
  CellText const truth = Writer().write(FormulaModel::FormulaBoolean{true});
  EXPECT_EQ(truth.text, "TRUE");
  EXPECT_EQ(truth.content, CellContent::Boolean);
  EXPECT_EQ(truth.horizontal, HorizontalAlignment::Center);
  CellText const error =
      Writer().write(FormulaModel::FormulaError{FormulaModel::FormulaErrorCode::DivisionByZero});
  EXPECT_EQ(error.text, "#DIV/0!");
  EXPECT_EQ(error.content, CellContent::Error);
  EXPECT_EQ(error.horizontal, HorizontalAlignment::Center);
  EXPECT_EQ(Writer().write(FormulaModel::FormulaBoolean{true}, 20).text, "##");
}

TEST(CellTexts, GeneralAlignmentFollowsTheKindOfTheValue) {
  EXPECT_EQ(Writer().write(number(1)).horizontal, HorizontalAlignment::Right);
  EXPECT_EQ(Writer().write(text("a")).horizontal, HorizontalAlignment::Left);
  EXPECT_EQ(Writer().write(text("שלום")).horizontal, HorizontalAlignment::Right);
  EXPECT_EQ(Writer().write(text("1 سلام")).horizontal, HorizontalAlignment::Right);
  EXPECT_EQ(Writer().write(text("ﬁ")).horizontal, HorizontalAlignment::Right);
  EXPECT_EQ(Writer().write(text("日本")).horizontal, HorizontalAlignment::Left);
  EXPECT_EQ(Writer().write(text("12"), 64, true).horizontal, HorizontalAlignment::Right);
  EXPECT_EQ(Writer().write(text("a"), 64, true).horizontal, HorizontalAlignment::Left);
  DOM::ParaProps const centred{.horizontalAlignment = HorizontalAlignment::Center};
  EXPECT_EQ(Writer({}, centred).write(number(1)).horizontal, HorizontalAlignment::Center);
}

TEST(CellTexts, FillsOfSpacesPutTheTextAtBothEdges) {
  CellText const price = Writer(R"(_("$"* #,##0.00_))").write(number(5), 100);
  EXPECT_EQ(price.text, " $5.00 ");
  EXPECT_EQ(price.splitAt, 2U);
  CellText const plain = Writer("_(* #,##0_)").write(number(5), 100);
  EXPECT_EQ(plain.text, "5 ");
  EXPECT_EQ(plain.splitAt, std::nullopt);
  EXPECT_EQ(plain.horizontal, HorizontalAlignment::Right);
  DOM::ParaProps const centred{.horizontalAlignment = HorizontalAlignment::Center};
  EXPECT_EQ(Writer("0* ", centred).write(number(5), 100).horizontal, HorizontalAlignment::Left);
  EXPECT_EQ(Writer("0;0;0;@* ").write(text("a"), 100).text, "a");
}

TEST(CellTexts, OtherFillsAreRepeatedToTheWidth) {
  CellText const dashes = Writer("0*-").write(number(5), 64);
  EXPECT_EQ(dashes.text.front(), '5');
  EXPECT_GT(dashes.text.size(), 8U);
  EXPECT_LT(dashes.text.size(), 16U);
  EXPECT_EQ(dashes.text.find_first_not_of('-', 1), std::string::npos);
}

TEST(CellTexts, AlignmentFillRepeatsTheText) {
  DOM::ParaProps const fill{.horizontalAlignment = HorizontalAlignment::Fill};
  EXPECT_EQ(Writer({}, fill).write(text("00")).text, "00000000");
  EXPECT_EQ(Writer({}, fill).write(number(12), 32).text, "1212");
  EXPECT_EQ(Writer({}, fill).write(text("a longer text"), 20).text, "a longer text");
  EXPECT_LE(Writer({}, fill).write(text("\u0301"), 1785).text.size(), 2'000U);
}

TEST(CellTexts, ColoursComeFromTheSection) {
  EXPECT_EQ(Writer("0;[Red]-0").write(number(-1)).colour, 3U);
  EXPECT_EQ(Writer("0;[Red]-0").write(number(1)).colour, 0U);
  EXPECT_EQ(Writer("0;0;0;[Blue]@").write(text("a")).colour, 5U);
}

TEST(CellTexts, ControlCharactersBecomeSpacesAndLineEndsCountWhereTextIsWrapped) {
  EXPECT_EQ(Writer().write(text("a\tb\x1B[2Jc\x7F")).text, "a b [2Jc ");
  EXPECT_EQ(Writer().write(text("a\r\nb\nc\rd")).text, "a b c d");
  EXPECT_EQ(Writer({}, {.wrapText = true}).write(text("a\r\nb\nc\rd")).text, "a\nb\nc\nd");
  EXPECT_EQ(Writer("\"\x01\"0").write(number(5)).text, " 5");
}

TEST(CellTexts, LongTextsAreCutAtTheEndOfACharacter) {
  std::string const longText = "x" + std::string(32'765, 'y') + "ééé";
  std::string const cut = Writer().write(text(longText)).text;
  EXPECT_EQ(cut, longText.substr(0, 32'766) + "...");
  std::string const longest(32'767, 'y');
  EXPECT_EQ(Writer().write(text(longest)).text, longest);
}

TEST(CellTexts, TellsWhetherTheTextIsTheValue) {
  EXPECT_TRUE(Writer().write(text("a\r\nb")).isAsStored);
  EXPECT_FALSE(Writer("0;0;0;<@>").write(text("a")).isAsStored);
}

TEST(CellTexts, AnEmptyCellHasNoText) {
  EXPECT_EQ(Writer().write({}).content, CellContent::Empty);
  EXPECT_EQ(Writer().write({}).text, "");
}

}  // namespace
}  // namespace Zorv::Render
