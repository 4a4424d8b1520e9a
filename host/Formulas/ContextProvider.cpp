#include "Formulas/ContextProvider.h"

namespace Zorv::Formulas {

ContextProvider::~ContextProvider() = default;

}  // namespace Zorv::Formulas
