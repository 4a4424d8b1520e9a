#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Formulas/Evaluation/Area.h"
#include "Formulas/Evaluation/Value.h"
#include "Formulas/Lookups/CellClasses.h"
#include "Formulas/Lookups/LookupKey.h"
#include "Formulas/Lookups/ValueTable.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// The cells of an area that hold a value, in classes of equal ones.
class EqualValues final : public CellClasses {
public:
  /// `kind` says which values are equal: CriterionClasses or ValueClasses. Linear in the number of
  /// the area's cells. Requires fewer than 2^32 positions.
  EqualValues(Area const& area, LookupKind kind, OfficeUtils::LocaleContext const& locale);

  /// The class of the cells that are equal to a value, or nothing where there are none.
  ///
  /// `lastCell` is a hint, any number at first: who asks for the values of one cell after the other
  /// is answered without a search.
  [[nodiscard]] std::optional<std::uint32_t> find(Value const& value,
                                                  std::uint32_t& lastCell) const noexcept;

  [[nodiscard]] std::size_t memory() const noexcept override;

private:
  /// Adds cells behind all others, and empties the lists of them.
  void addCells(std::vector<Value>& values, std::vector<std::uint32_t>& positions);

  ValueTable _values;
};

}  // namespace Zorv::Formulas
