#pragma once

#include <cairo.h>

#include <memory>

#include "DOM/StyleProps.h"

// Handles of cairo's objects that release them, and small helpers.
namespace Zorv::Render::Draw {

struct CairoDeleter {
  void operator()(cairo_t* cairo) const noexcept { cairo_destroy(cairo); }
  void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
  void operator()(cairo_pattern_t* pattern) const noexcept { cairo_pattern_destroy(pattern); }
  void operator()(cairo_font_options_t* options) const noexcept {
    cairo_font_options_destroy(options);
  }
};

using CairoPtr = std::unique_ptr<cairo_t, CairoDeleter>;
using SurfacePtr = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using PatternPtr = std::unique_ptr<cairo_pattern_t, CairoDeleter>;
using FontOptionsPtr = std::unique_ptr<cairo_font_options_t, CairoDeleter>;

/// Throws std::bad_alloc or BaseRuntimeError unless the status is a success.
void checkStatus(cairo_status_t status);

/// A drawing context on a surface. Throws like checkStatus().
[[nodiscard]] CairoPtr makeCairo(cairo_surface_t& surface);

void setColour(cairo_t* cairo, DOM::Colour const& colour) noexcept;

/// Restores at its end the state of a context that was there at its beginning.
class SavedState {
public:
  explicit SavedState(cairo_t* cairo) noexcept : _cairo(cairo) { cairo_save(cairo); }
  SavedState(SavedState const&) = delete;
  SavedState& operator=(SavedState const&) = delete;
  ~SavedState() { cairo_restore(_cairo); }

private:
  cairo_t* _cairo;
};

/// Finishes a surface at its end, if it is not finished yet.
///
/// Cairo 1.16 loses memory if a pattern goes before the surface is finished, or after it is gone.
/// So patterns are declared between the surface and this.
class SurfaceFinisher {
public:
  explicit SurfaceFinisher(cairo_surface_t* surface) noexcept : _surface(surface) {}
  SurfaceFinisher(SurfaceFinisher const&) = delete;
  SurfaceFinisher& operator=(SurfaceFinisher const&) = delete;
  ~SurfaceFinisher() { cairo_surface_finish(_surface); }

private:
  cairo_surface_t* _surface;
};

}  // namespace Zorv::Render::Draw
