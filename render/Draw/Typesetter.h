#pragma once

#include <pango/pangocairo.h>

#include <cstddef>
#include <map>
#include <string>
#include <tuple>

#include "render/Draw/Typeface.h"

namespace Zorv::Render::Draw {

/// The fonts of a drawing, and what Pango needs to lay texts out.
///
/// Threads: needs exclusive access; several of them may work at the same time.
class Typesetter {
public:
  /// Throws BaseRuntimeError if Pango cannot be set up.
  Typesetter();

  /// The typeface of a font, whatever its colour and lines. Good until the next call.
  [[nodiscard]] Typeface& getTypeface(Font const& font);
  /// A layout whose text is set anew for each use.
  [[nodiscard]] PangoLayout* getLayout() const noexcept { return _layout.get(); }
  [[nodiscard]] PangoContext* getContext() const noexcept { return _context.get(); }

private:
  /// More than a workbook for people has; a hostile one loads fonts again and again.
  static constexpr std::size_t mostTypefaces = 512;
  using Key = std::tuple<std::string, double, bool, bool, DOM::VerticalRun>;

  GObjectPtr<PangoFontMap> _fontMap;
  GObjectPtr<PangoContext> _context;
  GObjectPtr<PangoLayout> _layout;
  std::map<Key, Typeface> _typefaces;
};

/// How characters are rasterised: alike on every machine, whatever its settings.
[[nodiscard]] FontOptionsPtr makeFontOptions();

}  // namespace Zorv::Render::Draw
