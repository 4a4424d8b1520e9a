#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Zorv::Tool {

/// The text as it may be shown on one line of a terminal: control characters, line ends among them,
/// become spaces, and bytes that are no UTF-8 the replacement character.
[[nodiscard]] std::string toPrintable(std::string_view text);

/// How many columns of a terminal a printable text takes.
[[nodiscard]] std::size_t displayWidth(std::string_view text) noexcept;

/// The longest front part of a printable text that takes no more than so many columns.
[[nodiscard]] std::string cutToWidth(std::string_view text, std::size_t width);

/// Lines of left-aligned columns under headings.
///
/// The last column is not padded; the others are as wide as their widest cell. Texts are made
/// printable as they are added.
class TextTable {
public:
  explicit TextTable(std::vector<std::string> headings);

  /// Takes one text for each column.
  void addRow(std::vector<std::string> row);

  [[nodiscard]] bool isEmpty() const noexcept { return _rows.size() == 1; }

  /// The headings and the rows, each ended by a line end.
  [[nodiscard]] std::string format() const;

private:
  std::vector<std::vector<std::string>> _rows;
  std::vector<std::size_t> _widths;
};

}  // namespace Zorv::Tool
