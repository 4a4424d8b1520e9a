#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <boost/container_hash/hash.hpp>

#include "DOM/SharedStyle.h"
#include "tool/Output/TextCache.h"
#include "workbook/Rule.h"

namespace Zorv::Tool {

/// Texts for the rules that decide for a cell: most cells have those of an earlier cell.
class DecidingRulesCache {
public:
  /// The text of `make()` for these rules. Valid until the next call.
  template <class Make>
  [[nodiscard]] std::string const& getOrCreate(std::span<Workbook::Rule const* const> rules,
                                               Make const& make) {
    // Long lists are rare, and would make the keys larger than the texts.
    constexpr std::size_t mostRules = 64;
    if (rules.size() > mostRules) {
      return _uncached = make();
    }
    _key.assign(rules.begin(), rules.end());
    return _texts.getOrCreate(_key, make);
  }

private:
  using Rules = std::vector<Workbook::Rule const*>;

  TextCache<Rules, boost::hash<Rules>> _texts;
  Rules _key;
  std::string _uncached;
};

/// Texts for styles. Keeps the styles alive, so that each is known by its address.
using StyleTextCache = TextCache<DOM::SharedCellStylePtr, boost::hash<DOM::SharedCellStylePtr>>;

}  // namespace Zorv::Tool
