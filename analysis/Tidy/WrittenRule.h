#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "analysis/Tidy/SheetMarkup.h"
#include "workbook/Document.h"

namespace Zorv::Analysis {

/// A rule of a document with its element in the sheet's part. Borrows everything.
struct WrittenRule {
  Workbook::Rule const* rule = nullptr;
  FormatMarkup const* format = nullptr;
  RuleMarkup const* markup = nullptr;
  // Of a visual rule that has a second element in the extension list; else null.
  FormatMarkup const* secondFormat = nullptr;
  RuleMarkup const* secondMarkup = nullptr;
};

/// The rules of a sheet in the order of priority, each with its element. Nothing if the elements
/// are not those that the document was loaded from.
[[nodiscard]] std::optional<std::vector<WrittenRule>> findWrittenRules(
    Workbook::Document const& document, std::size_t sheet,
    std::vector<FormatMarkup> const& formats);

}  // namespace Zorv::Analysis
