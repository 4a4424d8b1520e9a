#include "render/BuildPicture.h"

namespace Zorv::Render {

Picture buildPicture(Workbook::Document const& document, PictureOptions const& options) {
  Picture picture;
  for (SheetSelection const& selection : options.sheets) {
    SheetPicture sheet;
    sheet.sheet = selection.sheet;
    sheet.name = document.getSheets().at(selection.sheet).name;
    picture.sheets.push_back(std::move(sheet));
  }
  return picture;
}

}  // namespace Zorv::Render
