#include "analysis/Tidy/PlanTidy.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "analysis/Tidy/ClassifyRules.h"
#include "analysis/Tidy/EditSheet.h"
#include "analysis/Tidy/RuleFormulas.h"
#include "analysis/Tidy/SheetMarkup.h"
#include "analysis/Tidy/WrittenRule.h"
#include "workbook/DocumentContextProvider.h"
#include "workbook/Package/Archive.h"
#include "workbook/Package/PackageFile.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Ranges.h"
#include "workbook/Read/Relationships.h"

namespace Zorv::Analysis {

namespace {

using Workbook::Archive;
using Workbook::PartUse;

std::string readPart(Archive& archive, std::string const& part, WorkBudget* budget) {
  auto const source = archive.open(part, PartUse::Again);
  std::string bytes;
  std::array<char, 65'536> piece{};
  while (std::size_t const count = source->read(piece.data(), piece.size())) {
    bytes.append(piece.data(), count);
    if (budget != nullptr) {
      budget->takeMemory(count);
    }
  }
  return bytes;
}

/// The differential formats of the workbook; none if it has no styles.
std::vector<std::string> readFormats(Archive& archive, Workbook::LoadOptions const& options) {
  Workbook::Relationships const package(archive, "", options.limits);
  auto const* const main = package.findKind("officeDocument");
  if (main == nullptr) {
    return {};
  }
  Workbook::Relationships const workbook(archive, main->target, options.limits);
  auto const* const styles = workbook.findKind("styles");
  return styles == nullptr
             ? std::vector<std::string>()
             : readDifferentialFormats(readPart(archive, styles->target, options.budget),
                                       styles->target, options.limits);
}

/// True for a package with digital signatures (ISO/IEC 29500-2, 13).
bool isSigned(Archive& archive, Workbook::Limits const& limits) {
  return Workbook::Relationships(archive, "", limits).findKind("origin") != nullptr;
}

/// Planner of one sheet.
class SheetPlanner {
public:
  SheetPlanner(std::string const& bytes, std::vector<FormatMarkup> const& formats,
               std::vector<WrittenRule> const& rules, RuleFormulas const& formulas) noexcept
      : _bytes(bytes), _formats(formats), _rules(rules), _formulas(formulas) {}

  /// Fills the plan for the sheet; returns the new bytes of its part, or nothing if none change.
  [[nodiscard]] std::optional<std::string> plan(std::vector<PlanRule> const& planRules,
                                                WorkBudget* budget, SheetPlan& plan) {
    RulesPlan const rulesPlan = Analysis::planRules(
        planRules,
        [this](std::size_t rule, CellIndex base) {
          return _formulas.moveTo(_rules[rule], base).has_value();
        },
        budget);
    for (DroppedRule const& dropped : rulesPlan.dropped) {
      DeadRule& dead = plan.dead.emplace_back();
      dead.rule = numberOf(dropped.rule);
      if (dropped.cover) {
        dead.cover = numberOf(*dropped.cover);
      }
      drop(dropped.rule);
    }
    for (KeptRule const& kept : rulesPlan.kept) {
      if (!kept.joined.empty()) {
        addJoined(kept, plan);
      }
    }
    std::ranges::sort(plan.dead, {}, &DeadRule::rule);
    return _edits.empty() ? std::nullopt : std::optional(editSheet(_bytes, _formats, _edits));
  }

private:
  [[nodiscard]] std::size_t numberOf(std::size_t rule) const noexcept {
    return _rules[rule].rule->number;
  }

  void drop(std::size_t rule) {
    _edits[_rules[rule].markup->index].isDropped = true;
    if (RuleMarkup const* const second = _rules[rule].secondMarkup) {
      _edits[second->index].isDropped = true;
    }
  }

  void addJoined(KeptRule const& kept, SheetPlan& plan) {
    JoinedRules joined{numberOf(kept.rule), {}, kept.ranges};
    for (std::size_t const rule : kept.joined) {
      joined.joined.push_back(numberOf(rule));
      drop(rule);
    }
    std::ranges::sort(joined.joined);
    plan.joined.push_back(std::move(joined));
    RuleEdit& edit = _edits[_rules[kept.rule].markup->index];
    edit.ranges = kept.ranges;
    CellIndex const base = Workbook::findBaseCell(kept.ranges);
    if (base != Workbook::findBaseCell(_rules[kept.rule].rule->ranges)) {
      edit.formulas = _formulas.moveTo(_rules[kept.rule], base).value();
    }
  }

  std::string const& _bytes;
  std::vector<FormatMarkup> const& _formats;
  std::vector<WrittenRule> const& _rules;
  RuleFormulas const& _formulas;
  RuleEdits _edits;
};

/// Planner of a whole file.
class FilePlanner {
public:
  FilePlanner(std::filesystem::path const& file, Workbook::Document const& document,
              Workbook::LoadOptions const& options)
      : _document(document),
        _options(options),
        _archive(Workbook::openPackageFile(file, options.limits.pipeBytes), options.limits,
                 options.budget),
        _formats(readFormats(_archive, options)),
        _provider(document, options.localeName, options.timeZone) {}

  [[nodiscard]] TidyPlan plan() {
    TidyPlan plan;
    for (std::size_t sheet = 0; sheet < _document.getSheets().size(); ++sheet) {
      auto const rules = _document.getRulesOfSheet(sheet);
      if (!rules.empty()) {
        planSheet(sheet, rules.size(), plan);
      }
    }
    plan.breaksSignature = !plan.changesNothing() && isSigned(_archive, _options.limits);
    return plan;
  }

private:
  void planSheet(std::size_t index, std::size_t ruleCount, TidyPlan& plan) {
    Workbook::Sheet const& sheet = _document.getSheets()[index];
    SheetPlan& sheetPlan = plan.sheets.emplace_back();
    sheetPlan.sheet = index;
    sheetPlan.ruleCount = ruleCount;
    std::string const bytes = readPart(_archive, sheet.part, _options.budget);
    auto const formats = readSheetMarkup(bytes, sheet.part, _options.limits);
    if (!formats) {
      sheetPlan.untouchedReason = "its part is written in UTF-16";
      return;
    }
    auto const rules = findWrittenRules(_document, index, *formats);
    if (!rules) {
      sheetPlan.untouchedReason = "its rules are written in an unusual way";
      return;
    }
    RuleFormulas const formulas(*sheet.table, index, _provider);
    auto const planRules = classifyRules(*rules, formulas, _document.getStyles(), _formats);
    if (auto changed = SheetPlanner(bytes, *formats, *rules, formulas)
                           .plan(planRules, _options.budget, sheetPlan)) {
      plan.contents.emplace(sheet.part, *std::move(changed));
    }
  }

  Workbook::Document const& _document;
  Workbook::LoadOptions const& _options;
  Archive _archive;
  std::vector<std::string> _formats;
  Workbook::DocumentContextProvider _provider;
};

}  // namespace

std::size_t SheetPlan::countRulesAfter() const noexcept {
  std::size_t count = ruleCount - dead.size();
  for (JoinedRules const& rules : joined) {
    count -= rules.joined.size();
  }
  return count;
}

TidyPlan planTidy(std::filesystem::path const& file, Workbook::Document const& document,
                  Workbook::LoadOptions const& options) {
  try {
    return FilePlanner(file, document, options).plan();
  } catch (Workbook::PartError const& error) {
    throw Workbook::LoadError(options.name.empty() ? file.string() : options.name,
                              Workbook::quote(error.getPart()), Workbook::quote(error.getPlace()),
                              error.getProblem());
  }
}

}  // namespace Zorv::Analysis
