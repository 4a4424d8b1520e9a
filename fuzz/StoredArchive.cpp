#include "fuzz/StoredArchive.h"

#include <boost/crc.hpp>

namespace Zorv::Fuzzing {

namespace {

// The layout is that of APPNOTE.TXT, 4.3.7, 4.3.12 and 4.3.16.

void append(std::string& bytes, std::uint32_t number, unsigned size) {
  for (; size > 0; --size) {
    bytes += static_cast<char>(number & 0xFFU);
    number >>= 8U;
  }
}

/// Fields that the header of a part shares with its entry in the list of parts.
std::string describePart(std::string_view name, std::string_view content) {
  constexpr std::uint32_t version = 20;
  constexpr std::uint32_t firstOfJanuary1980 = 0x21;
  boost::crc_32_type checksum;
  checksum.process_bytes(content.data(), content.size());
  std::string bytes;
  append(bytes, version, 2);
  append(bytes, 0, 2);  // flags
  append(bytes, 0, 2);  // stored
  append(bytes, firstOfJanuary1980 << 16U, 4);
  append(bytes, checksum.checksum(), 4);
  append(bytes, static_cast<std::uint32_t>(content.size()), 4);
  append(bytes, static_cast<std::uint32_t>(content.size()), 4);
  append(bytes, static_cast<std::uint32_t>(name.size()), 2);
  append(bytes, 0, 2);  // extra field
  return bytes;
}

}  // namespace

void StoredArchive::add(std::string_view name, std::string_view content) {
  constexpr std::uint32_t partMark = 0x04034B50;
  constexpr std::uint32_t entryMark = 0x02014B50;
  auto const position = static_cast<std::uint32_t>(_parts.size());
  std::string const part = describePart(name, content);
  append(_parts, partMark, 4);
  _parts.append(part).append(name).append(content);
  append(_entries, entryMark, 4);
  append(_entries, 20, 2);  // version of the writer
  _entries += part;
  append(_entries, 0, 2);  // comment
  append(_entries, 0, 2);  // disk
  append(_entries, 0, 2);  // internal attributes
  append(_entries, 0, 4);  // external attributes
  append(_entries, position, 4);
  _entries += name;
  ++_count;
}

std::string StoredArchive::getBytes() const {
  constexpr std::uint32_t endMark = 0x06054B50;
  std::string bytes = _parts + _entries;
  append(bytes, endMark, 4);
  append(bytes, 0, 4);  // disks
  append(bytes, _count, 2);
  append(bytes, _count, 2);
  append(bytes, static_cast<std::uint32_t>(_entries.size()), 4);
  append(bytes, static_cast<std::uint32_t>(_parts.size()), 4);
  append(bytes, 0, 2);  // comment
  return bytes;
}

}  // namespace Zorv::Fuzzing
