#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/Values/FunctionTable.h"

namespace Zorv::Formulas {

/// A subtree that the builder has made.
struct Subtree {
  std::uint32_t node = 0;
  std::uint32_t depth = 0;  ///< how many levels its evaluation nests
};

/// Puts a formula's tree together from the leaves to the root.
///
/// Every subtree that is made must become an argument of a later one, but for the root.
class ExprBuilder {
public:
  Subtree addMissing();
  Subtree addNumber(double number);
  Subtree addText(std::string text);
  Subtree addBoolean(bool value);
  Subtree addError(FormulaModel::FormulaErrorCode code);
  /// `values` are the array's values row by row.
  Subtree addArrayConstant(std::uint32_t rowCount, std::span<Subtree const> values);
  Subtree addReference(DOM::FormulaSyntaxTree::CellReference const& reference);
  Subtree addStructuredReference(DOM::FormulaSyntaxTree::StructuredReference const& reference);
  Subtree addName(DOM::FormulaSyntaxTree::NameReference const& name);
  Subtree addLocalName(std::uint32_t slot);
  Subtree addUnary(DOM::FormulaSyntaxTree::Operator op, Subtree argument);
  Subtree addBinary(DOM::FormulaSyntaxTree::Operator op, Subtree left, Subtree right);
  Subtree addFunction(std::uint16_t function, std::string name, std::span<Subtree const> arguments);
  /// A call of what the first argument gives.
  Subtree addCall(std::span<Subtree const> arguments);
  Subtree addUnknownFunction(std::string name, std::span<Subtree const> arguments);

  /// Adds a text to the pool; returns its index.
  std::uint32_t storeText(std::string text);
  /// The slot of a new local name.
  std::uint32_t makeLocalSlot(std::string name);

  [[nodiscard]] DOM::FormulaSyntaxTree::Node const& getNode(Subtree tree) const noexcept {
    return _parts.nodes[tree.node];
  }
  /// The formula; the last subtree made is its root. Ends the use of the builder.
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr finish(FunctionTable const& functions);

private:
  Subtree add(DOM::FormulaSyntaxTree::Node node, std::span<Subtree const> arguments);
  [[nodiscard]] bool isChained(Subtree tree) const noexcept;

  DOM::FormulaSyntaxTree::ExprParts _parts;
};

}  // namespace Zorv::Formulas
