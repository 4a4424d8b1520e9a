#include "ConditionalFormatters/WholeTable/CndFrmt_ValueCondition.h"

#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ValueCollectors.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CollectInBands.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

namespace {

class CollectNumbers {
public:
  void add(DOM::CellInfo const& /*cellInfo*/, FormulaValue value) {
    pushNumber(_numbers, std::move(value));
  }
  [[nodiscard]] std::vector<FloatNumber> finish() { return std::move(_numbers); }

private:
  std::vector<FloatNumber> _numbers;
};

}  // namespace

bool ValueCondition::holdsFor(DOM::CellInfo const& /*cellInfo*/, FormulaValueData const& data,
                              Formulas::EvaluationSession& /*session*/) const {
  return (*_operator)(data);
}

void ValueCondition::make(unsigned /*threadCount*/) const {
  _operator = _sources.factory.create(_formatRef);
}

void NumbersCondition::make(unsigned threadCount) const {
  if (threadCount == 1) {
    ValueCondition::make(threadCount);
    return;
  }
  std::vector<FloatNumber> numbers;
  collectInBands(
      {_sources.provider, _sources.table, _formatRef.first, threadCount},
      [] { return CollectNumbers(); },
      [&](std::vector<FloatNumber> const& ofBand) {
        numbers.insert(numbers.end(), ofBand.begin(), ofBand.end());
      });
  _operator = _sources.factory.createFromNumbers(_formatRef, std::move(numbers));
}

}  // namespace Zorv::ConditionalFormatters
