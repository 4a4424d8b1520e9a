#include "visuals/Draw/BarExtent.h"

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Visuals {
namespace {

constexpr auto noAxis = std::nullopt;
constexpr double largestNumber = std::numeric_limits<double>::max();

struct BarCase {
  char const* name;
  BarAxis axis;
  std::vector<double> lengths;  ///< shortest and longest, in percent
  std::vector<double> bounds;
  double value;
  double from;
  double to;
  std::optional<double> axisAt;
};

class BarExtents : public testing::TestWithParam<BarCase> {};

TEST_P(BarExtents, ShowTheNumber) {
  BarCase const& test = GetParam();
  DataBar bar;
  bar.axis = test.axis;
  bar.minLength = test.lengths[0];
  bar.maxLength = test.lengths[1];
  auto const extent = findBarExtent(bar, test.bounds, test.value);
  EXPECT_DOUBLE_EQ(extent.from, test.from);
  EXPECT_DOUBLE_EQ(extent.to, test.to);
  ASSERT_EQ(extent.axis.has_value(), test.axisAt.has_value());
  EXPECT_DOUBLE_EQ(extent.axis.value_or(0), test.axisAt.value_or(0));
}

std::vector<double> const all{0, 100};
std::vector<double> const most{10, 90};

INSTANTIATE_TEST_SUITE_P(
    BarExtent, BarExtents,
    testing::Values(
        // Without an axis: between the shortest and the longest bar.
        BarCase{"Shortest", BarAxis::None, most, {0, 10}, 0, 0, 0.1, noAxis},
        BarCase{"Longest", BarAxis::None, most, {0, 10}, 10, 0, 0.9, noAxis},
        BarCase{"Between", BarAxis::None, most, {0, 10}, 5, 0, 0.5, noAxis},
        BarCase{"Below", BarAxis::None, most, {0, 10}, -5, 0, 0.1, noAxis},
        BarCase{"Above", BarAxis::None, most, {0, 10}, 15, 0, 0.9, noAxis},
        BarCase{"AllEqual", BarAxis::None, most, {5, 5}, 5, 0, 0.1, noAxis},
        BarCase{"AboveEqualBounds", BarAxis::None, most, {5, 5}, 6, 0, 0.9, noAxis},
        BarCase{"BelowEqualNegativeBounds", BarAxis::Automatic, most, {-5, -5}, -6, 0.1, 1, noAxis},
        BarCase{"NoLength", BarAxis::None, all, {5, 5}, 5, 0, 0, noAxis},
        BarCase{"NegativeWithoutAxis", BarAxis::None, all, {-10, 10}, -5, 0, 0.25, noAxis},
        BarCase{
            "HugeBounds", BarAxis::None, all, {-largestNumber, largestNumber}, 0, 0, 0.5, noAxis},
        // An automatic axis: at an edge unless zero lies between the bounds.
        BarCase{"AllPositive", BarAxis::Automatic, all, {5, 15}, 10, 0, 0.5, noAxis},
        BarCase{"FromZero", BarAxis::Automatic, all, {0, 10}, 4, 0, 0.4, noAxis},
        BarCase{"AllNegative", BarAxis::Automatic, all, {-10, 0}, -4, 0.6, 1, noAxis},
        BarCase{"AllNegativeShortest", BarAxis::Automatic, most, {-10, -5}, -5, 0.9, 1, noAxis},
        BarCase{"AllNegativeLongest", BarAxis::Automatic, most, {-10, -5}, -10, 0.1, 1, noAxis},
        BarCase{"AllNegativeAndEqual", BarAxis::Automatic, all, {-5, -5}, -5, 1, 1, noAxis},
        BarCase{"PositiveBesideTheAxis", BarAxis::Automatic, all, {-10, 30}, 15, 0.25, 0.625, 0.25},
        BarCase{"NegativeBesideTheAxis", BarAxis::Automatic, all, {-10, 30}, -5, 0.125, 0.25, 0.25},
        BarCase{"ZeroAtTheAxis", BarAxis::Automatic, all, {-10, 30}, 0, 0.25, 0.25, 0.25},
        BarCase{"BeyondTheAxisClamped", BarAxis::Automatic, all, {-10, 30}, -50, 0, 0.25, 0.25},
        BarCase{"LengthsBesideTheAxis", BarAxis::Automatic, most, {-10, 10}, 10, 0.5, 0.95, 0.5},
        // An axis in the middle: equal lengths for numbers of opposite signs.
        BarCase{"MiddlePositive", BarAxis::Middle, all, {-10, 30}, 15, 0.5, 0.75, 0.5},
        BarCase{"MiddleNegative", BarAxis::Middle, all, {-10, 30}, -10, 1 / 3.0, 0.5, 0.5},
        BarCase{"MiddleAllPositive", BarAxis::Middle, all, {0, 10}, 10, 0.5, 1, 0.5},
        BarCase{"MiddleAllNegative", BarAxis::Middle, all, {-20, -10}, -10, 0.25, 0.5, 0.5},
        BarCase{"MiddleAllZero", BarAxis::Middle, all, {0, 0}, 0, 0.5, 0.5, 0.5}),
    [](auto const& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace Zorv::Visuals
