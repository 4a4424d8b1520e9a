#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <pugixml.hpp>

#include "DOM/ConditionalFormat.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/StylesReader.h"

namespace Zorv::Workbook {

/// Collects the conditional-formatting rules of one sheet.
class ConditionalFormatReader {
public:
  /// Borrows everything.
  ConditionalFormatReader(LoadState& state, StylesReader& styles, std::size_t sheet) noexcept
      : _state(state), _styles(styles), _sheet(sheet) {}

  /// Adds the rules of one `conditionalFormatting` element, of the main list or of the extension
  /// list, to the document. Throws PartError beyond the limits.
  void read(pugi::xml_node conditionalFormatting);

  /// After the last element: gives the conditional formats to the sheet's table, by priority.
  ///
  /// The smallest number comes first; rules of the same number stand as in the file. A number is
  /// taken as it is written, 0 and below included. A rule without one comes after those that have
  /// one: what says nothing of its rank does not push in front of what does.
  void finish();

private:
  /// A conditional format on its way to the table.
  struct Entry {
    std::size_t rule;
    std::unique_ptr<DOM::ConditionalFormat const> format;
  };

  void readRule(pugi::xml_node element, Rule rule);
  [[nodiscard]] std::unique_ptr<DOM::ConditionalFormat const> makeFormat(pugi::xml_node element,
                                                                         Rule const& rule);
  [[nodiscard]] UUID findStyle(pugi::xml_node element, Rule const& rule);
  void checkLimits(Rule const& rule);

  LoadState& _state;
  StylesReader& _styles;
  std::size_t _sheet;
  std::vector<Entry> _entries;
};

}  // namespace Zorv::Workbook
