#pragma once

#include <memory>

#include "Utils/Export.h"

namespace Zorv::Formulas {

class LookupStore;

/// What COUNTIF, MATCH, VLOOKUP, RANK and their kin remember of the ranges in which they search,
/// and what SUM, MAX, LARGE and others gave for their ranges: so the same range for every cell of a
/// table costs one walk over it and not one for each cell. Answers are those of a walk, to the last
/// bit.
///
/// A range is remembered when it is asked about again and again; ranges of a few cells, ranges that
/// move with the cell and patterns are walked as ever. Takes up to 256 MiB, at most 128 bytes for a
/// cell while an index is made and about half of it afterwards; what does not fit is walked.
///
/// Lifetime: good for one ContextProvider whose document and locale do not change; borrows the
/// texts of its cells. Threads: may be shared by the sessions of several threads; those that need
/// the index of a large range while one of them makes it take a share of that work.
class ZORV_HOST_EXPORT LookupCache {
public:
  LookupCache();
  LookupCache(LookupCache const&) = delete;
  LookupCache& operator=(LookupCache const&) = delete;
  ~LookupCache();

  /// What is remembered; the engine's own business.
  [[nodiscard]] LookupStore& getStore() noexcept { return *_store; }

private:
  std::unique_ptr<LookupStore> _store;
};

}  // namespace Zorv::Formulas
