#pragma once

#include <atomic>
#include <cstddef>
#include <memory>

#include "DOM/Table.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"

namespace Zorv::TestSupport {

/// Hands over the cells' own values, and counts how often they are read, in a count that outlives
/// it. Counts without synchronising, so as to hide no race.
class CountingValueContextProvider final : public ForwardingValueContextProvider {
public:
  CountingValueContextProvider(DOM::Table const& table, std::atomic<std::size_t>& reads)
      : ForwardingValueContextProvider(std::make_unique<PlainValueContextProvider>(table)),
        _reads(reads) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    _reads.fetch_add(1, std::memory_order_relaxed);
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

private:
  std::atomic<std::size_t>& _reads;
};

}  // namespace Zorv::TestSupport
