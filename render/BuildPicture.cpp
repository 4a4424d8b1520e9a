#include "render/BuildPicture.h"

#include <utility>

#include "OfficeUtils/LocaleContext.h"
#include "render/Build/Resolution.h"
#include "render/Build/SheetBuilder.h"

namespace Zorv::Render {

Picture buildPicture(Workbook::Document const& document, PictureOptions const& options) {
  OfficeUtils::LocaleContext const locale(options.localeName, document.getDateSystem());
  SheetResolver const resolver(document, options);
  BuildState state{.document = document,
                   .options = options,
                   .resolver = resolver,
                   .locale = locale,
                   .positionsLeft = options.positionLimit};
  Picture picture;
  for (SheetSelection const& selection : options.sheets) {
    picture.sheets.push_back(buildSheet(state, selection));
  }
  picture.findings = std::move(state.findings);
  return picture;
}

}  // namespace Zorv::Render
