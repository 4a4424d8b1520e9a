#include "render/Draw/Pages.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <span>

#include "Utils/Exceptions.h"
#include "render/Draw/Headings.h"

namespace Zorv::Render::Draw {

namespace {

constexpr double leastScale = 0.1;
constexpr double mostScale = 4;

/// One direction of a sheet that is divided.
struct Axis {
  std::span<double const> edges;
  std::vector<std::uint32_t> breaks;  ///< in order
  LineSpan titles;
  double room = 0;  ///< of a page, in pixels of the sheet
};

LineSpan clampSpan(std::uint32_t begin, std::uint32_t end, std::size_t edges) noexcept {
  auto const last = static_cast<std::uint32_t>(edges - 1);
  return {std::min(begin, last), std::min(std::max(begin, end), last)};
}

Extent toExtent(std::span<double const> edges, LineSpan const& lines) noexcept {
  return {edges[lines.begin], edges[lines.end]};
}

/// Titles stand on the pages behind them; not if they take most of a page.
double roomBehindTitles(Axis const& axis, double from) noexcept {
  Extent const titles = toExtent(axis.edges, axis.titles);
  bool const areRepeated = from >= titles.to && titles.length() <= axis.room / 2;
  return axis.room - (areRepeated ? titles.length() : 0);
}

/// The end of a page that begins at a line.
std::uint32_t findPageEnd(Axis const& axis, std::uint32_t first, std::uint32_t end) noexcept {
  double const from = axis.edges[first];
  // Sums of sizes are not exact.
  double const most = from + roomBehindTitles(axis, from) + 0.01;
  auto const lines = axis.edges.subspan(first + 1, end - first);
  auto const fitting = std::ranges::upper_bound(lines, most) - lines.begin();
  std::uint32_t const last = first + std::max(1U, static_cast<std::uint32_t>(fitting));
  auto const next = std::ranges::upper_bound(axis.breaks, first);
  return next != axis.breaks.end() ? std::min(last, *next) : last;
}

std::vector<Extent> divide(Axis const& axis, LineSpan const& lines, std::uint64_t limit) {
  std::vector<Extent> pieces;
  for (std::uint32_t first = lines.begin; first < lines.end && pieces.size() <= limit;) {
    std::uint32_t const next = findPageEnd(axis, first, lines.end);
    double const room = roomBehindTitles(axis, axis.edges[first]);
    Extent rest = toExtent(axis.edges, {first, next});
    while (next == first + 1 && rest.length() > room && pieces.size() <= limit) {
      pieces.push_back({rest.from, rest.from + room});
      rest.from += room;
    }
    pieces.push_back(rest);
    first = next;
  }
  return pieces;
}

/// The divided sheet, for one scale.
class Division {
public:
  Division(SheetGeometry const& geometry, double scale) : _setup(geometry.getSheet().page) {
    Box const paper = findPrintedPaper(_setup);
    HeadingSize const headings = findHeadingSize(geometry.getSheet());
    _rows =
        makeAxis(geometry.getRowEdges(), _setup.rowBreaks, paper.height() / scale - headings.height,
                 {_setup.titleRowsBegin, _setup.titleRowsEnd});
    _columns = makeAxis(geometry.getColumnEdges(), _setup.columnBreaks,
                        paper.width() / scale - headings.width,
                        {_setup.titleColumnsBegin, _setup.titleColumnsEnd});
  }

  [[nodiscard]] bool fits(LineBlock const& area) const {
    return isWithin(_rows, area.rows, _setup.fitHeight) &&
           isWithin(_columns, area.columns, _setup.fitWidth);
  }

