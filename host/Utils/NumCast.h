#pragma once

#include <boost/numeric/conversion/cast.hpp>

#include "Utils/Exceptions.h"

namespace Zorv {

/// Converts a number to another arithmetic type, truncating toward zero.
///
/// Throws BadNumCastError when the value does not fit, with the text
/// "bad numeric conversion: positive overflow" or "bad numeric conversion: negative overflow".
template <class To, class From>
[[nodiscard]] To numCast(From value) {
  try {
    return boost::numeric_cast<To>(value);
  } catch (boost::numeric::bad_numeric_cast const& error) {
    throw BadNumCastError(error.what());
  }
}

}  // namespace Zorv
