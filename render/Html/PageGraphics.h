#pragma once

#include <string>
#include <unordered_map>

#include "DOM/StyleProps.h"
#include "visuals/IconSet.h"

namespace Zorv::Render {

/// Drawings that the cells of a page share: icons, and the gradients of bars and fills. Each is
/// defined once, and cells refer to it.
class PageGraphics {
public:
  /// The identifier of an icon's symbol; empty if there is no such icon.
  [[nodiscard]] std::string const& addIcon(Visuals::Icon const& icon);

  /// The identifier of the gradient of a bar, from its beginning on. `isReversed`: it begins at the
  /// right.
  [[nodiscard]] std::string const& addBarGradient(DOM::Colour const& colour, bool isReversed);

  /// The identifier of the symbol of a gradient from a rectangle outwards.
  [[nodiscard]] std::string const& addPathGradient(DOM::GradientFill const& gradient);

  /// The definitions: an element that is not seen.
  [[nodiscard]] std::string getMarkup() const;

private:
  /// The identifier of a definition, which holds `&` in its place.
  [[nodiscard]] std::string const& add(std::string const& definition);

  std::unordered_map<std::string, std::string> _ids;  ///< by definition
  std::string _definitions;
};

}  // namespace Zorv::Render
