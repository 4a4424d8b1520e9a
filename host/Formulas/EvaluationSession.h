#pragma once

#include <cstdint>
#include <memory>

#include "Utils/Export.h"

namespace Zorv {
class WorkBudget;
}  // namespace Zorv

namespace Zorv::OfficeUtils {
class Moment;
}  // namespace Zorv::OfficeUtils

namespace Zorv::Formulas {

class LookupCache;
struct Workspace;

/// State that the evaluations of one thread share while the document stays unchanged: working
/// memory, the position of the cell read last (the next one is found from there without a search),
/// and a LookupCache. The answers are those of evaluations without a session.
///
/// A session may have a moment: TODAY, NOW and what else depends on the current date and time then
/// use it and do not read the clock.
///
/// A session may have a budget, from which its evaluations spend the steps that they take.
///
/// Ownership: borrows the cache, the moment and the budget, which must outlive it. Cheap to
/// construct: memory is taken at the first evaluation. Threads: for one evaluation at a time, which
/// may not begin another one of the same session.
class ZORV_HOST_EXPORT EvaluationSession {
public:
  /// Without a cache each search walks over its range.
  EvaluationSession() noexcept;
  /// With a cache, which several sessions may share.
  explicit EvaluationSession(LookupCache& lookups) noexcept;
  /// With a cache and a moment.
  EvaluationSession(LookupCache& lookups, OfficeUtils::Moment& moment) noexcept;
  EvaluationSession(EvaluationSession const&) = delete;
  EvaluationSession& operator=(EvaluationSession const&) = delete;
  ~EvaluationSession();

  /// Has the evaluations spend from a budget; they throw what WorkBudget::spend() throws. To be
  /// called before the first one. Null for none.
  void setBudget(WorkBudget* budget) noexcept { _budget = budget; }

  /// The steps that the evaluation before took, whether it ended or met a limit; 0 before the first
  /// one.
  [[nodiscard]] std::uint64_t countSteps() const noexcept;

  /// For the engine itself; made at the first call.
  [[nodiscard]] Workspace& getOrCreateWorkspace();

private:
  LookupCache* _lookups = nullptr;
  OfficeUtils::Moment* _moment = nullptr;
  WorkBudget* _budget = nullptr;
  std::unique_ptr<Workspace> _workspace;
};

}  // namespace Zorv::Formulas
