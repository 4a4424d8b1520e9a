#pragma once

#include "Utils/TaggedValue.h"

namespace Zorv::FormulaModel {

struct DocTableTag {};

/// Index of a table in its document, from 0.
using DocTableIndex = TaggedValue<unsigned long, DocTableTag>;

}  // namespace Zorv::FormulaModel
