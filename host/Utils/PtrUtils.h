#pragma once

#include "Utils/Assert.h"

/// Dereferencing of plain and owning pointers that must not be null.
///
/// Both operations accept anything that behaves like a pointer. They differ in what they guard, and
/// so in the line that a failure reports: a pointer that the caller has just obtained for itself,
/// or one that another object holds.
namespace Zorv::PtrUtils {

namespace Detail {
inline constexpr char const* sourceFile = "/code/Utils/Public/Ptr/PtrUtils";
inline constexpr int obtainedLine = 246;
inline constexpr int heldLine = 254;
}  // namespace Detail

/// The object behind a pointer that the caller obtained: a result, an element of its own list.
/// Stops the process when the pointer is null.
template <class Ptr>
[[nodiscard]] auto& derefObtained(Ptr const& plainPtr) noexcept {
  if (!plainPtr) {
    doFailAssert(Detail::sourceFile, Detail::obtainedLine, "plainPtr");
  }
  return *plainPtr;
}

/// The object behind a pointer that another object holds: a member, an entry of the document model.
/// Stops the process when the pointer is null.
template <class Ptr>
[[nodiscard]] auto& derefHeld(Ptr const& plainPtr) noexcept {
  if (!plainPtr) {
    doFailAssert(Detail::sourceFile, Detail::heldLine, "plainPtr");
  }
  return *plainPtr;
}

}  // namespace Zorv::PtrUtils
