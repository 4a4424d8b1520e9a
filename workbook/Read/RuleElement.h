#pragma once

#include <optional>
#include <string>
#include <vector>

#include <pugixml.hpp>

// What every `cfRule` element has (ISO/IEC 29500-1, 18.3.1.10, and its later form), whatever its
// type.
namespace Zorv::Workbook {

/// The formulas directly in a rule: `formula`, or `xm:f` in the extension list.
[[nodiscard]] std::vector<std::string> readRuleFormulas(pugi::xml_node rule);

/// Nothing if the rule has no priority, or one that is no whole number.
[[nodiscard]] std::optional<int> readRulePriority(pugi::xml_node rule);

/// The identities of a rule's parts in the extension list: `x14:id` in its own extensions.
[[nodiscard]] std::vector<std::string> findExtensionIds(pugi::xml_node rule);

/// Fault of a flag that is neither true nor false, as the end of a sentence about the rule.
[[nodiscard]] std::string describeFaultyFlag(pugi::xml_attribute flag, bool countsAs);

/// Faults of attributes whose values are none of those that are allowed, as the ends of sentences
/// about the rule.
[[nodiscard]] std::vector<std::string> findFaultyAttributes(pugi::xml_node rule);

}  // namespace Zorv::Workbook
