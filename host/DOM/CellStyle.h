#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "DOM/StyleProps.h"
#include "Utils/Export.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {

/// Cell style: four property groups, the identity of a parent style, and the identity of a note. A
/// group is null where the style sets nothing in it.
///
/// A value; the groups are shared and immutable. Moving it does not throw.
class ZORV_HOST_EXPORT CellStyle {
public:
  /// Character properties; null if none is set.
  [[nodiscard]] std::shared_ptr<RunProps const> const& getRunProps() const noexcept {
    return _runProps;
  }
  /// Paragraph properties; null if none is set.
  [[nodiscard]] std::shared_ptr<ParaProps const> const& getParaProps() const noexcept {
    return _paraProps;
  }
  /// Cell properties; null if none is set.
  [[nodiscard]] std::shared_ptr<CellProps const> const& getCellProps() const noexcept {
    return _cellProps;
  }
  /// The number format, or null.
  [[nodiscard]] std::shared_ptr<CellFormat const> const& getCellFormat() const noexcept {
    return _cellFormat;
  }
  /// The named style that this one inherits from; empty for none.
  [[nodiscard]] UUID const& getParentUUID() const noexcept { return _parentUUID; }
  /// The note of the style; empty for none.
  [[nodiscard]] UUID const& getNoteUUID() const noexcept { return _noteUUID; }

  /// Replaces the character properties.
  void setRunProps(std::shared_ptr<RunProps const> props) noexcept { _runProps = std::move(props); }
  /// Replaces the paragraph properties.
  void setParaProps(std::shared_ptr<ParaProps const> props) noexcept {
    _paraProps = std::move(props);
  }
  /// Replaces the cell properties.
  void setCellProps(std::shared_ptr<CellProps const> props) noexcept {
    _cellProps = std::move(props);
  }
  /// Replaces the number format.
  void setCellFormat(std::shared_ptr<CellFormat const> format) noexcept {
    _cellFormat = std::move(format);
  }
  /// Requires that no cycle of parents results.
  void setParentUUID(UUID uuid) noexcept { _parentUUID = uuid; }
  /// Replaces the identity of the note.
  void setNoteUUID(UUID uuid) noexcept { _noteUUID = uuid; }

private:
  std::shared_ptr<RunProps const> _runProps;
  std::shared_ptr<ParaProps const> _paraProps;
  std::shared_ptr<CellProps const> _cellProps;
  std::shared_ptr<CellFormat const> _cellFormat;
  UUID _parentUUID;
  UUID _noteUUID;
};

/// Merges group by group: each property that `source` sets replaces the target's. The number
/// format, the note and the parent are replaced as a whole where `source` has them. Groups are not
/// changed in place, since other styles may share them: where both set something, the target gets a
/// new group.
ZORV_HOST_EXPORT void override(CellStyle& target, CellStyle const& source);

/// Equality and hash by content, not by the identity of the groups.
ZORV_HOST_EXPORT bool operator==(CellStyle const& a, CellStyle const& b) noexcept;
ZORV_HOST_EXPORT std::size_t hash_value(CellStyle const& style) noexcept;

}  // namespace Zorv::DOM
