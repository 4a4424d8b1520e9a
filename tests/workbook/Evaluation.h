#pragma once

#include <cstddef>
#include <string>

#include "workbook/Document.h"

namespace Zorv::TestSupport {

/// True if the condition of a rule holds for a cell by itself; false for a rule that is not
/// resolved.
[[nodiscard]] bool holds(Workbook::Document const& document, std::size_t rule,
                         std::string const& cell);

/// The value of a cell as text with its kind: `number 5`, `text abc`, `boolean TRUE`,
/// `error #N/A`, `empty`; `none` where there is no cell.
[[nodiscard]] std::string describeCell(Workbook::Document const& document, std::string const& cell,
                                       std::size_t sheet = 0);

/// The named style that a rule contributes; stops the test where it has none.
[[nodiscard]] DOM::NamedTableStyle const& styleOf(Workbook::Document const& document,
                                                  std::size_t rule);

}  // namespace Zorv::TestSupport
