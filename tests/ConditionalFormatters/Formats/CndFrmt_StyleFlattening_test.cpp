#include "ConditionalFormatters/Formats/CndFrmt_StyleFlattening.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/Documents.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;

TEST(StyleFlattening, TheFirstStyleThatSetsAPropertyDecidesIt) {
  auto const makeStyle = [](bool bold, std::optional<double> size) {
    DOM::CellStyle style;
    style.setRunProps(makeProps<DOM::RunProps>([&](DOM::RunProps& props) {
      props.bold = bold;
      props.fontSize = size;
    }));
    return style;
  };
  boost::optional<DOM::CellStyle> accumulated;
  mergeUnder(accumulated, makeStyle(true, std::nullopt));
  mergeUnder(accumulated, makeStyle(false, 8.0));
  mergeUnder(accumulated, makeStyle(false, 9.0));
  ASSERT_TRUE(accumulated);
  EXPECT_EQ(accumulated->getRunProps()->bold, true);
  EXPECT_EQ(accumulated->getRunProps()->fontSize, 8.0);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
