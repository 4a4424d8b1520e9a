#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "OfficeUtils/LocaleContext.h"
#include "render/Build/Resolution.h"
#include "render/BuildPicture.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// State that the pictures of a document's sheets share. Borrows everything.
struct BuildState {
  Workbook::Document const& document;
  PictureOptions const& options;
  SheetResolver const& resolver;
  OfficeUtils::LocaleContext const& locale;
  std::uint64_t positionsLeft = 0;  ///< that the sheets to come may have
  std::vector<std::string> findings{};
};

/// The picture of one sheet. Takes its positions from the state, and adds findings to it.
[[nodiscard]] SheetPicture buildSheet(BuildState& state, SheetSelection const& selection);

}  // namespace Zorv::Render
