#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbook/Read/Colours.h"
#include "workbook/Read/LoadState.h"
#include "workbook/RichText.h"
#include "workbook/Xml/XmlReader.h"

namespace Zorv::Workbook {

/// Text item (`si`, `is`): a plain text, or one of several runs (ISO/IEC 29500-1, 18.4.8).
struct TextItem {
  std::string text;
  std::shared_ptr<RichText const> runs;  ///< null for a plain text
};

/// The texts that the cells of a workbook share.
struct SharedStrings {
  std::vector<std::string> texts;
  std::unordered_map<std::size_t, std::shared_ptr<RichText const>> richTexts;  ///< by index
};

/// Reads the workbook's shared strings (ISO/IEC 29500-1, 18.4.9); the reader must be in front of
/// them. Throws PartError beyond the limit of their number.
[[nodiscard]] SharedStrings readSharedStrings(XmlReader& reader, LoadState& state,
                                              Palette& palette);

/// After the start of a text item: reads up to its end. Phonetic text is skipped. A text whose runs
/// would exceed their limit is read as a plain one, and a finding says so once.
[[nodiscard]] TextItem readTextItem(XmlReader& reader, LoadState& state, Palette& palette);

}  // namespace Zorv::Workbook
