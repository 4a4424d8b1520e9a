#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "DOM/CellInfo.h"
#include "DOM/Table.h"

namespace Zorv::Formulas {
class EvaluationSession;
}  // namespace Zorv::Formulas

namespace Zorv::ConditionalFormatters {

/// What conditions are prepared from. Borrows everything.
struct ConditionSources {
  ValueContextProvider const& provider;
  DOM::Table const& table;
  OperatorsFactory const& factory;
};

/// One format's condition, to be asked about many cells of an unchanged document: what does not
/// depend on the cell is made once, when the first cell needs it.
///
/// Ownership: borrows what it is made from. Threads: may be asked from several threads.
class PreparedCondition {
public:
  PreparedCondition() = default;
  PreparedCondition(PreparedCondition const&) = delete;
  PreparedCondition& operator=(PreparedCondition const&) = delete;
  virtual ~PreparedCondition();

  /// Makes what the condition needs, where that has not been done, with the help of as many threads
  /// as a pass has; throws what making it throws, each time.
  void obtain(unsigned threadCount) const {
    if (!_isReady.load(std::memory_order_acquire)) {
      makeOnce(threadCount);
    }
  }

  /// What the format's Operator answers for a cell of the format's ranges, or for a position
  /// without a cell anywhere. Requires obtain(), and a session of the calling thread.
  [[nodiscard]] virtual bool holdsFor(DOM::CellInfo const& cellInfo, FormulaValueData const& data,
                                      Formulas::EvaluationSession& session) const = 0;

protected:
  virtual void make(unsigned threadCount) const = 0;

  /// Guards what is made; recursive, because a provider may ask about the table that it is read
  /// for.
  mutable std::recursive_mutex _mutex;

private:
  void makeOnce(unsigned threadCount) const;

  mutable std::atomic<bool> _isReady = false;
};

/// Prepares the condition of a format.
[[nodiscard]] std::unique_ptr<PreparedCondition const> prepareCondition(
    ConditionSources const& sources, ConditionalFormatRef const& formatRef);

}  // namespace Zorv::ConditionalFormatters
