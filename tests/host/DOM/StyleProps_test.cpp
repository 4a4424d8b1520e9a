#include "DOM/StyleProps.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

/// Two different values of a property.
template <class Value>
std::array<Value, 2> samplesOf() {
  if constexpr (std::is_same_v<Value, std::string>) {
    return {"Serif", "Sans"};
  } else if constexpr (std::is_same_v<Value, Colour>) {
    return {Colour{1, 2, 3, 255}, Colour{1, 2, 4, 255}};
  } else if constexpr (std::is_same_v<Value, BorderLine>) {
    return {BorderLine{LineStyle::Thin, Colour{}}, BorderLine{LineStyle::Thin, std::nullopt}};
  } else if constexpr (std::is_same_v<Value, GradientFill>) {
    return {GradientFill{.degree = 90, .stops = {{0, Colour{}}, {1, Colour{9, 9, 9, 255}}}},
            GradientFill{.degree = 90, .stops = {{0, Colour{}}, {1, Colour{9, 9, 8, 255}}}}};
  } else {
    return {static_cast<Value>(0), static_cast<Value>(1)};
  }
}

template <class Props, class Test>
void forEachMember(Test const& test) {
  std::apply([&](auto const&... member) { (test(member), ...); }, Props::members());
}

template <class Props>
class StylePropsTest : public testing::Test {};

using Groups = testing::Types<RunProps, ParaProps, CellProps>;
TYPED_TEST_SUITE(StylePropsTest, Groups);

TYPED_TEST(StylePropsTest, WhatTheSourceSetsReplacesTheTargets) {
  forEachMember<TypeParam>([](auto const& property) {
    auto const member = property.member;
    using Value = typename std::remove_cvref_t<decltype(TypeParam().*member)>::value_type;
    auto const [old, fresh] = samplesOf<Value>();
    TypeParam target;
    target.*member = old;
    TypeParam source;
    source.*member = fresh;
    override(target, source);
    EXPECT_EQ(target, source) << property.name;
    TypeParam unset;
    override(unset, source);
    EXPECT_EQ(unset, source) << property.name;
  });
}

TYPED_TEST(StylePropsTest, WhatTheSourceDoesNotSetStays) {
  forEachMember<TypeParam>([](auto const& property) {
    auto const member = property.member;
    using Value = typename std::remove_cvref_t<decltype(TypeParam().*member)>::value_type;
    TypeParam target;
    target.*member = samplesOf<Value>()[0];
    TypeParam const before = target;
    override(target, TypeParam());
    EXPECT_EQ(target, before) << property.name;
  });
}

TYPED_TEST(StylePropsTest, EqualityAndHashLookAtEveryProperty) {
  std::set<std::size_t> hashes{hash_value(TypeParam())};
  std::size_t expected = 1;
  forEachMember<TypeParam>([&](auto const& property) {
    auto const member = property.member;
    using Value = typename std::remove_cvref_t<decltype(TypeParam().*member)>::value_type;
    TypeParam previous;
    for (Value const& value : samplesOf<Value>()) {
      TypeParam props;
      props.*member = value;
      EXPECT_FALSE(props == previous) << property.name;
      EXPECT_FALSE(props == TypeParam()) << property.name;
      TypeParam const copy = props;
      EXPECT_TRUE(props == copy) << property.name;
      EXPECT_EQ(hash_value(props), hash_value(copy)) << property.name;
      EXPECT_TRUE(hashes.insert(hash_value(props)).second) << property.name;
      ++expected;
      previous = props;
    }
  });
  EXPECT_EQ(hashes.size(), expected);
}

TYPED_TEST(StylePropsTest, PropertiesHaveNamesOfTheirOwn) {
  std::set<std::string> names;
  forEachMember<TypeParam>(
      [&](auto const& property) { EXPECT_TRUE(names.insert(property.name).second); });
}

template <class Props>
constexpr std::size_t memberCount = std::tuple_size_v<decltype(Props::members())>;

// The bindings fail to compile when a member is added; the count is then a reminder to list it.
TEST(StyleProps, EveryMemberIsListed) {
  RunProps const run;
  [[maybe_unused]] auto const& [r1, r2, r3, r4, r5, r6, r7, r8] = run;
  EXPECT_EQ(memberCount<RunProps>, 8U);
  ParaProps const para;
  [[maybe_unused]] auto const& [p1, p2, p3, p4, p5, p6] = para;
  EXPECT_EQ(memberCount<ParaProps>, 6U);
  CellProps const cell;
  [[maybe_unused]] auto const& [c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13] = cell;
  EXPECT_EQ(memberCount<CellProps>, 13U);
}

TEST(StyleProps, EveryMemberOfAGradientCounts) {
  std::set<std::size_t> hashes;
  std::array<GradientFill, 9> gradients{};
  gradients[1].type = GradientType::Path;
  gradients[2].degree = 1;
  gradients[3].left = 1;
  gradients[4].right = 1;
  gradients[5].top = 1;
  gradients[6].bottom = 1;
  gradients[7].stops = {{0, Colour{}}};
  gradients[8].stops = {{0.5, Colour{}}};
  for (GradientFill const& gradient : gradients) {
    EXPECT_TRUE(hashes.insert(hash_value(CellProps{.fillGradient = gradient})).second);
    EXPECT_EQ(std::ranges::count(gradients, gradient), 1);
  }
}

TEST(StyleProps, SeveralPropertiesMergeEachByItself) {
  RunProps target;
  target.bold = true;
  target.fontName = "Serif";
  RunProps source;
  source.fontName = "Sans";
  source.italic = false;
  override(target, source);
  EXPECT_EQ(target.bold, true);
  EXPECT_EQ(target.fontName, "Sans");
  EXPECT_EQ(target.italic, false);
  EXPECT_FALSE(target.colour);
}

TEST(StyleProps, AlphaAndEveryChannelCount) {
  Colour const base{10, 20, 30, 40};
  std::set<std::size_t> hashes;
  for (Colour const& colour : {base, Colour{11, 20, 30, 40}, Colour{10, 21, 30, 40},
                               Colour{10, 20, 31, 40}, Colour{10, 20, 30, 41}}) {
    CellProps props;
    props.fillColour = colour;
    EXPECT_TRUE(hashes.insert(hash_value(props)).second);
    EXPECT_EQ(colour == base, hashes.size() == 1);
  }
}

TEST(StyleProps, FormatsAreTheirCode) {
  EXPECT_EQ(CellFormat{"0.00"}, CellFormat{"0.00"});
  EXPECT_NE(CellFormat{"0.00"}, CellFormat{"0.0"});
  EXPECT_EQ(hash_value(CellFormat{"0.00"}), hash_value(CellFormat{"0.00"}));
  EXPECT_NE(hash_value(CellFormat{"0.00"}), hash_value(CellFormat{"0.0"}));
}

}  // namespace
}  // namespace Zorv::DOM
