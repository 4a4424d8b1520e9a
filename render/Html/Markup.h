#pragma once

#include <string>
#include <string_view>

#include "DOM/StyleProps.h"

/// Pieces of HTML, CSS and JSON. Whatever a workbook holds, it stays text in them.
namespace Zorv::Render {

/// Appends a text as HTML that reads as this text, between tags and in attributes alike. Control
/// characters other than LF and TAB become spaces. UTF-8 that is not well formed is left to the
/// reader, who shows a replacement character for it.
void appendText(std::string& out, std::string_view text);

/// Appends a text as a string of JSON that may stand inside a script element.
void appendJson(std::string& out, std::string_view text);

/// Appends a number with at most two decimals, and without those that are zero. Absurd numbers
/// become the nearest one that every browser takes.
void appendNumber(std::string& out, double number);

/// Appends a colour as `#rrggbb`, or as `#rrggbbaa` where it is not opaque.
void appendColour(std::string& out, DOM::Colour const& colour);

/// A length in pixels, such as `12.5px`.
[[nodiscard]] std::string toPixels(double length);

[[nodiscard]] std::string toCss(DOM::Colour const& colour);

/// The address of a link that is safe to follow: one of `http`, `https`, `ftp` or `mailto`. Empty
/// for any other scheme, such as one that runs a script, and for an address without a scheme.
[[nodiscard]] std::string_view findSafeAddress(std::string_view address) noexcept;

}  // namespace Zorv::Render
