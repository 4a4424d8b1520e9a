#pragma once

#include <memory>

#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "support/Journal.h"
#include "support/RecordingContexts.h"
#include "support/RecordingEngine.h"
#include "support/RecordingValueContextProvider.h"

namespace Zorv::TestSupport {

/// A document of one table, and fakes around it that share one journal.
struct RecordingHost {
  Journal journal;
  DOM::Table table;
  DOM::Styles styles;
  RecordingContextProvider contextProvider{table, journal};
  RecordingEngine engine{journal};

  /// A provider over the table, for a calculator to own; must not outlive this object.
  [[nodiscard]] std::unique_ptr<RecordingValueContextProvider> makeProvider() {
    return std::make_unique<RecordingValueContextProvider>(contextProvider, journal);
  }
};

}  // namespace Zorv::TestSupport
