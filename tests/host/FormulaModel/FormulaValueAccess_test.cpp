#include "FormulaModel/FormulaValueAccess.h"

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::FormulaModel {
namespace {

FormulaValue numberValue(double value) { return FormulaNumber{FloatNumber(value)}; }
FormulaValue text(char const* value) { return FormulaString{value}; }
FormulaValue boolean(bool value) { return FormulaBoolean{value}; }
FormulaValue error(FormulaErrorCode code) { return FormulaError{code}; }

using Equal = FormulaValuesComarator<std::equal_to>;

TEST(FormulaValueAccess, OnlyTheEmptyAlternativeIsEmpty) {
  EXPECT_TRUE(isFormulaEmpty(FormulaEmpty()));
  for (FormulaValue const& value : {numberValue(0), text(""), boolean(false), error({})}) {
    EXPECT_FALSE(isFormulaEmpty(value)) << value.which();
  }
}

TEST(FormulaValueAccess, OnlyTheErrorAlternativeIsAnError) {
  EXPECT_TRUE(isFormulaError(error(FormulaErrorCode::NotAvailable)));
  for (FormulaValue const& value :
       {FormulaValue(FormulaEmpty()), numberValue(0), text("#N/A"), boolean(false)}) {
    EXPECT_FALSE(isFormulaError(value)) << value.which();
  }
}

TEST(FormulaValueAccess, OnlyNumbersAreNumbers) {
  auto const found = asFormulaNumberOpt(numberValue(2.5));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->value.get(), 2.5);
  for (FormulaValue const& value :
       {FormulaValue(FormulaEmpty()), text("1"), boolean(true), error(FormulaErrorCode::Number)}) {
    EXPECT_FALSE(asFormulaNumberOpt(value)) << value.which();
  }
}

TEST(FormulaValuesComarator, ValuesOfOneKindCompareByTheirPayload) {
  EXPECT_TRUE(Equal()(FormulaEmpty(), FormulaEmpty()));
  EXPECT_TRUE(Equal()(numberValue(1), numberValue(1)));
  EXPECT_FALSE(Equal()(numberValue(1), numberValue(2)));
  EXPECT_TRUE(Equal()(text("abc"), text("abc")));
  EXPECT_TRUE(Equal()(boolean(true), boolean(true)));
  EXPECT_FALSE(Equal()(boolean(true), boolean(false)));
  EXPECT_TRUE(Equal()(error(FormulaErrorCode::Name), error(FormulaErrorCode::Name)));
  EXPECT_FALSE(Equal()(error(FormulaErrorCode::Name), error(FormulaErrorCode::Null)));
}

TEST(FormulaValuesComarator, ZerosAreEqualAndNaNEqualsNothing) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(Equal()(numberValue(0.0), numberValue(-0.0)));
  EXPECT_FALSE(Equal()(numberValue(nan), numberValue(nan)));
}

TEST(FormulaValuesComarator, TextsCompareByteByByte) {
  EXPECT_FALSE(Equal()(text("abc"), text("ABC")));
  EXPECT_FALSE(Equal()(text("abc"), text("abcd")));
  // The same letter, composed and decomposed.
  EXPECT_FALSE(Equal()(text("\xC3\xA9"), text("e\xCC\x81")));
  EXPECT_FALSE(
      Equal()(FormulaString{std::string("a\0b", 3)}, FormulaString{std::string("a\0c", 3)}));
}

TEST(FormulaValuesComarator, ValuesOfDifferentKindsNeverCompare) {
  std::vector<FormulaValue> const values{FormulaEmpty(), numberValue(1), text("1"), boolean(true),
                                         error(FormulaErrorCode::Null)};
  for (std::size_t a = 0; a < values.size(); ++a) {
    for (std::size_t b = 0; b < values.size(); ++b) {
      EXPECT_EQ(Equal()(values[a], values[b]), a == b) << a << " and " << b;
      EXPECT_EQ(FormulaValuesComarator<std::less_equal>()(values[a], values[b]), a == b);
      EXPECT_FALSE(FormulaValuesComarator<std::not_equal_to>()(values[a], values[b]));
    }
  }
}

TEST(FormulaValuesComarator, OrdersValuesOfOneKind) {
  using Less = FormulaValuesComarator<std::less>;
  EXPECT_TRUE(Less()(numberValue(-1), numberValue(1)));
  EXPECT_TRUE(Less()(text("a"), text("\xC3\xA9")));
  EXPECT_TRUE(Less()(boolean(false), boolean(true)));
  EXPECT_TRUE(Less()(error(FormulaErrorCode::Null), error(FormulaErrorCode::Calculation)));
  EXPECT_FALSE(Less()(FormulaEmpty(), FormulaEmpty()));
}

struct ErrorCase {
  FormulaErrorCode code;
  int number;
  char const* text;
};

TEST(FormulaErrors, HaveTheirNumberAndTheirText) {
  for (ErrorCase const& row : std::vector<ErrorCase>{
           {FormulaErrorCode::Null, 1, "#NULL!"},
           {FormulaErrorCode::DivisionByZero, 2, "#DIV/0!"},
           {FormulaErrorCode::Value, 3, "#VALUE!"},
           {FormulaErrorCode::Reference, 4, "#REF!"},
           {FormulaErrorCode::Name, 5, "#NAME?"},
           {FormulaErrorCode::Number, 6, "#NUM!"},
           {FormulaErrorCode::NotAvailable, 7, "#N/A"},
           {FormulaErrorCode::GettingData, 8, "#GETTING_DATA"},
           {FormulaErrorCode::Spill, 9, "#SPILL!"},
           {FormulaErrorCode::Calculation, 14, "#CALC!"},
       }) {
    EXPECT_EQ(static_cast<int>(row.code), row.number) << row.text;
    EXPECT_EQ(toText(row.code), row.text);
    EXPECT_TRUE(parseErrorCode(row.text) == row.code) << row.text;
  }
}

TEST(FormulaErrors, AreReadInAnyCaseOfLetters) {
  EXPECT_TRUE(parseErrorCode("#ref!") == FormulaErrorCode::Reference);
  EXPECT_TRUE(parseErrorCode("#n/A") == FormulaErrorCode::NotAvailable);
}

TEST(FormulaErrors, OtherTextsNameNone) {
  for (char const* other : {"", "#", "#REF", "#REF!!", " #REF!", "REF!", "#UNKNOWN!"}) {
    EXPECT_FALSE(parseErrorCode(other)) << other;
  }
}

TEST(FormulaErrors, ACodeThatHasNoNameHasATextStill) {
  EXPECT_EQ(toText(static_cast<FormulaErrorCode>(200)), "#UNKNOWN!");
}

}  // namespace
}  // namespace Zorv::FormulaModel
