#pragma once

#include <memory>
#include <span>

#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

namespace Zorv::Formulas {

class FollowedAreas;
class LookupStore;

/// Indexes of ranges for COUNTIF, MATCH, VLOOKUP, RANK and similar functions, and results of SUM,
/// MAX, LARGE and others for their ranges. So a range that every cell of a table uses is walked
/// once, and not once for each cell. Answers are those of a walk, to the last bit.
///
/// A range is indexed when it is used again and again. Ranges of a few cells, ranges that move with
/// the cell and patterns are always walked. Takes up to 256 MiB, at most 128 bytes for a cell while
/// an index is built and about half of it afterwards; ranges that do not fit are walked.
///
/// Lifetime: for one ContextProvider whose locale and names do not change, and whose document does
/// not change but for what valuesChanged() is told; borrows texts of its cells. Threads: may be
/// shared by the sessions of several threads. Those that need the index of a large range while one
/// of them builds it help to build it.
class ZORV_HOST_EXPORT LookupCache {
public:
  LookupCache();
  LookupCache(LookupCache const&) = delete;
  LookupCache& operator=(LookupCache const&) = delete;
  ~LookupCache();

  /// Has functions ask areas that somebody keeps up to date, before they walk over one or ask for
  /// an index. Borrows them; to be called before the first session is made.
  void follow(FollowedAreas const& areas) noexcept;

  /// Brings up to date what looks up equal values after the cells of some areas of a table were
  /// given new values, made or removed, a millisecond for a million cells, and forgets what else is
  /// out of date. Indexes that paid are built again at the next use. Requires exclusive access;
  /// sessions from before may not be used after it. If it throws, the cache may only be destroyed.
  void valuesChanged(DOM::Table const& table, std::span<TableRange const> areas);

  /// For the engine itself.
  [[nodiscard]] LookupStore& getStore() noexcept { return *_store; }

private:
  std::unique_ptr<LookupStore> _store;
};

}  // namespace Zorv::Formulas
