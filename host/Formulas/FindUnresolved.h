#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "FormulaModel/DocTableIndex.h"
#include "Formulas/ContextProvider.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Kind of thing that a formula refers to and the document does not have.
enum class UnresolvedKind : std::uint8_t {
  Name,              ///< a defined name
  Sheet,             ///< a sheet; `First:Last` for a range of sheets; `#REF!` for a deleted one
  ExternalWorkbook,  ///< another workbook, such as `[1]`
  ListObject,        ///< a list object, or a column of one, such as `Sales[Amount]`
  Function,          ///< a function, by its name in upper case
};

/// Something that a formula refers to and the document does not have.
struct Unresolved {
  UnresolvedKind kind = UnresolvedKind::Name;  ///< the kind of thing
  std::string text;                            ///< its name, as UnresolvedKind says

  friend bool operator==(Unresolved const&, Unresolved const&) noexcept = default;
};

/// Things that an expression, at a table of a document, refers to and the document does not have:
/// in the expression itself and in the defined names that it uses. Each once, in the order of first
/// use.
///
/// A formula that evaluates to `#NAME?` or `#REF!` for one of these looks like one that has an
/// error in its cells. Evaluates nothing; references that are made at run time, as INDIRECT makes
/// them, are not looked at. Threads: as ContextProvider.
[[nodiscard]] ZORV_HOST_EXPORT std::vector<Unresolved> findUnresolved(
    DOM::FormulaSyntaxTree::Expr const& expr, ContextProvider const& contextProvider,
    FormulaModel::DocTableIndex table);

}  // namespace Zorv::Formulas
