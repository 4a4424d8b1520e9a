#include "render/Draw/Cairo.h"

#include <fmt/format.h>

#include <new>

#include "Utils/Exceptions.h"

namespace Zorv::Render::Draw {

void checkStatus(cairo_status_t status) {
  if (status == CAIRO_STATUS_NO_MEMORY) {
    throw std::bad_alloc();
  }
  if (status != CAIRO_STATUS_SUCCESS) {
    throw BaseRuntimeError(fmt::format("cannot draw: {}", cairo_status_to_string(status)));
  }
}

CairoPtr makeCairo(cairo_surface_t& surface) {
  CairoPtr cairo(cairo_create(&surface));
  checkStatus(cairo_status(cairo.get()));
  return cairo;
}

void setColour(cairo_t* cairo, DOM::Colour const& colour) noexcept {
  constexpr double most = 255;
  cairo_set_source_rgba(cairo, colour.red / most, colour.green / most, colour.blue / most,
                        colour.alpha / most);
}

}  // namespace Zorv::Render::Draw
