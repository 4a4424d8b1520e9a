#include "tool/Text/Swatch.h"

namespace Zorv::Tool {

void appendSwatch(std::string& text, DOM::Colour const& colour, Render::ColourDepth depth) {
  Render::appendStyle(text, {.ground = colour}, depth);
  text.append(swatchWidth, ' ');
  text += Render::endOfStyle;
}

}  // namespace Zorv::Tool
