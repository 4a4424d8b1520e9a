#include "Formulas/Lookups/SharedWork.h"

#include <atomic>
#include <barrier>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

TEST(SharedWork, WithoutHelpersTheOwnerDoesEachPartOnceInOrder) {
  SharedWork work;
  std::vector<std::size_t> done;
  for (std::size_t const count : {3U, 0U, 2U}) {
    work.run(count, [&](std::size_t part) { done.push_back(part); });
  }
  work.close();
  EXPECT_EQ(done, (std::vector<std::size_t>{0, 1, 2, 0, 1}));
}

TEST(SharedWork, HelpersShareEachStageAndNoneBeginsBeforeTheLastOneHasEnded) {
  constexpr std::size_t stages = 50;
  constexpr std::size_t parts = 37;
  for (std::size_t const helperCount : {1U, 6U}) {
    SharedWork work;
    std::vector<std::vector<int>> done(stages, std::vector<int>(parts));
    std::atomic<std::size_t> doneInAll = 0;
    std::atomic<int> early = 0;
    std::vector<std::jthread> helpers;
    for (std::size_t i = 0; i < helperCount; ++i) {
      helpers.emplace_back([&] { work.help(); });
    }
    for (std::size_t stage = 0; stage < stages; ++stage) {
      work.run(parts, [&](std::size_t part) {
        early += doneInAll < stage * parts ? 1 : 0;
        ++done[stage][part];
        ++doneInAll;
      });
      EXPECT_EQ(doneInAll, (stage + 1) * parts);
    }
    work.close();
    EXPECT_EQ(early, 0);
    EXPECT_EQ(done, std::vector(stages, std::vector(parts, 1)));
  }
}

TEST(SharedWork, AHelperThatComesAmidAStageTakesPartsOfIt) {
  SharedWork work;
  std::barrier bothAreAtWork(2);
  std::jthread helper;
  work.run(3, [&](std::size_t part) {
    if (part == 0) {
      helper = std::jthread([&] { work.help(); });
    } else {
      // Ends only when two threads have a part in hand.
      bothAreAtWork.arrive_and_wait();
    }
  });
  work.close();
}

TEST(SharedWork, HelpingInClosedWorkReturnsAtOnce) {
  SharedWork work;
  work.run(1, [](std::size_t) {});
  work.close();
  work.help();
}

TEST(SharedWork, WhatAPartThrowsReachesTheOwnerWhoeverDidIt) {
  for (bool const helperThrows : {false, true}) {
    SharedWork work;
    std::jthread const helper([&] { work.help(); });
    std::thread::id const owner = std::this_thread::get_id();
    std::barrier bothAreAtWork(2);
    std::atomic<std::size_t> begun = 0;
    auto const doPart = [&](std::size_t part) {
      ++begun;
      if (part < 2) {
        bothAreAtWork.arrive_and_wait();
        if ((std::this_thread::get_id() == owner) != helperThrows) {
          throw std::runtime_error("this part");
        }
      }
    };
    try {
      work.run(1'000'000, doPart);
      ADD_FAILURE() << "nothing was thrown";
    } catch (std::runtime_error const& error) {
      EXPECT_EQ(error.what(), std::string("this part"));
    }
    EXPECT_LT(begun, 1'000'000U);

    // The next stage does not know of it, and the helper is still there.
    std::barrier bothAreBack(2);
    work.run(2, [&](std::size_t) { bothAreBack.arrive_and_wait(); });
    work.close();
  }
}

}  // namespace

}  // namespace Zorv::Formulas
