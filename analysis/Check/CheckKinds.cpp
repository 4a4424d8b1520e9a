#include <array>

#include "analysis/Check/CheckFinding.h"

namespace Zorv::Analysis {

namespace {

constexpr std::array kinds{
    CheckKind{CheckCode::UnreadableRule, "unreadable-rule", Severity::Error, "cannot be read",
              "Delete the rule, or make it again in a spreadsheet program."},
    CheckKind{CheckCode::MissingReference, "missing-reference", Severity::Error,
              "refers to something that is missing",
              "Correct the formula, or restore what it refers to."},
    CheckKind{CheckCode::FailingFormula, "failing-formula", Severity::Error,
              "cannot be evaluated for some cells",
              "Simplify the formula, or make the rule's ranges smaller."},
    CheckKind{CheckCode::NeverHolds, "never-holds", Severity::Warning, "never holds",
              "Correct the condition, or delete the rule."},
    CheckKind{CheckCode::AlwaysHolds, "always-holds", Severity::Warning, "always holds",
              "Correct the condition; if it is meant so, format the cells themselves."},
    CheckKind{CheckCode::NoEffect, "no-effect", Severity::Warning, "has no effect",
              "Give the rule a format, or delete it."},
    CheckKind{CheckCode::HiddenRule, "hidden-rule", Severity::Warning, "is hidden by earlier rules",
              "Move the rule before those that hide it, or delete it."},
    CheckKind{CheckCode::DuplicateRules, "duplicate-rules", Severity::Warning, "is there twice",
              "Keep one of the rules; `cndfrmt tidy` deletes the others."},
    CheckKind{CheckCode::RuleFragments, "rule-fragments", Severity::Note,
              "is a fragment of a larger rule",
              "Put the fragments together; `cndfrmt tidy` does so."},
    CheckKind{CheckCode::OffSheetReference, "off-sheet-reference", Severity::Note,
              "refers to cells beyond the edge of the sheet",
              "Let the rule begin further from the edge, or correct the reference."},
    CheckKind{CheckCode::WanderingReference, "wandering-reference", Severity::Warning,
              "has a reference that moves where it should stay",
              "Make the reference absolute with dollar signs, such as $F$1 for F1."},
    CheckKind{CheckCode::RangeBeyondData, "range-beyond-data", Severity::Note,
              "covers far more cells than there are data",
              "Cut the range to the data, or use whole columns if it is to grow with them."},
    CheckKind{CheckCode::QuadraticFormula, "quadratic-formula", Severity::Warning,
              "takes time that grows with the square of the data",
              "Calculate the formula in a helper column, and let the rule refer to that."},
    CheckKind{CheckCode::DiffersElsewhere, "differs-elsewhere", Severity::Note,
              "gives other answers in other programs",
              "Write the condition so that all programs agree, or resolve with "
              "`--semantics widespread` to see what the others show."},
    CheckKind{CheckCode::UnusedStyles, "unused-styles", Severity::Note, "formats are unused",
              "They do no harm; a spreadsheet program drops them when they are deleted with their "
              "rules."},
};

}  // namespace

std::span<CheckKind const> listCheckKinds() noexcept { return kinds; }

CheckKind const& kindOf(CheckCode code) noexcept { return kinds[static_cast<std::size_t>(code)]; }

}  // namespace Zorv::Analysis
