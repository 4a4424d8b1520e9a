#include "Formulas/LookupCache.h"

#include "Formulas/Lookups/LookupStore.h"

namespace Zorv::Formulas {

LookupCache::LookupCache() : _store(std::make_unique<LookupStore>()) {}
LookupCache::~LookupCache() = default;

void LookupCache::valuesChanged(DOM::Table const& table, std::span<TableRange const> areas) {
  _store->valuesChanged(table, areas);
}

void LookupCache::follow(FollowedAreas const& areas) noexcept { _store->follow(areas); }

}  // namespace Zorv::Formulas
