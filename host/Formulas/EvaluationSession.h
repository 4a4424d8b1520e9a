#pragma once

#include <memory>

#include "Utils/Export.h"

namespace Zorv::Formulas {

class LookupCache;
struct Workspace;

/// What the evaluations of one thread share while the document stays unchanged: the memory in which
/// they work, the place of the cell that they read last, from which the next one is found without a
/// search, and what a LookupCache remembers of the ranges in which they search. The answers are
/// those of evaluations without a session.
///
/// Ownership: borrows the cache, which must outlive it. Made cheaply: the memory is taken at the
/// first evaluation. Threads: for one evaluation at a time, which may not begin another one of the
/// same session.
class ZORV_HOST_EXPORT EvaluationSession {
public:
  /// Of a session without a cache each search walks over its range.
  EvaluationSession() noexcept;
  explicit EvaluationSession(LookupCache& lookups) noexcept;
  EvaluationSession(EvaluationSession const&) = delete;
  EvaluationSession& operator=(EvaluationSession const&) = delete;
  ~EvaluationSession();

  /// What an evaluation works with; the engine's own business.
  [[nodiscard]] Workspace& obtainWorkspace();

private:
  LookupCache* _lookups = nullptr;
  std::unique_ptr<Workspace> _workspace;
};

}  // namespace Zorv::Formulas
