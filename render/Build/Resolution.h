#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DOM/SharedStyle.h"
#include "Utils/TableRange.h"
#include "render/Build/Decisions.h"
#include "render/BuildPicture.h"
#include "visuals/CellVisuals.h"
#include "workbook/Document.h"
#include "workbook/DocumentResolver.h"
#include "workbook/SheetRules.h"

namespace Zorv::Render {

/// Position to which conditional formats give something.
struct DecidedPosition {
  std::uint32_t row = 0;  ///< in the table
  std::uint32_t column = 0;
  std::uint32_t decision = 0;     ///< see Decisions
  std::uint32_t visuals = 0;      ///< index in Resolution::visuals, plus one; 0: none
  DOM::SharedCellStylePtr style;  ///< null if the position gets visuals alone
};

/// Styles and visuals that the conditional formats of a sheet give its positions.
struct Resolution {
  std::vector<DecidedPosition> positions;  ///< by row, then by column
  std::vector<Visuals::CellVisuals> visuals;

  /// The position, or null if it gets nothing. Logarithmic.
  [[nodiscard]] DecidedPosition const* find(unsigned long row, unsigned long column) const noexcept;
};

/// Resolver of the conditional formats of a document's sheets. Borrows the document.
class SheetResolver {
public:
  /// Throws BaseRuntimeError for an unknown locale.
  SheetResolver(Workbook::Document const& document, PictureOptions const& options);

  /// The rules of a sheet and the formats made from them.
  [[nodiscard]] Workbook::SheetRules listRules(std::size_t sheet) const;

  /// Resolves the positions of a sheet's rules inside of `bounds`. Ranges without an end are cut
  /// at the used part of the sheet. If they have more positions than a picture may have, only
  /// existing cells are resolved. What is left out, and why cells fail, is added to `findings`.
  [[nodiscard]] Resolution resolve(std::size_t index, TableRange const& bounds,
                                   Workbook::SheetRules const& rules, Decisions& decisions,
                                   std::vector<std::string>& findings) const;

private:
  [[nodiscard]] ConditionalFormatters::TablePass makePass(std::size_t index,
                                                          TableRange const& bounds,
                                                          std::vector<std::string>& findings) const;

  Workbook::Document const& _document;
  PictureOptions const& _options;
  Workbook::DocumentResolver _resolver;
};

}  // namespace Zorv::Render
