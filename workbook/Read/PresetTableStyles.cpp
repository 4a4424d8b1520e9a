#include "workbook/Read/PresetTableStyles.h"

#include <array>
#include <cstddef>
#include <memory>
#include <utility>

#include "workbook/Read/Values.h"

namespace Zorv::Workbook {

namespace {

using DOM::BorderLine;
using DOM::Colour;
using DOM::LineStyle;

// Indices of the theme's colours.
constexpr std::size_t light = 0;
constexpr std::size_t dark = 1;
constexpr std::size_t firstAccent = 4;

// Tints as programs write them, in steps that 16 bits can hold.
constexpr double lighter80 = 0.79998168889431442;
constexpr double lighter60 = 0.59999389629810485;
constexpr double lighter45 = 0.44999542222357858;
constexpr double lighter40 = 0.39997558519241921;
constexpr double lighter25 = 0.249977111117893;
constexpr double lighter15 = 0.14999847407452621;
constexpr double darker15 = -0.14999847407452621;
constexpr double darker25 = -0.249977111117893;
constexpr double darker35 = -0.34998626667073579;
constexpr double darker50 = -0.499984740745262;

TablePartFormat withText(Colour const& colour, bool isBold) {
  TablePartFormat format;
  format.run.colour = colour;
  if (isBold) {
    format.run.bold = true;
  }
  return format;
}

TablePartFormat withFill(Colour const& colour, TablePartFormat format = {}) {
  format.cell.fillPattern = DOM::FillPattern::Solid;
  format.cell.fillColour = colour;
  return format;
}

TablePartFormat withTop(BorderLine const& line, TablePartFormat format = {}) {
  format.cell.borderTop = line;
  return format;
}

TablePartFormat withBottom(BorderLine const& line, TablePartFormat format = {}) {
  format.cell.borderBottom = line;
  return format;
}

TablePartFormat withSides(BorderLine const& line, TablePartFormat format) {
  format.cell.borderLeft = format.cell.borderRight = line;
  return format;
}

TablePartFormat withFrame(BorderLine const& line, TablePartFormat format) {
  return withSides(line, withTop(line, withBottom(line, std::move(format))));
}

TablePartFormat withRows(BorderLine const& line, TablePartFormat format) {
  format.horizontal = line;
  return format;
}

TablePartFormat withGrid(BorderLine const& line, TablePartFormat format) {
  format.vertical = line;
  return withRows(line, std::move(format));
}

/// Maker of one family of seven styles: the first in grey, the others in an accent of the theme.
class PresetFamily {
public:
  PresetFamily(Palette const& palette, std::size_t member)
      : _palette(palette),
        _isGrey(member == 0),
        _main(member == 0 ? dark : firstAccent + member - 1) {}

  TableStyle makeLight1() {
    Colour const text = _isGrey ? ink() : theme(_main, darker25);
    BorderLine const thin = line(LineStyle::Thin, main());
    add(TablePart::WholeTable, withTop(thin, withBottom(thin, withText(text, false))));
    addStripes(withFill(pale()));
    addBoldEdges(text);
    add(TablePart::HeaderRow, withBottom(thin, withText(text, true)));
    add(TablePart::TotalRow, withTop(thin, withText(text, true)));
    return std::move(_style);
  }

  TableStyle makeLight8() {
    BorderLine const thin = line(LineStyle::Thin, main());
    TablePartFormat beforeColumn;
    beforeColumn.cell.borderLeft = thin;
    add(TablePart::WholeTable, withFrame(thin, withText(ink(), false)));
    add(TablePart::FirstColumnStripe, beforeColumn);
    add(TablePart::SecondColumnStripe, beforeColumn);
    add(TablePart::FirstRowStripe, withTop(thin));
    add(TablePart::SecondRowStripe, withTop(thin));
    addBoldEdges(ink());
    add(TablePart::HeaderRow, withFill(main(), withText(paper(), true)));
    addDoubleTotal(main());
    return std::move(_style);
  }

