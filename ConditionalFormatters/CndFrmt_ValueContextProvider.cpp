#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"

namespace Zorv::ConditionalFormatters {

// Out of line, so that the virtual table and the type information have one home.
ValueContextProvider::~ValueContextProvider() = default;

}  // namespace Zorv::ConditionalFormatters
