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

  /// `id` is the identity of the observing call. The value is valid during the call.
  virtual void observe(std::uint32_t id, Value const& value) = 0;

protected:
  ~ValueObserver() = default;
};

}  // namespace Zorv::Formulas
