#pragma once

#include <map>
#include <utility>
#include <vector>

#include "render/Draw/BorderSegments.h"
#include "render/Draw/Cairo.h"
#include "render/Draw/SheetGeometry.h"

namespace Zorv::Render::Draw {

/// Paints the lines around cells and through them.
///
/// Lines that meet fill their corner, thick lines lie over thin ones, and double lines open into
/// each other where they meet. Ownership: borrows the geometry.
class BorderPainter {
public:
  explicit BorderPainter(SheetGeometry const& geometry) noexcept : _geometry(geometry) {}

  void paint(cairo_t* cairo, std::vector<PictureCell const*> const& cells);

private:
  /// Column edge and row edge.
  using Crossing = std::pair<std::uint32_t, std::uint32_t>;
  /// Lines that end at a crossing.
  struct Meeting {
    double across = 0;  ///< width of the widest
    double down = 0;
    bool isDoubleAcross = false;  ///< one of them is double
    bool isDoubleDown = false;
  };
  /// From `before` an edge to `after` it.
  struct Reach {
    double before = 0;
    double after = 0;
  };

  void paintDiagonals(cairo_t* cairo, PictureCell const& cell) const;
  void collectMeetings(std::vector<BorderSegment> const& segments);
  void openDoubleLines(cairo_t* cairo, std::vector<BorderSegment> const& segments,
                       bool isVertical) const;
  void paintSegment(cairo_t* cairo, BorderSegment const& segment) const;
  /// The middle of a double line.
  [[nodiscard]] Box findGap(BorderSegment const& segment) const noexcept;
  /// Reach of a line of a style beside its edge.
  [[nodiscard]] Reach findReach(double width) const noexcept;
  [[nodiscard]] Meeting meetAt(BorderSegment const& segment, std::uint32_t end) const;
  /// The box between places along an edge and across it, the right way round.
  [[nodiscard]] Box orient(BorderSegment const& segment, Reach const& along,
                           Reach const& across) const noexcept;

  SheetGeometry const& _geometry;
  std::map<Crossing, Meeting> _meetings;
};

}  // namespace Zorv::Render::Draw
