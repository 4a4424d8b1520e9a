#include "ConditionalFormatters/Following/CndFrmt_TextRecords.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

TEST(TextRecords, KeepTextsOfAllLengths) {
  TextRecords records;
  std::vector<std::string> texts;
  std::vector<TextRecords::Index> indices;
  for (std::size_t length = 0; length < 300; ++length) {
    texts.emplace_back(length, static_cast<char>('a' + length % 26));
    indices.push_back(records.insert(texts.back(), static_cast<std::uint32_t>(length)));
  }
  for (std::size_t length = 0; length < texts.size(); ++length) {
    EXPECT_EQ(records.textOf(indices[length]), texts[length]);
    EXPECT_EQ(records.hashOf(indices[length]), length);
    EXPECT_TRUE(records.getCells(indices[length]).isEmpty());
  }
}

TEST(TextRecords, TellTextsApartByHashLengthAndBytes) {
  TextRecords records;
  std::string const longText(49, 'x');
  for (std::string const& text : {std::string("text"), longText}) {
    auto const record = records.insert(text, 5);
    EXPECT_TRUE(records.isOf(record, text, 5));
    EXPECT_FALSE(records.isOf(record, text, 6));
    EXPECT_FALSE(records.isOf(record, text + 'x', 5));
    EXPECT_FALSE(records.isOf(record, 'y' + text.substr(1), 5));
  }
}

TEST(TextRecords, UseTheRoomOfErasedTextsAgain) {
  TextRecords records;
  auto const shortText = records.insert("short", 1);
  auto const longText = records.insert(std::string(100, 'a'), 2);
  records.setCells(shortText, CellTally(77));
  std::size_t const bytes = records.countBytes();
  records.erase(shortText);
  records.erase(longText);
  EXPECT_EQ(records.insert(std::string(200, 'b'), 3), longText);
  EXPECT_EQ(records.insert("another", 4), shortText);
  EXPECT_TRUE(records.getCells(shortText).isEmpty());
  EXPECT_EQ(records.textOf(longText), std::string(200, 'b'));
  EXPECT_EQ(records.countBytes(), bytes);
}

TEST(TextRecords, TakeSixteenBytesAndTheText) {
  constexpr std::size_t count = 100'000;
  TextRecords records;
  for (std::size_t text = 0; text < count; ++text) {
    static_cast<void>(records.insert(std::to_string(1'000'000'000 + text), 0));
  }
  EXPECT_LT(records.countBytes(), 33 * count);
}

TEST(TextRecords, FollowRandomUse) {
  std::mt19937 random(3);
  TextRecords records;
  std::vector<std::pair<TextRecords::Index, std::string>> plain;
  for (int step = 0; step < 20'000; ++step) {
    if (plain.empty() || random() % 5 < 3) {
      std::string text = std::to_string(random());
      text.resize(random() % 70, 'x');
      auto const record = records.insert(text, 9);
      plain.emplace_back(record, std::move(text));
    } else {
      std::swap(plain[random() % plain.size()], plain.back());
      records.erase(plain.back().first);
      plain.pop_back();
    }
  }
  for (auto const& [record, text] : plain) {
    ASSERT_EQ(records.textOf(record), text);
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
