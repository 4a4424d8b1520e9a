#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "Utils/CellIndex.h"
#include "workbook/Read/CellReader.h"
#include "workbook/Read/ConditionalFormatReader.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/PageReader.h"
#include "workbook/Read/Relationships.h"
#include "workbook/Read/SharedStrings.h"
#include "workbook/Read/StylesReader.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Reader of one sheet's part (ISO/IEC 29500-1, 18.3.1.99); streams it.
class SheetReader {
public:
  /// Borrows everything. The sheet of that index must have its name and part already.
  SheetReader(LoadState& state, SharedStrings const& sharedStrings, StylesReader& styles,
              std::size_t sheet, XmlReader& reader);

  /// Throws PartError if the part is damaged or beyond the limits.
  void read();

private:
  using Handler = void (SheetReader::*)();
  struct Entry;

  [[nodiscard]] static Handler findHandler(XmlReader const& reader) noexcept;

  void readProperties();
  void readView();
  void readPane();
  void readFormat();
  void readColumn();
  void readRow();
  void readCell();
  void readMerge();
  void readHyperlink();
  void readPageElement();
  void readPageTexts();
  void skipViews();
  void readConditionalFormatting();
  void readTablePart();
  void readFormatUse();
  void skipUnknown();
  void addFinding(std::string message);

  [[nodiscard]] DOM::SharedCellStylePtr findStyle(std::string_view attribute) const;
  [[nodiscard]] CellIndex findCorner(std::string_view attribute) const;
  [[nodiscard]] unsigned long findSplit(std::string_view attribute, unsigned long first,
                                        unsigned long end) const;
  [[nodiscard]] bool getFlag(std::string_view attribute, bool missing) const;

  LoadState& _state;
  StylesReader& _styles;
  std::size_t _index;
  Sheet& _sheet;
  XmlReader& _reader;
  Relationships _relationships;
  CellReader _cells;
  ConditionalFormatReader _conditionalFormats;
  PageReader _page;
  CellIndex _viewCorner{RowIndex(0), ColumnIndex(0)};  ///< the first cell that the view shows
  std::set<std::string> _tableParts;                   ///< read so far
};

}  // namespace Zorv::Workbook
