#include "render/Draw/OutputStream.h"

#include "render/Draw/Cairo.h"

namespace Zorv::Render::Draw {

/// Cairo 1.16 crashes when it closes a PDF after a failed write, so that none fails.
cairo_status_t OutputStream::write(void* stream, unsigned char const* bytes,
                                   unsigned size) noexcept {
  auto& self = *static_cast<OutputStream*>(stream);
  try {
    if (self._isOpen) {
      self._sink({reinterpret_cast<char const*>(bytes), size});
    }
  } catch (...) {
    self._failure = std::current_exception();
    self._isOpen = false;
  }
  return CAIRO_STATUS_SUCCESS;
}

void OutputStream::check(cairo_status_t status) const {
  if (_failure) {
    std::rethrow_exception(_failure);
  }
  checkStatus(status);
}

}  // namespace Zorv::Render::Draw
