#pragma once

#include <memory>
#include <utility>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"

namespace Zorv::TestSupport {

/// Answers what another provider answers, which it owns: a base for providers that change one
/// answer, or watch it.
class ForwardingValueContextProvider : public ConditionalFormatters::ValueContextProvider {
public:
  explicit ForwardingValueContextProvider(
      std::unique_ptr<ConditionalFormatters::ValueContextProvider const> target)
      : _target(std::move(target)) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    return _target->getCellValue(cellInfo);
  }
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override { return _target->getTimeZone(); }
  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
    return _target->getFormulasContextProvider();
  }

private:
  std::unique_ptr<ConditionalFormatters::ValueContextProvider const> _target;
};

}  // namespace Zorv::TestSupport
