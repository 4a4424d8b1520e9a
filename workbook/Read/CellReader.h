#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Utils/CellIndex.h"
#include "workbook/Read/CellPlaces.h"
#include "workbook/Read/FormulaReader.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/SharedStrings.h"
#include "workbook/Read/StylesReader.h"
#include "workbook/RichText.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Reader of one sheet's cells, row by row, into its table.
class CellReader {
public:
  /// Borrows everything.
  CellReader(LoadState& state, SharedStrings const& sharedStrings, StylesReader& styles,
             std::size_t sheet, XmlReader& reader);

  /// See CellPlaces.
  unsigned long beginRow() { return _places.beginRow(); }

  /// After the start of a `c` element (ISO/IEC 29500-1, 18.3.1.4): reads up to its end. Throws
  /// PartError for a cell outside the sheet, for a shared string that the workbook does not have,
  /// and beyond the limits.
  void readCell();

  /// After the start of a row, and after a cell: reads the cells that come next, as long as they
  /// are plainly written numbers and texts; see XmlReader::takePlainElement(). Throws what
  /// readCell() throws.
  void readPlainCells();

  /// After the last cell: orders the texts with runs.
  void finish();

private:
  /// Contents of a cell element before they are interpreted.
  struct Content {
    std::string type;
    std::string value;
    std::optional<std::string> inlineText;
    std::shared_ptr<RichText const> runs;  ///< of its text; null for a plain one
    bool hasValue = false;
    bool hasFormula = false;
  };

  [[nodiscard]] DOM::SharedCellStylePtr findStyle(CellIndex place);
  void clearContent();
  void readContent(CellIndex place);
  void readValueText();
  void store(CellIndex place, DOM::SharedCellStylePtr style);
  void keepRuns(CellIndex place, bool repeated);
  [[nodiscard]] bool isRepeated(CellIndex place);
  void countCell(CellIndex place);
  [[nodiscard]] bool lacksResult() const noexcept;
  [[nodiscard]] FormulaValue interpret(CellIndex place);
  [[nodiscard]] FormulaValue interpretResult() const;
  [[nodiscard]] FormulaValue interpretShared(CellIndex place);
  [[nodiscard]] FormulaValue interpretError(CellIndex place, std::string_view text);
  [[nodiscard]] FormulaValue interpretNumber(CellIndex place, std::string_view text);
  [[nodiscard]] FormulaValue refuse(CellIndex place, std::string_view what);
  void addFinding(CellIndex place, std::string message);
  [[noreturn]] void fail(std::string const& place, std::string const& problem) const;

  LoadState& _state;
  SharedStrings const& _sharedStrings;
  StylesReader& _styles;
  Sheet& _sheet;
  XmlReader& _reader;
  CellPlaces _places;
  FormulaReader _formulas;
  std::optional<CellIndex> _last;  ///< of the cells read so far
  Content _content;
};

}  // namespace Zorv::Workbook
