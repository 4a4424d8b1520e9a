#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Zorv::Tool {

/// A text that is safe on one line of a terminal: control characters and line ends become spaces,
/// bytes that are not UTF-8 the replacement character.
[[nodiscard]] std::string toPrintable(std::string_view text);

/// Width of a printable text in columns of a terminal.
[[nodiscard]] std::size_t displayWidth(std::string_view text) noexcept;

/// The longest prefix of a printable text that is no wider than `width` columns.
[[nodiscard]] std::string cutToWidth(std::string_view text, std::size_t width);

/// Table of left-aligned columns with headings.
///
/// The last column is not padded; the others are as wide as their widest cell. Texts are made
/// printable as they are added.
class TextTable {
public:
  explicit TextTable(std::vector<std::string> headings);

  /// Needs one text for each column.
  void addRow(std::vector<std::string> row);

  [[nodiscard]] bool isEmpty() const noexcept { return _rows.size() == 1; }

  /// The headings and the rows, each ended by a line end.
  [[nodiscard]] std::string format() const;

private:
  std::vector<std::vector<std::string>> _rows;
  std::vector<std::size_t> _widths;
};

}  // namespace Zorv::Tool
