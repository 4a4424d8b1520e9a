#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "workbook/Read/LoadState.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Reader of one sheet's formulas; keeps those without results in the file.
class FormulaReader {
public:
  /// Borrows everything.
  FormulaReader(LoadState& state, std::size_t sheet, XmlReader& reader) noexcept
      : _state(state), _sheet(sheet), _reader(reader) {}

  /// After the start of an `f` element (ISO/IEC 29500-1, 18.3.1.40): reads up to its end.
  void read(CellIndex place);

  /// Notes that the cell whose formula was read last has no result.
  void addMissingResult(CellIndex place);

private:
  /// A formula, and its index if it is kept.
  struct Formula {
    FormulaSource source;
    std::optional<std::uint32_t> index;  ///< in FormulasWithoutResults::formulas
  };

  [[nodiscard]] Formula& findFormula();

  LoadState& _state;
  std::size_t _sheet;
  XmlReader& _reader;
  Formula _last;
  std::string _lastGroup;  ///< of the last formula; empty if it is not shared
  std::map<std::string, Formula, std::less<>> _shared;  ///< by the name of the group
};

}  // namespace Zorv::Workbook
