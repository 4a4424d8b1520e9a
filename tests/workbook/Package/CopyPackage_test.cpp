#include "workbook/Package/CopyPackage.h"

#include <fstream>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbook/Package/Archive.h"
#include "workbook/Package/PartError.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

std::string readText(std::filesystem::path const& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string readPart(std::filesystem::path const& file, std::string const& part) {
  Archive archive(openPackageFile(file, 1'000'000), {}, nullptr);
  auto const source = archive.open(part, PartUse::Whole);
  std::string text(100'000, '\0');
  std::size_t size = 0;
  while (auto const count = source->read(text.data() + size, text.size() - size)) {
    size += count;
  }
  text.resize(size);
  return text;
}

class CopyPackage : public testing::Test {
protected:
  std::string const letters = std::string(5'000, 'x') + "y";
  TestSupport::TemporaryFile source{
      TestSupport::makeArchive({{"a.xml", letters}, {"b/C.xml", "<c/>"}, {"d.bin", "d"}})};
  TestSupport::TemporaryFile target{""};
};

TEST_F(CopyPackage, CopiesEveryByteIfNothingIsReplaced) {
  copyPackage(source.getPath(), target.getPath(), {});
  EXPECT_EQ(readText(target.getPath()), readText(source.getPath()));
}

TEST_F(CopyPackage, ReplacesPartsByNameAndKeepsTheOthers) {
  PartContents const contents{{"/b/c.XML", "<new/>"}};
  copyPackage(source.getPath(), target.getPath(), contents);
  EXPECT_EQ(readPart(target.getPath(), "b/C.xml"), "<new/>");
  EXPECT_EQ(readPart(target.getPath(), "a.xml"), letters);
  EXPECT_TRUE(hasSameOtherParts(source.getPath(), target.getPath(), contents));
  EXPECT_FALSE(hasSameOtherParts(source.getPath(), target.getPath(), {}));
  // The packed bytes are those of the source.
  std::string const before = readText(source.getPath());
  std::string const packed = before.substr(before.find("a.xml") + 5, 20);
  EXPECT_THAT(readText(target.getPath()), testing::HasSubstr(packed));
}

TEST_F(CopyPackage, TellsArchivesWithOtherPartsApart) {
  TestSupport::TemporaryFile const other(TestSupport::makeArchive({{"a.xml", letters}}));
  TestSupport::TemporaryFile const renamed(
      TestSupport::makeArchive({{"a.xml", letters}, {"b/E.xml", "<c/>"}, {"d.bin", "d"}}));
  EXPECT_FALSE(hasSameOtherParts(source.getPath(), other.getPath(), {}));
  EXPECT_FALSE(hasSameOtherParts(source.getPath(), renamed.getPath(), {}));
}

TEST_F(CopyPackage, RefusesAPartThatIsNotThere) {
  EXPECT_THROW(copyPackage(source.getPath(), target.getPath(), {{"none.xml", ""}}), PartError);
}

TEST_F(CopyPackage, RefusesATargetThatCannotBeWritten) {
  EXPECT_THROW(copyPackage(source.getPath(), "/dev/full", {}), PartError);
  EXPECT_THROW(copyPackage(source.getPath(), target.getPath() / "none", {}), PartError);
}

}  // namespace
}  // namespace Zorv::Workbook
