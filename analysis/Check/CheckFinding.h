#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Utils/TableRange.h"

namespace Zorv::Analysis {

/// Weight of a finding, the lightest first.
enum class Severity : std::uint8_t {
  Note,     ///< worth knowing
  Warning,  ///< hardly meant so
  Error,    ///< cannot be meant so
};

/// Subject of a finding. docs/check.md explains each.
enum class CheckCode : std::uint8_t {
  UnreadableRule,
  MissingReference,
  FailingFormula,
  NeverHolds,
  AlwaysHolds,
  NoEffect,
  HiddenRule,
  DuplicateRules,
  RuleFragments,
  OffSheetReference,
  WanderingReference,
  RangeBeyondData,
  QuadraticFormula,
  DiffersElsewhere,
  UnusedStyles,
};

/// Properties that all findings of a code share.
struct CheckKind {
  CheckCode code;
  std::string_view id;  ///< stable, for people and programs: `never-holds`
  Severity severity;    ///< of most findings of the code
  /// Ends a sentence that begins with a rule's number: `never holds`.
  std::string_view claim;
  std::string_view advice;  ///< what to do, in one or two sentences
};

/// The kinds in the order of their codes.
[[nodiscard]] std::span<CheckKind const> listCheckKinds() noexcept;
[[nodiscard]] CheckKind const& kindOf(CheckCode code) noexcept;

/// Something that an auditor of a rule set should look at.
struct CheckFinding {
  CheckCode code = CheckCode::NeverHolds;
  Severity severity = Severity::Note;
  std::optional<std::size_t> sheet{};  ///< index; nothing for the workbook as a whole
  std::vector<TableRange> ranges{};    ///< where to look; those of the first rule as a rule
  /// Numbers of the rules, the one in question first; none for the workbook as a whole.
  std::vector<std::size_t> rules{};
  /// Why, in words that follow the claim: `its first bound is above its second`.
  std::string reason{};
};

}  // namespace Zorv::Analysis
