#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellIdentities.h"
#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "ConditionalFormatters/Following/CndFrmt_TextClasses.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueClasses.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "Utils/CellIndex.h"

namespace Zorv::ConditionalFormatters {

/// Cells in classes of equal values. If that is asked, also which cells repeat a value, and which
/// of them began to, or ended, in an edit. NaN and values that are left out are in no class.
///
/// A text is known by its index among the texts here.
class EqualCells {
public:
  /// `marksRepeated`: true if it is asked which cells repeat a value.
  explicit EqualCells(bool marksRepeated) : _marksRepeated(marksRepeated) {}

  /// Classes of values that are no texts.
  [[nodiscard]] ValueClasses const& getClasses() const noexcept { return _classes; }
  [[nodiscard]] TextClasses const& getTexts() const noexcept { return _texts; }
  /// The index of a text; see TextClasses::getOrCreate().
  [[nodiscard]] std::optional<TextClasses::Index> getOrCreateText(std::string_view text,
                                                                  std::uint32_t hash) {
    return _texts.getOrCreate(text, hash);
  }
  [[nodiscard]] bool isRepeated(CellIndex cell) const noexcept {
    return isMarked(
        _identities.identityOf(positionKeyOf(cell.getRow().get(), cell.getColumn().get())));
  }

  /// Puts a cell from the class of one value into that of another one. While `isEditing`, it is
  /// noted which cells began to repeat a value, or ended.
  void change(PositionKey position, ValueBits before, ValueBits now, bool isEditing);

  /// Fetches the class of a value into the cache while other work is done.
  void prefetch(ValueBits value) const noexcept;

  /// Finds again whether a cell repeats a value, after it left one of several ranges. `value`: the
  /// cell's in another one.
  void markAgain(PositionKey position, ValueBits value);

  /// The cells that repeat a value now and did not before the notes, or the other way round, by
  /// their position. Forgets all notes.
  [[nodiscard]] std::vector<CellIndex> takeFlipped();
  /// Forgets all notes.
  void forgetNotes() noexcept { _notes.clear(); }

  /// False if some edits of lines cannot be followed, after very many others.
  [[nodiscard]] bool canFollow(SheetMoves const& moves) const noexcept {
    return _identities.canFollow(moves);
  }
  /// Follows edits of lines. Requires that it can, and that cells that are gone have no values.
  void follow(SheetMoves const& moves) { _identities.follow(moves); }

  /// About how many bytes it takes.
  [[nodiscard]] std::size_t countBytes() const noexcept {
    return _classes.countBytes() + _texts.countBytes();
  }

private:
  [[nodiscard]] bool isMarked(CellIdentity cell) const noexcept {
    return _repeated.contains(rowOfIdentity(cell), columnOfIdentity(cell));
  }
  void add(ValueBits value, CellIdentity cell, bool isEditing);
  void remove(ValueBits value, CellIdentity cell, bool isEditing);
  void mark(CellIdentity cell, bool isRepeated, bool isEditing);

  bool _marksRepeated;
  CellIdentities _identities;
  ValueClasses _classes;
  TextClasses _texts;
  CellSet _repeated;                 ///< by the identities of row and column
  std::vector<CellIdentity> _notes;  ///< a cell for each time that its answer changed
};

}  // namespace Zorv::ConditionalFormatters