  TableStyle makeLight15() {
    BorderLine const thin = line(LineStyle::Thin, main());
    add(TablePart::WholeTable, withFrame(thin, withGrid(thin, withText(ink(), false))));
    addStripes(withFill(pale()));
    addBoldEdges(ink());
    add(TablePart::HeaderRow, withBottom(line(LineStyle::Medium, main()), withText(ink(), true)));
    addDoubleTotal(main());
    return std::move(_style);
  }

  TableStyle makeMedium1() {
    BorderLine const thin = softLine();
    add(TablePart::WholeTable, withFrame(thin, withRows(thin, withText(ink(), false))));
    addStripes(withFill(pale()));
    addBoldEdges(ink());
    add(TablePart::HeaderRow, withFill(main(), withText(paper(), true)));
    addDoubleTotal(main());
    return std::move(_style);
  }

  TableStyle makeMedium8() {
    TablePartFormat const strong = withFill(main(), withText(paper(), true));
    BorderLine const thick = line(LineStyle::Thick, paper());
    add(TablePart::WholeTable,
        withFill(pale(), withGrid(line(LineStyle::Thin, paper()), withText(ink(), false))));
    addStripes(withFill(middle()));
    add(TablePart::LastColumn, strong);
    add(TablePart::FirstColumn, strong);
    add(TablePart::HeaderRow, withBottom(thick, strong));
    add(TablePart::TotalRow, withTop(thick, strong));
    return std::move(_style);
  }

  TableStyle makeMedium15() {
    TablePartFormat const strong = withFill(main(), withText(paper(), true));
    BorderLine const medium = line(LineStyle::Medium, ink());
    BorderLine const thin = line(LineStyle::Thin, ink());
    TablePartFormat whole = withText(ink(), false);
    if (_isGrey) {
      whole = withSides(thin, withGrid(thin, std::move(whole)));
    }
    add(TablePart::WholeTable, withTop(medium, withBottom(medium, std::move(whole))));
    addStripes(withFill(theme(light, darker15)));
    add(TablePart::LastColumn, strong);
    add(TablePart::FirstColumn, strong);
    add(TablePart::HeaderRow, withBottom(medium, strong));
    add(TablePart::TotalRow, withTop(line(LineStyle::Double, ink())));
    return std::move(_style);
  }

  TableStyle makeMedium22() {
    BorderLine const thin = softLine();
    add(TablePart::WholeTable,
        withFill(pale(), withFrame(thin, withGrid(thin, withText(ink(), false)))));
    addStripes(withFill(middle()));
    addBoldEdges(ink());
    add(TablePart::HeaderRow, withText(ink(), true));
    add(TablePart::TotalRow, withTop(line(LineStyle::Medium, main()), withText(ink(), true)));
    return std::move(_style);
  }

  TableStyle makeDark1() {
    Colour const stripe = theme(_main, _isGrey ? lighter25 : darker25);
    BorderLine const medium = line(LineStyle::Medium, paper());
    TablePartFormat const edge = withFill(stripe, withText(paper(), true));
    TablePartFormat first = edge;
    TablePartFormat last = edge;
    first.cell.borderRight = medium;
    last.cell.borderLeft = medium;
    add(TablePart::WholeTable,
        withFill(theme(_main, _isGrey ? lighter45 : 0), withText(paper(), false)));
    addStripes(withFill(stripe));
    add(TablePart::LastColumn, last);
    add(TablePart::FirstColumn, first);
    add(TablePart::HeaderRow, withBottom(medium, withFill(ink(), withText(paper(), true))));
    add(TablePart::TotalRow, withTop(medium, withFill(theme(_main, _isGrey ? lighter15 : darker50),
                                                      withText(paper(), true))));
    return std::move(_style);
  }

