#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "render/BuildPicture.h"
#include "workbook/Document.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::TestSupport {

/// A workbook and its picture.
class BuiltPicture {
public:
  /// All sheets of the workbook, unless the options name some.
  explicit BuiltPicture(WorkbookBuilder const& builder, Render::PictureOptions options = {});

  [[nodiscard]] Render::Picture const& get() const noexcept { return _picture; }
  [[nodiscard]] Render::SheetPicture const& sheet(std::size_t index = 0) const {
    return _picture.sheets.at(index);
  }

  /// The cell of the first sheet's picture at a place such as `B2`; null if there is none.
  [[nodiscard]] Render::PictureCell const* find(std::string_view address) const;
  /// The same where the test needs one; stops the test otherwise.
  [[nodiscard]] Render::PictureCell const& at(std::string_view address) const;
  [[nodiscard]] Render::Look const& lookAt(std::string_view address) const;
  [[nodiscard]] Render::CellEdges const& edgesAt(std::string_view address) const;
  /// The text of a cell; `(none)` where there is no cell.
  [[nodiscard]] std::string textAt(std::string_view address) const;

private:
  Workbook::Document _document;
  Render::Picture _picture;
};

}  // namespace Zorv::TestSupport
