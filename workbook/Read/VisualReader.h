#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "visuals/VisualFormat.h"
#include "workbook/Read/Colours.h"

namespace Zorv::Workbook {

/// True for the types of rules that draw on cells and contribute no style: colour scales, data bars
/// and icon sets.
[[nodiscard]] bool isVisual(std::string_view type) noexcept;

/// Reads what a `cfRule` element of a visual type draws (ISO/IEC 29500-1, 18.3.1.10, and its later
/// form). Throws UnresolvedRule.
///
/// `first` is what the rule's element of the main list draws, of the same type, where this is its
/// part in the extension list; else null. The part decides. Colours that it lacks are those of the
/// first, and a value is hidden if one of them hides it.
///
/// `faults` gets what is wrong with attributes that count as something else than they say, as the
/// ends of sentences about the rule.
[[nodiscard]] Visuals::VisualKind readVisual(pugi::xml_node rule, Palette& palette,
                                             Visuals::VisualKind const* first,
                                             std::vector<std::string>& faults);

}  // namespace Zorv::Workbook
