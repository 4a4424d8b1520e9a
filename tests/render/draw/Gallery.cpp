#include "render/draw/Gallery.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "render/draw/SheetBuilder.h"

namespace Zorv::Render::Tests {

namespace {

using DOM::Colour;
using DOM::FillPattern;
using DOM::HorizontalAlignment;
using DOM::LineStyle;
using DOM::Underline;
using DOM::VerticalAlignment;
using Visuals::IconSetName;

constexpr Colour darkBlue{0x1F, 0x4E, 0x79};
constexpr Colour lightBlue{0xDD, 0xEB, 0xF7};
constexpr Colour galleryRed{0xC0, 0x00, 0x00};

void addFonts(SheetBuilder& builder, std::uint32_t row) {
  constexpr std::array names{"Calibri",     "Arial",   "Times New Roman",
                             "Courier New", "Cambria", "Verdana"};
  std::uint32_t column = 0;
  for (char const* const name : names) {
    builder.text(row, column, "Total 1,234.50").freeRight = 1;
    builder.look(row, column, [&](Look& look) { look.font.name = name; });
    column += 2;
  }
  auto const show = [&](std::uint32_t place, char const* text, auto const& change) {
    builder.text(row + 1, place, text);
    builder.look(row + 1, place, [&](Look& look) { change(look.font); });
  };
  show(0, "bold", [](Font& font) { font.bold = true; });
  show(1, "italic", [](Font& font) { font.italic = true; });
  show(2, "single", [](Font& font) { font.underline = Underline::Single; });
  show(3, "double", [](Font& font) { font.underline = Underline::Double; });
  show(4, "account", [](Font& font) { font.underline = Underline::SingleAccounting; });
  show(5, "account", [](Font& font) { font.underline = Underline::DoubleAccounting; });
  show(6, "strike", [](Font& font) { font.strikethrough = true; });
  show(7, "super", [](Font& font) { font.verticalRun = DOM::VerticalRun::Superscript; });
  show(8, "sub", [](Font& font) { font.verticalRun = DOM::VerticalRun::Subscript; });
  show(9, "colour", [](Font& font) { font.colour = galleryRed; });
  show(10, "large", [](Font& font) { font.size = 14; });
  show(11, "small", [](Font& font) { font.size = 7; });
}

void addAlignments(SheetBuilder& builder, std::uint32_t row) {
  using enum HorizontalAlignment;
  std::uint32_t column = 0;
  for (HorizontalAlignment const horizontal : {Left, Center, Right, Fill}) {
    builder.text(row, column, "abc").horizontal = horizontal;
    builder.look(row, column, [](Look& look) { look.indent = 6; });
    ++column;
  }
  builder.text(row, 5, "across three").horizontal = CenterContinuous;
  builder.cell(row, 5).freeRight = 2;
  builder.text(row, 9, "shrunk to the width of the cell");
  builder.look(row, 9, [](Look& look) { look.shrinksToFit = true; });
  builder.setHeight(row + 1, 64);
  constexpr std::array verticals{VerticalAlignment::Top, VerticalAlignment::Center,
                                 VerticalAlignment::Bottom, VerticalAlignment::Justify,
                                 VerticalAlignment::Distributed};
  column = 0;
  for (VerticalAlignment const vertical : verticals) {
    builder.text(row + 1, column, "two lines of words");
    builder.look(row + 1, column, [&](Look& look) {
      look.vertical = vertical;
      look.wraps = true;
    });
    ++column;
  }
  for (HorizontalAlignment const horizontal : {Justify, Distributed, Center, Right}) {
    builder.text(row + 1, column, "one or two or more").horizontal = horizontal;
    builder.look(row + 1, column, [](Look& look) { look.wraps = true; });
    ++column;
  }
}

void addTurns(SheetBuilder& builder, std::uint32_t row) {
  builder.setHeight(row, 72);
  std::uint32_t column = 0;
  for (int const rotation : {90, 60, 45, 15, -15, -45, -60, -90}) {
    builder.text(row, column, "turned").horizontal = HorizontalAlignment::Center;
    builder.look(row, column, [&](Look& look) { look.rotation = rotation; });
    ++column;
  }
  builder.text(row, column, "stack").horizontal = HorizontalAlignment::Center;
  builder.look(row, column, [](Look& look) { look.isStacked = true; });
}

void addOverruns(SheetBuilder& builder, std::uint32_t row) {
  builder.text(row, 0, "runs over two cells").freeRight = 2;
  builder.text(row, 3, "is cut at the next cell");
  builder.text(row, 4, "next");
  PictureCell& right = builder.text(row, 7, "runs to the left");
  right.horizontal = HorizontalAlignment::Right;
  right.freeLeft = 2;
  PictureCell& centre = builder.text(row, 9, "runs to both sides");
  centre.horizontal = HorizontalAlignment::Center;
  centre.freeLeft = 1;
  centre.freeRight = 1;
  PictureCell& rich = builder.text(row + 1, 0, "rich red bold text");
  rich.freeRight = 1;
  rich.runs = 1;
  Font redFont = builder.sheet().looks.front().font;
  redFont.colour = galleryRed;
  Font bold = builder.sheet().looks.front().font;
  bold.bold = true;
  builder.sheet().richTexts.push_back(
      {{"rich ", builder.sheet().looks.front().font}, {"red ", redFont}, {"bold text", bold}});
  builder.text(row + 1, 3, "$1,234").splitAt = 1;
  PictureCell& coloured = builder.text(row + 1, 4, "-12.5");
  coloured.horizontal = HorizontalAlignment::Right;
  coloured.textColour = galleryRed;
  builder.text(row + 1, 5, "שלום עולם");
  builder.look(row + 1, 5, [](Look& look) { look.readsRightToLeft = true; });
  builder.text(row + 1, 6, "Ελληνικά");
  builder.text(row + 1, 7, "Žluťoučký").freeRight = 1;
  PictureCell& merged = builder.text(row, 10, "merged");
  merged.rowCount = 2;
  merged.columnCount = 2;
  merged.horizontal = HorizontalAlignment::Center;
  builder.look(row, 10, [](Look& look) { look.vertical = VerticalAlignment::Center; });
}

void addFills(SheetBuilder& builder, std::uint32_t row) {
  for (std::uint32_t i = 0; i < 17; ++i) {
    auto const pattern =
        static_cast<FillPattern>(static_cast<std::uint32_t>(FillPattern::Solid) + i + 1);
    builder.look(row + i / 9, i % 9, [&](Look& look) {
      look.fill = {pattern, lightBlue, darkBlue, {}};
    });
  }
  auto const addGradient = [&](std::uint32_t place, double degree, std::optional<double> middle) {
    DOM::GradientFill gradient;
    gradient.type = middle ? DOM::GradientType::Path : DOM::GradientType::Linear;
    gradient.degree = degree;
    gradient.left = gradient.right = gradient.top = gradient.bottom = middle.value_or(0);
    gradient.stops = {{0, lightBlue}, {1, darkBlue}};
    builder.look(row + place / 3, 9 + place % 3, [&](Look& look) {
      look.fill.pattern = FillPattern::Gradient;
      look.fill.gradient = gradient;
    });
  };
  addGradient(0, 0, {});
  addGradient(1, 90, {});
  addGradient(2, 45, {});
  addGradient(3, 0, 0.5);
  addGradient(4, 0, 0);
  builder.cell(row + 1, 11).scaleColour = Colour{0x63, 0xBE, 0x7B};
  builder.fill(row + 1, 8, {0xFF, 0xC7, 0xCE});
}

void addBorders(SheetBuilder& builder, std::uint32_t row) {
  builder.setHeight(row + 1, 32);
  for (std::uint32_t i = 0; i < 13; ++i) {
    DOM::BorderLine const line{static_cast<LineStyle>(i + 1), darkBlue};
    CellEdges const box{line, line, line, line, {}, {}};
    builder.edges(row + 1 + 2 * (i / 6), 2 * (i % 6), box);
  }
  DOM::BorderLine const thin{LineStyle::Thin, {}};
  CellEdges crossed;
  crossed.diagonalUp = crossed.diagonalDown = thin;
  builder.edges(row + 5, 3, crossed);
  CellEdges rising;
  rising.diagonalUp = {LineStyle::Double, galleryRed};
  builder.edges(row + 5, 5, rising);
  DOM::BorderLine const twice{LineStyle::Double, galleryRed};
  CellEdges const all{twice, twice, twice, twice, {}, {}};
  for (std::uint32_t column = 7; column < 9; ++column) {
    builder.edges(row + 5, column, all);
    builder.edges(row + 6, column, all);
  }
  DOM::BorderLine const thick{LineStyle::Thick, darkBlue};
  CellEdges outer;
  outer.left = outer.top = thick;
  builder.edges(row + 5, 10, outer);
  CellEdges mixed;
  mixed.right = thin;
  mixed.bottom = thick;
  builder.edges(row + 6, 10, mixed);
}

Visuals::DataBar makeGradientBar() {
  Visuals::DataBar bar;
  bar.fill = bar.border = Colour{0x63, 0x8E, 0xC6};
  bar.negativeFill = bar.negativeBorder = Colour{0xFF, 0x00, 0x00};
  bar.axisColour = Colour{0, 0, 0};
  return bar;
}

Visuals::DataBar makeSolidBar() {
  Visuals::DataBar bar;
  bar.fill = Colour{0x63, 0xC3, 0x84};
  bar.direction = Visuals::BarDirection::RightToLeft;
  bar.isGradient = false;
  return bar;
}

struct GalleryBar {
  double from;
  double to;
  std::optional<double> axis;
  bool isNegative;
};

void addBars(SheetBuilder& builder, std::uint32_t row) {
  static Visuals::DataBar const gradient = makeGradientBar();
  static Visuals::DataBar const solid = makeSolidBar();
  constexpr std::array bars{GalleryBar{0, 0.9, {}, false}, GalleryBar{0, 0.4, {}, false},
                            GalleryBar{0.4, 1, 0.4, false}, GalleryBar{0.1, 0.4, 0.4, true}};
  std::uint32_t column = 0;
  for (Visuals::DataBar const* const format : {&gradient, &solid}) {
    for (GalleryBar const& bar : bars) {
      PictureCell& cell = builder.text(row, column++, "42");
      cell.horizontal = HorizontalAlignment::Right;
      cell.bar = Visuals::ShownBar{0, {bar.from, bar.to, bar.axis}, bar.isNegative, format};
    }
  }
}

void addIcons(SheetBuilder& builder, std::uint32_t row) {
  std::uint32_t place = 0;
  for (std::size_t set = 0; set < 20; ++set) {
    auto const name = static_cast<IconSetName>(set);
    for (unsigned index = 0; index < Visuals::countIcons(name); ++index) {
      PictureCell& cell = builder.text(row + place / 12, place % 12, std::to_string(index));
      cell.icon = Visuals::Icon{name, index};
      cell.horizontal = HorizontalAlignment::Right;
      ++place;
    }
  }
}

}  // namespace

Picture makeGallery() {
  SheetBuilder builder(28, 12);
  addFonts(builder, 0);
  addAlignments(builder, 2);
  addTurns(builder, 4);
  addOverruns(builder, 5);
  addFills(builder, 8);
  addBorders(builder, 10);
  addBars(builder, 18);
  addIcons(builder, 20);
  return builder.build();
}

}  // namespace Zorv::Render::Tests
