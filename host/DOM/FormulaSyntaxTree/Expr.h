#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/Export.h"

namespace Zorv::DOM::FormulaSyntaxTree {

/// Properties of a formula that are known without evaluation.
struct ExprTraits {
  /// The formula has a reference relative to the evaluated cell.
  bool hasRelativeReferences = false;
  /// The formula calls a function whose result may differ between evaluations: NOW, RAND, and those
  /// that find their cells only at run time, such as OFFSET and INDIRECT.
  bool callsVolatileFunctions = false;
  /// The result may depend on the evaluated cell: through relative references, the cell's position
  /// (`ROW()`, `Sales[@Amount]`, implicit intersection), or a defined name that uses any of these.
  bool dependsOnCell = false;
  /// The formula uses a defined name, which may call volatile functions.
  bool usesNames = false;

  friend bool operator==(ExprTraits const&, ExprTraits const&) noexcept = default;
};

/// Content of an Expr: the nodes of the tree and the pools that they index.
struct ExprParts {
  std::vector<Node> nodes;                ///< the last one is the root
  std::vector<std::string> texts;         ///< texts, names of sheets, and defined names
  std::vector<CellReference> references;  ///< references to cells
  std::vector<NameReference> names;       ///< uses of defined names
  std::vector<StructuredReference> structuredReferences;  ///< references into list objects
  std::vector<std::string> localNames;  ///< of the formula's LET and LAMBDA functions, by slot
  ExprTraits traits;                    ///< properties of the whole formula

  friend bool operator==(ExprParts const&, ExprParts const&) noexcept = default;
};

/// Parsed formula: one flat array of nodes.
///
/// A value: copies are independent, moving is cheap and does not throw. Threads: an unchanged Expr
/// may be evaluated concurrently.
class ZORV_HOST_EXPORT Expr {
public:
  /// The empty formula; evaluates to the empty value.
  Expr() = default;

  /// Requires that the nodes form a tree with the last one as its root, and that every index is
  /// valid in its pool. Formulas::parseExpr() parses a text.
  explicit Expr(ExprParts parts) noexcept;

  /// The formula of one constant.
  [[nodiscard]] static Expr constant(FormulaValue const& value);

  /// The nodes, with their pools.
  [[nodiscard]] ExprParts const& getParts() const noexcept { return _parts; }
  /// Properties of the whole formula.
  [[nodiscard]] ExprTraits const& getTraits() const noexcept { return _parts.traits; }

  /// True for formulas of equal text, ignoring letter case and spaces.
  friend bool operator==(Expr const&, Expr const&) noexcept = default;

private:
  ExprParts _parts;
};

}  // namespace Zorv::DOM::FormulaSyntaxTree
