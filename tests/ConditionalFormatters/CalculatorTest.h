#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "support/Documents.h"
#include "support/RecordingHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {

/// A calculator over a recording host. The journal begins empty.
class CalculatorTest : public testing::Test {
protected:
  CalculatorTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  /// Entries of the journal for the making and the judging of one nullary condition.
  static std::vector<std::string> judgementsOf(std::string const& cell, int count) {
    std::vector<std::string> entries;
    for (int i = 0; i < count; ++i) {
      entries.insert(entries.end(), {"getTimeZone", "getFormulasContextProvider",
                                     "getLocaleContext", "getCellValue(" + cell + ")"});
    }
    return entries;
  }

  /// A named style that sets these character properties.
  UUID addFont(unsigned char number, std::optional<bool> bold,
               std::optional<double> size = std::nullopt, UUID const& parent = UUID()) {
    UUID const uuid = TestSupport::makeUUID(number);
    TestSupport::addStyle(host.styles, uuid, parent)
        .setRunProps(TestSupport::makeProps<DOM::RunProps>([&](DOM::RunProps& props) {
          props.bold = bold;
          props.fontSize = size;
        }));
    return uuid;
  }

  [[nodiscard]] DOM::SharedCellStylePtr resolve(unsigned long row, unsigned long column) const {
    return calculator->resolve(host.styles, host.table.getCellInfo(row, column));
  }
  [[nodiscard]] DOM::SharedCellStylePtr getStyle(unsigned long row, unsigned long column) const {
    return calculator->getConditionalFormatCellStyle(host.styles,
                                                     host.table.getCellInfo(row, column));
  }

  TestSupport::RecordingHost host;
  TestSupport::RecordingValueContextProvider* provider = nullptr;
  std::unique_ptr<ConditionalFormattingPropsCalculator> calculator = makeCalculator();

private:
  std::unique_ptr<ConditionalFormattingPropsCalculator> makeCalculator() {
    auto owned = host.makeProvider();
    provider = owned.get();
    return std::make_unique<ConditionalFormattingPropsCalculator>(std::move(owned));
  }
};

}  // namespace Zorv::ConditionalFormatters
