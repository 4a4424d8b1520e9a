#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "DOM/StyleProps.h"

namespace Zorv::Workbook {

/// The colours of a theme, by their index in colour elements.
using ThemeColours = std::array<DOM::Colour, 12>;

/// The colours of workbooks without a theme.
[[nodiscard]] ThemeColours const& getDefaultThemeColours() noexcept;

/// The colours of a theme part's tree (ISO/IEC 29500-1, 20.1.6.2); missing ones are the default
/// ones.
[[nodiscard]] ThemeColours readThemeColours(pugi::xml_node theme);

/// Meaning of an automatic colour.
enum class AutomaticColour : bool { Ink, Paper };

/// Palette that resolves colour elements, which name a colour by theme, index, or components.
class Palette {
public:
  explicit Palette(ThemeColours const& theme);

  /// Replaces the first of the indexed colours (ISO/IEC 29500-1, 18.8.27).
  void setIndexed(std::vector<DOM::Colour> const& colours);

  /// The colour of a colour element (ISO/IEC 29500-1, 18.8.3 and 18.8.19); nothing for a missing
  /// element, and for one without a colour.
  [[nodiscard]] std::optional<DOM::Colour> read(pugi::xml_node element,
                                                AutomaticColour automatic) const;

private:
  ThemeColours _theme;
  std::vector<DOM::Colour> _indexed;
};

/// Parses `AARRGGBB` or `RRGGBB`; nothing for any other text. The alpha is ignored: programs show
/// cells' colours opaque.
[[nodiscard]] std::optional<DOM::Colour> parseColour(std::string_view text) noexcept;

}  // namespace Zorv::Workbook
