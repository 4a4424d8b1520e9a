#pragma once

#include <vector>

#include "FormulaModel/DocTableIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// Collects what a formula turned out to depend on while it was evaluated: ranges that its text
/// does not show, such as those of OFFSET and INDIRECT.
class RuntimeDependenciesResolver {
public:
  struct Dependency {
    FormulaModel::DocTableIndex table;
    TableRange range;
  };

  void add(FormulaModel::DocTableIndex table, TableRange const& range) {
    _dependencies.push_back({table, range});
  }
  [[nodiscard]] std::vector<Dependency> const& getDependencies() const noexcept {
    return _dependencies;
  }

private:
  std::vector<Dependency> _dependencies;
};

}  // namespace Zorv::Formulas
