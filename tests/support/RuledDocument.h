#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "tool/Input/Selection.h"
#include "workbook/Document.h"

namespace Zorv::TestSupport {

/// A document of sheets "Sheet1", "Sheet2" ... whose rules hold for empty cells.
struct RuledDocument {
  explicit RuledDocument(std::size_t sheetCount = 1) {
    for (std::size_t sheet = 0; sheet < sheetCount; ++sheet) {
      auto& added = document.getSheets().emplace_back();
      added.name = "Sheet" + std::to_string(sheet + 1);
      added.table = std::make_unique<DOM::Table>();
    }
  }

  /// Adds a resolved rule. Sheets must come in order. The reference is valid until the next call.
  Workbook::Rule& addRule(
      std::string const& ranges, std::size_t sheet = 0,
      DOM::ConditionalFormatOperator condition =
          DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::Blanks)) {
    auto& rule = addUnresolvedRule("expression", "", sheet);
    rule.ranges = *DOM::A1Notation::parseRanges(ranges);
    auto& table = *document.getSheets()[sheet].table;
    std::vector<DOM::TableRangeByID> byId;
    for (auto const& range : rule.ranges) {
      byId.push_back(table.toRangeByID(range));
    }
    table.addConditionalFormat(std::make_unique<DOM::ConditionalFormat const>(
        std::move(byId), std::move(condition), UUID()));
    rule.format = table.getLiveConditionalFormats().back().get();
    return rule;
  }

  /// Adds a rule that is not resolved, on A1.
  Workbook::Rule& addUnresolvedRule(std::string type, std::string reason, std::size_t sheet = 0) {
    auto& rule = document.getRules().emplace_back();
    rule.number = document.getRules().size() - 1;
    rule.sheet = sheet;
    rule.type = std::move(type);
    rule.ranges = {{0, 0, 1, 1}};
    rule.unresolvedReason = std::move(reason);
    return rule;
  }

  [[nodiscard]] Tool::Selection select() const { return {document, options, file}; }

  Workbook::Document document;
  Tool::Options options;
  std::string file = "book.xlsx";
};

}  // namespace Zorv::TestSupport
