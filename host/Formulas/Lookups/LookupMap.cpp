#include "Formulas/Lookups/LookupMap.h"

#include <algorithm>

namespace Zorv::Formulas {

namespace {

thread_local bool isBuilding = false;

std::size_t bytesToBuild(LookupCost cost) noexcept {
  return cost.build * LookupBudget::bytesPerCell + LookupBudget::bytesPerIndex;
}

}  // namespace

bool LookupBudget::reserve(LookupCost cost) noexcept {
  std::lock_guard const lock(_mutex);
  bool const isThere = bytesToBuild(cost) <= _free;
  _free -= isThere ? bytesToBuild(cost) : 0;
  return isThere;
}

std::size_t LookupBudget::settle(LookupCost cost, std::size_t bytes) noexcept {
  std::lock_guard const lock(_mutex);
  _free += bytesToBuild(cost);
  std::size_t const taken = std::min(_free, std::max(bytes, bytesPerIndex));
  _free -= taken;
  return taken;
}

bool LookupBudget::resize(std::size_t& taken, std::size_t bytes) noexcept {
  std::lock_guard const lock(_mutex);
  std::size_t const wanted = std::max(bytes, bytesPerIndex);
  if (wanted > _free + taken) {
    return false;
  }
  _free = _free + taken - wanted;
  taken = wanted;
  return true;
}

void LookupBudget::release(std::size_t bytes) noexcept {
  std::lock_guard const lock(_mutex);
  _free += bytes;
}

BuildScope::BuildScope() noexcept : _wasActive(std::exchange(isBuilding, true)) {}
BuildScope::~BuildScope() { isBuilding = _wasActive; }
bool BuildScope::isActive() noexcept { return isBuilding; }

}  // namespace Zorv::Formulas
