#pragma once

#include <string_view>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::Workbook {

/// Why spreadsheet programs at large decide otherwise than the library about a cell of this value:
/// one line in plain words, such as `text is compared without regard to letter case there`, where
/// "there" means those programs.
///
/// `operands` are those of the cell, see TableResolver::findOperands(). Call it only for a cell
/// about which the condition and its widespread form (see findWidespread()) differ: it looks for
/// the likeliest reason and does not compare the answers. Valid for ever.
[[nodiscard]] std::string_view explainDifference(
    DOM::ConditionalFormatOperator const& condition, FormulaValue const& value,
    ConditionalFormatters::ConditionOperands const& operands);

}  // namespace Zorv::Workbook
