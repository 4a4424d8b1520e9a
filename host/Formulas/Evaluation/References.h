#pragma once

#include <cstdint>
#include <span>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Values/Value.h"

/// From references as they are written to areas.
namespace Zorv::Formulas {

/// The area of a reference whose relative corners are moved by the frame's offset, or the areas
/// where it refers to a range of sheets; `#REF!` where a sheet does not exist.
[[nodiscard]] Value resolveReference(Evaluator& evaluator, Frame const& frame,
                                     DOM::FormulaSyntaxTree::CellReference const& reference);

/// The value of a reference to a single cell of the formula's own table.
[[nodiscard]] Value readOwnCell(Evaluator const& evaluator, Frame const& frame,
                                DOM::FormulaSyntaxTree::CellReference const& reference);

/// The area of a structured reference; `#REF!` where there is no such list, column or part.
[[nodiscard]] Value resolveStructuredReference(
    Evaluator const& evaluator, Frame const& frame,
    DOM::FormulaSyntaxTree::StructuredReference const& reference);

/// The table of a sheet that a text of the frame names, or the formula's own for noIndex; null
/// where there is none.
[[nodiscard]] TableContext const* resolveSheet(Evaluator const& evaluator, Frame const& frame,
                                               std::uint32_t sheetText);

/// The areas that a reference of either kind is made of; none for other values. Borrows them from
/// the value.
[[nodiscard]] std::span<Area const> areasOf(Value const& value) noexcept;

/// The range, the intersection or the union of two references.
[[nodiscard]] Value combineReferences(Arena& arena, DOM::FormulaSyntaxTree::Operator op,
                                      Value const& left, Value const& right);

}  // namespace Zorv::Formulas
