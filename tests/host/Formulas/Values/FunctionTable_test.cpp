#include "Formulas/Values/FunctionTable.h"

#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "Formulas/Functions/BuiltinFunctions.h"

namespace Zorv::Formulas {

namespace {

Value nothing(Call& /*call*/) { return {}; }

constexpr std::array firstFamily = {FunctionEntry{"SECOND", "number:n", nothing, "Some number."},
                                    FunctionEntry{"FIRST", "", nothing, "Nothing."}};
constexpr std::array secondFamily = {FunctionEntry{"THIRD", "", nothing, "Nothing."}};

constexpr std::array<FunctionTable::Family, 2> families = {
    []() noexcept -> std::span<FunctionEntry const> { return firstFamily; },
    []() noexcept -> std::span<FunctionEntry const> { return secondFamily; },
};

TEST(FunctionTable, IndexesCountFunctionsOfAllFamiliesInAlphabeticalOrder) {
  FunctionTable const table(families);
  ASSERT_EQ(table.entries().size(), 3U);
  EXPECT_EQ(table.at(0).name, "FIRST");
  EXPECT_EQ(table.at(1).name, "SECOND");
  EXPECT_EQ(table.at(2).name, "THIRD");
}

TEST(FunctionTable, FindsNamesInAnyCaseAndWithPrefixes) {
  FunctionTable const table(families);
  EXPECT_EQ(table.find("second"), 1U);
  EXPECT_EQ(table.find("_xlfn.Third"), 2U);
  EXPECT_EQ(table.find("_xlfn._xlws.THIRD"), 2U);
  EXPECT_EQ(table.find("FOURTH"), std::nullopt);
  EXPECT_EQ(table.find("FIRS"), std::nullopt);
  EXPECT_EQ(table.find(""), std::nullopt);
}

TEST(Signature, CountsRequiredAndOptionalParameters) {
  constexpr Signature signature = "text:t, [count:n, isPlain:b]";
  EXPECT_FALSE(signature.accepts(0));
  EXPECT_TRUE(signature.accepts(1));
  EXPECT_TRUE(signature.accepts(3));
  EXPECT_FALSE(signature.accepts(4));
  EXPECT_EQ(signature.at(0), Parameter::Text);
  EXPECT_EQ(signature.at(1), Parameter::Number);
  EXPECT_EQ(signature.at(2), Parameter::Truth);
}

TEST(Signature, AGroupMayBeRepeated) {
  constexpr Signature signature = "sum:r, range:r, criterion:e, (range:r, criterion:e)";
  EXPECT_TRUE(signature.accepts(3));
  EXPECT_FALSE(signature.accepts(4));
  EXPECT_TRUE(signature.accepts(5));
  EXPECT_TRUE(signature.accepts(255));
  EXPECT_FALSE(signature.accepts(257));
  EXPECT_EQ(signature.at(0), Parameter::Range);
  EXPECT_EQ(signature.at(7), Parameter::Range);
  EXPECT_EQ(signature.at(8), Parameter::ValueOrError);
}

TEST(Signature, MayBeEmpty) {
  EXPECT_TRUE(Signature("").accepts(0));
  EXPECT_FALSE(Signature("").accepts(1));
}

TEST(BuiltinFunctions, EachHasASummaryThatIsASentence) {
  for (FunctionEntry const* const entry : builtinFunctions().entries()) {
    EXPECT_TRUE(entry->summary.ends_with('.')) << entry->name;
    EXPECT_EQ(entry->summary.find('|'), std::string_view::npos) << entry->name;
  }
}

TEST(BuiltinFunctions, EachNameOccursOnce) {
  auto const entries = builtinFunctions().entries();
  auto const repeated = std::ranges::adjacent_find(
      entries, [](auto const* a, auto const* b) { return a->name == b->name; });
  EXPECT_EQ(repeated, entries.end()) << (*repeated)->name;
}

}  // namespace

}  // namespace Zorv::Formulas
