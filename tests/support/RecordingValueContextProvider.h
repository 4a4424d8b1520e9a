#pragma once

#include <functional>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/CellInfo.h"
#include "support/Journal.h"
#include "support/RecordingContexts.h"

namespace Zorv::TestSupport {

/// A provider of the values that a table's cells hold, or of those that a function gives.
///
/// Notes "getCellValue(ROW,COLUMN)", "getTimeZone", "getFormulasContextProvider" and, when it is
/// destroyed, "~ValueContextProvider". Borrows the context provider and the journal.
class RecordingValueContextProvider : public ConditionalFormatters::ValueContextProvider {
public:
  using ValueAnswer = std::function<FormulaValue(DOM::CellInfo const&)>;

  RecordingValueContextProvider(RecordingContextProvider const& contextProvider, Journal& journal)
      : _contextProvider(contextProvider), _journal(journal) {}
  RecordingValueContextProvider(RecordingValueContextProvider const&) = delete;
  RecordingValueContextProvider& operator=(RecordingValueContextProvider const&) = delete;
  ~RecordingValueContextProvider() override;

  /// Every value is what the function returns or throws.
  void answerBy(ValueAnswer answer) { _answer = std::move(answer); }

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override;
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override;
  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override;

private:
  RecordingContextProvider const& _contextProvider;
  Journal& _journal;
  ValueAnswer _answer;
};

}  // namespace Zorv::TestSupport
