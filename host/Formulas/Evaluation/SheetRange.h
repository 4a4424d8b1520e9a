#pragma once

#include <string_view>
#include <vector>

#include "Formulas/ContextProvider.h"

namespace Zorv::Formulas {

/// The tables of a range of sheets such as `First:Last` (ISO/IEC 29500-1, 18.17.2.3): from one of
/// the two sheets to the other, in the order of the document. None for another text, where one of
/// the two does not exist, and for sheets of another workbook.
[[nodiscard]] std::vector<TableContext const*> findSheetRange(ContextProvider const& provider,
                                                              std::string_view text);

}  // namespace Zorv::Formulas
