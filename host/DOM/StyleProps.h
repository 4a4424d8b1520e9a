#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "Utils/Export.h"

namespace Zorv::DOM {

/// Colour in sRGB; alpha 255 is opaque.
struct Colour {
  std::uint8_t red = 0;      ///< from 0 to 255
  std::uint8_t green = 0;    ///< from 0 to 255
  std::uint8_t blue = 0;     ///< from 0 to 255
  std::uint8_t alpha = 255;  ///< 0 is transparent, 255 opaque

  friend bool operator==(Colour const&, Colour const&) = default;
};

// The enumerations below follow ISO/IEC 29500-1, 18.18 (simple types).

/// Line under a text.
enum class Underline : std::uint8_t { None, Single, Double, SingleAccounting, DoubleAccounting };
/// Place of a text relative to its line.
enum class VerticalRun : std::uint8_t { Baseline, Superscript, Subscript };
/// Place of a text between left and right.
enum class HorizontalAlignment : std::uint8_t {
  General,
  Left,
  Center,
  Right,
  Fill,
  Justify,
  CenterContinuous,
  Distributed,
};
/// Place of a text between top and bottom.
enum class VerticalAlignment : std::uint8_t { Top, Center, Bottom, Justify, Distributed };
/// Pattern of a fill.
enum class FillPattern : std::uint8_t {
  None,
  Solid,
  MediumGray,
  DarkGray,
  LightGray,
  DarkHorizontal,
  DarkVertical,
  DarkDown,
  DarkUp,
  DarkGrid,
  DarkTrellis,
  LightHorizontal,
  LightVertical,
  LightDown,
  LightUp,
  LightGrid,
  LightTrellis,
  Gray125,
  Gray0625,
  Gradient,  ///< no pattern: the fill is `CellProps::fillGradient`
};
/// Look of a border line.
enum class LineStyle : std::uint8_t {
  None,
  Thin,
  Medium,
  Dashed,
  Dotted,
  Thick,
  Double,
  Hair,
  MediumDashed,
  DashDot,
  MediumDashDot,
  DashDotDot,
  MediumDashDotDot,
  SlantDashDot,
};

/// Border line of a cell. A line without a colour has the text's automatic colour.
struct BorderLine {
  LineStyle style = LineStyle::None;            ///< the look of the line
  std::optional<Colour> colour = std::nullopt;  ///< nothing: automatic

  friend bool operator==(BorderLine const&, BorderLine const&) = default;
};

/// Shape of a gradient.
enum class GradientType : std::uint8_t {
  Linear,  ///< along a line
  Path,    ///< from the edges of an inner rectangle outwards
};

/// Colour at one place of a gradient.
struct GradientStop {
  double position = 0;  ///< from 0, where the gradient begins, to 1
  Colour colour;        ///< the colour there

  friend bool operator==(GradientStop const&, GradientStop const&) = default;
};

/// Fill whose colour changes over the cell (ISO/IEC 29500-1, 18.8.24).
struct GradientFill {
  GradientType type = GradientType::Linear;  ///< the shape of the gradient
  double degree =
      0;  ///< of a linear gradient: the angle of its line, clockwise; 0 is left to right
  /// Of a path: the edges of the inner rectangle, as parts of the cell's width or height.
  double left = 0;
  double right = 0;                 ///< see `left`
  double top = 0;                   ///< see `left`
  double bottom = 0;                ///< see `left`
  std::vector<GradientStop> stops;  ///< by position

  friend bool operator==(GradientFill const&, GradientFill const&) = default;
};

/// Member of a property group: its printed name and its pointer to member.
template <class Props, class Value>
struct PropMember {
  char const* name;                     ///< as it is printed, such as `fillColour`
  std::optional<Value> Props::*member;  ///< where it is
};
/// Deduces the types from the member.
template <class Props, class Value>
PropMember(char const*, std::optional<Value> Props::*) -> PropMember<Props, Value>;

/// Character properties. A member without a value is not set.
struct RunProps {
  std::optional<std::string> fontName = std::nullopt;
  std::optional<double> fontSize = std::nullopt;  ///< in points
  std::optional<Colour> colour = std::nullopt;
  std::optional<bool> bold = std::nullopt;
  std::optional<bool> italic = std::nullopt;
  std::optional<Underline> underline = std::nullopt;
  std::optional<bool> strikethrough = std::nullopt;
  std::optional<VerticalRun> verticalRun = std::nullopt;

