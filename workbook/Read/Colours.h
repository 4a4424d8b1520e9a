#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
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

  /// The indexed colours after the first eight, which repeat them: those that formats name.
  [[nodiscard]] std::vector<DOM::Colour> listNamed() const {
    return {_indexed.begin() + firstNamed, _indexed.end()};
  }

  /// A colour of the theme by its index, lightened or darkened by a tint.
  [[nodiscard]] DOM::Colour mixTheme(std::size_t index, double tint) const;

  /// The colour of a colour element (ISO/IEC 29500-1, 18.8.3 and 18.8.19); nothing for a missing
  /// element, and for one without a colour. Counts elements whose attributes are no colour; a tint
  /// that is no number is left out.
  [[nodiscard]] std::optional<DOM::Colour> read(pugi::xml_node element, AutomaticColour automatic);

  /// Number of elements read whose attributes are no colour.
  [[nodiscard]] std::uint64_t getUnknownCount() const noexcept { return _unknownCount; }
  /// The first of these attributes, as `rgb="red"`.
  [[nodiscard]] std::string const& getFirstUnknown() const noexcept { return _firstUnknown; }

private:
  static constexpr std::ptrdiff_t firstNamed = 8;

  void noteUnknown(pugi::xml_attribute attribute);
  [[nodiscard]] std::optional<DOM::Colour> readPlain(pugi::xml_node element,
                                                     AutomaticColour automatic);
  [[nodiscard]] std::optional<DOM::Colour> findTheme(pugi::xml_attribute index);
  [[nodiscard]] std::optional<DOM::Colour> findIndexed(pugi::xml_attribute index,
                                                       AutomaticColour automatic);

  ThemeColours _theme;
  std::vector<DOM::Colour> _indexed;
  std::uint64_t _unknownCount = 0;
  std::string _firstUnknown;
};

/// Parses `AARRGGBB` or `RRGGBB`; nothing for any other text. The alpha is ignored: programs show
/// cells' colours opaque.
[[nodiscard]] std::optional<DOM::Colour> parseColour(std::string_view text) noexcept;

}  // namespace Zorv::Workbook
