#include "tool/Text/TextTable.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "tool/Text/Printable.h"

namespace Zorv::Tool {

namespace {

constexpr std::size_t rowsHeld = 1'000;
constexpr std::size_t gap = 2;  ///< columns between two texts

}  // namespace

TextTable::TextTable(std::vector<Column> columns, OutputBuffer& out)
    : _columns(std::move(columns)), _out(out), _widths(_columns.size()) {
  std::vector<std::string_view> headings;
  for (auto const& column : _columns) {
    headings.push_back(column.heading);
  }
  holdRow(headings);
}

void TextTable::addRow(std::span<std::string_view const> texts) {
  assert(texts.size() == _columns.size());
  if (!_holds) {
    writeRow(texts);
    return;
  }
  holdRow(texts);
  if (_held.size() >= rowsHeld * _columns.size()) {
    writeHeldRows();
  }
}

void TextTable::finish() {
  if (_holds) {
    writeHeldRows();
  }
}

std::string TextTable::fit(std::string_view text, std::size_t column) const {
  return shorten(toPrintable(text), _columns[column].widest);
}

void TextTable::holdRow(std::span<std::string_view const> texts) {
  for (std::size_t column = 0; column < texts.size(); ++column) {
    _held.push_back(fit(texts[column], column));
    _widths[column] = std::max(_widths[column], displayWidth(_held.back()));
  }
}

void TextTable::writeHeldRows() {
  _holds = false;
  auto const count = _columns.size();
  std::vector<std::string_view> row(count);
  for (std::size_t first = 0; first < _held.size(); first += count) {
    std::copy_n(_held.begin() + static_cast<std::ptrdiff_t>(first), count, row.begin());
    writeRow(row);
  }
  _held = {};
}

void TextTable::writeRow(std::span<std::string_view const> texts) {
  for (std::size_t column = 0; column < texts.size(); ++column) {
    auto const& text = texts[column];
    if (text.size() <= _columns[column].widest && isPlain(text)) {
      writeText(text, text.size(), column);
    } else {
      auto const fitted = fit(text, column);
      writeText(fitted, displayWidth(fitted), column);
    }
  }
  _out.text() += '\n';
  _out.endEntry();
}

void TextTable::writeText(std::string_view text, std::size_t width, std::size_t column) {
  _out.text() += text;
  if (column + 1 < _columns.size()) {
    auto const columnWidth = std::max(_widths[column], width);
    _out.text().append(columnWidth - width + gap, ' ');
  }
}

}  // namespace Zorv::Tool
