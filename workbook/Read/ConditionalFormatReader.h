#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "DOM/ConditionalFormat.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/StylesReader.h"

namespace Zorv::Workbook {

/// Reader of one sheet's conditional-formatting rules.
class ConditionalFormatReader {
public:
  /// Borrows everything.
  ConditionalFormatReader(LoadState& state, StylesReader& styles, std::size_t sheet) noexcept
      : _state(state), _styles(styles), _sheet(sheet) {}

  /// Adds the rules of one `conditionalFormatting` element, of the main list or of the extension
  /// list, to the document. A visual rule of the extension list that names an earlier rule of the
  /// sheet is a part of that rule and not added. Throws PartError beyond the limits.
  void read(pugi::xml_node conditionalFormatting);

  [[nodiscard]] bool hasReadRules() const noexcept { return _hasReadRules; }

  /// After the last element: gives the conditional formats to the sheet's table, by priority.
  ///
  /// The smallest priority comes first; rules of equal priority keep the order of the file. 0 and
  /// negative priorities are taken as written. Rules without a priority come last.
  void finish();

private:
  /// A conditional format that is not in the table yet.
  struct Entry {
    std::optional<int> priority;
    std::unique_ptr<DOM::ConditionalFormat const> format;
  };

  void readRule(pugi::xml_node element, Rule rule);
  [[nodiscard]] bool joinsEarlierRule(pugi::xml_node extensionRule);
  [[nodiscard]] std::unique_ptr<DOM::ConditionalFormat const> makeFormat(pugi::xml_node element,
                                                                         Rule const& rule);
  [[nodiscard]] DOM::ConditionalFormatOperator toWidespread(
      DOM::ConditionalFormatOperator condition, Rule const& rule);
  [[nodiscard]] UUID findStyle(pugi::xml_node element, Rule const& rule);
  void checkLimits(Rule const& rule);
  void checkAttributes(pugi::xml_node element, Rule const& rule);
  void addFinding(Rule const& rule, std::string message);

  LoadState& _state;
  StylesReader& _styles;
  std::size_t _sheet;
  std::vector<Entry> _entries;
  bool _hasReadRules = false;
  /// Identities by which visual rules of the main list name their part in the extension list.
  std::set<std::string, std::less<>> _extensionIds;
};

}  // namespace Zorv::Workbook
