#include "tool/Input/DefaultTimeout.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace Zorv::Tool {

namespace {

bool isSmall(std::string const& file) {
  constexpr std::uintmax_t leastOfLarge = 1'000'000;
  std::error_code problem;
  return file != "-" && std::filesystem::is_regular_file(file, problem) &&
         std::filesystem::file_size(file, problem) < leastOfLarge;
}

}  // namespace

std::chrono::milliseconds defaultTimeout(std::vector<std::string> const& files) {
  constexpr std::chrono::milliseconds mostOfAll = std::chrono::minutes(10);
  constexpr std::chrono::milliseconds ofSmallFile = std::chrono::seconds(50);
  bool const areSmall = std::ranges::all_of(files, isSmall);
  return areSmall ? std::min(mostOfAll, ofSmallFile * static_cast<std::int64_t>(files.size()))
                  : mostOfAll;
}

}  // namespace Zorv::Tool
