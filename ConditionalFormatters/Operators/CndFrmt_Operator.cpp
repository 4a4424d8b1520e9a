#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"

namespace Zorv::ConditionalFormatters {

// Out of line, so that the virtual table and the type information have one home.
Operator::~Operator() = default;

}  // namespace Zorv::ConditionalFormatters
