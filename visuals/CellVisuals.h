#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <optional>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "DOM/StyleProps.h"
#include "visuals/DataBar.h"
#include "visuals/IconSet.h"

// What cells get from visual formats, which are named by their index in the VisualFormats.
namespace Zorv::Visuals {

/// Colour of a cell by a colour scale.
struct ShownScale {
  std::size_t format;  ///< index of the format
  DOM::Colour colour;  ///< the colour of the cell
  /// A conditional format of higher priority gives the cell a fill, which hides the colour. If
  /// false, the colour hides the fills of all conditional formats.
  bool isBehindFill;
};

/// Where a bar lies in its cell. Parts of the cell's width, 0 to 1, measured from the edge at which
/// the bar's direction begins.
struct BarExtent {
  double from;                 ///< not greater than `to`
  double to;                   ///< not less than `from`; a bar of no length is a bar
  std::optional<double> axis;  ///< nothing where no axis is drawn

  friend bool operator==(BarExtent const&, BarExtent const&) = default;
};

/// Bar of a cell. Borrows the record of its format.
struct ShownBar {
  std::size_t format;  ///< index of the format
  BarExtent extent;    ///< where the bar lies
  bool isNegative;     ///< the cell's number is
  DataBar const* bar;  ///< how it is drawn; never null

  /// Colour of the bar; nothing for none.
  [[nodiscard]] std::optional<DOM::Colour> const& getFill() const noexcept {
    return isNegative && bar->negativeFill ? bar->negativeFill : bar->fill;
  }
  /// Colour of its border; nothing for none.
  [[nodiscard]] std::optional<DOM::Colour> const& getBorder() const noexcept {
    return isNegative && bar->border && bar->negativeBorder ? bar->negativeBorder : bar->border;
  }
};

/// Icon of a cell.
struct ShownIcon {
  std::size_t format;  ///< index of the format
  /// The icon drawn, after reversal and with the format's own icons.
  Icon icon;
};

/// Visuals that the formats of a table give one cell: of each kind that of the first format, by
/// priority.
struct CellVisuals {
  std::optional<ShownScale> scale{};  ///< nothing if no scale colours the cell
  std::optional<ShownBar> bar{};      ///< nothing if the cell has no bar
  std::optional<ShownIcon> icon{};    ///< nothing if the cell has no icon
  /// False if the cell's bar or icon stands instead of its value.
  bool showValue = true;

  /// True if nothing is drawn.
  [[nodiscard]] bool isEmpty() const noexcept { return !scale && !bar && !icon; }
};

/// The exception for which a visual format could not be drawn in a cell.
struct VisualFailure {
  std::size_t format;            ///< index of the format
  std::exception_ptr exception;  ///< never null
};

/// A cell with its conditional style and its visuals. Borrows everything: good for the duration of
/// a visitor's call.
struct VisualCell {
  ConditionalFormatters::ResolvedCell const& resolved;  ///< the cell with its conditional style
  CellVisuals const& visuals;                           ///< drawn in it
  /// Null unless the pass skips failures and a visual format failed for this cell. The first, if
  /// there are several.
  VisualFailure const* failure;
};

/// Called for each cell of a pass; see VisualResolver::visit().
using VisualVisitor = std::function<void(VisualCell const&)>;

}  // namespace Zorv::Visuals
