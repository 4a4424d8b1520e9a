#pragma once

#include "FormulaModel/FormulaValue.h"

namespace Zorv::DOM::FormulaSyntaxTree {

/// A parsed formula. Placeholder until the engine's node array stands.
class Expr {
public:
  Expr() = default;
  explicit Expr(FormulaModel::FormulaValue constant) : _constant(std::move(constant)) {}

private:
  FormulaModel::FormulaValue _constant;
};

}  // namespace Zorv::DOM::FormulaSyntaxTree
