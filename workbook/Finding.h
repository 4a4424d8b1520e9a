#pragma once

#include <string>

namespace Zorv::Workbook {

/// Something in a file that was read another way than it was meant, or not at all. The members
/// that do not apply are empty.
struct Finding {
  std::string part;   ///< the part of the file, such as `xl/worksheets/sheet1.xml`
  std::string sheet;  ///< the sheet's name
  std::string range;  ///< a cell or areas of the sheet
  std::string message;
};

}  // namespace Zorv::Workbook
