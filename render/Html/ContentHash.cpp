#include "render/Html/ContentHash.h"

#include <array>
#include <cstddef>

#include <openssl/evp.h>
#include <openssl/sha.h>

namespace Zorv::Render {

std::string hashOfContent(std::string_view text) {
  std::array<unsigned char, SHA256_DIGEST_LENGTH> hash{};
  SHA256(reinterpret_cast<unsigned char const*>(text.data()), text.size(), hash.data());
  // Four characters for each three bytes, and a NUL.
  constexpr std::size_t encodedSize = (hash.size() + 2) / 3 * 4 + 1;
  std::array<unsigned char, encodedSize> encoded{};
  auto const length = EVP_EncodeBlock(encoded.data(), hash.data(), static_cast<int>(hash.size()));
  return "'sha256-" +
         std::string(reinterpret_cast<char const*>(encoded.data()),
                     static_cast<std::size_t>(length)) +
         "'";
}

}  // namespace Zorv::Render
