#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassRequest.h"
#include "DOM/Cell.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/LookupCache.h"
#include "OfficeUtils/Moment.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

class PreparedFormula;
class RangeOperands;

/// A cell that conditions are asked about.
struct TestedCell {
  FormulaValueData data;
  /// True if the cell exists and lies in the ranges of the format: its value is then among those
  /// that are collected from the ranges.
  bool isCollected;
  /// The cell as its table holds it; null if it does not exist, or is not known.
  DOM::Cell const* cell = nullptr;
};

/// State of one thread in a pass: one moment for all of its cells, and a session of the formula
/// engine, which spends from the budget of the pass. Threads: for one thread at a time.
class PassContext {
public:
  PassContext(Formulas::LookupCache& lookups, OfficeUtils::Clock::TimePoint moment,
              PassResources const& resources)
      : _moment(moment), _session(lookups, _moment), _resources(resources) {
    _session.setBudget(resources.budget);
  }

  [[nodiscard]] OfficeUtils::Moment& getMoment() noexcept { return _moment; }
  [[nodiscard]] Formulas::EvaluationSession& getSession() noexcept { return _session; }
  [[nodiscard]] PassResources const& getResources() const noexcept { return _resources; }

  /// The text of a cell's value, made by `makeText()` for the first condition that asks. Valid
  /// until another cell's is asked for.
  template <class MakeText>
  [[nodiscard]] std::string const& getOrMakeText(CellIndex cell, MakeText const& makeText) {
    if (_textCell != cell) {
      _textCell.reset();
      _text = makeText();
      _textCell = cell;
    }
    return _text;
  }

private:
  OfficeUtils::Moment _moment;
  Formulas::EvaluationSession _session;  // borrows the moment
  PassResources _resources;
  std::optional<CellIndex> _textCell;  ///< whose value `_text` is
  std::string _text;
};

/// One format's condition for many cells of an unchanged document: a predicate, and the operands
/// that do not depend on the cell, prepared once.
///
/// Immutable. Ownership: borrows the format and what it was prepared from. Threads: may be asked
/// from several threads, each with a pass context of its own.
class PreparedCondition {
public:
  PreparedCondition() = default;
  PreparedCondition(PreparedCondition const&) = delete;
  PreparedCondition& operator=(PreparedCondition const&) = delete;
  virtual ~PreparedCondition();

  /// Answers, asserts and throws what the format's Operator does.
  [[nodiscard]] virtual bool holds(TestedCell const& cell, PassContext& pass) const = 0;

  /// The operands that the cell's value is tested against. For explanations of single cells: the
  /// occurrences of a value are counted in all ranges.
  [[nodiscard]] virtual ConditionOperands findOperands(TestedCell const& cell,
                                                       PassContext& pass) const = 0;

  /// Its formulas, in an order that depends on its kind alone. None of a condition without
  /// formulas.
  [[nodiscard]] virtual std::vector<PreparedFormula const*> listFormulas() const { return {}; }

  /// True if a cell's value is judged by its order against the value of each formula, and by
  /// nothing else; values of another kind than the formula's are judged alike.
  [[nodiscard]] virtual bool comparesWithFormulas() const noexcept { return false; }

  /// True if it throws for every other cell, since formulas of it have met limits of the engine.
  [[nodiscard]] virtual bool hasGivenUp() const noexcept { return false; }
};

/// Sources from which a format's condition is prepared, and the request that needs it. Borrows
/// everything.
struct ConditionSources {
  ValueContextProvider const& provider;
  DOM::Table const& table;
  RangeOperands const* operands;  ///< null if the condition takes none from the format's ranges
  PassRequest request;
};

/// Prepares the condition of a format. Stops the process, or throws, where OperatorsFactory does.
[[nodiscard]] std::unique_ptr<PreparedCondition const> prepareCondition(
    ConditionSources const& sources, ConditionalFormatRef const& formatRef);

}  // namespace Zorv::ConditionalFormatters
