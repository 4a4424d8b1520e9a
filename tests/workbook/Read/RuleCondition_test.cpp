#include "workbook/Read/RuleCondition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include "Formulas/ParseExpr.h"

namespace Zorv::Workbook {
namespace {

using DOM::BinaryConditionalFormatType;
using DOM::NullaryConditionalFormatType;
using DOM::TextConditionalFormatType;
using DOM::UnaryConditionalFormatType;
using Formulas::parseExpr;
using Formula = std::vector<std::string>;

DOM::ConditionalFormatOperator read(std::string const& attributes, Formula const& formulas = {}) {
  pugi::xml_document document;
  document.load_string(("<cfRule " + attributes + "/>").c_str());
  return readCondition(document.document_element(), formulas);
}

std::string reasonOf(std::string const& attributes, Formula const& formulas = {}) {
  try {
    static_cast<void>(read(attributes, formulas));
  } catch (UnresolvedRule const& reason) {
    return reason.what();
  }
  return {};
}

struct ComparisonCase {
  char const* name;
  UnaryConditionalFormatType type;
};

class Comparisons : public testing::TestWithParam<ComparisonCase> {};

TEST_P(Comparisons, BecomeUnaryConditions) {
  auto const condition =
      read("type='cellIs' operator='" + std::string(GetParam().name) + "'", {"B1+1"});
  auto const& unary = boost::get<DOM::UnaryConditionalFormatOperator>(condition);
  EXPECT_EQ(unary.getType(), GetParam().type);
  EXPECT_EQ(unary.getArgument(), parseExpr("B1+1"));
}

INSTANTIATE_TEST_SUITE_P(
    RuleCondition, Comparisons,
    testing::Values(ComparisonCase{"equal", UnaryConditionalFormatType::Equal},
                    ComparisonCase{"notEqual", UnaryConditionalFormatType::NotEqual},
                    ComparisonCase{"greaterThan", UnaryConditionalFormatType::Greater},
                    ComparisonCase{"greaterThanOrEqual",
                                   UnaryConditionalFormatType::GreaterOrEqual},
                    ComparisonCase{"lessThan", UnaryConditionalFormatType::Less},
                    ComparisonCase{"lessThanOrEqual", UnaryConditionalFormatType::LessOrEqual}));

TEST(RuleCondition, IntervalsHaveTwoArgumentsInTheirOrder) {
  for (auto const& [name, type] :
       {std::pair{"between", BinaryConditionalFormatType::Between},
        std::pair{"notBetween", BinaryConditionalFormatType::NotBetween}}) {
    auto const condition =
        read("type='cellIs' operator='" + std::string(name) + "'", {"$A$1", "9"});
    auto const& binary = boost::get<DOM::BinaryConditionalFormatOperator>(condition);
    EXPECT_EQ(binary.getType(), type);
    EXPECT_EQ(binary.getFirstArgument(), parseExpr("$A$1"));
    EXPECT_EQ(binary.getSecondArgument(), parseExpr("9"));
  }
}

TEST(RuleCondition, TextOperatorsOfComparisonsBecomeTextConditions) {
  for (auto const& [name, type] : {std::pair{"containsText", TextConditionalFormatType::Contains},
                                   std::pair{"notContains", TextConditionalFormatType::NotContains},
                                   std::pair{"beginsWith", TextConditionalFormatType::BeginsWith},
                                   std::pair{"endsWith", TextConditionalFormatType::EndsWith}}) {
    auto const condition = read("type='cellIs' operator='" + std::string(name) + "'", {"\"x\""});
    auto const& text = boost::get<DOM::TextConditionalFormatOperator>(condition);
    EXPECT_EQ(text.getType(), type);
    EXPECT_EQ(boost::get<std::string>(text.getArgument()), "x");
  }
}

TEST(RuleCondition, ExpressionsMustBeTrueWhateverOperatorTheyName) {
  auto const condition = read("type='expression' operator='equal'", {"$E13=\"Visa\""});
  auto const& unary = boost::get<DOM::UnaryConditionalFormatOperator>(condition);
  EXPECT_EQ(unary.getType(), UnaryConditionalFormatType::FormulaIsTrue);
  EXPECT_EQ(unary.getArgument(), parseExpr("$E13=\"Visa\""));
}

struct LiteralCase {
  char const* attributes;
  Formula formulas;
  TextConditionalFormatType type;
  char const* text;
};

class LiteralTexts : public testing::TestWithParam<LiteralCase> {};

TEST_P(LiteralTexts, AreTakenFromTheAttributeOrTheFormula) {
  auto const condition = read(GetParam().attributes, GetParam().formulas);
  auto const& text = boost::get<DOM::TextConditionalFormatOperator>(condition);
  EXPECT_EQ(text.getType(), GetParam().type);
  EXPECT_EQ(boost::get<std::string>(text.getArgument()), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    RuleCondition, LiteralTexts,
    testing::Values(
        LiteralCase{"type='containsText' text='Grain'",
                    {"NOT(ISERROR(SEARCH(\"Grain\",B3)))"},
                    TextConditionalFormatType::Contains,
                    "Grain"},
        LiteralCase{
            "type='containsText' text='Grain'", {}, TextConditionalFormatType::Contains, "Grain"},
        LiteralCase{
            "type='containsText' text='Grain'", {""}, TextConditionalFormatType::Contains, "Grain"},
        LiteralCase{"type='containsText'",
                    {"NOT(ISERROR(SEARCH(\"say \"\"yes\"\"\",B3)))"},
                    TextConditionalFormatType::Contains,
                    "say \"yes\""},
        LiteralCase{"type='notContainsText' text='x'",
                    {"ISERROR(SEARCH(\"x\",B3))"},
                    TextConditionalFormatType::NotContains,
                    "x"},
        LiteralCase{"type='beginsWith'",
                    {"LEFT(A1,LEN(\"ab\"))=\"ab\""},
                    TextConditionalFormatType::BeginsWith,
                    "ab"},
        LiteralCase{
            "type='endsWith'", {"RIGHT(A1,2)=\"yz\""}, TextConditionalFormatType::EndsWith, "yz"},
        LiteralCase{
            "type='endsWith' text='a_x000A_b'", {}, TextConditionalFormatType::EndsWith, "a\nb"}));

struct ReferenceCase {
  char const* attributes;
  Formula formulas;
  char const* argument;
};

class ReferencedTexts : public testing::TestWithParam<ReferenceCase> {};

TEST_P(ReferencedTexts, AreTakenFromTheFormula) {
  auto const condition = read(GetParam().attributes, GetParam().formulas);
  auto const& text = boost::get<DOM::TextConditionalFormatOperator>(condition);
  EXPECT_EQ(*boost::get<std::unique_ptr<DOM::FormulaSyntaxTree::Expr>>(text.getArgument()),
            parseExpr(GetParam().argument));
}

INSTANTIATE_TEST_SUITE_P(
    RuleCondition, ReferencedTexts,
    testing::Values(
        ReferenceCase{"type='containsText'", {"NOT(ISERROR(SEARCH($B$1,A1)))"}, "$B$1"},
        ReferenceCase{"type='containsText' text='$B$1'", {"NOT(ISERROR(SEARCH($B$1,A1)))"}, "$B$1"},
        ReferenceCase{"type='beginsWith' text='B1'", {"LEFT(A1,LEN(B1))=B1"}, "B1"},
        // The later form of the rule.
        ReferenceCase{"type='containsText'",
                      {"NOT(ISERROR(SEARCH(Sheet2!B1,A1)))", "Sheet2!B1"},
                      "Sheet2!B1"}));

TEST(RuleCondition, ATextFormulaOfAnotherShapeDecidesByItself) {
  auto const condition = read("type='containsText'", {"ISNUMBER(FIND(\"x\",A1))"});
  auto const& unary = boost::get<DOM::UnaryConditionalFormatOperator>(condition);
  EXPECT_EQ(unary.getType(), UnaryConditionalFormatType::FormulaIsTrue);
  EXPECT_EQ(unary.getArgument(), parseExpr("ISNUMBER(FIND(\"x\",A1))"));
}

struct RankCase {
  char const* attributes;
  DOM::TopBottomConditionalFormatType type;
  std::uint32_t value;
  bool usePercent;
};

class Ranks : public testing::TestWithParam<RankCase> {};

TEST_P(Ranks, BecomeTopBottomConditions) {
  auto const condition = read("type='top10' " + std::string(GetParam().attributes));
  auto const& rank = boost::get<DOM::TopBottomConditionalFormatOperator>(condition);
  EXPECT_EQ(rank.getType(), GetParam().type);
  EXPECT_EQ(rank.getValue(), GetParam().value);
  EXPECT_EQ(rank.getUsePercent(), GetParam().usePercent);
}

INSTANTIATE_TEST_SUITE_P(
    RuleCondition, Ranks,
    testing::Values(
        RankCase{"", DOM::TopBottomConditionalFormatType::Top, 10, false},
        RankCase{"rank='3'", DOM::TopBottomConditionalFormatType::Top, 3, false},
        RankCase{"rank='25' percent='1'", DOM::TopBottomConditionalFormatType::Top, 25, true},
        RankCase{"rank='4' bottom='true'", DOM::TopBottomConditionalFormatType::Bottom, 4, false}));

struct AverageCase {
  char const* attributes;
  DOM::AboveAverageConditionalFormatType type;
  boost::optional<std::uint32_t> stdDev;
};

class Averages : public testing::TestWithParam<AverageCase> {};

TEST_P(Averages, BecomeAverageConditions) {
  auto const condition = read("type='aboveAverage' " + std::string(GetParam().attributes));
  auto const& average = boost::get<DOM::AboveAverageConditionalFormatOperator>(condition);
  EXPECT_EQ(average.getType(), GetParam().type);
  EXPECT_TRUE(average.getStdDev() == GetParam().stdDev);
}

INSTANTIATE_TEST_SUITE_P(
    RuleCondition, Averages,
    testing::Values(
        AverageCase{"", DOM::AboveAverageConditionalFormatType::Above, boost::none},
        AverageCase{"equalAverage='1'", DOM::AboveAverageConditionalFormatType::EqualOrAbove,
                    boost::none},
        AverageCase{"aboveAverage='0'", DOM::AboveAverageConditionalFormatType::Below, boost::none},
        AverageCase{"aboveAverage='0' equalAverage='1'",
                    DOM::AboveAverageConditionalFormatType::EqualOrBelow, boost::none},
        AverageCase{"stdDev='2'", DOM::AboveAverageConditionalFormatType::Above, 2U},
        AverageCase{"stdDev='0'", DOM::AboveAverageConditionalFormatType::Above, boost::none}));

TEST(RuleCondition, UniquenessHasTwoKinds) {
  EXPECT_EQ(
      boost::get<DOM::UniquenessConditionalFormatOperator>(read("type='duplicateValues'")).type,
      DOM::UniquenessType::Duplicate);
  EXPECT_EQ(boost::get<DOM::UniquenessConditionalFormatOperator>(read("type='uniqueValues'")).type,
            DOM::UniquenessType::Unique);
}

struct NullaryCase {
  char const* attributes;
  NullaryConditionalFormatType type;
};

class NullaryConditions : public testing::TestWithParam<NullaryCase> {};

TEST_P(NullaryConditions, HaveNoArguments) {
  auto const condition = read(GetParam().attributes);
  EXPECT_EQ(boost::get<DOM::NullaryConditionalFormatOperator>(condition).getType(),
            GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(
    RuleCondition, NullaryConditions,
    testing::Values(NullaryCase{"type='containsBlanks'", NullaryConditionalFormatType::Blanks},
                    NullaryCase{"type='notContainsBlanks'", NullaryConditionalFormatType::NoBlanks},
                    NullaryCase{"type='containsErrors'", NullaryConditionalFormatType::Errors},
                    NullaryCase{"type='notContainsErrors'", NullaryConditionalFormatType::NoErrors},
                    NullaryCase{"type='timePeriod' timePeriod='yesterday'",
                                NullaryConditionalFormatType::Yesterday},
                    NullaryCase{"type='timePeriod' timePeriod='today'",
                                NullaryConditionalFormatType::Today},
                    NullaryCase{"type='timePeriod' timePeriod='tomorrow'",
                                NullaryConditionalFormatType::Tomorrow},
                    NullaryCase{"type='timePeriod' timePeriod='last7Days'",
                                NullaryConditionalFormatType::Last7Days},
                    NullaryCase{"type='timePeriod' timePeriod='lastWeek'",
                                NullaryConditionalFormatType::LastWeek},
                    NullaryCase{"type='timePeriod' timePeriod='thisWeek'",
                                NullaryConditionalFormatType::ThisWeek},
                    NullaryCase{"type='timePeriod' timePeriod='nextWeek'",
                                NullaryConditionalFormatType::NextWeek},
                    NullaryCase{"type='timePeriod' timePeriod='lastMonth'",
                                NullaryConditionalFormatType::LastMonth},
                    NullaryCase{"type='timePeriod' timePeriod='thisMonth'",
                                NullaryConditionalFormatType::ThisMonth},
                    NullaryCase{"type='timePeriod' timePeriod='nextMonth'",
                                NullaryConditionalFormatType::NextMonth}));

TEST(RuleCondition, TheFormulaOfABlanksRuleDecidesWhatIsBlank) {
  auto const condition = read("type='containsBlanks'", {"LEN(TRIM(A1))=0"});
  auto const& unary = boost::get<DOM::UnaryConditionalFormatOperator>(condition);
  EXPECT_EQ(unary.getType(), UnaryConditionalFormatType::FormulaIsTrue);
  EXPECT_EQ(unary.getArgument(), parseExpr("LEN(TRIM(A1))=0"));
}

TEST(RuleCondition, ErrorsAndPeriodsDoNotNeedTheirFormulas) {
  EXPECT_EQ(read("type='containsErrors'", {"ISERROR(A1)"}).which(), 0);
  EXPECT_EQ(read("type='timePeriod' timePeriod='today'", {"FLOOR(A1,1)=TODAY()"}).which(), 0);
}

struct ReasonCase {
  char const* attributes;
  Formula formulas;
  char const* reason;
};

class UnresolvedRules : public testing::TestWithParam<ReasonCase> {};

TEST_P(UnresolvedRules, HaveAReason) {
  EXPECT_THAT(reasonOf(GetParam().attributes, GetParam().formulas),
              testing::StartsWith(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    RuleCondition, UnresolvedRules,
    testing::Values(
        ReasonCase{"", {}, "the rule names no type"},
        ReasonCase{"type='sparkle'", {}, "the type \"sparkle\" is not known"},
        ReasonCase{"type='expression'", {}, "the rule has no formula"},
        ReasonCase{"type='expression'", {""}, "the rule has no formula"},
        ReasonCase{"type='expression'", {"1+"}, "the formula \"1+\" cannot be read: "},
        ReasonCase{"type='cellIs'", {"1"}, "the comparison names no operator"},
        ReasonCase{"type='cellIs' operator='like'", {"1"}, "the operator \"like\" is not known"},
        ReasonCase{"type='cellIs' operator='equal'", {}, "the rule has no formula"},
        ReasonCase{"type='cellIs' operator='between'", {"1"}, "the rule has no second formula"},
        ReasonCase{"type='cellIs' operator='beginsWith'", {}, "the rule has no formula"},
        ReasonCase{"type='containsText'", {}, "the rule has neither a text nor a formula"},
        ReasonCase{"type='containsText'",
                   {"NOT(ISERROR(SEARCH(1+,A1)))"},
                   "the formula \"1+\" cannot be read: "},
        ReasonCase{"type='top10' rank='-1'", {}, "the rank \"-1\" is no count"},
        ReasonCase{"type='top10' rank='4294967296'", {}, "the rank \"4294967296\" is no count"},
        ReasonCase{"type='top10' rank='many'", {}, "the rank \"many\" is no count"},
        ReasonCase{"type='timePeriod'", {}, "the rule names no period"},
        ReasonCase{"type='timePeriod' timePeriod='lastYear'",
                   {},
                   "the period \"lastYear\" is not known"}));

}  // namespace
}  // namespace Zorv::Workbook
