#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "DOM/CellStyle.h"
#include "DOM/StyleProps.h"

/// Styles as text, in UTF-8.
namespace Zorv::Words {

/// `#RRGGBB`, or `#RRGGBBAA` where the colour is not opaque.
[[nodiscard]] std::string toText(DOM::Colour const& colour);

// Names of the values in ISO/IEC 29500-1, 18.18 ("centerContinuous").
[[nodiscard]] std::string_view toText(DOM::Underline value) noexcept;
[[nodiscard]] std::string_view toText(DOM::VerticalRun value) noexcept;
[[nodiscard]] std::string_view toText(DOM::HorizontalAlignment value) noexcept;
[[nodiscard]] std::string_view toText(DOM::VerticalAlignment value) noexcept;
[[nodiscard]] std::string_view toText(DOM::FillPattern value) noexcept;
[[nodiscard]] std::string_view toText(DOM::LineStyle value) noexcept;

/// The line's style and, if it has one, its colour.
[[nodiscard]] std::string toText(DOM::BorderLine const& line);

/// The colours of a gradient, from its beginning to its end.
[[nodiscard]] std::string toText(DOM::GradientFill const& gradient);

/// A property, or properties that belong together, in words.
struct StylePhrase {
  std::string_view property;          ///< the name of the first member that the phrase is about
  std::string text;                   ///< `fill #FFC7CE`, `bold`
  std::optional<DOM::Colour> colour;  ///< the colour that the phrase names
};

/// Everything that a style sets and that shows. Four equal sides are one border if `joinsBorder`.
[[nodiscard]] std::vector<StylePhrase> listPhrases(DOM::CellStyle const& style,
                                                   bool joinsBorder = true);

/// One line for people: `fill #FFC7CE, text #9C0006, bold`; "nothing" for a style that sets
/// nothing.
[[nodiscard]] std::string describe(DOM::CellStyle const& style);

/// The colour that a style fills cells with: of a solid fill, of the lines of a pattern where it
/// has no other, or the first of a gradient.
[[nodiscard]] std::optional<DOM::Colour> findFillColour(DOM::CellStyle const& style);

}  // namespace Zorv::Words
