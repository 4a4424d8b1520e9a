#include "fuzz/StoredArchive.h"

#include <cstdint>
#include <string_view>

#include <boost/crc.hpp>

namespace Zorv::Fuzzing {

namespace {

// The layout is that of APPNOTE.TXT, 4.3.7, 4.3.12 and 4.3.16.

void add(std::string& bytes, std::uint32_t number, unsigned size) {
  for (; size > 0; --size) {
    bytes += static_cast<char>(number & 0xFFU);
    number >>= 8U;
  }
}

/// What the header of a part and its entry in the list of parts share.
std::string describePart(std::string_view name, std::string_view content) {
  constexpr std::uint32_t version = 20;
  constexpr std::uint32_t firstOfJanuary1980 = 0x21;
  boost::crc_32_type checksum;
  checksum.process_bytes(content.data(), content.size());
  std::string bytes;
  add(bytes, version, 2);
  add(bytes, 0, 2);  // flags
  add(bytes, 0, 2);  // stored
  add(bytes, firstOfJanuary1980 << 16U, 4);
  add(bytes, checksum.checksum(), 4);
  add(bytes, static_cast<std::uint32_t>(content.size()), 4);
  add(bytes, static_cast<std::uint32_t>(content.size()), 4);
  add(bytes, static_cast<std::uint32_t>(name.size()), 2);
  add(bytes, 0, 2);  // extra field
  return bytes;
}

}  // namespace

std::string makeStoredArchive(std::map<std::string, std::string> const& parts) {
  constexpr std::uint32_t partMark = 0x04034B50;
  constexpr std::uint32_t entryMark = 0x02014B50;
  constexpr std::uint32_t endMark = 0x06054B50;
  std::string bytes;
  std::string entries;
  for (auto const& [name, content] : parts) {
    auto const position = static_cast<std::uint32_t>(bytes.size());
    std::string const part = describePart(name, content);
    add(bytes, partMark, 4);
    bytes += part + name + content;
    add(entries, entryMark, 4);
    add(entries, 20, 2);  // version of the writer
    entries += part;
    add(entries, 0, 2);  // comment
    add(entries, 0, 2);  // disk
    add(entries, 0, 2);  // internal attributes
    add(entries, 0, 4);  // external attributes
    add(entries, position, 4);
    entries += name;
  }
  auto const position = static_cast<std::uint32_t>(bytes.size());
  auto const count = static_cast<std::uint32_t>(parts.size());
  bytes += entries;
  add(bytes, endMark, 4);
  add(bytes, 0, 4);  // disks
  add(bytes, count, 2);
  add(bytes, count, 2);
  add(bytes, static_cast<std::uint32_t>(entries.size()), 4);
  add(bytes, position, 4);
  add(bytes, 0, 2);  // comment
  return bytes;
}

}  // namespace Zorv::Fuzzing
