#pragma once

#include <string_view>

#include "render/Draw/Box.h"
#include "render/Draw/Cairo.h"

namespace Zorv::Render::Draw {

/// Makes a place of a PDF lead to an address of the web or of mail. Other addresses, such as those
/// of files or scripts, and very long ones lead nowhere.
void markLink(cairo_t* cairo, std::string_view address, Box const& place);

}  // namespace Zorv::Render::Draw
