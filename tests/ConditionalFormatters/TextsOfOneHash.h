#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace Zorv::TestSupport {

/// 2^bits different texts of one std::hash, which is MurmurHash64A in libstdc++: flipping the
/// highest bit of two mixed words in a row leaves the state as it was.
inline std::vector<std::string> makeTextsOfOneHash(std::size_t bits) {
  constexpr std::uint64_t multiplier = 0xc6a4a7935bd1e995;
  std::uint64_t inverse = multiplier;  // Newton's iteration doubles the right bits.
  for (int step = 0; step < 6; ++step) {
    inverse *= 2 - multiplier * inverse;
  }
  auto const unmix = [&](std::uint64_t mixed) {
    std::uint64_t const word = mixed * inverse;
    return (word ^ word >> 47U) * inverse;
  };
  std::vector<std::string> texts;
  for (std::size_t choice = 0; choice < std::size_t{1} << bits; ++choice) {
    std::string text(bits * 16, '\0');
    for (std::size_t bit = 0; bit < bits; ++bit) {
      std::uint64_t const flip = (choice >> bit & 1U) << 63U;
      std::uint64_t const words[] = {unmix(7 ^ flip), unmix(9 ^ flip)};
      std::memcpy(&text[bit * 16], words, sizeof(words));
    }
    texts.push_back(text);
  }
  return texts;
}

}  // namespace Zorv::TestSupport
