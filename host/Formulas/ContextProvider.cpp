#include "Formulas/ContextProvider.h"

namespace Zorv::Formulas {

ContextProvider::~ContextProvider() = default;

TableContext const* ContextProvider::findTableContextAt(
    FormulaModel::DocTableIndex /*table*/) const {
  return nullptr;
}

}  // namespace Zorv::Formulas
