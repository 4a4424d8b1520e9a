#include <cstddef>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "render/Terminal/CharacterGrid.h"
#include "render/Terminal/DrawOnTerminal.h"
#include "render/Terminal/Escapes.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/DrawnSheets.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

constexpr std::size_t widestName = 100;

/// Prints the sheets of a picture.
class SheetPrinter {
public:
  explicit SheetPrinter(CommandContext const& context) : _context(context) {
    auto const& terminal = context.terminal;
    _options.width = context.selection.getOptions().width;
    if (!_options.width) {
      _options.width = terminal.width;
    }
    _options.colours = terminal.colours;
    _options.budget = &context.budget;
  }

  void print(Render::SheetPicture const& sheet) {
    addLine(_isFirst ? std::string_view() : "\n");
    _isFirst = false;
    printTitle(Words::shorten(sheet.name, widestName));
    std::size_t const shown = Render::drawOnTerminal(
        sheet, _options, [this](std::string_view line) { addLine(line, "\n"); });
    printRest(sheet, shown);
  }

private:
  void addLine(std::string_view text, std::string_view end = "") {
    _context.out.text() += text;
    _context.out.text() += end;
    _context.out.endEntry();
  }

  void printTitle(std::string const& name) {
    std::string title;
    Render::appendStyle(title, {.bold = true}, _options.colours);
    title += name;
    title += _context.terminal.hasColours() ? Render::endOfStyle : "";
    addLine(title, "\n");
  }

  /// Says which columns are missing.
  void printRest(Render::SheetPicture const& sheet, std::size_t shown) {
    std::size_t const rest = sheet.columns.size() - shown;
    if (rest == 0) {
      return;
    }
    auto const first = Render::toColumnLetters(sheet.columns[shown].index);
    auto const last = Render::toColumnLetters(sheet.columns.back().index);
    addLine(rest == 1 ? fmt::format("Column {} does not fit", first)
                      : fmt::format("{} columns do not fit: {} to {}", rest, first, last),
            fmt::format("; --range {}:{} shows {}\n", first, last, rest == 1 ? "it" : "them"));
  }

  CommandContext const& _context;
  Render::TerminalOptions _options;
  bool _isFirst = true;
};

}  // namespace

void runShow(CommandContext const& context) {
  try {
    auto const picture = makePicture(context, listDrawnSheets(context.selection));
    SheetPrinter printer(context);
    for (Render::SheetPicture const& sheet : picture.sheets) {
      printer.print(sheet);
    }
  } catch (...) {
    context.report.setIncomplete();
    throw;
  }
}

}  // namespace Zorv::Tool
