#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
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

  /// After the last element: gives the conditional formats to the sheet's table, and the visual
  /// formats to the sheet, by priority.
  ///
  /// The smallest priority comes first; rules of equal priority keep the order of the file. 0 and
  /// negative priorities are taken as written. Rules without a priority come last.
  void finish();

private:
  /// A format that is not in the table or the sheet yet: one of both.
  struct Entry {
    std::optional<int> priority;
    std::unique_ptr<DOM::ConditionalFormat const> format;
    std::unique_ptr<Visuals::VisualFormat> visual;
  };
  /// A visual rule of the main list that has a part in the extension list.
  struct FirstPart {
    std::size_t rule;                  ///< index in the document's rules
    std::optional<std::size_t> entry;  ///< nothing if the rule is not resolved
  };

  void readRule(pugi::xml_node element, Rule rule);
  [[nodiscard]] Entry makeEntry(pugi::xml_node element, Rule const& rule);
  [[nodiscard]] bool joinsEarlierRule(pugi::xml_node extensionRule);
  void join(pugi::xml_node extensionRule, FirstPart const& first);
  [[nodiscard]] std::unique_ptr<Visuals::VisualFormat> makeVisual(pugi::xml_node element,
                                                                  Rule const& rule);
  [[nodiscard]] Visuals::VisualKind readVisual(pugi::xml_node element, Rule const& rule,
                                               Visuals::VisualKind const* first);
  [[nodiscard]] std::vector<DOM::TableRangeByID> listRanges(Rule const& rule) const;
  void countFormulas(std::vector<std::string> const& formulas);
  [[nodiscard]] std::unique_ptr<DOM::ConditionalFormat const> makeFormat(pugi::xml_node element,
                                                                         Rule const& rule);
  [[nodiscard]] DOM::ConditionalFormatOperator toWidespread(
      DOM::ConditionalFormatOperator condition, Rule const& rule);
  [[nodiscard]] UUID findStyle(pugi::xml_node element, Rule const& rule);
  void checkLimits(Rule const& rule);
  void addFinding(Rule const& rule, std::string message);

  LoadState& _state;
  StylesReader& _styles;
  std::size_t _sheet;
  std::vector<Entry> _entries;
  bool _hasReadRules = false;
  /// By the identities by which visual rules of the main list name their part in the extension
  /// list.
  std::map<std::string, FirstPart, std::less<>> _firstParts;
};

}  // namespace Zorv::Workbook
