#pragma once

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/CellIndex.h"

namespace Zorv::ConditionalFormatters {

/// Facts about the cell that a condition judges.
struct FormulaValueData {
  FormulaValue value;   ///< as the ValueContextProvider gave it
  CellIndex cellIndex;  ///< the cell's current position; only formulas look at it
};

/// The condition of a conditional format: made once from the format's record, then asked about any
/// number of cells.
///
/// Immutable: the same value gives the same answer at the same moment (date conditions read the
/// clock anew each time). Threads: operator() may run concurrently as far as the host's services
/// may.
class CNDFRMT_EXPORT Operator {
public:
  Operator(Operator const&) = delete;
  Operator& operator=(Operator const&) = delete;

  /// True if the condition holds. A value of a kind that the condition cannot judge does not hold;
  /// exceptions come from the host, or from a record of an unknown kind.
  [[nodiscard]] virtual bool operator()(FormulaValueData const& data) const = 0;

  virtual ~Operator();

protected:
  Operator() = default;
};

}  // namespace Zorv::ConditionalFormatters
