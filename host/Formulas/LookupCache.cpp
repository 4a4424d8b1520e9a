#include "Formulas/LookupCache.h"

#include "Formulas/Lookups/LookupStore.h"

namespace Zorv::Formulas {

LookupCache::LookupCache() : _store(std::make_unique<LookupStore>()) {}
LookupCache::~LookupCache() = default;

}  // namespace Zorv::Formulas
