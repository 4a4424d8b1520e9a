#pragma once

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::DOM {
class CellInfo;
class TimeZone;
}  // namespace Zorv::DOM

namespace Zorv::Formulas {
class ContextProvider;
}  // namespace Zorv::Formulas

namespace Zorv::ConditionalFormatters {

/// The library's access to cell values, the time zone and the formula engine; the caller implements
/// it and hands it to a ConditionalFormattingPropsCalculator, which owns it from then on.
///
/// Threads: the operations are called from every thread that asks the calculator, also while the
/// calculator holds its lock on cached styles, and must be safe for that. They may ask the same
/// calculator again on the same thread.
/// What they throw reaches the calculator's caller as it is.
class CNDFRMT_EXPORT ValueContextProvider {
public:
  ValueContextProvider() = default;
  ValueContextProvider(ValueContextProvider const&) = delete;
  ValueContextProvider& operator=(ValueContextProvider const&) = delete;
  virtual ~ValueContextProvider();

  /// The current value of a cell; empty where the position holds no cell.
  [[nodiscard]] virtual FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const = 0;

  /// The zone in which date conditions read the clock. Must stay valid while a cell is resolved.
  [[nodiscard]] virtual DOM::TimeZone const& getTimeZone() const = 0;

  /// The formula engine's access to the document, and the locale. Must stay valid while a cell is
  /// resolved.
  [[nodiscard]] virtual Formulas::ContextProvider const& getFormulasContextProvider() const = 0;
};

}  // namespace Zorv::ConditionalFormatters