  /// The list of members. Merging, equality, hashing and printing iterate over it.
  static constexpr auto members() noexcept {
    return std::tuple{PropMember{"fontName", &RunProps::fontName},
                      PropMember{"fontSize", &RunProps::fontSize},
                      PropMember{"colour", &RunProps::colour},
                      PropMember{"bold", &RunProps::bold},
                      PropMember{"italic", &RunProps::italic},
                      PropMember{"underline", &RunProps::underline},
                      PropMember{"strikethrough", &RunProps::strikethrough},
                      PropMember{"verticalRun", &RunProps::verticalRun}};
  }
};

/// Paragraph properties. A member without a value is not set.
struct ParaProps {
  std::optional<HorizontalAlignment> horizontalAlignment = std::nullopt;
  std::optional<unsigned> indent = std::nullopt;  ///< in steps of three spaces
  std::optional<bool> wrapText = std::nullopt;
  std::optional<bool> shrinkToFit = std::nullopt;
  std::optional<int> textRotation =
      std::nullopt;  ///< in degrees, counter-clockwise, -90 to 90; 255: stacked letters
  std::optional<unsigned> readingOrder = std::nullopt;

  static constexpr auto members() noexcept {
    return std::tuple{PropMember{"horizontalAlignment", &ParaProps::horizontalAlignment},
                      PropMember{"indent", &ParaProps::indent},
                      PropMember{"wrapText", &ParaProps::wrapText},
                      PropMember{"shrinkToFit", &ParaProps::shrinkToFit},
                      PropMember{"textRotation", &ParaProps::textRotation},
                      PropMember{"readingOrder", &ParaProps::readingOrder}};
  }
};

/// Cell properties. A member without a value is not set.
struct CellProps {
  std::optional<FillPattern> fillPattern = std::nullopt;
  std::optional<Colour> fillColour = std::nullopt;          ///< of a solid fill
  std::optional<Colour> fillPatternColour = std::nullopt;   ///< of the lines or dots of a pattern
  std::optional<GradientFill> fillGradient = std::nullopt;  ///< counts for FillPattern::Gradient
  std::optional<BorderLine> borderLeft = std::nullopt;
  std::optional<BorderLine> borderRight = std::nullopt;
  std::optional<BorderLine> borderTop = std::nullopt;
  std::optional<BorderLine> borderBottom = std::nullopt;
  std::optional<BorderLine> borderDiagonalUp = std::nullopt;
  std::optional<BorderLine> borderDiagonalDown = std::nullopt;
  std::optional<VerticalAlignment> verticalAlignment = std::nullopt;
  std::optional<bool> locked = std::nullopt;
  std::optional<bool> hidden = std::nullopt;

  static constexpr auto members() noexcept {
    return std::tuple{PropMember{"fillPattern", &CellProps::fillPattern},
                      PropMember{"fillColour", &CellProps::fillColour},
                      PropMember{"fillPatternColour", &CellProps::fillPatternColour},
                      PropMember{"fillGradient", &CellProps::fillGradient},
                      PropMember{"borderLeft", &CellProps::borderLeft},
                      PropMember{"borderRight", &CellProps::borderRight},
                      PropMember{"borderTop", &CellProps::borderTop},
                      PropMember{"borderBottom", &CellProps::borderBottom},
                      PropMember{"borderDiagonalUp", &CellProps::borderDiagonalUp},
                      PropMember{"borderDiagonalDown", &CellProps::borderDiagonalDown},
                      PropMember{"verticalAlignment", &CellProps::verticalAlignment},
                      PropMember{"locked", &CellProps::locked},
                      PropMember{"hidden", &CellProps::hidden}};
  }
};

/// Number format of a cell.
struct CellFormat {
  std::string code;  ///< in the notation of ISO/IEC 29500-1, 18.8.31

  friend bool operator==(CellFormat const&, CellFormat const&) = default;
};

/// Each property that `source` sets replaces the target's.
ZORV_HOST_EXPORT void override(RunProps& target, RunProps const& source);
/// The same for paragraph properties.
ZORV_HOST_EXPORT void override(ParaProps& target, ParaProps const& source);
/// The same for cell properties.
ZORV_HOST_EXPORT void override(CellProps& target, CellProps const& source);

ZORV_HOST_EXPORT bool operator==(RunProps const& a, RunProps const& b) noexcept;
ZORV_HOST_EXPORT bool operator==(ParaProps const& a, ParaProps const& b) noexcept;
ZORV_HOST_EXPORT bool operator==(CellProps const& a, CellProps const& b) noexcept;

ZORV_HOST_EXPORT std::size_t hash_value(RunProps const& props) noexcept;
ZORV_HOST_EXPORT std::size_t hash_value(ParaProps const& props) noexcept;
ZORV_HOST_EXPORT std::size_t hash_value(CellProps const& props) noexcept;
ZORV_HOST_EXPORT std::size_t hash_value(CellFormat const& format) noexcept;

}  // namespace Zorv::DOM
