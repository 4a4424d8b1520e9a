#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "ConditionalFormatters/CndFrmt_Change.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/ConditionalFormatOperator.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/ListObject.h"
#include "Formulas/TableContext.h"
#include "OfficeUtils/Clock.h"

namespace Zorv::TestSupport {

/// A document of two small tables with values, formats and formulas of all kinds, a defined name
/// and a list object, which random edits change. Everything comes from the seed.
class EditedDocument {
public:
  static constexpr unsigned long rows = 14;
  static constexpr unsigned long columns = 5;
  /// All cells and ranges stay inside.
  static constexpr TableRange window{0, 0, 30, 12};

  explicit EditedDocument(std::uint32_t seed);
  EditedDocument(EditedDocument const&) = delete;
  EditedDocument& operator=(EditedDocument const&) = delete;
  ~EditedDocument();

  /// The table whose formats are followed, at index 0 of the document.
  DOM::Table table;
  DOM::Table otherTable;
  DOM::Styles styles;

  /// Provider that the calculator asks. Reads the document through a journal of failures: see
  /// failAt().
  [[nodiscard]] std::unique_ptr<ConditionalFormatters::ValueContextProvider> makeProvider();

  /// Has the host throw at its n-th call from now on, from 1; 0 for never.
  void failAt(long call) noexcept { _failingCall = call; }

  /// Makes an edit of a random kind, and appends what is to be told of it.
  void edit(std::vector<ConditionalFormatters::Change>& changes);

  [[nodiscard]] OfficeUtils::Clock::TimePoint getMoment() const noexcept { return _moment; }
  [[nodiscard]] unsigned long draw(unsigned long end) {
    return std::uniform_int_distribution<unsigned long>(0, end - 1)(_random);
  }
  [[nodiscard]] TableRange drawRange();

  // Single edits, for tests that name them.

  void setRandomValue(DOM::Table& changed, unsigned long row, unsigned long column);
  void addRandomFormat();
  /// Inserts, deletes or moves rows or columns.
  void editLines(std::vector<ConditionalFormatters::Change>& changes);

private:
  class Host;
  struct FormatPlan {
    std::vector<DOM::TableRangeByID> ranges;
    std::function<DOM::ConditionalFormatOperator()> makeCondition;
    UUID style;
    bool stops;
  };

  [[nodiscard]] FormulaValue drawValue();
  [[nodiscard]] std::string drawFormula();
  [[nodiscard]] std::function<DOM::ConditionalFormatOperator()> drawCondition();
  /// A comparison of the cell A1.
  [[nodiscard]] std::function<DOM::ConditionalFormatOperator()> drawComparison();
  [[nodiscard]] FormatPlan drawFormat();
  void drawStyle(unsigned char index);
  void makeFormats();
  void editValues(std::vector<ConditionalFormatters::Change>& changes);
  void editFormats();

  std::mt19937 _random;
  bool _hasNaN;  ///< repeated values are then not asked for: no NaN is one
  /// All values are numbers, some of which differ in their last bits only, and most formats compare
  /// the cells of the first column with what they ask of all of it.
  bool _comparesNumbers;
  std::vector<FormatPlan> _formats;
  OfficeUtils::Clock::TimePoint _moment;
  long _failingCall = 0;
  std::unique_ptr<Host> _host;
};

}  // namespace Zorv::TestSupport
