#include "FormulaModel/FormulaException.h"

namespace Zorv::FormulaModel {

FormulaException::FormulaException(std::string const& message) : BaseRuntimeError(message) {}
FormulaException::~FormulaException() = default;

}  // namespace Zorv::FormulaModel
