#pragma once

#include <string>

#include "Utils/Exceptions.h"
#include "workbook/Export.h"

namespace Zorv::Workbook {

/// Failure to load a file: what is wrong, where, and what to do about it.
///
/// what() is one line, `FILE: PART: PLACE: PROBLEM`. Part and place are left out if the problem
/// concerns the whole file.
class ZORV_WORKBOOK_EXPORT LoadError : public BaseRuntimeError {
public:
  /// Part and place may be empty.
  LoadError(std::string file, std::string part, std::string place, std::string problem);
  LoadError(LoadError const&) = default;
  LoadError& operator=(LoadError const&) = default;
  ~LoadError() override;

  /// The file's name.
  [[nodiscard]] std::string const& getFile() const noexcept { return _file; }
  /// The part inside the file, such as `xl/worksheets/sheet1.xml`; empty for the whole file.
  [[nodiscard]] std::string const& getPart() const noexcept { return _part; }
  /// A cell, an element or a position in the part; may be empty.
  [[nodiscard]] std::string const& getPlace() const noexcept { return _place; }
  /// The problem and, if there is one, the remedy.
  [[nodiscard]] std::string const& getProblem() const noexcept { return _problem; }

private:
  std::string _file;
  std::string _part;
  std::string _place;
  std::string _problem;
};

}  // namespace Zorv::Workbook
