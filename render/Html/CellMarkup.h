#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "render/Html/PageGraphics.h"
#include "render/Html/StyleSheet.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// Neighbours of a cell that draw the lines at its edges.
struct Neighbours {
  bool left = false;
  bool above = false;
};

/// Writer of the cells of one sheet: their classes, and what is in them.
///
/// Borrows its arguments.
class CellMarkup {
public:
  CellMarkup(SheetPicture const& sheet, StyleSheet& styles, PageGraphics& graphics);

  /// Appends the classes of a cell, each after a space.
  void appendClasses(std::string& out, PictureCell const& cell, Neighbours neighbours);

  /// Appends the class of a position without a cell, after a space; nothing if it has no style.
  void appendClass(std::string& out, std::uint32_t look);

  /// Appends text, icon and bar of a cell.
  void appendContent(std::string& out, PictureCell const& cell);

private:
  [[nodiscard]] std::string const& classOf(std::uint32_t look, DOM::HorizontalAlignment horizontal);
  [[nodiscard]] std::string const& classOfEdges(std::uint32_t edges, Neighbours neighbours);
  /// Appends the classes of a text that may be too long: it runs into empty neighbours, or is cut.
  void appendOverflow(std::string& out, PictureCell const& cell);
  /// True if a text may be wider than its cell, or higher, where it is wrapped.
  [[nodiscard]] bool mayBeTooLong(PictureCell const& cell) const noexcept;
  [[nodiscard]] bool runsOver(PictureCell const& cell) const noexcept;

  void appendBar(std::string& out, Visuals::ShownBar const& bar);
  void appendIcon(std::string& out, Visuals::Icon const& icon, bool isAlone);
  void appendLinkedText(std::string& out, PictureCell const& cell);
  static void appendWords(std::string& out, PictureCell const& cell);
  void appendRuns(std::string& out, PictureCell const& cell);

  SheetPicture const& _sheet;
  StyleSheet& _styles;
  PageGraphics& _graphics;
  std::unordered_map<std::uint32_t, std::string> _lookClasses;  ///< by look and alignment
  std::unordered_map<std::uint32_t, std::string> _edgeClasses;  ///< by edges and neighbours
};

}  // namespace Zorv::Render
