#include "ConditionalFormatters/CndFrmt_CellWorker.h"

namespace Zorv::ConditionalFormatters {

BlockFindings::~BlockFindings() = default;

CellWorker::~CellWorker() = default;

}  // namespace Zorv::ConditionalFormatters
