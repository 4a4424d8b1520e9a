#pragma once

#include <cstdint>

#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// Receiver of the values of sub-expressions. Only formulas that call the function behind those of
/// the engine have one; see observingFunctions().
class ValueObserver {
public:
  ValueObserver() = default;
  ValueObserver(ValueObserver const&) = delete;
  ValueObserver& operator=(ValueObserver const&) = delete;

  /// The value of the argument of an observing call, if the observer knows it; null: it is
  /// evaluated, and observe() follows unless the evaluation throws.
  [[nodiscard]] virtual Value const* findKnown(std::uint32_t id) = 0;

  /// `id` is the identity of the observing call. The value is valid during the call.
  virtual void observe(std::uint32_t id, Value const& value) = 0;

protected:
  ~ValueObserver() = default;
};

}  // namespace Zorv::Formulas
