#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Zorv::Fuzzing {

/// A zip archive that stores its parts as they are: a fuzzer makes thousands a second. Copies go on
/// from the parts that there are.
class StoredArchive {
public:
  void add(std::string_view name, std::string_view content);
  /// The bytes of the archive.
  [[nodiscard]] std::string getBytes() const;

private:
  std::string _parts;
  std::string _entries;
  std::uint32_t _count = 0;
};

}  // namespace Zorv::Fuzzing
