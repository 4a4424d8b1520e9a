#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "DOM/SharedStyle.h"
#include "DOM/Styles.h"
#include "Utils/UUID.h"
#include "workbook/Read/Colours.h"
#include "workbook/Read/NumberFormats.h"
#include "workbook/Read/TableStyles.h"

namespace Zorv::Workbook {

/// Reader of a workbook's styles: cell styles by index, and differential formats as named styles of
/// the document.
class StylesReader {
public:
  /// Borrows both; `styles` receives the named styles.
  StylesReader(Palette& palette, DOM::Styles& styles)
      : _palette(palette), _styles(styles), _tableStyles(palette) {}

  /// Reads the tree of the styles part (ISO/IEC 29500-1, 18.8.39). Reads nothing if it has more
  /// than `formatLimit` fonts, fills, borders, cell formats or differential formats.
  void read(pugi::xml_node styleSheet, DOM::SharedObjectFactory const& factory,
            std::size_t formatLimit);
  /// True if the part had more formats than read() was allowed to read.
  [[nodiscard]] bool isBeyondLimit() const noexcept { return _isBeyondLimit; }

  /// The cell style of an index; null for an index that the workbook does not have. Each index has
  /// one object.
  [[nodiscard]] DOM::SharedCellStylePtr const& getCellStyle(std::size_t index) const noexcept;
  [[nodiscard]] std::size_t getCellStyleCount() const noexcept { return _cellStyles.size(); }

  /// The named style of a differential format; the nil identity for an index that the workbook does
  /// not have.
  [[nodiscard]] UUID getDifferentialStyle(std::size_t index) const noexcept;

  /// The workbook's colours.
  [[nodiscard]] Palette& getPalette() noexcept { return _palette; }

  /// The styles that tables may name.
  [[nodiscard]] TableStyles& getTableStyles() noexcept { return _tableStyles; }

  [[nodiscard]] std::size_t getDifferentialStyleCount() const noexcept {
    return _differentialStyles.size();
  }

  /// Adds a named style for a `dxf` element (ISO/IEC 29500-1, 18.8.14).
  UUID addDifferentialStyle(pugi::xml_node dxf, std::string name);

private:
  /// Format that cell formats are based on.
  struct BaseFormat {
    pugi::xml_node element;
    pugi::xml_node alignment;
    pugi::xml_node protection;
  };
  /// The tables that cell formats refer to by index. Each element is read once, however many cell
  /// formats refer to it.
  struct Tables {
    std::vector<DOM::RunProps> fonts;
    std::vector<DOM::CellProps> fills;
    std::vector<DOM::CellProps> borders;
    std::vector<BaseFormat> baseFormats;
  };

  [[nodiscard]] Tables readTables(pugi::xml_node styleSheet);
  void readIndexedColours(pugi::xml_node colours);
  [[nodiscard]] DOM::CellStyle readCellFormat(pugi::xml_node format, Tables const& tables) const;

  Palette& _palette;
  DOM::Styles& _styles;
  TableStyles _tableStyles;
  NumberFormats _numberFormats;
  std::vector<DOM::SharedCellStylePtr> _cellStyles;
  std::vector<UUID> _differentialStyles;
  bool _isBeyondLimit = false;
};

}  // namespace Zorv::Workbook
