#include "render/Build/EdgeRows.h"

#include <algorithm>
#include <utility>

#include <boost/container_hash/hash.hpp>

namespace Zorv::Render {

namespace {

using DOM::BorderLine;
using DOM::LineStyle;

/// Thicker lines have a higher strength, and of equally thick ones those with fewer gaps.
int findStrength(LineStyle style) noexcept {
  switch (style) {
    case LineStyle::Hair:
      return 1;
    case LineStyle::Dotted:
      return 2;
    case LineStyle::DashDotDot:
      return 3;
    case LineStyle::DashDot:
      return 4;
    case LineStyle::Dashed:
      return 5;
    case LineStyle::Thin:
      return 6;
    case LineStyle::MediumDashDotDot:
      return 7;
    case LineStyle::SlantDashDot:
      return 8;
    case LineStyle::MediumDashDot:
      return 9;
    case LineStyle::MediumDashed:
      return 10;
    case LineStyle::Medium:
      return 11;
    case LineStyle::Double:
      return 12;
    case LineStyle::Thick:
      return 13;
    default:
      return 0;
  }
}

std::size_t hashOfEdges(CellEdges const& edges) {
  std::size_t hash = 0;
  for (auto const* line : {&edges.left, &edges.right, &edges.top, &edges.bottom, &edges.diagonalUp,
                           &edges.diagonalDown}) {
    DOM::Colour const colour = line->colour.value_or(DOM::Colour());
    boost::hash_combine(hash, static_cast<int>(line->style));
    boost::hash_combine(hash, colour.red);
    boost::hash_combine(hash, colour.green);
    boost::hash_combine(hash, colour.blue);
  }
  return hash;
}

}  // namespace

std::uint32_t EdgeTable::intern(CellEdges const& edges) {
  if (edges == _edges.front()) {
    return 0;
  }
  std::size_t const hash = hashOfEdges(edges);
  auto const [begin, end] = _byHash.equal_range(hash);
  auto const found =
      std::find_if(begin, end, [&](auto const& entry) { return _edges[entry.second] == edges; });
  if (found != end) {
    return found->second;
  }
  auto const index = static_cast<std::uint32_t>(_edges.size());
  _edges.push_back(edges);
  _byHash.emplace(hash, index);
  return index;
}

EdgeRows::EdgeRows(std::uint32_t columnCount, EdgeTable& table, std::vector<PictureCell>& cells)
    : _table(table), _cells(cells), _above(columnCount), _current(columnCount) {}

void EdgeRows::Row::clear() {
  if (std::exchange(isUsed, false)) {
    std::ranges::fill(places, Place());
  }
  hasLines = false;
  top.clear();
}

void EdgeRows::add(std::uint32_t column, CellEdges const& edges, bool isConditional,
                   std::uint32_t cell) {
  _current.places[column] = {&edges, isConditional, cell};
  _current.isUsed = true;
  _current.hasLines = _current.hasLines || edges != CellEdges();
}

void EdgeRows::endRow() {
  _between.clear();
  if (_above.hasLines || _current.hasLines) {
    for (std::size_t column = 0; column < _current.places.size(); ++column) {
      _between.push_back(findStronger(_above.places[column], &CellEdges::bottom,
                                      _current.places[column], &CellEdges::top));
    }
  }
  writeRow(_above, _between);
  _current.top = _between;
  _above.clear();
  std::swap(_above, _current);
}

void EdgeRows::finish() { endRow(); }

BorderLine EdgeRows::findStronger(Place const& first, BorderLine CellEdges::*firstSide,
                                  Place const& second, BorderLine CellEdges::*secondSide) {
  BorderLine const* const one = first.edges != nullptr ? &(first.edges->*firstSide) : nullptr;
  BorderLine const* const two = second.edges != nullptr ? &(second.edges->*secondSide) : nullptr;
  if (one == nullptr || two == nullptr) {
    BorderLine const* const only = one != nullptr ? one : two;
    return only != nullptr ? *only : BorderLine();
  }
  std::pair const ofOne(findStrength(one->style), first.isConditional);
  std::pair const ofTwo(findStrength(two->style), second.isConditional);
  return ofTwo > ofOne ? *two : *one;
}

void EdgeRows::writeRow(Row const& row, std::vector<BorderLine> const& bottom) {
  if (!row.isUsed || (!row.hasLines && row.top.empty() && bottom.empty())) {
    return;
  }
  auto const& places = row.places;
  Place const outside;
  for (std::size_t column = 0; column < places.size(); ++column) {
    Place const& place = places[column];
    if (place.cell == noCell) {
      continue;
    }
    CellEdges edges;
    edges.diagonalUp = place.edges->diagonalUp;
    edges.diagonalDown = place.edges->diagonalDown;
    edges.left = findStronger(column > 0 ? places[column - 1] : outside, &CellEdges::right, place,
                              &CellEdges::left);
    edges.right =
        findStronger(place, &CellEdges::right,
                     column + 1 < places.size() ? places[column + 1] : outside, &CellEdges::left);
    edges.top = row.top.empty() ? BorderLine() : row.top[column];
    edges.bottom = bottom.empty() ? BorderLine() : bottom[column];
    _cells[place.cell].edges = _table.intern(edges);
  }
}

}  // namespace Zorv::Render
