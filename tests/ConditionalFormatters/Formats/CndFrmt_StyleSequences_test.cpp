#include "ConditionalFormatters/Formats/CndFrmt_StyleSequences.h"

#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "support/Documents.h"
#include "support/Threads.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

/// Formats of the styles bold, italic, bold, and one that names no style.
class StyleSequencesTest : public testing::Test {
protected:
  StyleSequencesTest() {
    addStyle(_styles, makeUUID(1)).setRunProps(makeProps<DOM::RunProps>([](DOM::RunProps& props) {
      props.bold = true;
    }));
    addStyle(_styles, makeUUID(2)).setRunProps(makeProps<DOM::RunProps>([](DOM::RunProps& props) {
      props.bold = false;
      props.italic = true;
    }));
    for (int const style : {1, 2, 1, 9}) {
      _refs.emplace_back(std::vector<TableRange>(),
                         std::cref(addFormat(_table, {}, holdsAlways(),
                                             makeUUID(static_cast<unsigned char>(style)))));
    }
  }

  static DOM::SharedCellStylePtr const& styleOf(StyleCursor& cursor,
                                                std::vector<FormatIndex> const& formats) {
    cursor.restart();
    for (FormatIndex const format : formats) {
      cursor.add(format);
    }
    return cursor.getStyle();
  }

  DOM::Styles _styles;
  DOM::Table _table;
  DOM::SharedObjectFactory _factory;
  ConditionalFormatRefs _refs;
};

TEST_F(StyleSequencesTest, WithoutFormatsThereIsNoStyle) {
  StyleSequences const sequences(_refs, _styles, _factory);
  StyleCursor cursor(sequences);
  EXPECT_EQ(styleOf(cursor, {}), nullptr);
}

TEST_F(StyleSequencesTest, TheFirstFormatThatSetsAPropertyDecidesIt) {
  StyleSequences const sequences(_refs, _styles, _factory);
  StyleCursor cursor(sequences);
  auto const boldFirst = styleOf(cursor, {0, 1});
  EXPECT_EQ(boldFirst->get().getRunProps()->bold, true);
  EXPECT_EQ(boldFirst->get().getRunProps()->italic, true);
  auto const italicFirst = styleOf(cursor, {1, 2});
  EXPECT_EQ(italicFirst->get().getRunProps()->bold, false);
}

TEST_F(StyleSequencesTest, NamingAStyleAgainChangesNothing) {
  StyleSequences const sequences(_refs, _styles, _factory);
  StyleCursor cursor(sequences);
  EXPECT_EQ(styleOf(cursor, {0, 1, 2}), styleOf(cursor, {0, 1}));
  EXPECT_EQ(styleOf(cursor, {0, 2}), styleOf(cursor, {2}));
}

TEST_F(StyleSequencesTest, AFormatWhoseStyleDoesNotExistHasAStyleThatSetsNothing) {
  StyleSequences const sequences(_refs, _styles, _factory);
  StyleCursor cursor(sequences);
  auto const style = styleOf(cursor, {3});
  ASSERT_NE(style, nullptr);
  EXPECT_EQ(style->get().getRunProps(), nullptr);
}

TEST_F(StyleSequencesTest, AllThreadsGetOneObject) {
  StyleSequences const sequences(_refs, _styles, _factory);
  std::vector<DOM::SharedCellStylePtr> found(4);
  runOnThreads(found.size(), [&](std::size_t thread) {
    StyleCursor cursor(sequences);
    for (int round = 0; round < 100; ++round) {
      static_cast<void>(styleOf(cursor, {1}));
      found[thread] = styleOf(cursor, {1, 0});
    }
  });
  for (auto const& style : found) {
    EXPECT_EQ(style, found.front());
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
