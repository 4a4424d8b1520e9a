#pragma once

#include <optional>

#include "DOM/StyleProps.h"
#include "workbook/Document.h"

namespace Zorv::Render {

/// The colour that number formats name by a number from 1 on, such as `[Color10]`; nothing for 0
/// and for a number that the workbook's palette does not have.
[[nodiscard]] inline std::optional<DOM::Colour> findFormatColour(Workbook::Document const& document,
                                                                 unsigned number) noexcept {
  auto const& palette = document.getPalette();
  return 0 < number && number <= palette.size() ? std::optional(palette[number - 1]) : std::nullopt;
}

}  // namespace Zorv::Render
