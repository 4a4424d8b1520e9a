#include "DOM/SharedStyle.h"

#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

CellStyle makeStyle(double fontSize) {
  RunProps props;
  props.fontSize = fontSize;
  CellStyle style;
  style.setRunProps(std::make_shared<RunProps const>(props));
  return style;
}

/// Style with a group whose weak pointer shows if the style is alive.
std::pair<CellStyle, std::weak_ptr<RunProps const>> makeWatchedStyle(double fontSize) {
  CellStyle style = makeStyle(fontSize);
  std::weak_ptr<RunProps const> const watch = style.getRunProps();
  return {std::move(style), watch};
}

TEST(SharedObjectFactory, EqualStylesShareOneObject) {
  SharedObjectFactory const factory;
  auto const first = factory.create(makeStyle(10));
  auto const second = factory.create(makeStyle(10));
  auto const other = factory.create(makeStyle(11));
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first, second);
  EXPECT_NE(first, other);
  EXPECT_EQ(first->get(), makeStyle(10));
  EXPECT_EQ((*first)->getRunProps()->fontSize, 10.0);
}

TEST(SharedObjectFactory, TheStyleThatSetsNothingIsSharedToo) {
  SharedObjectFactory const factory;
  auto const first = factory.create({});
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(first, factory.create({}));
}

TEST(SharedObjectFactory, FactoriesDoNotShareWithEachOther) {
  SharedObjectFactory const a;
  SharedObjectFactory const b;
  EXPECT_NE(a.create(makeStyle(10)), b.create(makeStyle(10)));
}

TEST(SharedObjectFactory, AStyleDiesWithItsLastPointer) {
  SharedObjectFactory const factory;
  auto [style, watch] = makeWatchedStyle(10);
  auto first = factory.create(std::move(style));
  auto second = first;
  first.reset();
  EXPECT_FALSE(watch.expired());
  second.reset();
  EXPECT_TRUE(watch.expired());
}

TEST(SharedObjectFactory, EqualStylesKeepTheFirstOneOnly) {
  SharedObjectFactory const factory;
  auto const first = factory.create(makeStyle(10));
  auto [style, watch] = makeWatchedStyle(10);
  auto const second = factory.create(std::move(style));
  EXPECT_TRUE(watch.expired());
}

TEST(SharedObjectFactory, AStyleThatDiedIsMadeAnew) {
  SharedObjectFactory const factory;
  for (int i = 0; i < 3; ++i) {
    auto [style, watch] = makeWatchedStyle(10);
    auto pointer = factory.create(std::move(style));
    EXPECT_FALSE(watch.expired());
    EXPECT_EQ(pointer, factory.create(makeStyle(10)));
    pointer.reset();
    EXPECT_TRUE(watch.expired());
  }
}

TEST(SharedObjectFactory, StylesOutliveTheirFactory) {
  auto factory = std::make_optional<SharedObjectFactory>();
  auto [style, watch] = makeWatchedStyle(10);
  auto first = factory->create(std::move(style));
  auto second = factory->create(makeStyle(11));
  auto const copy = first;
  factory.reset();
  EXPECT_EQ(first->get(), makeStyle(10));
  second.reset();
  first.reset();
  EXPECT_EQ(copy->get(), makeStyle(10));
  EXPECT_FALSE(watch.expired());
}

TEST(SharedObjectFactory, ManyStylesLiveAndDieInAnyOrder) {
  SharedObjectFactory const factory;
  constexpr int count = 500;
  std::vector<SharedCellStylePtr> pointers;
  for (int i = 0; i < count; ++i) {
    pointers.push_back(factory.create(makeStyle(i % 100)));
  }
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(pointers[static_cast<std::size_t>(i)], pointers[static_cast<std::size_t>(i % 100)]);
  }
  for (std::size_t i = 0; i < count; i += 3) {
    pointers[i].reset();
  }
  for (std::size_t i = 1; i < count; i += 3) {
    EXPECT_EQ(pointers[i], factory.create(makeStyle(static_cast<double>(i % 100))));
  }
}

TEST(SharedObjectFactory, AStyleThatEqualsNothingLeavesNothingBehind) {
  SharedObjectFactory const factory;
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  auto [style, watch] = makeWatchedStyle(nan);
  auto first = factory.create(std::move(style));
  auto second = factory.create(makeStyle(nan));
  EXPECT_NE(first, second);
  first.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
}  // namespace Zorv::DOM
