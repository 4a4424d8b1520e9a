#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/Export.h"

namespace Zorv::DOM::FormulaSyntaxTree {

/// What is known of a formula without evaluating it.
struct ExprTraits {
  /// It holds a reference that moves with the cell for which the formula is evaluated.
  bool hasRelativeReferences = false;
  /// It calls a function whose result may differ from one evaluation to the next: NOW, RAND, and
  /// those that find their cells only when they run, such as OFFSET and INDIRECT.
  bool callsVolatileFunctions = false;
  /// Its value may depend on the cell for which it is evaluated: it has relative references, or it
  /// asks where it stands (`ROW()`, `Sales[@Amount]`, a range of which one cell is taken by
  /// position), or it uses a defined name, which may do any of these.
  bool dependsOnCell = false;
  /// It uses a defined name, which may also call volatile functions.
  bool usesNames = false;

  friend bool operator==(ExprTraits const&, ExprTraits const&) noexcept = default;
};

/// The content of an Expr: the tree's nodes and the pools that they index.
struct ExprParts {
  std::vector<Node> nodes;  ///< the last one is the root
  std::vector<std::string> texts;
  std::vector<CellReference> references;
  std::vector<NameReference> names;
  std::vector<StructuredReference> structuredReferences;
  std::uint32_t localNameCount = 0;  ///< slots that the formula's LET functions fill
  ExprTraits traits;

  friend bool operator==(ExprParts const&, ExprParts const&) noexcept = default;
};

/// A parsed formula: one flat array of nodes.
///
/// A value: copies are independent, moving is cheap and does not throw. Threads: an Expr that
/// nobody changes may be evaluated from several threads at once.
class ZORV_HOST_EXPORT Expr {
public:
  /// The formula without text: it evaluates to the empty value.
  Expr() = default;

  /// Requires that the nodes form a tree with the last one as its root, and that every index is one
  /// of its pool. To parse a text, see Formulas::parseExpr().
  explicit Expr(ExprParts parts) noexcept;

  /// The formula that is just a value.
  [[nodiscard]] static Expr constant(FormulaValue const& value);

  [[nodiscard]] ExprParts const& getParts() const noexcept { return _parts; }
  [[nodiscard]] ExprTraits const& getTraits() const noexcept { return _parts.traits; }

  /// Whether two formulas are written alike, letter case and spaces aside.
  friend bool operator==(Expr const&, Expr const&) noexcept = default;

private:
  ExprParts _parts;
};

}  // namespace Zorv::DOM::FormulaSyntaxTree
