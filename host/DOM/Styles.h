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
  explicit NamedTableStyle(std::string name) noexcept : _name(std::move(name)) {}

  [[nodiscard]] std::string const& getName() const noexcept { return _name; }
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
  using TableStyles = std::map<UUID, NamedTableStyle>;

  [[nodiscard]] TableStyles const& getTableStyles() const noexcept { return _tableStyles; }
  [[nodiscard]] TableStyles& getTableStyles() noexcept { return _tableStyles; }

private:
  TableStyles _tableStyles;
};

}  // namespace Zorv::DOM
