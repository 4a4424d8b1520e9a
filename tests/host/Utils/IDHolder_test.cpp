#include "Utils/IDHolder.h"

#include <map>
#include <memory>

#include <gtest/gtest.h>

namespace Zorv {
namespace {

class Identified : public IDHolder {};

bool areEqual(IDHolder::ID const& a, IDHolder::ID const& b) { return !(a < b) && !(b < a); }

TEST(IDHolder, AnObjectHasOneID) {
  Identified const object;
  EXPECT_TRUE(areEqual(object.getID(), object.getID()));
}

TEST(IDHolder, ObjectsHaveDifferentOrderedIDs) {
  Identified const a;
  Identified const b;
  EXPECT_NE(a.getID() < b.getID(), b.getID() < a.getID());
}

TEST(IDHolder, TheIDOfADeadObjectStaysDistinct) {
  std::map<IDHolder::ID, int> entries;
  constexpr int count = 100;
  for (int i = 0; i < count; ++i) {
    // The next object may reuse the memory of the last one.
    auto const object = std::make_unique<Identified>();
    EXPECT_TRUE(entries.emplace(object->getID(), i).second);
  }
  EXPECT_EQ(entries.size(), static_cast<std::size_t>(count));
  int next = 0;
  Identified const living;
  EXPECT_EQ(entries.count(living.getID()), 0U);
  for (auto const& [id, value] : entries) {
    EXPECT_EQ(entries.at(id), value);
    ++next;
  }
  EXPECT_EQ(next, count);
}

}  // namespace
}  // namespace Zorv
