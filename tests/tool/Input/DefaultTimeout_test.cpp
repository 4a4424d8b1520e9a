#include "tool/Input/DefaultTimeout.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

/// A file of a size, which exists as long as the object does.
class SizedFile {
public:
  SizedFile(std::string const& name, std::uintmax_t bytes)
      : _path(std::filesystem::path(testing::TempDir()) / name) {
    std::ofstream{_path};
    std::filesystem::resize_file(_path, bytes);
  }
  SizedFile(SizedFile const&) = delete;
  SizedFile& operator=(SizedFile const&) = delete;
  ~SizedFile() { std::filesystem::remove(_path); }

  [[nodiscard]] std::string getName() const { return _path.string(); }

private:
  std::filesystem::path _path;
};

TEST(DefaultTimeout, IsShorterForSmallFiles) {
  SizedFile const small("default_timeout_small", 999'999);
  SizedFile const large("default_timeout_large", 1'000'000);
  EXPECT_EQ(defaultTimeout({small.getName()}), seconds(50));
  EXPECT_EQ(defaultTimeout({large.getName()}), minutes(10));
  EXPECT_EQ(defaultTimeout({small.getName(), large.getName()}), minutes(10));
}

TEST(DefaultTimeout, AddsUpForSeveralSmallFiles) {
  SizedFile const small("default_timeout_one_of_many", 1);
  EXPECT_EQ(defaultTimeout({small.getName(), small.getName()}), seconds(100));
  EXPECT_EQ(defaultTimeout(std::vector<std::string>(13, small.getName())), minutes(10));
}

TEST(DefaultTimeout, IsTenMinutesIfTheSizeIsNotKnown) {
  EXPECT_EQ(defaultTimeout({"-"}), minutes(10));
  EXPECT_EQ(defaultTimeout({testing::TempDir() + "default_timeout_missing"}), minutes(10));
  EXPECT_EQ(defaultTimeout({testing::TempDir()}), minutes(10));
}

}  // namespace
}  // namespace Zorv::Tool
