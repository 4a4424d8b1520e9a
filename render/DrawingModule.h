#pragma once

#include "render/Drawing.h"

// The seam between a program and the module that draws, which is loaded when it is first needed:
// so the program itself does not load the libraries for drawing.
namespace Zorv::Render {

/// Functions that the module offers.
struct DrawingModule {
  char const* version;  ///< of the project; another one may have another Picture
  void (*draw)(Picture const&, DrawingFormat, DrawOptions const&, ByteSink const&);
};

/// The module's one exported function, with C linkage.
using DrawingModuleEntry = DrawingModule const*() noexcept;
inline constexpr char const* drawingModuleEntryName = "cndfrmt_drawing_module";

}  // namespace Zorv::Render
