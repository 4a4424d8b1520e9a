// A sheet in the terminal: a million rows under rules of all kinds, which follow each edit. Arrow
// and page keys move, typed text and Enter write a cell, Insert and Delete add and remove a row,
// Ctrl+Q ends. The last line says what an edit and a frame took.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include <zorv/ConditionalFormatters/CndFrmt_LiveResolver.h>
#include <zorv/ConditionalFormatters/CndFrmt_LiveView.h>

#include "document.h"
#include "terminal.h"

using namespace Zorv;
using namespace Zorv::ConditionalFormatters;
using SteadyClock = std::chrono::steady_clock;

namespace {

constexpr unsigned long columnCount = 8;
constexpr unsigned long columnWidth = 12;

double millisecondsSince(SteadyClock::time_point start) {
  return std::chrono::duration<double, std::milli>(SteadyClock::now() - start).count();
}

std::string format(char const* pattern, double number) {
  char text[64];
  std::snprintf(text, sizeof text, pattern, number);
  return text;
}

/// Text cut or filled up to a width. Control characters become dots.
std::string fit(std::string text, unsigned long width) {
  for (char& each : text) {
    each = static_cast<unsigned char>(each) < ' ' ? '.' : each;
  }
  text.resize(width, ' ');
  return text;
}

class LiveSheet {
public:
  explicit LiveSheet(unsigned long rowCount)
      : _document(rowCount),
        _live(_document.calculator->follow(_document.styles, _document.table)),
        _view(_live) {}

  void run() {
    bool isRunning = true;
    while (isRunning) {
      draw();
      isRunning = takeKey(waitForKey());
    }
  }

private:
  // [idle]
  /// Uses the time without keys to prepare, then waits until time changes something.
  std::optional<std::string> waitForKey() {
    using std::chrono::milliseconds;
    while (_live.prepareSome(milliseconds(5))) {
      if (auto key = Terminal::readKey(milliseconds(0))) {
        return key;
      }
    }
    _isPrepared = true;
    drawStatus();
    auto const next = _live.nextChange();
    auto key = Terminal::readKey(next ? milliseconds(1'000) : milliseconds(60'000));
    if (!key && next && OfficeUtils::Clock::readCurrent() >= *next) {
      apply();
    }
    return key;
  }
  // [idle]

  /// False for the key that ends the program.
  bool takeKey(std::optional<std::string> const& key) {
    if (!key || *key == "quit" || *key == "end") {
      return !key;
    }
    unsigned long const page = std::max(2UL, countVisibleRows()) - 1;
    if (*key == "up" || *key == "page up") {
      _row -= std::min(_row, *key == "up" ? 1 : page);
    } else if (*key == "down" || *key == "page down") {
      _row = std::min(DOM::Table::rowCount - 1, _row + (*key == "down" ? 1 : page));
    } else if (*key == "left" || *key == "right") {
      _column = *key == "left" ? _column - std::min(_column, 1UL)
                               : std::min(columnCount - 1, _column + 1);
    } else if (*key == "home" || *key == "last") {
      _row = *key == "home" ? 0 : std::max(1UL, _document.table.getUsedRows().second) - 1;
    } else {
      edit(*key);
    }
    return true;
  }

  void edit(std::string const& key) {
    if (key == "insert" || key == "delete") {
      editRow(key == "insert");
    } else if (key == "backspace") {
      _typed.resize(_typed.size() - std::min<std::size_t>(_typed.size(), 1));
    } else if (key == "escape") {
      _typed.clear();
    } else if (key == "enter") {
      setValue();
    } else if (key.size() == 1) {
      _typed += key;
    }
  }

  // [edits]
  void setValue() {
    if (_typed.empty()) {
      _document.table.removeCell(_row, _column);
    } else {
      _document.table.setValue(_row, _column, toValue(_typed));
    }
    _typed.clear();
    apply(ValuesChanged{&_document.table, {{_row, _column, _row + 1, _column + 1}}});
  }

  void editRow(bool isInsertion) {
    if (isInsertion) {
      _document.table.insertRows(_row, 1);
    } else {
      _document.table.deleteRows(_row, 1);
    }
    apply(LinesChanged{.table = &_document.table,
                       .axis = Axis::Rows,
                       .edit = isInsertion ? LineEdit::Insert : LineEdit::Delete,
                       .first = _row,
                       .count = 1});
  }
  // [edits]

