#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Formulas/Evaluation/Area.h"
#include "Formulas/Evaluation/Value.h"
#include "Formulas/Lookups/CellBand.h"
#include "Formulas/Lookups/CellClasses.h"
#include "Formulas/Lookups/LookupKey.h"
#include "Formulas/Lookups/SharedWork.h"
#include "Formulas/Lookups/ValueTable.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// The cells of an area that hold a value, in classes of equal ones.
class EqualValues final : public CellClasses {
public:
  /// `kind` says which values are equal: CriterionClasses or ValueClasses. Linear in the number of
  /// the area's cells. Requires fewer than 2^32 positions.
  ///
  /// Reads the cells in bands and compares their values in pieces; all threads that help in the
  /// work take some of both. The classes do not depend on these threads.
  EqualValues(Area const& area, LookupKind kind, OfficeUtils::LocaleContext const& locale,
              SharedWork& work);

  /// The class of the cells that are equal to a value, or nothing where there are none.
  ///
  /// `lastCell` is a hint, any number at first: who asks for the values of one cell after the other
  /// is answered without a search.
  [[nodiscard]] std::optional<std::uint32_t> find(Value const& value,
                                                  std::uint32_t& lastCell) const noexcept;

  [[nodiscard]] std::size_t memory() const noexcept override;

private:
  class Making;

  ValueTable _values;
};

}  // namespace Zorv::Formulas
