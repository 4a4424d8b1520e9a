#pragma once

#include <memory>

#include "Utils/Export.h"

namespace Zorv::Formulas {

class LookupStore;

/// Indexes of ranges for COUNTIF, MATCH, VLOOKUP, RANK and similar functions, and results of SUM,
/// MAX, LARGE and others for their ranges. So a range that every cell of a table uses is walked
/// once, and not once for each cell. Answers are those of a walk, to the last bit.
///
/// A range is indexed when it is used again and again. Ranges of a few cells, ranges that move with
/// the cell and patterns are always walked. Takes up to 256 MiB, at most 128 bytes for a cell while
/// an index is built and about half of it afterwards; ranges that do not fit are walked.
///
/// Lifetime: for one ContextProvider whose document and locale do not change; borrows the texts of
/// its cells. Threads: may be shared by the sessions of several threads. Those that need the index
/// of a large range while one of them builds it help to build it.
class ZORV_HOST_EXPORT LookupCache {
public:
  LookupCache();
  LookupCache(LookupCache const&) = delete;
  LookupCache& operator=(LookupCache const&) = delete;
  ~LookupCache();

  /// For the engine itself.
  [[nodiscard]] LookupStore& getStore() noexcept { return *_store; }

private:
  std::unique_ptr<LookupStore> _store;
};

}  // namespace Zorv::Formulas
