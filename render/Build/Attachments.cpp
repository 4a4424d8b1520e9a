#include "render/Build/Attachments.h"

#include <algorithm>

#include "render/Build/CellTexts.h"

namespace Zorv::Render {

namespace {

std::vector<PictureArea> placeLinks(PictureParts const& parts) {
  std::vector<PictureArea> areas;
  auto const& links = parts.sheet.hyperlinks;
  for (std::size_t i = 0; i < links.size(); ++i) {
    areas.push_back({.rowBegin = parts.rows.atOrAfter(links[i].range.firstRow),
                     .rowEnd = parts.rows.atOrAfter(links[i].range.endRow),
                     .columnBegin = parts.columns.atOrAfter(links[i].range.firstColumn),
                     .columnEnd = parts.columns.atOrAfter(links[i].range.endColumn),
                     .index = i});
  }
  return areas;
}

/// The parts of a text that runs cover, with their fonts.
std::vector<TextRun> makeRuns(Workbook::RichText const& runs, std::string const& text,
                              StyleLook const& look, Looks const& looks) {
  std::vector<TextRun> result;
  for (std::size_t i = 0; i < runs.size(); ++i) {
    std::size_t const begin = std::min(runs[i].begin, text.size());
    std::size_t const end =
        i + 1 < runs.size() ? std::min(runs[i + 1].begin, text.size()) : text.size();
    if (begin < end) {
      result.push_back({cleanText(std::string_view(text).substr(begin, end - begin), look.wraps),
                        looks.makeFont(look.look, runs[i].props)});
    }
  }
  return result;
}

}  // namespace

CellLinks::CellLinks(PictureParts const& parts)
    : _hyperlinks(parts.sheet.hyperlinks),
      _areas(placeLinks(parts), parts.columns.size()),
      _indices(parts.sheet.hyperlinks.size()) {}

std::uint32_t CellLinks::find(std::uint32_t column) {
  PictureArea const* const area = _areas.find(column);
  if (area == nullptr) {
    return 0;
  }
  std::uint32_t& index = _indices[area->index];
  if (index == 0) {
    _links.push_back(_hyperlinks[area->index].target);
    index = static_cast<std::uint32_t>(_links.size());
  }
  return index;
}

std::uint32_t RichTexts::find(unsigned long row, unsigned long column, std::string const& text,
                              StyleLook const& look) {
  auto const placeOf = [](Workbook::RichCell const& cell) {
    return std::pair(cell.row, cell.column);
  };
  auto const cell = std::ranges::lower_bound(_cells, std::pair(row, column), {}, placeOf);
  if (cell == _cells.end() || placeOf(*cell) != std::pair(row, column)) {
    return 0;
  }
  if (cell->text->size() > mostRuns - _runCount) {
    ++_plainCount;
    return 0;
  }
  _runCount += cell->text->size();
  auto const [known, isNew] = _known.try_emplace({cell->text.get(), look.look});
  if (isNew) {
    _texts.push_back(makeRuns(*cell->text, text, look, _looks));
    known->second = static_cast<std::uint32_t>(_texts.size());
  }
  return known->second;
}

}  // namespace Zorv::Render
