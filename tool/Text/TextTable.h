#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "DOM/StyleProps.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"

namespace Zorv::Tool {

/// Table of left-aligned columns with headings, written while its rows come in.
///
/// The last column is not padded; the others are as wide as their widest text in the first thousand
/// rows. A later text that is wider moves the rest of its line to the right. On a terminal no line
/// is wider than it: the widest columns are narrowed, and later texts keep to them. Texts are made
/// printable as they are added.
///
/// Borrows the buffer. Memory: the first thousand rows. Cost of a later row: a scan of its texts.
class TextTable {
public:
  struct Column {
    std::string heading;
    std::size_t widest;      ///< a wider text is shortened; at least 3, and the heading's width
    bool hasSwatch = false;  ///< a row's colour stands before the text, where colours are shown
  };

  TextTable(std::vector<Column> columns, OutputBuffer& out, Terminal const& terminal = {});

  /// Needs one text for each column.
  void addRow(std::span<std::string_view const> texts,
              std::optional<DOM::Colour> const& swatch = std::nullopt);
  void addRow(std::initializer_list<std::string_view> texts,
              std::optional<DOM::Colour> const& swatch = std::nullopt) {
    addRow(std::span(texts.begin(), texts.size()), swatch);
  }

  /// Writes what is still held. Must be called once, after the last row.
  void finish();

private:
  [[nodiscard]] std::string fit(std::string_view text, std::size_t column) const;
  void holdRow(std::span<std::string_view const> texts, std::optional<DOM::Colour> const& swatch);
  void narrowToTerminal();
  void writeHeldRows();
  void writeRow(std::span<std::string_view const> texts, std::optional<DOM::Colour> const& swatch);
  void writeText(std::string_view text, std::size_t width, std::size_t column);
  void writeSwatch(std::optional<DOM::Colour> const& swatch);

  std::vector<Column> _columns;
  OutputBuffer& _out;
  Terminal _terminal;
  std::vector<std::size_t> _widths;
  std::vector<std::string> _held;  ///< the texts of the first rows, one row after the other
  std::vector<std::optional<DOM::Colour>> _heldSwatches;  ///< by row
  bool _holds = true;
};

}  // namespace Zorv::Tool
