#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "workbook/Recalculation/CellFormulas.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Reader of one sheet's formulas.
class FormulaReader {
public:
  /// Borrows everything; `kept` receives the cells and formulas that are to be kept.
  FormulaReader(CellFormulas& kept, std::size_t sheet, XmlReader& reader) noexcept
      : _kept(kept), _sheet(sheet), _reader(reader) {}

  /// After the start of an `f` element (ISO/IEC 29500-1, 18.3.1.40): reads up to its end.
  void read(CellIndex place);

  /// Text of the formula that was read last; empty if the cell shares that of another cell.
  [[nodiscard]] std::string const& getLastText() const noexcept { return _last.source.text; }

  /// Keeps the cell whose formula was read last.
  void keepCell(CellIndex place);

private:
  /// A formula, and its index if it is kept.
  struct Formula {
    FormulaSource source;
    std::optional<std::uint32_t> index;  ///< in CellFormulas::formulas
  };

  [[nodiscard]] Formula& findFormula();

  CellFormulas& _kept;
  std::size_t _sheet;
  XmlReader& _reader;
  Formula _last;
  std::string _lastGroup;  ///< of the last formula; empty if it is not shared
  std::map<std::string, Formula, std::less<>> _shared;  ///< by the name of the group
};

}  // namespace Zorv::Workbook
