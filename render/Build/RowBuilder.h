#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "Utils/WorkBudget.h"
#include "render/Build/Attachments.h"
#include "render/Build/CellRows.h"
#include "render/Build/CellTexts.h"
#include "render/Build/EdgeRows.h"
#include "render/Build/Looks.h"
#include "render/Build/Overflow.h"
#include "render/Build/SheetBuilder.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// Tools that make the rows of a sheet's picture. Borrows everything.
struct RowTools {
  Looks& looks;
  CellTexts const& texts;
  Decisions& decisions;
};

/// Builder of the cells of a sheet's picture, row by row from the top. Borrows everything, and adds
/// to the picture.
class RowBuilder {
public:
  RowBuilder(BuildState const& state, PictureParts const& parts, RowTools const& tools,
             SheetPicture& picture);

  /// Adds the cells of the next row. Returns the height that they need, in pixels; 0 if the file
  /// gives one.
  [[nodiscard]] double addRow(std::uint32_t row);

  /// After the last row.
  void finish();

  [[nodiscard]] std::size_t getOverlapCount() const noexcept { return _cellRows.getOverlapCount(); }
  [[nodiscard]] std::size_t countPlainTexts() const noexcept { return _richTexts.countPlain(); }

private:
  struct Measured {
    std::size_t cell;  ///< index in the picture
    StyleLook const* look;
    double width;  ///< of its text
  };
  struct MergedEdges {
    PictureArea area;
    CellEdges edges;
  };

  void addPlaced(std::uint32_t row, PlacedCell const& placed);
  void addText(std::uint32_t row, PlacedCell const& placed, StyleLook const& look,
               PictureCell& cell);
  void addDecided(DecidedPosition const& decided, PictureCell& cell);
  void beginMerged(PlacedCell const& placed, StyleLook const& look, PictureCell& cell);
  void addMergedEdges(std::uint32_t row);
  [[nodiscard]] CellEdges findMergedEdges(PictureArea const& area, StyleLook const& look);
  void markRoom(PlacedCell const& placed, StyleLook const& look, bool hasValue) noexcept;
  void findFree();
  [[nodiscard]] double measureHeight(std::uint32_t row) const;
  [[nodiscard]] double widthOf(PlacedCell const& placed) const noexcept;

  BuildState const& _state;
  PictureParts const& _parts;
  RowTools _tools;
  SheetPicture& _picture;
  CellRows _cellRows;
  CellLinks _links;
  RichTexts _richTexts;
  EdgeTable _edgeTable;
  EdgeRows _edges;
  std::vector<MergedEdges> _openMerged;  ///< merged cells with lines that reach the current row
  /// Lines of parts of merged cells, by row modulo 3: they are borrowed until two rows later.
  std::array<std::deque<CellEdges>, 3> _partEdges;
  StepCounter _steps;
  std::vector<Room> _rooms;    ///< of the current row
  std::vector<Measured> _row;  ///< the cells of the current row that show a text
};

}  // namespace Zorv::Render
