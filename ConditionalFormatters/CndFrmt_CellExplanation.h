#pragma once

#include <cstdint>
#include <exception>
#include <string_view>
#include <vector>

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "DOM/SharedStyle.h"
#include "FormulaModel/FormulaValue.h"

// The account of how one cell of a table gets its style; see TableResolver::explain().
namespace Zorv::ConditionalFormatters {

/// Outcome of a format when a cell was resolved.
enum class FormatOutcome : std::uint8_t {
  NotOnThisCell,  ///< none of the format's ranges holds the cell
  DoesNotHold,    ///< evaluated: the condition is false
  Holds,          ///< evaluated: the condition is true
  Failed,         ///< the evaluation threw: the cell cannot be resolved
  NotReached,     ///< on the cell, but an earlier format stopped the evaluation or failed
};

/// Property that the style of a format sets for a cell.
struct PropertyShare {
  std::string_view name;  ///< of its member, such as `fillColour`; see DOM/SetProperties.h
  /// The earlier format that decides the property; none if this format does.
  boost::optional<FormatIndex> takenBy;
};

/// Account of one format.
struct FormatExplanation {
  FormatOutcome outcome = FormatOutcome::NotOnThisCell;  ///< the format's outcome
  /// Operands that an evaluated condition tests the value against. std::monostate for a condition
  /// without operands, and where the operands themselves could not be evaluated.
  ConditionOperands operands;
  /// Of a format that holds, in the order of forEachSetProperty(). Empty if the cell failed.
  std::vector<PropertyShare> properties;
  /// Of a format that was not reached: the one that stopped the evaluation, or failed.
  boost::optional<FormatIndex> endedBy;
  /// Of a format that failed: what resolve() throws.
  std::exception_ptr failure;
};

/// The account of one cell.
struct CellExplanation {
  /// The cell's value as it was tested. None if no format was evaluated, and if the provider could
  /// not give it.
  boost::optional<FormulaValue> value;
  /// One entry for each format of the table, by FormatIndex: in order of priority.
  std::vector<FormatExplanation> formats;
  /// Result of TableResolver::resolve(); null for a cell that failed.
  DOM::SharedCellStylePtr style;
};

}  // namespace Zorv::ConditionalFormatters
