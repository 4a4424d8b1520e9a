#include "render/build/BuiltPicture.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "DOM/A1Notation.h"

namespace Zorv::TestSupport {

namespace {

Render::PictureOptions withSheets(Workbook::Document const& document,
                                  Render::PictureOptions options) {
  if (options.sheets.empty()) {
    for (std::size_t sheet = 0; sheet < document.getSheets().size(); ++sheet) {
      options.sheets.push_back({.sheet = sheet, .range = {}});
    }
  }
  return options;
}

}  // namespace

BuiltPicture::BuiltPicture(WorkbookBuilder const& builder, Render::PictureOptions options)
    : _document(builder.load()),
      _picture(Render::buildPicture(_document, withSheets(_document, std::move(options)))) {}

Render::PictureCell const* BuiltPicture::find(std::string_view address) const {
  auto const place = DOM::A1Notation::parseCell(address).value();
  auto const& picture = sheet();
  auto const found = std::ranges::find_if(picture.cells, [&](Render::PictureCell const& cell) {
    return picture.rows[cell.row].index == place.getRow().get() &&
           picture.columns[cell.column].index == place.getColumn().get();
  });
  return found != picture.cells.end() ? &*found : nullptr;
}

Render::PictureCell const& BuiltPicture::at(std::string_view address) const {
  auto const* const cell = find(address);
  return cell != nullptr
             ? *cell
             : throw std::runtime_error("the picture has no cell " + std::string(address));
}

Render::Look const& BuiltPicture::lookAt(std::string_view address) const {
  return sheet().looks.at(at(address).look);
}

Render::CellEdges const& BuiltPicture::edgesAt(std::string_view address) const {
  return sheet().edges.at(at(address).edges);
}

std::string BuiltPicture::textAt(std::string_view address) const {
  auto const* const cell = find(address);
  return cell != nullptr ? cell->text : "(none)";
}

}  // namespace Zorv::TestSupport
