#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ConditionalFormatters/CndFrmt_CellExplanation.h"
#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "DOM/Cell.h"
#include "DOM/CellStyle.h"
#include "DOM/SharedStyle.h"
#include "Formulas/TraceExpr.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"
#include "visuals/CellVisuals.h"
#include "workbook/Rule.h"
#include "workbook/SheetRules.h"

/// Why a cell of a document looks as it does. Everything borrows the document.
namespace Zorv::Analysis {

using ConditionalFormatters::FormatOutcome;

/// A formula of a rule, evaluated for a cell.
struct FormulaAccount {
  std::string written;  ///< as the file has it, for the first cell of the rule's ranges
  Formulas::ExprTrace trace;
};

/// Property that the style of a rule sets for a cell.
struct PropertyAccount {
  std::string_view name;                    ///< such as `fillColour`; see DOM/SetProperties.h
  Workbook::Rule const* takenBy = nullptr;  ///< the rule that decides it; null: this one does
};

/// The answer of spreadsheet programs at large about a condition, where it is another one.
struct OtherAnswer {
  bool holds = false;
  std::string_view reason;  ///< in words, where "there" means those programs
  std::string formula;      ///< what they evaluate, at the cell
};

/// Outcome of a colour scale, a data bar or an icon set for a cell.
enum class VisualOutcome : std::uint8_t {
  Draws,
  NoNumber,     ///< draws nothing: the value is no number
  NoCondition,  ///< draws nothing: its own formula is not true
  NotReached,   ///< an earlier rule stops, fails, or draws the same kind; see endedBy
  Failed,       ///< a formula cannot be evaluated, or a threshold is no number
  NotOnThisCell,
};

/// Account of a rule for a cell.
struct RuleAccount {
  Workbook::Rule const* rule = nullptr;  ///< never null
  /// Nothing for a visual rule, and for a rule that is not resolved; Rule::unresolvedReason says
  /// why.
  std::optional<FormatOutcome> outcome = std::nullopt;
  /// Of a visual rule.
  std::optional<VisualOutcome> visual = std::nullopt;
  /// Of a condition that was evaluated.
  ConditionalFormatters::ConditionOperands operands = {};
  /// Of a condition that was evaluated. None for constants, such as the 5 of `cell > 5`.
  std::vector<FormulaAccount> formulas = {};
  /// Of a condition that was evaluated, and on which other programs decide otherwise.
  std::optional<OtherAnswer> elsewhere = std::nullopt;
  /// Of a rule that holds.
  std::vector<PropertyAccount> properties = {};
  /// Of a rule that was not reached: the one that stopped the evaluation, or failed; of a visual
  /// one also the one that draws the same kind.
  Workbook::Rule const* endedBy = nullptr;
  /// Of a rule that was asked for and not reached: whether its condition holds by itself. Nothing
  /// if it cannot be evaluated.
  std::optional<bool> holdsByItself = std::nullopt;
  std::exception_ptr failure = nullptr;  ///< of a rule that failed
};

/// A property of the cell as it is seen, and who sets it.
struct EffectiveProperty {
  std::string_view name;
  Workbook::Rule const* setBy = nullptr;  ///< null: the cell itself, its row or its column
};

/// A rule near a cell that no rule is on.
struct NearbyRule {
  Workbook::Rule const* rule = nullptr;  ///< never null
  TableRange range;                      ///< the nearest of the rule's ranges
  unsigned long rows = 0;                ///< between the cell and the range; 0 in the range's rows
  unsigned long columns = 0;
};

/// The account of one cell.
struct CellAccount {
  std::size_t sheet = 0;
  CellIndex cell{RowIndex(0UL), ColumnIndex(0UL)};
  /// Null where the position has no cell: its value is then the empty one.
  DOM::Cell const* content = nullptr;
  /// By the cell itself, else by its row or column, else the document's default.
  DOM::CellStyle ownStyle = {};
  /// Style from resolving the cell; null if no rule contributes a style, or one failed.
  DOM::SharedCellStylePtr conditionalStyle = nullptr;
  /// The conditional style over the cell's own one.
  DOM::CellStyle effectiveStyle = {};
  /// Those that the effective style sets, in the order of forEachSetProperty().
  std::vector<EffectiveProperty> properties = {};
  /// Colour, bar and icon of the cell.
  Visuals::CellVisuals visuals = {};
  Workbook::VisualRules visualRules = {};
  /// The rules on the cell, by priority; those not resolved, too. If one rule is asked for, that
  /// one alone, wherever it lies.
  std::vector<RuleAccount> rules = {};
  std::size_t rulesElsewhere = 0;  ///< rules of the sheet that are not on the cell
  /// If no rule is on the cell, the nearest ones; if the rule that is asked for is not, that one.
  std::vector<NearbyRule> nearest = {};
};

}  // namespace Zorv::Analysis
