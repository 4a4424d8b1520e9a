#pragma once

#include <string>
#include <vector>

#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Reads the workbook's table of texts (ISO/IEC 29500-1, 18.4.9), from its beginning.
[[nodiscard]] std::vector<std::string> readSharedStrings(XmlReader& reader);

/// After the start of a text item (`si`, `is`): reads on to its end. The runs of rich text are
/// joined; phonetic text is left out.
[[nodiscard]] std::string readTextItem(XmlReader& reader);

}  // namespace Zorv::Workbook