  template <class... Changes>
  void apply(Changes... changes) {
    auto const start = SteadyClock::now();
    _live.apply({Change(std::move(changes))...});
    _applyTime = millisecondsSince(start);
  }

  // [frame]
  void draw() {
    auto const start = SteadyClock::now();
    showCursor();
    _view.show({_firstRow, 0, _firstRow + countVisibleRows(), columnCount});
    std::erase_if(_styles, [this](auto const& entry) {
      return !_view.getRange().contains(entry.first.first, entry.first.second);
    });
    _toldCount = 0;
    _view.refresh([this](ResolvedCell const& cell) {
      ++_toldCount;
      _styles[{cell.cellInfo.getRowIndex(), cell.cellInfo.getColIndex()}] = cell.style;
    });
    _viewTime = millisecondsSince(start);
    std::string screen = "\x1b[H";
    for (unsigned long row = _firstRow; row < _view.getRange().endRow; ++row) {
      drawRow(row, screen);
    }
    Terminal::write(screen);
    _frameTime = millisecondsSince(start);
    drawStatus();
  }
  // [frame]

  void drawRow(unsigned long row, std::string& screen) const {
    screen += fit(std::to_string(row + 1), 8);
    for (unsigned long column = 0; column < countVisibleColumns(); ++column) {
      auto const style = _styles.find({row, column});
      if (style != _styles.end() && style->second) {
        auto const& props = style->second->get().getCellProps();
        if (props && props->fillColour) {
          auto const [red, green, blue, alpha] = *props->fillColour;
          screen += "\x1b[48;2;" + std::to_string(red) + ';' + std::to_string(green) + ';' +
                    std::to_string(blue) + 'm';
        }
      }
      bool const isCursor = row == _row && column == _column;
      screen += isCursor ? "\x1b[7m" : "";
      screen += fit(isCursor && !_typed.empty() ? _typed + "_"
                                                : toText(_document.table.getCellInfo(row, column)),
                    columnWidth - 1);
      screen += "\x1b[0m ";
    }
    screen += "\x1b[K\r\n";
  }

  void drawStatus() const {
    std::string status = "edit" + format(" %.3f ms, ", _applyTime);
    status +=
        "view" + format(" %.3f ms", _viewTime) + " (" + std::to_string(_toldCount) + " told), ";
    status += "frame" + format(" %.1f ms", _frameTime) + (_isPrepared ? ", prepared" : "");
    auto const size = Terminal::getSize();
    Terminal::write("\x1b[" + std::to_string(size.rows) + ";1H" +
                    fit(std::move(status), size.columns - 1));
  }

  void showCursor() {
    _firstRow = std::clamp(_firstRow, _row - std::min(_row, countVisibleRows() - 1), _row);
  }

  static unsigned long countVisibleRows() { return std::max(2UL, Terminal::getSize().rows) - 1; }
  static unsigned long countVisibleColumns() {
    unsigned long const fitting = Terminal::getSize().columns / columnWidth;
    return std::clamp(fitting, 2UL, columnCount + 1) - 1;
  }

  Document _document;
  LiveResolver _live;
  LiveView _view;
  std::map<std::pair<unsigned long, unsigned long>, DOM::SharedCellStylePtr> _styles;
  unsigned long _row = 0;
  unsigned long _column = 0;
  unsigned long _firstRow = 0;
  std::string _typed;
  double _applyTime = 0;
  double _viewTime = 0;
  double _frameTime = 0;
  std::size_t _toldCount = 0;
  bool _isPrepared = false;
};

}  // namespace

int main(int argumentCount, char** arguments) {
  unsigned long const rowCount =
      argumentCount > 1 ? std::strtoul(arguments[1], nullptr, 10) : 1'000'000;
  if (rowCount == 0 || rowCount >= DOM::Table::rowCount) {
    std::fprintf(stderr, "usage: live_sheet [ROWS], from 1 to %lu\n", DOM::Table::rowCount - 1);
    return 2;
  }
  try {
    LiveSheet sheet(rowCount);
    Terminal const terminal;
    sheet.run();
  } catch (std::exception const& failure) {
    std::fprintf(stderr, "live_sheet: %s\n", failure.what());
    return 1;
  }
}