  void addPages(LineBlock const& area, std::uint64_t limit, std::vector<Page>& pages) const {
    auto const rows = divide(_rows, area.rows, limit);
    auto const columns = divide(_columns, area.columns, limit);
    if (rows.size() * columns.size() + pages.size() > limit) {
      throw BaseRuntimeError(fmt::format(
          "cannot draw: there would be more than {} pages; draw a smaller range", limit));
    }
    auto const add = [&](Extent const& across, Extent const& down) {
      pages.push_back({down, across, titlesOf(_rows, down), titlesOf(_columns, across)});
    };
    std::size_t const count = rows.size() * columns.size();
    for (std::size_t i = 0; i < count; ++i) {
      if (_setup.goesAcrossFirst) {
        add(columns[i % columns.size()], rows[i / columns.size()]);
      } else {
        add(columns[i / rows.size()], rows[i % rows.size()]);
      }
    }
  }

private:
  static Axis makeAxis(std::span<double const> edges, std::vector<std::uint32_t> breaks,
                       double room, LineSpan const& titles) {
    std::ranges::sort(breaks);
    return {edges, std::move(breaks), clampSpan(titles.begin, titles.end, edges.size()),
            std::max(1.0, room)};
  }

  static Extent titlesOf(Axis const& axis, Extent const& page) noexcept {
    return roomBehindTitles(axis, page.from) < axis.room ? toExtent(axis.edges, axis.titles)
                                                         : Extent{};
  }

  static bool isWithin(Axis const& axis, LineSpan const& lines, unsigned limit) {
    return limit == 0 || divide(axis, lines, limit).size() <= limit;
  }

  PageSetup const& _setup;
  Axis _rows;
  Axis _columns;
};

std::vector<LineBlock> findAreas(SheetGeometry const& geometry) {
  std::size_t const rows = geometry.getRowEdges().size();
  std::size_t const columns = geometry.getColumnEdges().size();
  std::vector<LineBlock> areas;
  for (PrintArea const& area : geometry.getSheet().page.areas) {
    areas.push_back({clampSpan(area.rowBegin, area.rowEnd, rows),
                     clampSpan(area.columnBegin, area.columnEnd, columns)});
  }
  if (areas.empty()) {
    areas.push_back({clampSpan(0, static_cast<std::uint32_t>(rows), rows),
                     clampSpan(0, static_cast<std::uint32_t>(columns), columns)});
  }
  return areas;
}

/// The largest scale in whole percents at which all areas fit.
double findFittingScale(SheetGeometry const& geometry, std::vector<LineBlock> const& areas) {
  int least = 10;
  int most = 100;
  while (least < most) {
    int const middle = (least + most + 1) / 2;
    Division const division(geometry, middle / 100.0);
    bool const fits =
        std::ranges::all_of(areas, [&](LineBlock const& area) { return division.fits(area); });
    (fits ? least : most) = fits ? middle : middle - 1;
  }
  return least / 100.0;
}

}  // namespace

Box findPaper(PageSetup const& setup) noexcept {
  constexpr double least = 96;
  constexpr double most = 19200;
  auto const clamp = [&](double size) { return size > 0 ? std::clamp(size, least, most) : least; };
  return {0, 0, clamp(setup.width), clamp(setup.height)};
}

Box findPrintedPaper(PageSetup const& setup) noexcept {
  Box const paper = findPaper(setup);
  auto const margin = [](double size) { return size > 0 ? size : 0; };
  Box const printed{margin(setup.left), margin(setup.top), paper.right - margin(setup.right),
                    paper.bottom - margin(setup.bottom)};
  constexpr double least = 48;
  return printed.width() >= least && printed.height() >= least ? printed : paper;
}

PageList findPages(SheetGeometry const& geometry, std::uint64_t limit) {
  PageSetup const& setup = geometry.getSheet().page;
  auto const areas = findAreas(geometry);
  PageList list;
  list.scale = setup.scale > 0 ? std::clamp(setup.scale, leastScale, mostScale) : 1;
  if (setup.fitsPages) {
    list.scale = findFittingScale(geometry, areas);
  }
  Division const division(geometry, list.scale);
  for (LineBlock const& area : areas) {
    division.addPages(area, limit, list.pages);
  }
  return list;
}

}  // namespace Zorv::Render::Draw
