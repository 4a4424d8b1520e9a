#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "DOM/AxisIds.h"
#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {

/// A cell by the identities of its row and its column: it stays the same while these are edited.
using CellIdentity = std::uint64_t;

inline constexpr unsigned rowIdentityBits = 23;
inline constexpr unsigned columnIdentityBits = 15;
inline constexpr unsigned cellIdentityBits = rowIdentityBits + columnIdentityBits;

[[nodiscard]] constexpr unsigned long rowOfIdentity(CellIdentity cell) noexcept {
  return cell >> columnIdentityBits;
}
[[nodiscard]] constexpr unsigned long columnOfIdentity(CellIdentity cell) noexcept {
  return cell & ((CellIdentity{1} << columnIdentityBits) - 1);
}

/// The identities of a sheet's rows, or of its columns, which follow edits of these.
class LineIdentities {
public:
  /// `length`: how many lines there are. `bits`: identities have at most so many.
  LineIdentities(unsigned long length, unsigned bits)
      : _ids(length), _given(length), _mostGiven((1UL << bits) - 1) {}

  [[nodiscard]] unsigned long identityOf(unsigned long line) const noexcept {
    return _ids.idAt(line);
  }
  /// The line with an identity; none if it was deleted.
  [[nodiscard]] std::optional<unsigned long> find(unsigned long identity) const noexcept {
    unsigned long const line = _ids.beginOf(identity);
    return _ids.idAt(line) == identity ? std::optional(line) : std::nullopt;
  }

  /// False after so many edits that identities run out, or that to follow further ones is slow.
  [[nodiscard]] bool canFollow(LineMoves const& moves) const noexcept {
    constexpr std::size_t mostEdits = 2'048;
    unsigned long given = _given;
    for (AxisEdit const& edit : moves.getEdits()) {
      given += countGiven(edit);
    }
    return given <= _mostGiven && _editCount + moves.getEdits().size() <= mostEdits;
  }
  /// Requires that it can follow them.
  void follow(LineMoves const& moves) {
    for (AxisEdit const& edit : moves.getEdits()) {
      follow(edit);
      _given += countGiven(edit);
      ++_editCount;
    }
  }

private:
  /// Lines that are deleted are followed by as many new ones at the end of the sheet.
  static unsigned long countGiven(AxisEdit const& edit) noexcept {
    return edit.kind == AxisEdit::Kind::Move ? 0 : edit.count;
  }
  void follow(AxisEdit const& edit) {
    switch (edit.kind) {
      case AxisEdit::Kind::Insert:
        _ids.insert(edit.first, edit.count);
        break;
      case AxisEdit::Kind::Delete:
        _ids.remove(edit.first, edit.count);
        break;
      default:
        _ids.move(edit.first, edit.count, edit.before);
    }
  }

  DOM::AxisIds _ids;
  unsigned long _given;  ///< how many identities there are, at most
  unsigned long _mostGiven;
  std::size_t _editCount = 0;
};

/// The identities of a sheet's cells, which follow edits of rows and columns.
class CellIdentities {
public:
  [[nodiscard]] CellIdentity identityOf(PositionKey cell) const noexcept {
    return (CellIdentity{_rows.identityOf(rowOfKey(cell))} << columnIdentityBits) +
           _columns.identityOf(columnOfKey(cell));
  }

  /// The position of a cell; none if its row or its column was deleted.
  [[nodiscard]] std::optional<PositionKey> find(CellIdentity cell) const noexcept {
    auto const row = _rows.find(rowOfIdentity(cell));
    auto const column = _columns.find(columnOfIdentity(cell));
    return row && column ? std::optional(positionKeyOf(*row, *column)) : std::nullopt;
  }

  /// False after so many edits that identities run out, or that to follow further ones is slow.
  [[nodiscard]] bool canFollow(SheetMoves const& moves) const noexcept {
    return _rows.canFollow(moves.rows) && _columns.canFollow(moves.columns);
  }
  /// Requires that it can follow them.
  void follow(SheetMoves const& moves) {
    _rows.follow(moves.rows);
    _columns.follow(moves.columns);
  }

private:
  LineIdentities _rows{DOM::Table::rowCount, rowIdentityBits};
  LineIdentities _columns{DOM::Table::columnCount, columnIdentityBits};
};

}  // namespace Zorv::ConditionalFormatters
