#include "Formulas/TableContext.h"

namespace Zorv::Formulas {

TableContext::~TableContext() = default;

}  // namespace Zorv::Formulas
