#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tool/Text/OutputBuffer.h"

namespace Zorv::Tool {

/// Table of left-aligned columns with headings, written while its rows come in.
///
/// The last column is not padded; the others are as wide as their widest text in the first thousand
/// rows. A later text that is wider moves the rest of its line to the right. Texts are made
/// printable as they are added.
///
/// Borrows the buffer. Memory: the first thousand rows. Cost of a later row: a scan of its texts.
class TextTable {
public:
  struct Column {
    std::string heading;
    std::size_t widest;  ///< a wider text is shortened; at least 3, and the width of the heading
  };

  TextTable(std::vector<Column> columns, OutputBuffer& out);

  /// Needs one text for each column.
  void addRow(std::span<std::string_view const> texts);
  void addRow(std::initializer_list<std::string_view> texts) {
    addRow(std::span(texts.begin(), texts.size()));
  }

  /// Writes what is still held. Must be called once, after the last row.
  void finish();

private:
  [[nodiscard]] std::string fit(std::string_view text, std::size_t column) const;
  void holdRow(std::span<std::string_view const> texts);
  void writeHeldRows();
  void writeRow(std::span<std::string_view const> texts);
  void writeText(std::string_view text, std::size_t width, std::size_t column);

  std::vector<Column> _columns;
  OutputBuffer& _out;
  std::vector<std::size_t> _widths;
  std::vector<std::string> _held;  ///< the texts of the first rows, one row after the other
  bool _holds = true;
};

}  // namespace Zorv::Tool
