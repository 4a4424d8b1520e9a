#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "OfficeUtils/TimeZone.h"
#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"
#include "render/Picture.h"
#include "workbook/Document.h"

namespace Zorv::Render {

/// A sheet to draw.
struct SheetSelection {
  std::size_t sheet = 0;  ///< index in the document
  /// Nothing: all that is seen of it. Whole rows and columns are drawn as far as something is seen.
  std::optional<TableRange> range;
};

struct PictureOptions {
  std::vector<SheetSelection> sheets;
  std::string localeName = "en-US";
  DOM::TimeZone timeZone{};
  unsigned threadCount = 1;
  /// Most positions of all sheets together; what lies below or to the right of them is left out,
  /// and a finding says so.
  std::uint64_t positionLimit = 4'000'000;
  /// Bounds the work and the memory; borrowed, null for no bound.
  WorkBudget* budget = nullptr;
};

/// The picture of sheets of a document.
///
/// Ownership: the picture borrows the document, which must outlive it and stay unchanged.
/// Throws BaseRuntimeError for an unknown locale, and what the budget throws. A cell that cannot be
/// resolved is drawn with its own style, and a finding says why.
/// Cost: linear in the positions drawn, and what the rules cost.
[[nodiscard]] Picture buildPicture(Workbook::Document const& document,
                                   PictureOptions const& options);

}  // namespace Zorv::Render
