#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "workbook/Package/ByteSource.h"

namespace Zorv::Workbook {

/// Converts the bytes of an XML document, in UTF-8 or UTF-16, into checked UTF-8 without a
/// byte-order mark.
///
/// Throws PartError for bytes that are not well-formed in the document's encoding.
class Utf8Source final : public ByteSource {
public:
  explicit Utf8Source(std::unique_ptr<ByteSource> bytes) noexcept;

  std::size_t read(char* bytes, std::size_t size) override;
  [[nodiscard]] std::string const& getName() const noexcept override { return _bytes->getName(); }

private:
  enum class Encoding : std::uint8_t { Unknown, Utf8, Utf16LittleEndian, Utf16BigEndian };

  void refill();
  void findEncoding();
  void convertUtf16();
  void takeUtf8();
  [[noreturn]] void fail() const;

  std::unique_ptr<ByteSource> _bytes;
  Encoding _encoding = Encoding::Unknown;
  std::vector<char> _raw;          ///< bytes to be converted
  std::vector<char> _text;         ///< converted
  std::size_t _textBegin = 0;      ///< first byte not handed out yet
  std::size_t _pieceSize = 4'096;  ///< to be read next; grows, since most parts are small
  bool _ended = false;
};

}  // namespace Zorv::Workbook
