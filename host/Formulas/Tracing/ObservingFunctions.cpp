#include "Formulas/Tracing/ObservingFunctions.h"

#include <array>
#include <vector>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Evaluation/ValueObserver.h"
#include "Formulas/Functions/BuiltinFunctions.h"

namespace Zorv::Formulas {

namespace {

Value observe(Call& call) {
  auto const id = static_cast<std::uint32_t>(call.frame().nodeAt(call.node()).number);
  ValueObserver& observer = *call.evaluator().observer();
  if (Value const* const known = observer.findKnown(id)) {
    return *known;
  }
  Value const value = call.evaluate(0);
  observer.observe(id, value);
  return value;
}

/// The name comes after all others in the table's order, so that they keep their indices.
std::span<FunctionEntry const> observingFamily() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"~", "value:x", observe, "The value.", {.returnsReference = true}},
  };
  return entries;
}

std::vector<FunctionTable::Family> listFamilies() {
  auto const builtin = builtinFamilies();
  std::vector<FunctionTable::Family> families(builtin.begin(), builtin.end());
  families.push_back(observingFamily);
  return families;
}

}  // namespace

FunctionTable const& observingFunctions() {
  static FunctionTable const table(listFamilies());
  return table;
}

std::uint16_t getObservingFunction() {
  return static_cast<std::uint16_t>(observingFunctions().entries().size() - 1);
}

}  // namespace Zorv::Formulas
