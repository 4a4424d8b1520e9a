#include "Utils/UUID.h"

#include <set>

#include <gtest/gtest.h>
#include <boost/container_hash/hash.hpp>
#include <boost/uuid/string_generator.hpp>

namespace Zorv {
namespace {

UUID parse(char const* text) { return UUID(boost::uuids::string_generator()(text)); }

TEST(UUID, ADefaultOneIsTheEmptyIdentity) {
  EXPECT_TRUE(UUID().isEmpty());
  EXPECT_EQ(UUID(), UUID());
  EXPECT_EQ(UUID().toString(), "00000000-0000-0000-0000-000000000000");
}

TEST(UUID, GeneratedOnesDiffer) {
  std::set<UUID> seen;
  for (int i = 0; i < 100; ++i) {
    UUID const uuid = UUID::generate();
    EXPECT_FALSE(uuid.isEmpty());
    EXPECT_TRUE(seen.insert(uuid).second);
  }
}

TEST(UUID, OrdersAsBytes) {
  UUID const low = parse("00ffffff-ffff-ffff-ffff-ffffffffffff");
  UUID const high = parse("80000000-0000-0000-0000-000000000000");
  EXPECT_LT(low, high);
  EXPECT_FALSE(high < low);
  EXPECT_FALSE(low < low);
  EXPECT_NE(low, high);
}

TEST(UUID, KeepsItsText) {
  char const* const text = "01234567-89ab-cdef-0123-456789abcdef";
  EXPECT_EQ(parse(text).toString(), text);
  EXPECT_EQ(boost::hash<UUID>()(parse(text)), boost::hash<UUID>()(parse(text)));
}

}  // namespace
}  // namespace Zorv
