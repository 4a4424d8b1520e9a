#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts from files and arguments, made fit for one line of a terminal.
///
/// Texts of printable ASCII alone take the time of a scan.
namespace Zorv::Words {

/// A text without anything that moves the cursor, changes the terminal or reorders other text:
/// control characters, line ends and format characters become spaces, bytes that are not UTF-8 the
/// replacement character.
[[nodiscard]] std::string toPrintable(std::string_view text);

/// Width of a printable text in columns of a terminal.
[[nodiscard]] std::size_t displayWidth(std::string_view text) noexcept;

/// The longest prefix of a printable text that is no wider than `width` columns.
[[nodiscard]] std::string cutToWidth(std::string_view text, std::size_t width);

/// Any text made printable and no wider than `width` columns, at least 3; "..." stands for a
/// missing end. Looks at the beginning of a long text alone.
[[nodiscard]] std::string shorten(std::string_view text, std::size_t width);

/// JSON in which every unprintable character beyond ASCII is escaped as `\uXXXX`. Such characters
/// occur inside of JSON texts alone. Requires UTF-8.
[[nodiscard]] std::string escapeUnprintable(std::string json);

/// A printable text, with "..." for the middle of one that is too long for a message: its beginning
/// says where, its end what to do.
[[nodiscard]] std::string toMessageLine(std::string_view text);

/// True for printable ASCII: such a text is printable as it is, and as wide as it is long.
[[nodiscard]] bool isPlain(std::string_view text) noexcept;

}  // namespace Zorv::Words
