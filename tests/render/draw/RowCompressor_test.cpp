#include "render/Draw/RowCompressor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "render/Draw/HuffmanCode.h"

namespace Zorv::Render::Tests {
namespace {

using Draw::HuffmanCode;
using Draw::RowCompressor;
using PixelRow = std::vector<std::uint32_t>;

constexpr std::uint32_t colourCount = 1U << 24U;

/// What a PNG has before compression: the filter of each row, and its differences to the one above.
std::string filterRows(std::vector<PixelRow> const& rows) {
  std::string bytes;
  PixelRow above(rows.front().size());
  for (PixelRow const& row : rows) {
    bytes += '\2';
    for (std::size_t i = 0; i < row.size(); ++i) {
      for (unsigned const shift : {16U, 8U, 0U}) {
        bytes += static_cast<char>((row[i] >> shift) - (above[i] >> shift));
      }
    }
    above = row;
  }
  return bytes;
}

std::string compressRows(std::vector<PixelRow> const& rows) {
  RowCompressor compressor(rows.front().size());
  for (PixelRow const& row : rows) {
    compressor.addRow(row);
  }
  compressor.finish();
  return {compressor.getOutput().begin(), compressor.getOutput().end()};
}

/// By the library that other programs read pictures with, which also compares the checksum.
std::string inflateAll(std::string const& stream, std::size_t size) {
  std::string bytes(size + 1, ' ');
  uLongf length = bytes.size();
  EXPECT_EQ(uncompress(reinterpret_cast<Bytef*>(bytes.data()), &length,
                       reinterpret_cast<Bytef const*>(stream.data()), stream.size()),
            Z_OK);
  bytes.resize(length);
  return bytes;
}

void expectRoundTrip(std::vector<PixelRow> const& rows) {
  std::string const expected = filterRows(rows);
  // Compared by hand, as a message with megabytes helps nobody.
  EXPECT_TRUE(inflateAll(compressRows(rows), expected.size()) == expected);
}

struct NoiseCase {
  char const* name;
  std::size_t width;
  std::size_t height;
  std::uint32_t colours;
  std::uint32_t changes;  ///< of a hundred pixels, so many are unlike the one above
};

std::vector<PixelRow> makeNoise(NoiseCase const& noise) {
  std::mt19937 random(20261122);
  auto const below = [&random](std::uint32_t end) {
    return static_cast<std::uint32_t>(random() % end);
  };
  std::vector<std::uint32_t> palette(noise.colours);
  std::ranges::generate(palette, [&] { return below(colourCount); });
  std::vector<PixelRow> rows;
  PixelRow row(noise.width);
  for (std::size_t y = 0; y < noise.height; ++y) {
    for (std::uint32_t& pixel : row) {
      pixel = below(100) < noise.changes ? palette[below(noise.colours)] : pixel;
    }
    rows.push_back(row);
  }
  return rows;
}

TEST(RowCompressor, WhatItWritesIsReadBack) {
  for (NoiseCase const& noise :
       {NoiseCase{"one pixel", 1, 1, 2, 100}, NoiseCase{"one column", 1, 5'000, 3, 50},
        NoiseCase{"one row", 40'000, 1, 4, 50}, NoiseCase{"blank", 100, 3'000, 1, 0},
        NoiseCase{"noise", 300, 300, 50'000, 100}, NoiseCase{"few colours", 300, 600, 5, 100},
        NoiseCase{"rare changes", 700, 1'000, 50'000, 1},
        NoiseCase{"some changes", 700, 300, 20, 30}}) {
    SCOPED_TRACE(noise.name);
    expectRoundTrip(makeNoise(noise));
  }
}

TEST(RowCompressor, RepeatedCharactersAreNotWrittenAgain) {
  std::mt19937 random(7);
  PixelRow glyph(12);
  PixelRow const blank(1'000, 0xFFFFFF);
  std::vector<PixelRow> rows;
  for (int line = 0; line < 50; ++line) {
    std::ranges::generate(glyph,
                          [&] { return static_cast<std::uint32_t>(random() % colourCount); });
    PixelRow row = blank;
    for (std::size_t at = 0; at + 20 <= row.size(); at += 20) {
      std::ranges::copy(glyph, row.begin() + static_cast<std::ptrdiff_t>(at));
    }
    rows.push_back(row);
    rows.push_back(blank);
  }
  expectRoundTrip(rows);
  EXPECT_LT(compressRows(rows).size(), 50U * 400);
}

TEST(HuffmanCode, IsNoLongerThanAllowedAndWastesNoCode) {
  std::vector<std::uint32_t> fibonacci{1, 1};
  while (fibonacci.size() < 40) {
    fibonacci.push_back(fibonacci.back() + fibonacci[fibonacci.size() - 2]);
  }
  for (unsigned const longest : {6U, 7U, 15U}) {
    HuffmanCode const code = Draw::makeHuffmanCode(fibonacci, longest);
    std::uint64_t used = 0;
    for (std::uint8_t const length : code.lengths) {
      ASSERT_GE(length, 1U);
      ASSERT_LE(length, longest);
      used += std::uint64_t{1} << (longest - length);
    }
    EXPECT_EQ(used, std::uint64_t{1} << longest);
    EXPECT_LE(code.lengths.back(), code.lengths.front());
  }
}

TEST(HuffmanCode, HasTwoCodesAtLeast) {
  HuffmanCode const code = Draw::makeHuffmanCode(std::vector<std::uint32_t>{0, 0, 9}, 15);
  EXPECT_THAT(code.lengths, testing::ElementsAre(1, 0, 1));
}

}  // namespace
}  // namespace Zorv::Render::Tests