  /// Its four members take two accents each: the header has the one after the main colour.
  TableStyle makeDark8() {
    add(TablePart::WholeTable, withFill(pale()));
    addStripes(withFill(middle()));
    addBoldEdges(ink());
    add(TablePart::HeaderRow,
        withFill(_isGrey ? ink() : theme(_main + 1, 0), withText(paper(), false)));
    addDoubleTotal(ink());
    return std::move(_style);
  }

private:
  [[nodiscard]] Colour theme(std::size_t index, double tint) const {
    return _palette.mixTheme(index, tint);
  }
  [[nodiscard]] Colour ink() const { return theme(dark, 0); }
  [[nodiscard]] Colour paper() const { return theme(light, 0); }
  [[nodiscard]] Colour main() const { return theme(_main, 0); }
  [[nodiscard]] Colour pale() const {
    return _isGrey ? theme(light, darker15) : theme(_main, lighter80);
  }
  [[nodiscard]] Colour middle() const {
    return _isGrey ? theme(light, darker35) : theme(_main, lighter60);
  }
  [[nodiscard]] BorderLine softLine() const {
    return line(LineStyle::Thin, _isGrey ? ink() : theme(_main, lighter40));
  }
  [[nodiscard]] static BorderLine line(LineStyle style, Colour const& colour) {
    return {style, colour};
  }

  /// Parts come in their order.
  void add(TablePart part, TablePartFormat format) {
    _style.elements.push_back({part, std::make_shared<TablePartFormat const>(std::move(format))});
  }
  void addStripes(TablePartFormat const& format) {
    add(TablePart::FirstColumnStripe, format);
    add(TablePart::FirstRowStripe, format);
  }
  void addBoldEdges(Colour const& text) {
    add(TablePart::LastColumn, withText(text, true));
    add(TablePart::FirstColumn, withText(text, true));
  }
  void addDoubleTotal(Colour const& colour) {
    add(TablePart::TotalRow, withTop(line(LineStyle::Double, colour), withText(ink(), true)));
  }

  Palette const& _palette;
  bool _isGrey;
  std::size_t _main;  ///< index in the theme
  TableStyle _style;
};

/// Styles of one kind that follow each other by number.
struct PresetRange {
  std::string_view kind;
  std::size_t first;  ///< number of the first style
  std::size_t count;
  std::size_t step;  ///< accents from one member to the next
  TableStyle (PresetFamily::*make)();
};

constexpr std::size_t familySize = 7;
constexpr std::array presetRanges{
    PresetRange{"light", 1, familySize, 1, &PresetFamily::makeLight1},
    PresetRange{"light", 8, familySize, 1, &PresetFamily::makeLight8},
    PresetRange{"light", 15, familySize, 1, &PresetFamily::makeLight15},
    PresetRange{"medium", 1, familySize, 1, &PresetFamily::makeMedium1},
    PresetRange{"medium", 8, familySize, 1, &PresetFamily::makeMedium8},
    PresetRange{"medium", 15, familySize, 1, &PresetFamily::makeMedium15},
    PresetRange{"medium", 22, familySize, 1, &PresetFamily::makeMedium22},
    PresetRange{"dark", 1, familySize, 1, &PresetFamily::makeDark1},
    PresetRange{"dark", 8, 4, 2, &PresetFamily::makeDark8},
};

/// Of a range whose members are two accents apart, the second one still has the first accent.
std::size_t findMember(PresetRange const& range, std::size_t number) noexcept {
  std::size_t const place = number - range.first;
  return place == 0 ? 0 : (place - 1) * range.step + 1;
}

}  // namespace

std::optional<TableStyle> makePresetTableStyle(std::string_view name, Palette const& palette) {
  constexpr std::string_view prefix = "tablestyle";
  if (!name.starts_with(prefix)) {
    return std::nullopt;
  }
  name.remove_prefix(prefix.size());
  for (PresetRange const& range : presetRanges) {
    if (!name.starts_with(range.kind)) {
      continue;
    }
    auto const number = parseInteger(name.substr(range.kind.size()));
    auto const index = static_cast<std::size_t>(number.value_or(0));
    if (number && range.first <= index && index < range.first + range.count) {
      PresetFamily family(palette, findMember(range, index));
      return (family.*range.make)();
    }
  }
  return std::nullopt;
}

}  // namespace Zorv::Workbook
