#include "DOM/SharedStyle.h"

#include "DOM/StylePool.h"

namespace Zorv::DOM {

void intrusive_ptr_release(SharedStyle<CellStyle> const* style) noexcept {
  StylePool::release(style);
}

SharedObjectFactory::SharedObjectFactory() : _pool(std::make_shared<StylePool>()) {}
SharedObjectFactory::~SharedObjectFactory() = default;

SharedCellStylePtr SharedObjectFactory::create(CellStyle style) const {
  return _pool->getOrCreate(std::move(style));
}

}  // namespace Zorv::DOM
