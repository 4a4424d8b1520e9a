#pragma once

#include <cstddef>

namespace Zorv::Formulas {

/// Something that answers about cells without walking them. Immutable once it is made; borrows the
/// cells' texts, so that the table must not change meanwhile.
class LookupIndex {
public:
  LookupIndex() = default;
  LookupIndex(LookupIndex const&) = delete;
  LookupIndex& operator=(LookupIndex const&) = delete;
  virtual ~LookupIndex() = default;

  /// How many bytes it takes.
  [[nodiscard]] virtual std::size_t memory() const noexcept = 0;

protected:
  template <class Vector>
  [[nodiscard]] static std::size_t memoryOf(Vector const& values) noexcept {
    return values.capacity() * sizeof(typename Vector::value_type);
  }
};

}  // namespace Zorv::Formulas
