#pragma once

#include <string>
#include <vector>

#include "workbook/Read/LoadState.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Reads the workbook's shared strings (ISO/IEC 29500-1, 18.4.9); the reader must be in front of
/// them. Throws PartError beyond the limit of their number.
[[nodiscard]] std::vector<std::string> readSharedStrings(XmlReader& reader, MemoryCounter& memory);

/// After the start of a text item (`si`, `is`): reads up to its end. Runs of rich text are joined;
/// phonetic text is skipped.
[[nodiscard]] std::string readTextItem(XmlReader& reader);

}  // namespace Zorv::Workbook
