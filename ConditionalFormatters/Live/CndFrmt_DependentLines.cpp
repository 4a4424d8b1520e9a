#include "ConditionalFormatters/Live/CndFrmt_DependentLines.h"

#include <algorithm>

namespace Zorv::ConditionalFormatters {

namespace {

/// Collects intervals of lines from intervals of the place to which a corner has moved.
class MovedLines {
public:
  /// `corner`: where the corner is written.
  MovedLines(LineAxis const& axis, unsigned long corner) noexcept
      : _length(axis.length), _offset((axis.baseLine + axis.length - corner) % axis.length) {}

  /// Adds the lines of the cells whose corner lies at `first` or after it, and before `end`.
  void add(unsigned long first, unsigned long end) {
    if (first >= end) {
      return;
    }
    unsigned long const from = first + _offset;
    unsigned long const to = end + _offset;
    if (from >= _length) {
      _lines.push_back({from - _length, to - _length});
    } else if (to <= _length) {
      _lines.push_back({from, to});
    } else {
      _lines.push_back({from, _length});
      _lines.push_back({0, to - _length});
    }
  }

  [[nodiscard]] std::vector<LineInterval> const& get() const noexcept { return _lines; }

private:
  unsigned long _length;
  unsigned long _offset;
  std::vector<LineInterval> _lines;
};

/// Both corners move: the reference is a window of one size, but for the end of the axis.
std::vector<LineInterval> findByWindow(ReferenceLines const& reference, LineAxis const& axis,
                                       LineInterval const& changed) {
  unsigned long const upper = std::min(reference.first, reference.last);
  unsigned long const reach = std::max(reference.first, reference.last) - upper;
  MovedLines lines(axis, upper);
  unsigned long const cut = axis.length - reach;  // from here on the other corner is cut off
  lines.add(changed.first > reach ? changed.first - reach : 0, std::min(changed.end, cut));
  lines.add(cut, axis.length);
  return lines.get();
}

/// One corner moves: the reference grows and shrinks on one side of the other corner.
std::vector<LineInterval> findByMovingCorner(unsigned long fixed, unsigned long moving,
                                             LineAxis const& axis, LineInterval const& changed) {
  MovedLines lines(axis, moving);
  if (fixed < changed.first) {
    lines.add(changed.first, axis.length);
  } else if (fixed >= changed.end) {
    lines.add(0, changed.end);
  } else {
    lines.add(0, axis.length);
  }
  return lines.get();
}

}  // namespace

std::vector<LineInterval> findDependentLines(ReferenceLines const& reference, LineAxis const& axis,
                                             LineInterval const& changed) {
  LineInterval const inside{changed.first, std::min(changed.end, axis.length)};
  if (inside.first >= inside.end) {
    return {};
  }
  if (reference.firstIsRelative && reference.lastIsRelative) {
    return findByWindow(reference, axis, inside);
  }
  if (reference.firstIsRelative) {
    return findByMovingCorner(reference.last, reference.first, axis, inside);
  }
  if (reference.lastIsRelative) {
    return findByMovingCorner(reference.first, reference.last, axis, inside);
  }
  bool const meets = std::min(reference.first, reference.last) < inside.end &&
                     std::max(reference.first, reference.last) >= inside.first;
  return meets ? std::vector<LineInterval>{{0, axis.length}} : std::vector<LineInterval>();
}

}  // namespace Zorv::ConditionalFormatters
