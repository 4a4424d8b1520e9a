#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "DOM/CellStyle.h"
#include "Utils/TableRange.h"
#include "workbook/Document.h"

namespace Zorv::Analysis {

/// A resolved rule, and what the checks compare it by.
struct CheckedRule {
  Workbook::Rule const* rule = nullptr;
  /// Equal for rules of equal conditions, after relative references have been moved.
  std::size_t condition = 0;
  std::size_t ranges = 0;  ///< equal for rules of the same ranges, in any order
  std::size_t style = 0;   ///< equal for rules that set the same properties to the same values
  std::vector<std::string_view> properties{};  ///< names of the properties that the rule sets

  [[nodiscard]] DOM::ConditionalFormatOperator const& getCondition() const noexcept {
    return rule->format->getOperator();
  }
};

/// The rules of one sheet as the checks need them. Borrows the document.
class CheckedSheet {
public:
  CheckedSheet(Workbook::Document const& document, std::size_t index);

  [[nodiscard]] std::size_t getIndex() const noexcept { return _index; }
  [[nodiscard]] Workbook::Sheet const& getSheet() const noexcept {
    return _document.getSheets()[_index];
  }
  [[nodiscard]] DOM::Table const& getTable() const noexcept { return *getSheet().table; }
  [[nodiscard]] TableRange const& getUsedRange() const noexcept { return _usedRange; }
  [[nodiscard]] Workbook::Document const& getDocument() const noexcept { return _document; }

  /// Resolved rules by priority, the highest first: by the index of their format.
  [[nodiscard]] std::vector<CheckedRule> const& getRules() const noexcept { return _rules; }
  /// Every rule of the sheet, by number.
  [[nodiscard]] std::vector<Workbook::Rule const*> const& getAllRules() const noexcept {
    return _allRules;
  }

private:
  [[nodiscard]] CheckedRule describe(Workbook::Rule const& rule);

  Workbook::Document const& _document;
  std::size_t _index;
  TableRange _usedRange;
  std::vector<CheckedRule> _rules;
  std::vector<Workbook::Rule const*> _allRules;
  std::unordered_map<std::string, std::size_t> _conditions;  ///< by key
  std::unordered_map<std::string, std::size_t> _ranges;      ///< by sorted addresses
  std::unordered_map<DOM::CellStyle, std::size_t, boost::hash<DOM::CellStyle>> _styles;
};

}  // namespace Zorv::Analysis
