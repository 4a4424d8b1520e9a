#include "DOM/AxisIds.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

std::vector<unsigned long> idsOf(AxisIds const& axis) {
  std::vector<unsigned long> ids;
  for (unsigned long position = 0; position < axis.getLength(); ++position) {
    ids.push_back(axis.idAt(position));
  }
  return ids;
}

using Ids = std::vector<unsigned long>;

TEST(AxisIds, CountsFromOne) {
  AxisIds const axis(4);
  EXPECT_EQ(axis.getLength(), 4UL);
  EXPECT_EQ(idsOf(axis), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(axis.beginOf(3), 2UL);
  EXPECT_EQ(axis.endOf(3), 3UL);
}

TEST(AxisIds, NamesNothingOutsideTheAxis) {
  AxisIds const axis(4);
  EXPECT_EQ(axis.idAt(4), 0UL);
  for (unsigned long const never : {0UL, 5UL}) {
    EXPECT_EQ(axis.beginOf(never), 4UL);
    EXPECT_EQ(axis.endOf(never), 0UL);
  }
}

TEST(AxisIds, InsertionGivesNewIdsAndRemovesTheLast) {
  AxisIds axis(5);
  axis.insert(2, 2);
  EXPECT_EQ(idsOf(axis), (Ids{1, 2, 6, 7, 3}));
  axis.insert(0, 1);
  EXPECT_EQ(idsOf(axis), (Ids{8, 1, 2, 6, 7}));
}

TEST(AxisIds, RemovalGivesNewIdsAtTheEnd) {
  AxisIds axis(5);
  axis.remove(1, 2);
  EXPECT_EQ(idsOf(axis), (Ids{1, 4, 5, 6, 7}));
  axis.remove(3, 2);
  EXPECT_EQ(idsOf(axis), (Ids{1, 4, 5, 8, 9}));
}

TEST(AxisIds, MovingKeepsIds) {
  AxisIds axis(6);
  axis.move(1, 2, 5);
  EXPECT_EQ(idsOf(axis), (Ids{1, 4, 5, 2, 3, 6}));
  axis.move(3, 2, 1);
  EXPECT_EQ(idsOf(axis), (Ids{1, 2, 3, 4, 5, 6}));
  axis.move(0, 1, 6);
  EXPECT_EQ(idsOf(axis), (Ids{2, 3, 4, 5, 6, 1}));
}

TEST(AxisIds, EditsOfNothingChangeNothing) {
  AxisIds axis(3);
  axis.insert(1, 0);
  axis.remove(1, 0);
  axis.move(1, 0, 3);
  axis.move(1, 1, 1);
  axis.move(1, 1, 2);
  EXPECT_EQ(idsOf(axis), (Ids{1, 2, 3}));
}

TEST(AxisIds, TheWholeAxisMayBeReplaced) {
  AxisIds axis(3);
  axis.remove(0, 3);
  EXPECT_EQ(idsOf(axis), (Ids{4, 5, 6}));
  EXPECT_GE(axis.beginOf(1), axis.endOf(3));
  axis.insert(0, 3);
  EXPECT_EQ(idsOf(axis), (Ids{7, 8, 9}));
}

TEST(AxisIds, ARemovedIdTellsWhereItsNeighboursAre) {
  AxisIds axis(6);
  axis.remove(2, 1);  // 1 2 4 5 6 7
  EXPECT_EQ(axis.beginOf(3), 2UL);
  EXPECT_EQ(axis.endOf(3), 2UL);
  axis.insert(0, 1);  // 8 1 2 4 5 6
  EXPECT_EQ(axis.beginOf(3), 3UL);
  EXPECT_EQ(axis.endOf(3), 3UL);
}

TEST(AxisIds, WhatIsInsertedForARemovedIdLiesOnNeitherOfItsSides) {
  AxisIds axis(6);
  axis.remove(2, 1);
  axis.insert(2, 1);  // 1 2 8 4 5 6
  EXPECT_EQ(axis.beginOf(3), 3UL);
  EXPECT_EQ(axis.endOf(3), 2UL);
  axis.remove(2, 1);  // 1 2 4 5 6 9
  EXPECT_EQ(axis.beginOf(3), 2UL);
  EXPECT_EQ(axis.endOf(3), 2UL);
}

TEST(AxisIds, NeighboursOfARemovedIdMoveWithoutIt) {
  AxisIds axis(6);
  axis.remove(2, 1);   // 1 2 4 5 6 7
  axis.move(1, 1, 5);  // 1 4 5 6 2 7
  EXPECT_EQ(axis.endOf(3), 1UL);
  EXPECT_EQ(axis.beginOf(3), 1UL);
}

TEST(AxisIds, ARemovedIdMovesWithWhatSurroundsIt) {
  AxisIds axis(6);
  axis.remove(2, 1);   // 1 2 4 5 6 7
  axis.move(1, 2, 5);  // 1 5 6 2 4 7
  EXPECT_EQ(axis.endOf(3), 4UL);
  EXPECT_EQ(axis.beginOf(3), 4UL);
}

/// Model of an axis: one entry for each identity and each mark.
class ModelAxis {
public:
  explicit ModelAxis(unsigned long length) {
    for (unsigned long i = 0; i < length; ++i) {
      _entries.push_back({++_lastId, Kind::Live});
    }
  }

  [[nodiscard]] unsigned long getLastId() const { return _lastId; }

  [[nodiscard]] Ids ids() const {
    Ids ids;
    for (Entry const& entry : _entries) {
      if (entry.kind == Kind::Live) {
        ids.push_back(entry.id);
      }
    }
    return ids;
  }

  [[nodiscard]] unsigned long beginOf(unsigned long id) const {
    return liveBefore(indexOf(id, Kind::BeginMark));
  }
  [[nodiscard]] unsigned long endOf(unsigned long id) const {
    std::size_t const index = indexOf(id, Kind::EndMark);
    return liveBefore(index) + (_entries[index].kind == Kind::Live ? 1 : 0);
  }

  void insert(unsigned long before, unsigned long count) {
    insertAt(before, count);
    removeAt(ids().size() - count, count);
  }
  void remove(unsigned long first, unsigned long count) {
    removeAt(first, count);
    insertAt(ids().size(), count);
  }
  void move(unsigned long first, unsigned long count, unsigned long before) {
    std::size_t const firstIndex = indexAt(first);
    std::size_t const lastIndex = indexAt(first + count - 1);
    std::vector<Entry> const moved(at(firstIndex), at(lastIndex + 1));
    std::size_t const target = gapBefore(before);
    if (target <= firstIndex) {
      _entries.erase(at(firstIndex), at(lastIndex + 1));
      _entries.insert(at(target), moved.begin(), moved.end());
    } else {
      _entries.insert(at(target), moved.begin(), moved.end());
      _entries.erase(at(firstIndex), at(lastIndex + 1));
    }
    orderMarks();
  }

private:
  enum class Kind { Live, EndMark, BeginMark };
  struct Entry {
    unsigned long id;
    Kind kind;
  };

  std::vector<Entry>::iterator at(std::size_t index) {
    return _entries.begin() + static_cast<std::ptrdiff_t>(index);
  }

  [[nodiscard]] std::size_t indexOf(unsigned long id, Kind mark) const {
    auto const found = std::find_if(_entries.begin(), _entries.end(), [&](Entry const& entry) {
      return entry.id == id && (entry.kind == Kind::Live || entry.kind == mark);
    });
    return static_cast<std::size_t>(found - _entries.begin());
  }

  [[nodiscard]] unsigned long liveBefore(std::size_t index) const {
    return static_cast<unsigned long>(
        std::count_if(_entries.begin(), _entries.begin() + static_cast<std::ptrdiff_t>(index),
                      [](Entry const& entry) { return entry.kind == Kind::Live; }));
  }

  /// The index of the live entry at a position, or the number of entries for the end.
  [[nodiscard]] std::size_t indexAt(unsigned long position) const {
    for (std::size_t index = 0; index < _entries.size(); ++index) {
      if (_entries[index].kind == Kind::Live && position-- == 0) {
        return index;
      }
    }
    return _entries.size();
  }

  [[nodiscard]] std::size_t gapBefore(unsigned long position) const {
    std::size_t index = indexAt(position);
    while (index > 0 && _entries[index - 1].kind == Kind::BeginMark) {
      --index;
    }
    return index;
  }

  void insertAt(unsigned long before, unsigned long count) {
    for (std::size_t gap = gapBefore(before); count > 0; --count, ++gap) {
      _entries.insert(at(gap), {++_lastId, Kind::Live});
    }
  }

  void removeAt(unsigned long first, unsigned long count) {
    for (; count > 0; --count) {
      std::size_t const index = indexAt(first);
      unsigned long const id = _entries[index].id;
      _entries[index].kind = Kind::EndMark;
      _entries.insert(at(index + 1), {id, Kind::BeginMark});
      orderMarks();
    }
  }

  void orderMarks() {
    for (std::size_t i = 1; i < _entries.size(); ++i) {
      for (std::size_t j = i;
           j > 0 && _entries[j - 1].kind == Kind::BeginMark && _entries[j].kind == Kind::EndMark;
           --j) {
        std::swap(_entries[j - 1], _entries[j]);
      }
    }
  }

  std::vector<Entry> _entries;
  unsigned long _lastId = 0;
};

class RandomEdits {
public:
  explicit RandomEdits(unsigned seed) : _generator(seed) {}

  unsigned long upTo(unsigned long largest) {
    return std::uniform_int_distribution<unsigned long>(0, largest)(_generator);
  }

  template <class... Axes>
  void insertInto(unsigned long length, Axes&... axes) {
    unsigned long const count = 1 + upTo(3);
    unsigned long const before = upTo(length - count);
    (axes.insert(before, count), ...);
  }
  template <class... Axes>
  void removeFrom(unsigned long length, Axes&... axes) {
    unsigned long const count = 1 + upTo(3);
    unsigned long const first = upTo(length - count);
    (axes.remove(first, count), ...);
  }
  template <class... Axes>
  void moveWithin(unsigned long length, Axes&... axes) {
    unsigned long const count = 1 + upTo(3);
    unsigned long const first = upTo(length - count);
    unsigned long const before = upTo(length);
    if (before < first || before > first + count) {
      (axes.move(first, count, before), ...);
    }
  }

private:
  std::mt19937 _generator;
};

TEST(AxisIds, AgreesWithThePlainestAxisOverRandomEdits) {
  constexpr unsigned long length = 24;
  for (unsigned seed = 0; seed < 20; ++seed) {
    SCOPED_TRACE(seed);
    RandomEdits random(seed);
    AxisIds axis(length);
    ModelAxis model(length);
    for (int step = 0; step < 60; ++step) {
      switch (random.upTo(2)) {
        case 0:
          random.insertInto(length, axis, model);
          break;
        case 1:
          random.removeFrom(length, axis, model);
          break;
        default:
          random.moveWithin(length, axis, model);
      }
      ASSERT_EQ(idsOf(axis), model.ids()) << "step " << step;
      for (unsigned long id = 1; id <= model.getLastId(); ++id) {
        ASSERT_EQ(axis.beginOf(id), model.beginOf(id)) << "step " << step << " id " << id;
        ASSERT_EQ(axis.endOf(id), model.endOf(id)) << "step " << step << " id " << id;
      }
    }
  }
}

/// Range as the list of its identities.
struct ModelRange {
  unsigned long firstId;
  unsigned long lastId;
  Ids members;

  void insert(unsigned long before, unsigned long count, Ids const& old, Ids const& current) {
    auto const begin = std::ranges::find_first_of(old, members) - old.begin();
    auto const end = begin + static_cast<std::ptrdiff_t>(members.size());
    auto const at = static_cast<std::ptrdiff_t>(before);
    if (begin < at && at < end) {
      members.insert(members.begin() + (at - begin), current.begin() + at,
                     current.begin() + at + static_cast<std::ptrdiff_t>(count));
    }
    keepThoseOf(current);
  }

  void keepThoseOf(Ids const& current) {
    std::erase_if(
        members, [&](unsigned long id) { return std::ranges::find(current, id) == current.end(); });
  }
};

void expectRange(AxisIds const& axis, ModelRange const& range, Ids const& ids) {
  unsigned long const begin = axis.beginOf(range.firstId);
  unsigned long const end = axis.endOf(range.lastId);
  if (range.members.empty()) {
    EXPECT_GE(begin, end);
    return;
  }
  auto const first = std::ranges::find(ids, range.members.front()) - ids.begin();
  EXPECT_EQ(begin, static_cast<unsigned long>(first));
  EXPECT_EQ(end, static_cast<unsigned long>(first) + range.members.size());
}

TEST(AxisIds, RangesGrowWithinShrinkAndVanishOverRandomEdits) {
  constexpr unsigned long length = 24;
  for (unsigned seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    RandomEdits random(seed);
    AxisIds axis(length);
    std::vector<ModelRange> ranges;
    for (int step = 0; step < 40; ++step) {
      Ids const old = idsOf(axis);
      auto const first = old.begin() + static_cast<std::ptrdiff_t>(random.upTo(length - 6));
      auto const last = first + static_cast<std::ptrdiff_t>(random.upTo(5));
      ranges.push_back({*first, *last, Ids(first, last + 1)});
      unsigned long const count = 1 + random.upTo(2);
      unsigned long const place = random.upTo(length - count);
      bool const inserts = random.upTo(1) == 0;
      inserts ? axis.insert(place, count) : axis.remove(place, count);
      Ids const current = idsOf(axis);
      for (ModelRange& range : ranges) {
        if (inserts && !range.members.empty()) {
          range.insert(place, count, old, current);
        } else {
          range.keepThoseOf(current);
        }
        expectRange(axis, range, current);
      }
      ASSERT_FALSE(HasFailure()) << "step " << step;
    }
  }
}

}  // namespace
}  // namespace Zorv::DOM
