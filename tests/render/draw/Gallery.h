#pragma once

#include "render/Picture.h"

namespace Zorv::Render::Tests {

/// A sheet with everything that is drawn.
[[nodiscard]] Picture makeGallery();

}  // namespace Zorv::Render::Tests
