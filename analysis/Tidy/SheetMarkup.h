#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/Limits.h"

// The conditional formats of a sheet's part as they are written: where their elements lie in its
// bytes, so that they can be changed and nothing else.
namespace Zorv::Analysis {

/// Bytes of a part, half-open.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// A `formula` directly in a rule, or `xm:f` in the extension list.
struct FormulaMarkup {
  std::optional<Span> content;  ///< between its tags; nothing for an empty element
  std::string text;             ///< with entities replaced
};

/// A `cfRule` element.
struct RuleMarkup {
  Span span;
  /// Index among the rule elements of the sheet, in the order of the file. The loader counts the
  /// same elements.
  std::size_t index = 0;
  /// Canonical text of the element without its priority, stop flag, identities, formulas and the
  /// index of its differential format.
  std::string content;
  std::optional<std::string> formatIndex;  ///< `dxfId` as written
  std::vector<FormulaMarkup> formulas;
  /// Identity by which an element of the main list names its part in the extension list, or which
  /// that part has; empty if there is none.
  std::string extensionId;
};

/// A `conditionalFormatting` element: rules that share their ranges.
struct FormatMarkup {
  Span span;
  Span startTag;
  Span endTag;
  Span ranges;             ///< the text of the ranges: an attribute's value or an element's content
  Span rangesElement;      ///< the element with the ranges; empty where they are an attribute
  std::string rangesText;  ///< with entities replaced
  bool isExtension = false;
  /// The element has nothing that is unknown here: it may be changed.
  bool isPlain = true;
  std::vector<RuleMarkup> rules;
};

/// The conditional formats of a sheet's part, in the order of the file. Nothing if the part is not
/// in UTF-8. Throws PartError if it is damaged. Cost: linear.
[[nodiscard]] std::optional<std::vector<FormatMarkup>> readSheetMarkup(
    std::string_view bytes, std::string const& part, Workbook::Limits const& limits);

/// Canonical texts of the differential formats of a part with styles, by index.
[[nodiscard]] std::vector<std::string> readDifferentialFormats(std::string const& bytes,
                                                               std::string const& part,
                                                               Workbook::Limits const& limits);

}  // namespace Zorv::Analysis
