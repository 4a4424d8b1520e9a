#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "DOM/StyleProps.h"

namespace Zorv::Workbook {

/// The colours of a theme, in the order of their numbers in colour elements.
using ThemeColours = std::array<DOM::Colour, 12>;

/// Those of workbooks that have no theme.
[[nodiscard]] ThemeColours const& getDefaultThemeColours() noexcept;

/// The colours of a theme part's tree (ISO/IEC 29500-1, 20.1.6.2); those that it lacks are the
/// default ones.
[[nodiscard]] ThemeColours readThemeColours(pugi::xml_node theme);

/// What an automatic colour stands for.
enum class AutomaticColour : bool { Ink, Paper };

/// Finds out the colours that elements name by theme, index, or components.
class Palette {
public:
  explicit Palette(ThemeColours const& theme);

  /// Replaces the first of the indexed colours (ISO/IEC 29500-1, 18.8.27).
  void setIndexed(std::vector<DOM::Colour> const& colours);

  /// The colour of a colour element (ISO/IEC 29500-1, 18.8.3 and 18.8.19); nothing for a missing
  /// element and for one that names no colour.
  [[nodiscard]] std::optional<DOM::Colour> read(pugi::xml_node element,
                                                AutomaticColour automatic) const;

private:
  ThemeColours _theme;
  std::vector<DOM::Colour> _indexed;
};

/// `AARRGGBB` or `RRGGBB`; nothing for any other text. The alpha is not looked at: programs show
/// cells' colours opaque whatever it says.
[[nodiscard]] std::optional<DOM::Colour> parseColour(std::string_view text) noexcept;

}  // namespace Zorv::Workbook
