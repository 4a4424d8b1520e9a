#pragma once

#include <vector>

#include "FormulaModel/DocTableIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// Collects what a formula turned out to depend on while it was evaluated: ranges that its text
/// does not show, such as those of OFFSET and INDIRECT.
class RuntimeDependenciesResolver {
public:
  /// Cells that the formula read.
  struct Dependency {
    FormulaModel::DocTableIndex table;  ///< the table of the cells
    TableRange range;                   ///< the cells
  };

  /// Adds cells. The engine calls it.
  void add(FormulaModel::DocTableIndex table, TableRange const& range) {
    _dependencies.push_back({table, range});
  }
  /// Everything that was added, in order.
  [[nodiscard]] std::vector<Dependency> const& getDependencies() const noexcept {
    return _dependencies;
  }

private:
  std::vector<Dependency> _dependencies;
};

}  // namespace Zorv::Formulas
