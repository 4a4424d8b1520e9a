#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/TraceExpr.h"
#include "Formulas/Tracing/NodeChoice.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// A formula with observers around the sub-expressions that traces tell. Borrows the formula.
class ObservedFormula {
public:
  /// The observers have identities from `firstId` on: that of a sub-expression is its node's index
  /// behind it.
  ObservedFormula(DOM::FormulaSyntaxTree::ExprParts const& parts, TraceLimits const& limits,
                  std::uint32_t firstId);

  /// The formula as it is written.
  [[nodiscard]] DOM::FormulaSyntaxTree::ExprParts const& getParts() const noexcept {
    return _parts;
  }
  [[nodiscard]] NodeChoice const& getChoice() const noexcept { return _choice; }
  /// The formula with the observers; it has the value of the formula.
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const& getObserved() const noexcept {
    return _observed;
  }
  [[nodiscard]] std::uint32_t getFirstId() const noexcept { return _firstId; }
  [[nodiscard]] std::uint32_t getEndId() const noexcept {
    return _firstId + static_cast<std::uint32_t>(_parts.nodes.size());
  }

private:
  DOM::FormulaSyntaxTree::ExprParts const& _parts;
  NodeChoice _choice;
  DOM::FormulaSyntaxTree::Expr _observed;
  std::uint32_t _firstId;
};

/// A sub-expression that was told, with the node that it is.
struct ToldNode {
  std::uint32_t node;
  TraceStep step;
};

/// The values of a formula's sub-expressions that are the same at every cell, kept by the first
/// trace that needs them, and all that it told about them.
///
/// Threads: one at a time.
class KnownParts {
public:
  /// A sub-expression that was evaluated.
  struct Part {
    Value value;  ///< a single value or a reference
    std::vector<ToldNode> told;
    std::string text;  ///< of a value that is a text
  };

  explicit KnownParts(DOM::FormulaSyntaxTree::ExprParts const& parts);

  /// True for a sub-expression that is worth to be kept; see findInvariantCalls().
  [[nodiscard]] bool isWanted(std::uint32_t node) const noexcept { return _isWanted[node]; }
  /// Part kept for a sub-expression; null if nothing was. Valid as long as this object.
  [[nodiscard]] Part const* find(std::uint32_t node) const;
  /// Keeps a sub-expression that is wanted; an array or a function is not kept.
  void keep(std::uint32_t node, Value const& value, std::vector<ToldNode> told);

private:
  std::vector<bool> _isWanted;           ///< by node
  std::map<std::uint32_t, Part> _parts;  ///< by node
};

}  // namespace Zorv::Formulas
