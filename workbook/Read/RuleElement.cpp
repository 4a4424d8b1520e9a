#include "workbook/Read/RuleElement.h"

#include <limits>
#include <string_view>

#include <fmt/format.h>

#include "workbook/Quote.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlText.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

std::vector<std::string> readRuleFormulas(pugi::xml_node rule) {
  std::vector<std::string> formulas;
  for (pugi::xml_node const child : rule) {
    std::string_view const name = localName(child);
    if (name == "formula" || name == "f") {
      formulas.push_back(unescapeXstring(trimXmlSpaces(child.text().get())));
    }
  }
  return formulas;
}

std::optional<int> readRulePriority(pugi::xml_node rule) {
  auto const priority = parseInteger(rule.attribute("priority").value());
  bool const fits = priority && std::numeric_limits<int>::min() <= *priority &&
                    *priority <= std::numeric_limits<int>::max();
  return fits ? std::optional(static_cast<int>(*priority)) : std::nullopt;
}

std::vector<std::string> findExtensionIds(pugi::xml_node rule) {
  std::vector<std::string> ids;
  for (pugi::xml_node const extension : rule.child("extLst").children("ext")) {
    std::string_view const id = trimXmlSpaces(extension.child("x14:id").text().get());
    if (!id.empty()) {
      ids.emplace_back(id);
    }
  }
  return ids;
}

std::string describeFaultyFlag(pugi::xml_attribute flag, bool countsAs) {
  return fmt::format("has {}=\"{}\", which is neither true nor false; it counts as {}", flag.name(),
                     quote(flag.value()), countsAs);
}

std::vector<std::string> findFaultyAttributes(pugi::xml_node rule) {
  std::vector<std::string> faults;
  if (auto const priority = rule.attribute("priority");
      !priority.empty() && !readRulePriority(rule)) {
    faults.push_back(fmt::format(
        "has the priority \"{}\", which is no whole number; it counts as a rule without "
        "a priority, and these come last",
        quote(priority.value())));
  }
  for (char const* name : {"stopIfTrue", "aboveAverage", "percent", "bottom", "equalAverage"}) {
    pugi::xml_attribute const flag = rule.attribute(name);
    if (!flag.empty() && !parseBoolean(flag.value())) {
      faults.push_back(describeFaultyFlag(flag, std::string_view(name) == "aboveAverage"));
    }
  }
  if (auto const deviations = rule.attribute("stdDev");
      !deviations.empty() && !parseInteger(deviations.value())) {
    faults.push_back(fmt::format("has stdDev=\"{}\", which is no whole number; it counts as 0",
                                 quote(deviations.value())));
  }
  return faults;
}

}  // namespace Zorv::Workbook
