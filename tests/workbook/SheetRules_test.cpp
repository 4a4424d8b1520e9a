#include "workbook/SheetRules.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::Workbook {
namespace {

/// Two sheets; the rules of the second are neither in the order of their formats nor all resolved.
class SheetRulesTest : public testing::Test {
protected:
  SheetRulesTest() {
    for (std::size_t sheet = 0; sheet < 2; ++sheet) {
      auto& table = _document.getSheets().emplace_back().table;
      table = std::make_unique<DOM::Table>();
      for (int format = 0; format < 3; ++format) {
        table->addConditionalFormat(std::make_unique<DOM::ConditionalFormat const>(
            std::vector<DOM::TableRangeByID>(),
            DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::Blanks),
            UUID()));
      }
    }
    addRule(0, 0);
    for (std::size_t const format : {2U, 0U, 1U}) {
      addRule(1, format);
    }
    auto& unresolved = _document.getRules().emplace_back();
    unresolved.sheet = 1;
  }

  void addRule(std::size_t sheet, std::size_t format) {
    auto& rule = _document.getRules().emplace_back();
    rule.sheet = sheet;
    rule.format = _document.getSheets()[sheet].table->getLiveConditionalFormats()[format].get();
  }

  Document _document;
};

TEST_F(SheetRulesTest, LeadFromEachFormatToItsRuleAndBack) {
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<DocumentValueProvider>(_document, "en-US", DOM::TimeZone()));
  SheetRules const rules(_document, 1,
                         calculator.getConditionalFormatRefs(*_document.getSheets()[1].table));
  auto const& all = _document.getRules();
  std::size_t const ruleOfFormat[] = {2, 3, 1};
  for (std::uint32_t format = 0; format < 3; ++format) {
    EXPECT_EQ(&rules.ruleOf(format), &all[ruleOfFormat[format]]);
    EXPECT_EQ(rules.formatOf(all[ruleOfFormat[format]]), format);
  }
}

TEST_F(SheetRulesTest, LeadFromEachVisualFormatToItsRule) {
  auto& visuals = _document.getSheets()[1].visualFormats;
  for (int format = 0; format < 2; ++format) {
    visuals.push_back(std::make_unique<Visuals::VisualFormat>());
  }
  for (std::size_t const format : {1U, 0U}) {
    auto& rule = _document.getRules().emplace_back();
    rule.sheet = 1;
    rule.visual = visuals[format].get();
  }
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<DocumentValueProvider>(_document, "en-US", DOM::TimeZone()));
  SheetRules const rules(_document, 1,
                         calculator.getConditionalFormatRefs(*_document.getSheets()[1].table));
  EXPECT_EQ(&rules.ruleOfVisual(0), &_document.getRules()[6]);
  EXPECT_EQ(&rules.ruleOfVisual(1), &_document.getRules()[5]);
}

}  // namespace
}  // namespace Zorv::Workbook
