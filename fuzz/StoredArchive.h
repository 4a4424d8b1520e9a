#pragma once

#include <map>
#include <string>

namespace Zorv::Fuzzing {

/// The bytes of a zip archive with these parts, none of which is packed: packing an input takes
/// longer than reading it.
[[nodiscard]] std::string makeStoredArchive(std::map<std::string, std::string> const& parts);

}  // namespace Zorv::Fuzzing
