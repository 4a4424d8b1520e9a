#include <stdexcept>

#include "Utils/Exceptions.h"
#include "render/Draw/DrawPdf.h"
#include "render/Draw/DrawPng.h"
#include "render/Draw/DrawSvg.h"
#include "render/DrawingModule.h"

namespace Zorv::Render::Draw {

namespace {

void drawAs(Picture const& picture, DrawingFormat format, DrawOptions const& options,
            ByteSink const& sink) {
  if (picture.sheets.empty()) {
    throw BaseRuntimeError("cannot draw: the picture has no sheets");
  }
  switch (format) {
    case DrawingFormat::Png:
      return drawPng(picture, options, sink);
    case DrawingFormat::Svg:
      return drawSvg(picture, options, sink);
    case DrawingFormat::Pdf:
      return drawPdf(picture, options, sink);
  }
}

constexpr DrawingModule drawingModule{CNDFRMT_VERSION, &drawAs};

}  // namespace

}  // namespace Zorv::Render::Draw

extern "C" __attribute__((visibility("default"))) Zorv::Render::DrawingModule const*
cndfrmt_drawing_module() noexcept;

Zorv::Render::DrawingModule const* cndfrmt_drawing_module() noexcept {
  return &Zorv::Render::Draw::drawingModule;
}
