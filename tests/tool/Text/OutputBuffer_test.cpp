#include "tool/Text/OutputBuffer.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

TEST(OutputBuffer, WritesWholeEntriesInBlocks) {
  std::ostringstream out;
  OutputBuffer buffer(out);
  std::string const entry(40'000, 'x');
  buffer.text() += entry;
  buffer.endEntry();
  EXPECT_EQ(out.str(), "");
  buffer.text() += entry;
  buffer.endEntry();
  EXPECT_EQ(out.str(), entry + entry);
  buffer.text() += "end";
  buffer.endEntry();
  EXPECT_EQ(out.str(), entry + entry);
  buffer.flush();
  EXPECT_EQ(out.str(), entry + entry + "end");
}

TEST(OutputBuffer, AnEarlyEndFollowsTheBlocksThatWereWritten) {
  std::ostringstream out;
  OutputBuffer buffer(out);
  buffer.text() += "[";
  buffer.setEarlyEnd("]");
  buffer.text() += "half an entry";
  EXPECT_TRUE(buffer.endEarly());
  EXPECT_EQ(out.str(), "[]");
  buffer.flush();
  EXPECT_EQ(out.str(), "[]");
}

}  // namespace
}  // namespace Zorv::Tool
