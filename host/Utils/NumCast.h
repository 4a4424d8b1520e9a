#pragma once

#include <cmath>
#include <concepts>

#include <boost/numeric/conversion/cast.hpp>

#include "Utils/Exceptions.h"

namespace Zorv {

/// Converts a number to another arithmetic type; truncates toward zero.
///
/// Throws BadNumCastError when the value does not fit, with the text
/// "bad numeric conversion: positive overflow" or "bad numeric conversion: negative overflow".
/// A NaN does not fit any integer; the text is then "bad numeric conversion: overflow".
template <class To, class From>
[[nodiscard]] To numCast(From value) {
  if constexpr (std::floating_point<From> && std::integral<To>) {
    // A NaN passes the range checks of numeric_cast, and its conversion is undefined.
    if (std::isnan(value)) {
      throw BadNumCastError(boost::numeric::bad_numeric_cast().what());
    }
  }
  try {
    return boost::numeric_cast<To>(value);
  } catch (boost::numeric::bad_numeric_cast const& error) {
    throw BadNumCastError(error.what());
  }
}

}  // namespace Zorv
