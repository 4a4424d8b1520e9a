#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "Formulas/Lookups/Memory.h"

namespace Zorv::Formulas {

/// An element that comes into a list before an index, or the one at the index that leaves it.
template <class T>
struct ListEdit {
  std::uint32_t at = 0;  ///< in the list before all edits
  bool isInsertion = false;
  T value = {};  ///< of an insertion
};

/// Makes all edits of a list of trivial elements at once, in place. Requires that the edits ascend,
/// and that insertions at an index stand before its removal. Moves each element once at most.
/// Throws std::bad_alloc, changing nothing.
template <class List>
void applyEdits(List& list, std::span<ListEdit<typename List::value_type> const> edits) {
  using Edit = ListEdit<typename List::value_type>;
  auto const insertionCount = std::ranges::count_if(edits, &Edit::isInsertion);
  auto const shiftOfEnd = 2 * insertionCount - std::ssize(edits);
  auto const oldSize = std::ssize(list);
  resizeWithRoom(list, static_cast<std::size_t>(oldSize + std::max<std::ptrdiff_t>(shiftOfEnd, 0)));
  auto const at = [&](std::ptrdiff_t index) { return list.begin() + index; };

  // Elements between two edits move together. Those that move to the front go first, from the front
  // on, so that none is overwritten; then the others, from the back on.
  std::ptrdiff_t shift = 0;
  std::ptrdiff_t begin = 0;
  for (Edit const& edit : edits) {
    if (shift < 0) {
      std::copy(at(begin), at(edit.at), at(begin + shift));
    }
    begin = edit.isInsertion ? edit.at : edit.at + 1;
    shift += edit.isInsertion ? 1 : -1;
  }
  if (shift < 0) {
    std::copy(at(begin), at(oldSize), at(begin + shift));
  }
  std::ptrdiff_t end = oldSize;
  for (std::size_t index = edits.size(); index > 0; --index) {
    Edit const& edit = edits[index - 1];
    begin = edit.isInsertion ? edit.at : edit.at + 1;
    if (shift > 0) {
      std::copy_backward(at(begin), at(end), at(end + shift));
    }
    end = edit.at;
    shift -= edit.isInsertion ? 1 : -1;
  }
  for (Edit const& edit : edits) {
    if (edit.isInsertion) {
      *at(edit.at + shift) = edit.value;
    }
    shift += edit.isInsertion ? 1 : -1;
  }
  list.resize(static_cast<std::size_t>(oldSize + shiftOfEnd));
}

}  // namespace Zorv::Formulas
