#include "workbook/CaseFolding.h"

#include <unicode/unistr.h>

namespace Zorv::Workbook {

std::string foldCase(std::string_view text) {
  icu::StringPiece const piece(text.data(), static_cast<int32_t>(text.size()));
  std::string folded;
  icu::UnicodeString::fromUTF8(piece).foldCase().toUTF8String(folded);
  return folded;
}

}  // namespace Zorv::Workbook
