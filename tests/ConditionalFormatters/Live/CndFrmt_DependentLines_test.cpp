#include "ConditionalFormatters/Live/CndFrmt_DependentLines.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

constexpr unsigned long length = 8;  // of an axis that is small enough to try everything

unsigned long moved(unsigned long corner, bool isRelative, unsigned long base, unsigned long line) {
  return isRelative ? (corner + line + length - base) % length : corner;
}

bool contains(std::vector<LineInterval> const& intervals, unsigned long line) {
  return std::ranges::any_of(intervals, [line](LineInterval const& interval) {
    return interval.first <= line && line < interval.end;
  });
}

/// Compares the result for all lines with references that are moved one by one.
void compareWithMovedReferences(ReferenceLines const& reference, unsigned long base,
                                LineInterval const& changed) {
  auto const found = findDependentLines(reference, {length, base}, changed);
  EXPECT_LE(found.size(), 3U);
  for (unsigned long line = 0; line < length; ++line) {
    unsigned long const first = moved(reference.first, reference.firstIsRelative, base, line);
    unsigned long const last = moved(reference.last, reference.lastIsRelative, base, line);
    bool const meets =
        std::min(first, last) < changed.end && std::max(first, last) >= changed.first;
    bool const isTorn = reference.firstIsRelative && reference.lastIsRelative &&
                        (first < last) != (reference.first < reference.last) &&
                        reference.first != reference.last;
    EXPECT_EQ(contains(found, line), meets || isTorn)
        << "reference " << reference.first << (reference.firstIsRelative ? " moving" : "") << " to "
        << reference.last << (reference.lastIsRelative ? " moving" : "") << ", base " << base
        << ", changed " << changed.first << " to " << changed.end << ", line " << line;
  }
}

TEST(DependentLines, AreThoseWhoseMovedReferenceMeetsTheChange) {
  for (unsigned long first = 0; first < length; ++first) {
    for (unsigned long last = 0; last < length; ++last) {
      for (unsigned long base : {0UL, 3UL, length - 1}) {
        for (unsigned long from = 0; from < length; ++from) {
          for (unsigned long to = from + 1; to <= length && !testing::Test::HasFailure(); ++to) {
            for (bool const firstMoves : {false, true}) {
              for (bool const lastMoves : {false, true}) {
                compareWithMovedReferences({first, last, firstMoves, lastMoves}, base, {from, to});
              }
            }
          }
        }
      }
    }
  }
}

TEST(DependentLines, AreNoneWhereNothingOfTheAxisChanged) {
  ReferenceLines const all{0, length - 1, false, false};
  EXPECT_TRUE(findDependentLines(all, {length, 0}, {3, 3}).empty());
  EXPECT_TRUE(findDependentLines(all, {length, 0}, {length, length + 5}).empty());
  EXPECT_EQ(findDependentLines(all, {length, 0}, {length - 1, length + 5}),
            (std::vector<LineInterval>{{0, length}}));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
