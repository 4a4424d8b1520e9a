#include "ConditionalFormatters/WholeTable/CndFrmt_Lazy.h"

#include <atomic>
#include <mutex>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "support/Threads.h"

namespace Zorv::ConditionalFormatters {
namespace {

using TestSupport::runOnThreads;

std::unique_ptr<int const> make(int value) { return std::make_unique<int const>(value); }

TEST(Lazy, CreatesOnceAndKeepsTheObject) {
  std::recursive_mutex mutex;
  Lazy<int> lazy;
  int creations = 0;
  auto const create = [&] { return make(++creations); };
  int const* const first = &lazy.getOrCreate(mutex, create);
  EXPECT_EQ(*first, 1);
  EXPECT_EQ(&lazy.getOrCreate(mutex, create), first);
  EXPECT_EQ(&lazy.getOrCreate(create), first);
  EXPECT_EQ(creations, 1);
}

TEST(Lazy, ACreationThatThrowsIsTriedAgain) {
  std::recursive_mutex mutex;
  Lazy<int> lazy;
  auto const fail = []() -> std::unique_ptr<int const> { throw std::runtime_error("no value"); };
  EXPECT_THROW(lazy.getOrCreate(mutex, fail), std::runtime_error);
  EXPECT_THROW(lazy.getOrCreate(fail), std::runtime_error);
  EXPECT_EQ(lazy.getOrCreate(mutex, [] { return make(5); }), 5);
}

TEST(Lazy, ACreationThatAsksForTheValueGetsTheOneThatItsOwnCallCreated) {
  std::recursive_mutex mutex;
  Lazy<int> lazy;
  int const* inner = nullptr;
  int const& outer = lazy.getOrCreate(mutex, [&] {
    inner = &lazy.getOrCreate(mutex, [] { return make(1); });
    return make(2);
  });
  EXPECT_EQ(&outer, inner);
  EXPECT_EQ(outer, 1);
}

TEST(Lazy, ThreadsShareOneValueThatIsCreatedOnce) {
  std::recursive_mutex mutex;
  Lazy<int> lazy;
  std::atomic<int> creations = 0;
  std::vector<int const*> found(4);
  runOnThreads(found.size(), [&](std::size_t thread) {
    found[thread] = &lazy.getOrCreate(mutex, [&] { return make(++creations); });
  });
  EXPECT_EQ(creations, 1);
  EXPECT_EQ(found, std::vector(4, found.front()));
}

TEST(Lazy, WithoutALockThreadsStillShareOneValue) {
  Lazy<int> lazy;
  std::atomic<int> creations = 0;
  std::vector<int const*> found(4);
  runOnThreads(found.size(), [&](std::size_t thread) {
    found[thread] = &lazy.getOrCreate([&] { return make(++creations); });
  });
  EXPECT_EQ(found, std::vector(4, found.front()));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
