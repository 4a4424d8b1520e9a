#include "analysis/Shared/TargetFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Zorv::Analysis {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::string readText(fs::path const& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void writeText(fs::path const& file, std::string const& text) { std::ofstream(file) << text; }

mode_t modeOf(fs::path const& file) {
  struct stat status {};
  stat(file.c_str(), &status);
  return status.st_mode & 07777;
}

class TargetFiles : public testing::Test {
protected:
  TargetFiles() {
    std::string pattern = (fs::temp_directory_path() / "target_test_XXXXXX").string();
    folder = mkdtemp(pattern.data());
    source = folder / "source";
    target = folder / "target";
    writeText(source, "old");
  }
  ~TargetFiles() override {
    chmod(folder.c_str(), 0700);
    fs::remove_all(folder);
  }

  /// Writes a text through a target file; returns the message of the error, if there is one.
  std::string put(fs::path const& place, bool mayReplace = false) {
    try {
      TargetFile file(place, source, mayReplace);
      writeText(file.getTemporaryPath(), "new");
      file.commit();
    } catch (TargetError const& error) {
      return error.what();
    }
    return {};
  }

  [[nodiscard]] long countFiles() const {
    return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
  }

  fs::path folder;
  fs::path source;
  fs::path target;
};

TEST_F(TargetFiles, AppearAtOnceOrNotAtAll) {
  {
    TargetFile const file(target, source, false);
    EXPECT_EQ(file.getTemporaryPath().parent_path(), folder);
    EXPECT_FALSE(fs::exists(target));
  }
  EXPECT_EQ(countFiles(), 1);
  EXPECT_EQ(put(target), "");
  EXPECT_EQ(readText(target), "new");
  EXPECT_EQ(countFiles(), 2);
}

TEST_F(TargetFiles, ReplaceNothingButTheSourceUnlessAllowed) {
  writeText(target, "other");
  EXPECT_THAT(put(target), HasSubstr("exists already"));
  EXPECT_EQ(readText(target), "other");
  EXPECT_EQ(put(target, true), "");
  EXPECT_EQ(readText(target), "new");
  EXPECT_EQ(put(source), "");
  EXPECT_EQ(readText(source), "new");
}

TEST_F(TargetFiles, KeepTheAccessRightsOfTheFileThatTheyReplace) {
  chmod(source.c_str(), 0604);
  EXPECT_EQ(put(source), "");
  EXPECT_EQ(modeOf(source), 0604U);
  mode_t const mask = umask(0);
  umask(mask);
  EXPECT_EQ(put(target), "");
  EXPECT_EQ(modeOf(target), 0666U & ~mask);
}

TEST_F(TargetFiles, FollowASymbolicLinkAndKeepIt) {
  fs::create_symlink(source, target);
  EXPECT_EQ(put(target), "");
  EXPECT_TRUE(fs::is_symlink(target));
  EXPECT_EQ(readText(source), "new");
  fs::path const loose = folder / "loose";
  fs::create_symlink(folder / "nowhere", loose);
  EXPECT_THAT(put(loose), HasSubstr("leads to no file"));
}

TEST_F(TargetFiles, RefuseWhatIsNoOrdinaryFile) {
  EXPECT_THAT(put(folder), HasSubstr("is a folder"));
  EXPECT_THAT(put("/dev/null", true), HasSubstr("no ordinary file"));
  EXPECT_THAT(put(folder / "missing" / "target"), HasSubstr("there is no folder"));
  EXPECT_THAT(put(source / "target"), HasSubstr("cannot be written"));
}

TEST_F(TargetFiles, RefuseAFolderThatCannotBeWritten) {
  if (geteuid() == 0) {
    GTEST_SKIP() << "to root every folder can be written";
  }
  chmod(folder.c_str(), 0500);
  EXPECT_THAT(put(target), HasSubstr("cannot be written into its folder"));
}

}  // namespace
}  // namespace Zorv::Analysis
