#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <boost/container_hash/hash.hpp>

#include "Formulas/Lookups/CellClasses.h"
#include "Formulas/Lookups/SharedWork.h"
#include "Formulas/Lookups/TableArea.h"
#include "Formulas/Lookups/ValueDictionary.h"
#include "Formulas/Values/Area.h"
#include "Formulas/Values/Value.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// The rule by which values are equal.
enum class Equality : std::uint8_t {
  Criterion,  ///< of criteria: a text that reads as a number equals that number
  Search,     ///< of searches: only values of one kind are equal
};

/// The cells of an area that hold a value, in classes of equal values.
class EqualValues final : public CellClasses {
public:
  struct Key {
    TableArea area;
    Equality equality = Equality::Criterion;

    friend bool operator==(Key const&, Key const&) noexcept = default;
    friend std::size_t hash_value(Key const& key) noexcept {
      return hash_value(key.area) + static_cast<std::size_t>(key.equality);
    }
  };

  /// Linear in the number of the area's cells. Requires fewer than 2^32 positions.
  ///
  /// Reads the cells by row blocks and compares their values by hash partitions; all threads that
  /// help in the work take some of both. The classes do not depend on these threads.
  EqualValues(Area const& area, Equality equality, OfficeUtils::LocaleContext const& locale,
              SharedWork& work);

  /// The class of the cells that are equal to a value; nothing where there is none. Constant time.
  ///
  /// `lastCell` is a hint, any index at first. Asking for the values of one cell after the other
  /// costs no search.
  [[nodiscard]] std::optional<std::uint32_t> find(Value const& value,
                                                  std::uint32_t& lastCell) const noexcept;

  /// Follows new values in some areas of the table. Gives the edits of the classes, ascending;
  /// nothing where it is better to build the index again: where the areas hold one in sixteen of
  /// the cells, too many values are new, or texts are long. A million cells take a millisecond, and
  /// each new value one microsecond. Requires exclusive access. If it gives nothing or throws
  /// std::bad_alloc, the index may only be destroyed.
  [[nodiscard]] std::optional<std::vector<ClassEdit>> follow(std::span<TableRange const> areas);
  /// True if it borrows texts of cells, since they are long.
  [[nodiscard]] bool borrowsTexts() const noexcept { return _values.borrowsTexts(); }

  /// The bytes that it takes.
  [[nodiscard]] std::size_t memory() const noexcept { return memoryOfClasses() + _values.memory(); }

private:
  class Builder;
  class Follower;

  TableArea _area;
  Equality _equality;
  OfficeUtils::LocaleContext _locale;
  ValueDictionary _values;
};

}  // namespace Zorv::Formulas
