#include <ostream>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "tool/Output/ResolveOutput.h"
#include "tool/Text/CellText.h"
#include "tool/Text/ConditionText.h"
#include "tool/Text/StyleText.h"
#include "tool/Text/TextTable.h"

namespace Zorv::Tool {

namespace {

/// `top 3 on F4:F15 (priority 1)`
std::string describeRule(Workbook::Rule const& rule) {
  auto const priority =
      rule.priority ? fmt::format("priority {}", *rule.priority) : std::string("no priority");
  return fmt::format("{} on {} ({}{})", describeCondition(rule), describeRanges(rule), priority,
                     rule.stopIfTrue ? ", stops" : "");
}

class ResolveTable final : public ResolveOutput {
public:
  ResolveTable(OfficeUtils::LocaleContext const& locale, std::ostream& out)
      : _locale(locale), _out(out), _table({"SHEET", "CELL", "VALUE", "STYLE", "RULES"}) {}

  void beginSheet(Workbook::Sheet const& sheet) override { _sheet = sheet.name; }

  void add(ResolvedCell const& cell) override {
    std::string rules;
    for (auto const* rule : cell.deciding) {
      rules += fmt::format("{}{}", rules.empty() ? "" : "; ", describeRule(*rule));
    }
    auto const* cellObject = cell.cellInfo.getCell();
    _table.addRow({_sheet, DOM::A1Notation::toAddress(cell.cellInfo.getCellIndex()),
                   cellObject ? shorten(toPrintable(toText(*cellObject, _locale))) : "",
                   describe(cell.style->get()), std::move(rules)});
  }

  void finish() override { _out << _table.format(); }

private:
  /// Long texts would push the other columns out of sight.
  static std::string shorten(std::string const& text) {
    constexpr std::size_t longest = 32;
    if (displayWidth(text) <= longest) {
      return text;
    }
    return cutToWidth(text, longest - 3) + "...";
  }

  OfficeUtils::LocaleContext const& _locale;
  std::ostream& _out;
  TextTable _table;
  std::string _sheet;
};

}  // namespace

std::unique_ptr<ResolveOutput> makeResolveTable(OfficeUtils::LocaleContext const& locale,
                                                std::ostream& out) {
  return std::make_unique<ResolveTable>(locale, out);
}

}  // namespace Zorv::Tool
