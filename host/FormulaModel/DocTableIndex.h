#pragma once

#include "Utils/TaggedValue.h"

namespace Zorv::FormulaModel {

struct DocTableTag {};

/// A table's place among the tables of its document, counted from 0.
using DocTableIndex = TaggedValue<unsigned long, DocTableTag>;

}  // namespace Zorv::FormulaModel
