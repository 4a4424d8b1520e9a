#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/ConditionalFormatOperator.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/TableRange.h"

namespace Zorv::Benchmarks {

/// A table of one column, or of several ones, 80 percent whole numbers and 20 percent texts, the
/// same for every run of the same size; with the formats of one scenario.
class BenchTable {
public:
  explicit BenchTable(std::size_t cellCount, unsigned long columnCount = 1);

  /// Adds a format over a range, or over all cells.
  void addFormat(DOM::ConditionalFormatOperator condition,
                 std::optional<TableRange> range = std::nullopt);
  /// Sets a cell of the first column.
  void setValue(std::size_t row, FormulaValue value) { _table.setValue(row, 0, std::move(value)); }
  void makeCalculator();
  void makeCalculator(std::unique_ptr<ConditionalFormatters::ValueContextProvider> provider);

  [[nodiscard]] DOM::Table const& getTable() const noexcept { return _table; }
  [[nodiscard]] DOM::Table& getTable() noexcept { return _table; }
  [[nodiscard]] DOM::Styles const& getStyles() const noexcept { return _styles; }
  [[nodiscard]] TableRange getColumn() const noexcept {
    return {0, 0, _cellCount / _columnCount, _columnCount};
  }
  [[nodiscard]] std::size_t getCellCount() const noexcept { return _cellCount; }
  [[nodiscard]] ConditionalFormatters::ConditionalFormattingPropsCalculator const& getCalculator()
      const noexcept {
    return *_calculator;
  }

  /// The values of the column, for the hand-written loop.
  [[nodiscard]] std::vector<FormulaValue> getValues() const;

private:
  std::size_t _cellCount;
  unsigned long _columnCount;
  DOM::Table _table;
  DOM::Styles _styles;
  std::vector<UUID> _styleUUIDs;
  std::unique_ptr<ConditionalFormatters::ConditionalFormattingPropsCalculator> _calculator;
};

/// Everything that an export does: prepares the resolver, then visits each cell once. Gives how
/// many have a style.
std::size_t resolveColumn(BenchTable const& table, unsigned threadCount);

/// The formats of a scenario, added to a table.
struct Scenario {
  char const* name;
  void (*addFormats)(BenchTable& table);
};

/// Twelve formats of all kinds over the whole column, of which seven take operands from it.
void addTwelve(BenchTable& table);

/// Seven formats whose formulas ask something of the whole column: a mean, counts of equal values,
/// the largest number, ranks.
void addSevenFormulas(BenchTable& table);

/// One row for each kind of condition that is measured, then the ones of several formats.
[[nodiscard]] std::vector<Scenario> const& getScenarios();

}  // namespace Zorv::Benchmarks
