#pragma once

#include <cstddef>
#include <vector>

#include "Utils/Export.h"

namespace Zorv::DOM {

/// The stable identities of the rows or of the columns of a table, in the order of their positions.
///
/// The axis has a fixed number of positions, counted from 0, each with an identity, counted from 1.
/// Neighbours that were never parted are kept as one run, so an untouched axis costs one run and
/// each edit adds a few. Identities that were removed keep their place in the order, which tells
/// what is left of a range whose corner is gone.
///
/// Threads: const members may run concurrently.
class ZORV_HOST_EXPORT AxisIds {
public:
  explicit AxisIds(unsigned long length);

  [[nodiscard]] unsigned long getLength() const noexcept { return _length; }

  /// The identity at a position, or 0 for a position outside the axis. Logarithmic in the number of
  /// runs.
  [[nodiscard]] unsigned long idAt(unsigned long position) const noexcept;

  /// The position of an identity, or, for one that was removed, the position of what follows it.
  /// An identity that never was yields the length. Logarithmic in the number of runs.
  [[nodiscard]] unsigned long beginOf(unsigned long id) const noexcept;

  /// The position after an identity, or, for one that was removed, after what precedes it. An
  /// identity that never was yields 0. Logarithmic in the number of runs.
  [[nodiscard]] unsigned long endOf(unsigned long id) const noexcept;

  /// Gives new identities to `count` positions from `before` on; what stood there moves up, and the
  /// last `count` identities are removed.
  void insert(unsigned long before, unsigned long count);
  /// Removes `count` identities from `first` on; what follows moves down, and as many positions at
  /// the end get new identities.
  void remove(unsigned long first, unsigned long count);
  /// Moves `count` identities from `first` on to where `before` stands. Requires that `before` is
  /// not inside what is moved.
  void move(unsigned long first, unsigned long count, unsigned long before);

private:
  struct Run {
    unsigned long firstId;
    unsigned long count;
    bool live;
    unsigned long position;  ///< of the first identity; of what follows, where the run is removed
  };

  [[nodiscard]] Run const* findRun(unsigned long id) const noexcept;
  /// Makes a run begin at a position; returns its index, or the number of runs for the length.
  std::size_t splitAt(unsigned long position);
  void markRemoved(std::size_t firstRun, std::size_t endRun) noexcept;
  [[nodiscard]] Run makeRun(unsigned long count) noexcept;
  void renumber();

  unsigned long _length;
  unsigned long _nextId = 1;
  std::vector<Run> _runs;
  std::vector<std::size_t> _runsById;  ///< indices of the runs, by ascending first identity
};

}  // namespace Zorv::DOM
