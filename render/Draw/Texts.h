#pragma once

#include <string>
#include <string_view>

#include "render/Draw/Paragraph.h"
#include "render/Draw/PlainLine.h"
#include "render/Draw/TextPlace.h"

namespace Zorv::Render::Draw {

/// Paints the texts of cells, each inside its place, or over its free neighbours.
///
/// Ownership: borrows the geometry and the typesetter.
class TextPainter {
public:
  /// `hasGridLines`: the sheet is painted with grid lines, which texts hide where they run over
  /// them.
  TextPainter(SheetGeometry const& geometry, Typesetter& typesetter, bool hasGridLines) noexcept
      : _geometry(geometry), _typesetter(typesetter), _hasGridLines(hasGridLines) {}

  void paint(cairo_t* cairo, PictureCell const& cell);

private:
  void paintPiece(cairo_t* cairo, std::string_view text, TextPlace const& place);
  void paintParagraph(cairo_t* cairo, std::string_view text, TextPlace const& place);
  [[nodiscard]] bool layOutPlain(std::string_view text, TextPlace const& place);
  /// The text as often as it fits into its place.
  [[nodiscard]] std::string repeat(std::string_view text, TextPlace const& place);
  template <class Block>
  void paintBlock(cairo_t* cairo, Block& block, TextPlace const& place);
  template <class Block>
  void paintLevel(cairo_t* cairo, Block& block, TextPlace const& place);
  template <class Block>
  void paintTurned(cairo_t* cairo, Block& block, TextPlace const& place);
  /// Hides the grid lines that a text runs over.
  void hideGridLines(cairo_t* cairo, TextPlace const& place, double left, double right);
  [[nodiscard]] bool isBare(std::uint32_t row, std::uint32_t column) const noexcept;

  SheetGeometry const& _geometry;
  Typesetter& _typesetter;
  bool _hasGridLines;
  PlainLine _line;
};

}  // namespace Zorv::Render::Draw
