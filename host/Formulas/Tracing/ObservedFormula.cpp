#include "Formulas/Tracing/ObservedFormula.h"

#include <utility>

#include "Formulas/Functions/BuiltinFunctions.h"
#include "Formulas/Parsing/ExprAnalysis.h"
#include "Formulas/Tracing/Observers.h"

namespace Zorv::Formulas {

using DOM::FormulaSyntaxTree::ExprParts;

ObservedFormula::ObservedFormula(ExprParts const& parts, TraceLimits const& limits,
                                 std::uint32_t firstId)
    : _parts(parts),
      _choice(chooseNodes(parts, limits)),
      _observed(addObservers(parts, _choice.isChosen, firstId)),
      _firstId(firstId) {}

KnownParts::KnownParts(ExprParts const& parts)
    : _isWanted(findInvariantNodes(parts, builtinFunctions())) {}

KnownParts::Part const* KnownParts::find(std::uint32_t node) const {
  auto const found = _parts.find(node);
  return found == _parts.end() ? nullptr : &found->second;
}

void KnownParts::keep(std::uint32_t node, Value const& value, std::vector<ToldNode> told) {
  if (!value.isSingle() && !value.isReference()) {
    return;
  }
  Part& part = _parts[node];
  part.value = value;
  part.told = std::move(told);
  if (value.isText()) {
    part.text = value.asText();
    part.value = Value::text(part.text);
  }
}

}  // namespace Zorv::Formulas
