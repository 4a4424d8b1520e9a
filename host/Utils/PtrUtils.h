#pragma once

#include "Utils/Assert.h"

/// Dereferencing of raw and owning pointers that must not be null.
///
/// Both functions accept anything that behaves like a pointer. They differ in the line that a
/// failure reports: one is for pointers that the caller has just obtained, the other for pointers
/// that another object holds.
namespace Zorv::PtrUtils {

namespace Detail {
inline constexpr char const* sourceFile = "/code/Utils/Public/Ptr/PtrUtils";
inline constexpr int obtainedLine = 246;
inline constexpr int heldLine = 254;
}  // namespace Detail

/// Object behind a pointer that the caller obtained: a result, an element of its own list. Stops
/// the process when the pointer is null.
template <class Ptr>
[[nodiscard]] auto& derefObtained(Ptr const& plainPtr) noexcept {
  if (!plainPtr) {
    doFailAssert(Detail::sourceFile, Detail::obtainedLine, "plainPtr");
  }
  return *plainPtr;
}

/// Object behind a pointer that another object holds: a member, an entry of the document model.
/// Stops the process when the pointer is null.
template <class Ptr>
[[nodiscard]] auto& derefHeld(Ptr const& plainPtr) noexcept {
  if (!plainPtr) {
    doFailAssert(Detail::sourceFile, Detail::heldLine, "plainPtr");
  }
  return *plainPtr;
}

}  // namespace Zorv::PtrUtils
