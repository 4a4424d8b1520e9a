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
  [[nodiscard]] std::shared_ptr<RunProps const> const& getRunProps() const noexcept {
    return _runProps;
  }
  [[nodiscard]] std::shared_ptr<ParaProps const> const& getParaProps() const noexcept {
    return _paraProps;
  }
  [[nodiscard]] std::shared_ptr<CellProps const> const& getCellProps() const noexcept {
    return _cellProps;
  }
  [[nodiscard]] std::shared_ptr<CellFormat const> const& getCellFormat() const noexcept {
    return _cellFormat;
  }
  [[nodiscard]] UUID const& getParentUUID() const noexcept { return _parentUUID; }
  [[nodiscard]] UUID const& getNoteUUID() const noexcept { return _noteUUID; }

  void setRunProps(std::shared_ptr<RunProps const> props) noexcept { _runProps = std::move(props); }
  void setParaProps(std::shared_ptr<ParaProps const> props) noexcept {
    _paraProps = std::move(props);
  }
  void setCellProps(std::shared_ptr<CellProps const> props) noexcept {
    _cellProps = std::move(props);
  }
  void setCellFormat(std::shared_ptr<CellFormat const> format) noexcept {
    _cellFormat = std::move(format);
  }
  void setParentUUID(UUID uuid) noexcept { _parentUUID = uuid; }
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
