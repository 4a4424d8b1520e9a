#pragma once

#include <string>

namespace Zorv::Workbook {

/// Part of a file that was read in another way than the file means it, or not at all. Members that
/// do not apply are empty.
struct Finding {
  std::string part;     ///< the part of the file, such as `xl/worksheets/sheet1.xml`
  std::string sheet;    ///< the sheet's name
  std::string range;    ///< a cell or ranges of the sheet
  std::string message;  ///< one line, without a place
  bool isNote = false;  ///< for information: everything was read as the file means it
};

}  // namespace Zorv::Workbook
