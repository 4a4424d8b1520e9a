#include "OfficeUtils/DateNames.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <thread>

#include <gtest/gtest.h>

namespace Zorv::OfficeUtils {

namespace {

std::string toUpperAscii(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char c) {
    return static_cast<char>(c < 0x80 ? std::toupper(c) : c);
  });
  return text;
}

TEST(DateNames, EveryNameMayBeOneInAnyLetterCase) {
  for (std::string const locale : {"en-US", "de-DE", "fr-FR", "tr-TR", "ja-JP", "ru-RU", "vi-VN"}) {
    DateNames const& names = DateNames::of(locale);
    auto const expectAll = [&](auto const& list) {
      for (std::string const& name : list) {
        EXPECT_TRUE(names.mayName(name)) << name << " of " << locale;
        EXPECT_TRUE(names.mayName(toUpperAscii(name))) << name << " of " << locale;
      }
    };
    expectAll(names.months);
    expectAll(names.shortMonths);
    expectAll(names.weekdays);
    expectAll(names.shortWeekdays);
  }
}

TEST(DateNames, RejectsMostOtherWordsByTheirFirstLetterAndLength) {
  DateNames const& names = DateNames::of("en-US");
  for (std::string_view const word : {"Item", "Julep", "Decembers", "Total", "M", "", "Q",
                                      "Jabberwocky-and-other-long-words-of-forty"}) {
    EXPECT_FALSE(names.mayName(word)) << word;
  }
  // The long s folds to s, and the kelvin sign to k.
  EXPECT_TRUE(names.mayName("Augu\u017Ft"));
}

TEST(DateNames, EachLocaleHasItsOwnWhateverWasAskedForBefore) {
  DateNames const& german = DateNames::of("de-DE");
  DateNames const& english = DateNames::of("en-US");
  EXPECT_EQ(german.months[0], "Januar");
  EXPECT_EQ(english.months[0], "January");
  EXPECT_EQ(&DateNames::of("de-DE"), &german);
  std::jthread([&] { EXPECT_EQ(&DateNames::of("en-US"), &english); });
}

}  // namespace

}  // namespace Zorv::OfficeUtils
