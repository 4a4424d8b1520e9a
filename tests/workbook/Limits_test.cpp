#include "workbook/Limits.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "workbook/Evaluation.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Workbook {
namespace {

using testing::EndsWith;
using testing::StartsWith;
using TestSupport::WorkbookBuilder;

WorkbookBuilder emptySheet() { return WorkbookBuilder().setSheet(""); }

/// A named pipe into which a thread writes some bytes.
class Pipe {
public:
  explicit Pipe(std::string bytes)
      : _path(std::filesystem::temp_directory_path() /
              ("workbook_pipe_" + std::to_string(::getpid()))) {
    ::mkfifo(_path.c_str(), 0600);
    _writer = std::thread([this, bytes = std::move(bytes)] {
      std::ofstream(_path, std::ios::binary).write(bytes.data(), static_cast<long>(bytes.size()));
    });
  }
  ~Pipe() {
    _writer.join();
    std::filesystem::remove(_path);
  }
  Pipe(Pipe const&) = delete;
  Pipe& operator=(Pipe const&) = delete;

  [[nodiscard]] std::filesystem::path const& getPath() const noexcept { return _path; }

private:
  std::filesystem::path _path;
  std::thread _writer;
};

TEST(Pipes, AreReadToMemory) {
  Pipe const pipe(
      WorkbookBuilder().setSheet("<row r='1'><c r='A1'><v>7</v></c></row>").makeBytes());
  EXPECT_EQ(TestSupport::describeCell(loadWorkbook(pipe.getPath()), "A1"), "number 7");
}

TEST(Pipes, BeyondTheLimitAreRefusedAndThoseOfOtherKindsAreToldApart) {
  auto const problemOf = [](std::string const& bytes) {
    Pipe const pipe(bytes);
    LoadOptions options;
    options.limits.pipeBytes = 1'000;
    try {
      static_cast<void>(loadWorkbook(pipe.getPath(), options));
    } catch (LoadError const& error) {
      return error.getProblem();
    }
    return std::string();
  };
  EXPECT_EQ(problemOf(std::string(2'000, 'P')),
            "is a pipe with more than 1000 bytes, which is the limit; write it to a file and try "
            "again");
  EXPECT_EQ(problemOf("name,value\n"), "is no .xlsx workbook: it is no zip archive");
  EXPECT_THAT(problemOf("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"), StartsWith("is a binary workbook"));
}

TEST(ResourceLimits, ElementsWithTooManyAttributesAreRefused) {
  std::string attributes;
  for (int count = 0; count < 100'000; ++count) {
    attributes += " a" + std::to_string(count) + "='1'";
  }
  EXPECT_THAT(emptySheet()
                  .setPart("xl/worksheets/sheet1.xml", "<worksheet" + attributes + "/>")
                  .loadMessage(),
              EndsWith("an element with more than 1000 attributes, which is the limit"));
}

TEST(ResourceLimits, TooManyNamespacesAtOnePlaceAreRefused) {
  std::string elements = "<worksheet>";
  for (int count = 0; count < 200; ++count) {
    elements += "<e xmlns:a='x' xmlns:b='y'>";
  }
  EXPECT_THAT(emptySheet().setPart("xl/worksheets/sheet1.xml", elements).loadMessage(),
              EndsWith("more than 256 namespaces at one place, which is the limit"));
}

TEST(ResourceLimits, TreesWithTooManyElementsAreRefused) {
  LoadOptions options;
  options.limits.treeItems = 1'000;
  std::string names;
  for (int count = 0; count < 1'000; ++count) {
    names += "<a/>";
  }
  EXPECT_EQ(emptySheet().loadMessage(options), "");
  EXPECT_THAT(emptySheet().setWorkbook("", names).loadMessage(options),
              EndsWith("more elements and attributes inside one element than are held in memory; "
                       "save the workbook with fewer formats or rules and try again"));
}

TEST(ResourceLimits, TheWholeFileHasARatioOfItsOwn) {
  LoadOptions options;
  options.limits.ratioFreeBytes = 30'000;
  WorkbookBuilder builder;
  for (int count = 0; count < 20; ++count) {
    builder.addSheet("S" + std::to_string(count), std::string(29'000, ' '));
  }
  options.limits.unpackRatio = 40;
  EXPECT_THAT(builder.loadMessage(options),
              EndsWith("the file unpacks to more than 40 times its size, as no honest workbook "
                       "does; it is refused"));
  options.limits.unpackRatio = 250;
  EXPECT_EQ(builder.loadMessage(options), "");
}

TEST(ResourceLimits, SharedTextsNamesAndFormulasAreCounted) {
  LoadOptions options;
  options.limits.sharedTexts = 2;
  EXPECT_EQ(emptySheet().setSharedStrings("<si/><si/>").loadMessage(options), "");
  EXPECT_THAT(emptySheet().setSharedStrings("<si/><si/><si/>").loadMessage(options),
              EndsWith("the workbook has more than 2 shared texts, which is the limit"));
  options.limits.definedNames = 1;
  std::string const name = "<definedName name='N'>1+1</definedName>";
  auto const withNames = [](std::string const& names) {
    return emptySheet().setWorkbook("", "<definedNames>" + names + "</definedNames>");
  };
  EXPECT_EQ(withNames(name).loadMessage(options), "");
  EXPECT_THAT(withNames(name + name).loadMessage(options),
              EndsWith("the workbook has more than 1 names, which is the limit"));
  options.limits.formulaBytes = 2;
  EXPECT_THAT(withNames(name).loadMessage(options),
              EndsWith("the formulas of rules and names have more than 2 bytes, which is the "
                       "limit"));
}

TEST(ResourceLimits, MemoryIsTakenFromTheBudget) {
  std::string rows;
  for (int row = 1; row <= 20'000; ++row) {
    rows += "<row><c><v>1</v></c><c><v>2</v></c></row>";
  }
  auto const builder = WorkbookBuilder().setSheet(rows);
  LoadOptions options;
  WorkBudget budget({.bytes = 10'000'000});
  options.budget = &budget;
  EXPECT_EQ(builder.loadMessage(options), "");
  EXPECT_GT(budget.getBytes(), 1'000'000U);
  WorkBudget small({.bytes = 500'000});
  options.budget = &small;
  EXPECT_THROW(static_cast<void>(builder.load(options)), WorkBudgetExceeded);
}

TEST(Messages, QuoteOnlyTheBeginningOfALongText) {
  std::string const longName(100'000, 'x');
  EXPECT_LT(
      emptySheet().setPart("xl/worksheets/sheet1.xml", "<" + longName + "/>").loadMessage().size(),
      300U);
  EXPECT_LT(WorkbookBuilder().setSheet("<row r='" + longName + "'/>").loadMessage().size(), 300U);
}

}  // namespace
}  // namespace Zorv::Workbook
