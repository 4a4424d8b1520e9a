#include "tool/Text/TextTable.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "tool/Text/Swatch.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

constexpr std::size_t rowsHeld = 1'000;
constexpr std::size_t gap = 2;         ///< columns between two texts
constexpr std::size_t narrowest = 10;  ///< a column that is wider is not narrowed below

std::size_t sumWidths(std::vector<std::size_t> const& widths, std::size_t widest) noexcept {
  std::size_t sum = 0;
  for (auto const width : widths) {
    sum += std::min(width, widest);
  }
  return sum;
}

}  // namespace

TextTable::TextTable(std::vector<Column> columns, OutputBuffer& out, Terminal const& terminal)
    : _columns(std::move(columns)), _out(out), _terminal(terminal), _widths(_columns.size()) {
  std::vector<std::string_view> headings;
  for (auto& column : _columns) {
    column.hasSwatch = column.hasSwatch && terminal.hasColours();
    headings.push_back(column.heading);
  }
  holdRow(headings, std::nullopt);
}

void TextTable::addRow(std::span<std::string_view const> texts,
                       std::optional<DOM::Colour> const& swatch) {
  assert(texts.size() == _columns.size());
  if (!_holds) {
    writeRow(texts, swatch);
    return;
  }
  holdRow(texts, swatch);
  if (_heldSwatches.size() >= rowsHeld) {
    writeHeldRows();
  }
}

void TextTable::finish() {
  if (_holds) {
    writeHeldRows();
  }
}

std::string TextTable::fit(std::string_view text, std::size_t column) const {
  return Words::shorten(Words::toPrintable(text), _columns[column].widest);
}

void TextTable::holdRow(std::span<std::string_view const> texts,
                        std::optional<DOM::Colour> const& swatch) {
  for (std::size_t column = 0; column < texts.size(); ++column) {
    _held.push_back(fit(texts[column], column));
    _widths[column] = std::max(_widths[column], Words::displayWidth(_held.back()));
  }
  _heldSwatches.push_back(swatch);
}

/// Takes from the widest columns what does not fit.
void TextTable::narrowToTerminal() {
  auto const swatches =
      static_cast<std::size_t>(std::ranges::count_if(_columns, &Column::hasSwatch));
  auto const between = (_columns.size() - 1) * gap + swatches * (swatchWidth + 1);
  auto widest = std::max(narrowest, std::ranges::max(_widths));
  while (widest > narrowest && sumWidths(_widths, widest) + between > *_terminal.width) {
    --widest;
  }
  for (std::size_t column = 0; column < _columns.size(); ++column) {
    _widths[column] = std::min(_widths[column], widest);
    _columns[column].widest = std::max<std::size_t>(_widths[column], 3);
  }
  // The last column has what the others leave.
  auto const used = sumWidths(_widths, widest) - _widths.back() + between;
  _columns.back().widest =
      std::max(_columns.back().widest, used < *_terminal.width ? *_terminal.width - used : 0);
}

void TextTable::writeHeldRows() {
  _holds = false;
  if (_terminal.width) {
    narrowToTerminal();
  }
  auto const count = _columns.size();
  std::vector<std::string_view> row(count);
  for (std::size_t index = 0; index < _heldSwatches.size(); ++index) {
    std::copy_n(_held.begin() + static_cast<std::ptrdiff_t>(index * count), count, row.begin());
    writeRow(row, _heldSwatches[index]);
  }
  _held = {};
  _heldSwatches = {};
}

void TextTable::writeRow(std::span<std::string_view const> texts,
                         std::optional<DOM::Colour> const& swatch) {
  for (std::size_t column = 0; column < texts.size(); ++column) {
    if (_columns[column].hasSwatch) {
      writeSwatch(swatch);
    }
    auto const& text = texts[column];
    if (text.size() <= _columns[column].widest && Words::isPlain(text)) {
      writeText(text, text.size(), column);
    } else {
      auto const fitted = fit(text, column);
      writeText(fitted, Words::displayWidth(fitted), column);
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

void TextTable::writeSwatch(std::optional<DOM::Colour> const& swatch) {
  if (swatch) {
    appendSwatch(_out.text(), *swatch, _terminal.colours);
    _out.text() += ' ';
  } else {
    _out.text().append(swatchWidth + 1, ' ');
  }
}

}  // namespace Zorv::Tool
