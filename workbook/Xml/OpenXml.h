#pragma once

#include <memory>
#include <string_view>

#include "workbook/Limits.h"
#include "workbook/Package/Archive.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Opens a part for reading. The reader must not outlive the archive. Throws PartError if there is
/// no such part.
[[nodiscard]] inline std::unique_ptr<XmlReader> openXml(Archive& archive, std::string_view part,
                                                        PartUse use, Limits const& limits) {
  return std::make_unique<XmlReader>(archive.open(part, use), limits);
}

}  // namespace Zorv::Workbook
