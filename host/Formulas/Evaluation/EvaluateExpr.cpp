#include "Formulas/Evaluation/EvaluateExpr.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Formulas/Values/Arrays.h"
#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

using FormulaModel::FormulaArray;

/// How many values the result of an array formula may have, which takes some 200 MiB.
constexpr std::uint64_t mostResultElements = std::uint64_t{1} << 22U;

std::shared_ptr<Reference const> makeReference(Area const& area) {
  return std::make_shared<Reference const>(
      Reference{area.table->getDocTableIndex(), area.toTableRange()});
}

CalcResult makeReferences(AreaList const& areas) {
  std::vector<std::shared_ptr<Reference const>> references;
  references.reserve(areas.count);
  for (Area const& area : areas) {
    references.push_back(makeReference(area));
  }
  return references;
}

CalcResult makeArray(StepMeter& steps, Array const& array) {
  // What is repeated below the stored rows is written out.
  std::uint64_t const count = std::uint64_t{array.rows} * array.columns;
  checkElementCount(count, mostResultElements);
  steps.spend(count);
  std::vector<FormulaValue> values;
  values.reserve(count);
  for (std::uint32_t row = 0; row < array.rows; ++row) {
    for (std::uint32_t column = 0; column < array.columns; ++column) {
      values.push_back(toFormulaValue(array.at(row, column)));
    }
  }
  return std::make_shared<FormulaArray const>(array.rows, array.columns, std::move(values));
}

CalcResult toResult(Evaluator& evaluator, Value const& value) {
  if (value.isSingle()) {
    return toFormulaValue(value);
  }
  if (value.isReferences()) {
    return makeReferences(value.asAreas());
  }
  if (value.isReference() && !value.asArea().isSingleCell()) {
    return makeReference(value.asArea());
  }
  Value const operand = evaluator.toOperand(value, Mode::Single);
  return toFormulaValue(operand.isArray() ? operand.asArray().at(0, 0) : operand);
}

CalcResult toArrayResult(Evaluator& evaluator, Value const& value) {
  Value const operand = evaluator.toOperand(value, Mode::ByElement);
  return operand.isArray() ? makeArray(evaluator.steps(), operand.asArray())
                           : CalcResult(toFormulaValue(operand));
}

}  // namespace

CalcResult evaluateExpr(DOM::FormulaSyntaxTree::Expr const& expr, Offset offset,
                        Context const& context, ContextProvider const& contextProvider,
                        RuntimeDependenciesResolver& resolver, Workspace& workspace,
                        FunctionTable const& functions) {
  bool const isArrayFormula = context.getArrayFormulaIndices().has_value();
  Evaluator evaluator(context, contextProvider, resolver, workspace, functions);
  Mode const mode = isArrayFormula ? Mode::ByElement : Mode::Single;
  Value const value = evaluator.evaluate(expr.getParts(), offset, mode);
  return isArrayFormula ? toArrayResult(evaluator, value) : toResult(evaluator, value);
}

}  // namespace Zorv::Formulas
