#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Utils/Export.h"

namespace Zorv::DOM {

/// The stable identities of the rows or of the columns of a table, in the order of their positions.
///
/// The axis has a fixed number of positions, counted from 0, each with an identity, counted from 1.
/// Neighbours that were never parted are kept as one run, so an untouched axis costs one run and
/// each edit adds a few. Identities that were removed leave marks where they were, which tell what
/// is left of a range whose corner is gone: a mark stays in its place between the neighbours,
/// whatever is inserted there or moved away.
///
/// Threads: const members may run concurrently; the others need exclusive access.
class ZORV_HOST_EXPORT AxisIds {
public:
  explicit AxisIds(unsigned long length);

  [[nodiscard]] unsigned long getLength() const noexcept { return _length; }

  /// The identity at a position, or 0 for a position outside the axis. Logarithmic in the number of
  /// runs.
  [[nodiscard]] unsigned long idAt(unsigned long position) const noexcept;

  /// The position of an identity, or, for one that was removed, where what followed it begins, so
  /// that what is inserted in its place lies before. An identity that never was yields the length.
  /// Logarithmic in the number of runs.
  [[nodiscard]] unsigned long beginOf(unsigned long id) const noexcept;

  /// The position after an identity, or, for one that was removed, where what preceded it ends, so
  /// that what is inserted in its place lies behind. An identity that never was yields 0.
  /// Logarithmic in the number of runs.
  [[nodiscard]] unsigned long endOf(unsigned long id) const noexcept;

  /// Gives new identities to `count` positions from `before` on; what stood there moves up, and the
  /// last `count` identities are removed. Requires `before + count` not to exceed the length.
  void insert(unsigned long before, unsigned long count);
  /// Removes `count` identities from `first` on; what follows moves down, and as many positions at
  /// the end get new identities. Requires `first + count` not to exceed the length.
  void remove(unsigned long first, unsigned long count);
  /// Moves `count` identities from `first` on to where `before` stands. Requires that `before` is
  /// not inside what is moved, and that neither exceeds the length.
  void move(unsigned long first, unsigned long count, unsigned long before);

private:
  /// Removed identities have two marks, and whatever comes to their place goes between them.
  enum class RunKind : std::uint8_t { Live, EndMark, BeginMark };

  struct Run {
    unsigned long firstId;
    unsigned long count;
    unsigned long position;  ///< of the first identity; of what follows, where this is a mark
    RunKind kind;
  };

  using RunIndices = std::vector<std::size_t>;

  /// The run of an identity among those told by their indices, or null.
  [[nodiscard]] Run const* findRun(RunIndices const& indices, unsigned long id) const noexcept;
  /// Makes a live run begin at a position; returns its index, or the number of runs for the
  /// position behind them all.
  std::size_t splitAt(unsigned long position);
  /// The index at which what comes to a position is inserted.
  std::size_t findGap(unsigned long position);
  void removeRuns(unsigned long first, unsigned long count);
  void insertRun(unsigned long before, unsigned long count);

  void renumber();
  void orderMarks();
  [[nodiscard]] RunIndices indicesById(RunKind leftOut) const;

  unsigned long _length;
  unsigned long _nextId = 1;
  std::vector<Run> _runs;
  // The indices of the runs by ascending first identity: each holds every identity ever given once.
  RunIndices _beginsById;  ///< of the live runs and the begin marks
  RunIndices _endsById;    ///< of the live runs and the end marks
};

}  // namespace Zorv::DOM
