#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "DOM/StyleProps.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {

/// Named style of the document: four property groups, and the identity of the style that it
/// inherits from. A group is null where the style sets nothing in it.
class NamedTableStyle {
public:
  NamedTableStyle() = default;
  /// A style that sets nothing.
  explicit NamedTableStyle(std::string name) noexcept : _name(std::move(name)) {}

  /// The name that people read; styles are found by their UUID.
  [[nodiscard]] std::string const& getName() const noexcept { return _name; }
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

private:
  std::string _name;
  std::shared_ptr<RunProps const> _runProps;
  std::shared_ptr<ParaProps const> _paraProps;
  std::shared_ptr<CellProps const> _cellProps;
  std::shared_ptr<CellFormat const> _cellFormat;
  UUID _parentUUID;
};

/// Style sheet of a document. Requires chains of parents without cycles; nothing checks for them.
class Styles {
public:
  /// Named styles by their identities.
  using TableStyles = std::map<UUID, NamedTableStyle>;

  /// The named styles.
  [[nodiscard]] TableStyles const& getTableStyles() const noexcept { return _tableStyles; }
  /// The named styles, to be changed.
  [[nodiscard]] TableStyles& getTableStyles() noexcept { return _tableStyles; }

private:
  TableStyles _tableStyles;
};

}  // namespace Zorv::DOM
