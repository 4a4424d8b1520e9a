#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Utils/Export.h"

namespace Zorv::DOM {

/// Stable identities of a table's rows or columns, in the order of their positions.
///
/// The axis has a fixed number of positions, from 0. Each position has an identity, from 1.
/// Consecutive identities are stored as runs: an untouched axis is one run, and each edit adds a
/// few. A removed identity leaves marks at its place. They keep their place among the neighbours
/// under later edits, so that a range whose corner row or column was deleted can still be located.
///
/// Threads: const members may run concurrently; the others need exclusive access.
class ZORV_HOST_EXPORT AxisIds {
public:
  /// An axis that was never edited: the identity at position n is n + 1.
  explicit AxisIds(unsigned long length);

  /// The number of positions.
  [[nodiscard]] unsigned long getLength() const noexcept { return _length; }

  /// The identity at a position, or 0 for a position outside the axis. Logarithmic in the number of
  /// runs.
  [[nodiscard]] unsigned long idAt(unsigned long position) const noexcept;

  /// The position of an identity. For a removed one, the position at which its successors begin;
  /// later insertions at its place lie before that. For an identity never given, the length.
  /// Logarithmic in the number of runs.
  [[nodiscard]] unsigned long beginOf(unsigned long id) const noexcept;

  /// The position after an identity. For a removed one, the position at which its predecessors end;
  /// later insertions at its place lie after that. For an identity never given, 0. Logarithmic in
  /// the number of runs.
  [[nodiscard]] unsigned long endOf(unsigned long id) const noexcept;

  /// Inserts `count` new identities at position `before` and removes the last `count` ones.
  /// Requires `before + count` not to exceed the length.
  void insert(unsigned long before, unsigned long count);
  /// Removes `count` identities from position `first` on and adds as many new ones at the end.
  /// Requires `first + count` not to exceed the length.
  void remove(unsigned long first, unsigned long count);
  /// Moves `count` identities from position `first` on to position `before`. Requires that `before`
  /// is not inside the moved part, and that neither exceeds the length.
  void move(unsigned long first, unsigned long count, unsigned long before);

private:
  /// A removed identity has two marks; insertions at its place go between them.
  enum class RunKind : std::uint8_t { Live, EndMark, BeginMark };

  struct Run {
    unsigned long firstId;
    unsigned long count;
    unsigned long position;  ///< of the first identity; for a mark, of the next live run
    RunKind kind;
  };

  using RunIndices = std::vector<std::size_t>;

  /// The run of an identity among the runs with these indices, or null.
  [[nodiscard]] Run const* findRun(RunIndices const& indices, unsigned long id) const noexcept;
  /// Splits the run at a position, so that a live run begins there. Returns its index, or the
  /// number of runs for the end of the axis.
  std::size_t splitAt(unsigned long position);
  /// The index at which a run for a position is inserted.
  std::size_t findGap(unsigned long position);
  void removeRuns(unsigned long first, unsigned long count);
  void insertRun(unsigned long before, unsigned long count);

  void renumber();
  void orderMarks();
  [[nodiscard]] RunIndices indicesById(RunKind excluded) const;

  unsigned long _length;
  unsigned long _nextId = 1;
  std::vector<Run> _runs;
  // Run indices by ascending first identity. Each list covers every identity ever given once.
  RunIndices _beginsById;  ///< live runs and begin marks
  RunIndices _endsById;    ///< live runs and end marks
};

}  // namespace Zorv::DOM
