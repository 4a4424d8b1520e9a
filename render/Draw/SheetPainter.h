#pragma once

#include <vector>

#include "Utils/WorkBudget.h"
#include "render/Draw/Borders.h"
#include "render/Draw/Fills.h"
#include "render/Draw/SheetGeometry.h"
#include "render/Draw/Texts.h"

namespace Zorv::Render::Draw {

struct PaintSetting {
  bool hasGridLines = true;
  bool hasLinks = false;         ///< places in a PDF that lead to the web
  WorkBudget* budget = nullptr;  ///< borrowed; null for no bound
};

/// Resources that the sheets of a drawing share. It must outlive the finishing of the surface that
/// they are drawn on; see SurfaceFinisher.
struct PaintResources {
  Typesetter typesetter;
  PatternTiles tiles;
};

/// Paints parts of a sheet on a context: the same way for all formats.
///
/// Ownership: borrows the geometry, the resources and the budget.
class SheetPainter {
public:
  SheetPainter(SheetGeometry const& geometry, PaintResources& resources,
               PaintSetting const& setting);

  /// Paints what lies in an area of the sheet. The context has the sheet's origin and a scale of
  /// one unit for each CSS pixel, and is clipped to the area by the caller.
  /// Throws what the budget throws, between cells; and std::bad_alloc.
  void paint(cairo_t* cairo, Box const& area);

private:
  void paintGridLines(cairo_t* cairo, LineBlock const& lines) const;
  void paintContent(cairo_t* cairo, PictureCell const& cell);

  SheetGeometry const& _geometry;
  PaintSetting _setting;
  FillPainter _fills;
  TextPainter _texts;
  BorderPainter _borders;
  StepCounter _steps;
  std::vector<PictureCell const*> _cells;
};

}  // namespace Zorv::Render::Draw
