#include "ConditionalFormatters/CndFrmt_LiveResolver.h"

#include <utility>

#include "ConditionalFormatters/Live/CndFrmt_LiveTable.h"

namespace Zorv::ConditionalFormatters {

LiveResolver::LiveResolver(std::unique_ptr<LiveTable> table) noexcept : _table(std::move(table)) {}

LiveResolver::LiveResolver(LiveResolver&& other) noexcept = default;
LiveResolver& LiveResolver::operator=(LiveResolver&& other) noexcept = default;
LiveResolver::~LiveResolver() = default;

std::vector<TableRange> LiveResolver::apply(std::span<Change const> changes) {
  return _table->apply(changes);
}

bool LiveResolver::prepareSome(std::chrono::microseconds budget) {
  return _table->prepareSome(budget);
}

std::optional<OfficeUtils::Clock::TimePoint> LiveResolver::nextChange() const {
  return _table->nextChange();
}

void LiveResolver::check(ChangeChecks checks) { _table->check(std::move(checks)); }

TableResolver LiveResolver::current() const { return TableResolver(_table->getPrepared()); }

}  // namespace Zorv::ConditionalFormatters
