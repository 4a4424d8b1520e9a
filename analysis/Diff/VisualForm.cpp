#include "analysis/Diff/VisualForm.h"

#include <optional>
#include <variant>

#include <fmt/format.h>

namespace Zorv::Analysis {

namespace {

using Visuals::Threshold;

/// Numbers are compared by value, formulas as they are written.
std::string makeForm(Threshold const& threshold) {
  std::string form = fmt::format("{} {} ", toText(threshold.kind), threshold.orEqual);
  if (hasOperand(threshold.kind)) {
    auto const* const number = std::get_if<double>(&threshold.operand);
    form += number != nullptr ? fmt::format("{}", *number) : threshold.text;
  }
  return form + '\n';
}

std::string makeForm(std::optional<DOM::Colour> const& colour) {
  return colour
             ? fmt::format("{} {} {} {};", colour->red, colour->green, colour->blue, colour->alpha)
             : ";";
}

/// Writes what each kind draws.
class DrawingWriter {
public:
  explicit DrawingWriter(VisualForm& form) noexcept : _form(form) {}

  void operator()(Visuals::ColourScale const& scale) const {
    for (Visuals::ColourPoint const& point : scale.points) {
      _form.colours += makeForm(std::optional(point.colour));
    }
  }
  void operator()(Visuals::DataBar const& bar) const {
    for (auto const* const colour :
         {&bar.fill, &bar.border, &bar.negativeFill, &bar.negativeBorder, &bar.axisColour}) {
      _form.colours += makeForm(*colour);
    }
    _form.drawing = fmt::format("{} {} {} {} {} {}", bar.minLength, bar.maxLength, toText(bar.axis),
                                toText(bar.direction), bar.isGradient, bar.showValue);
  }
  void operator()(Visuals::IconSet const& set) const {
    _form.icons = fmt::format("{} {}", toText(set.name), set.isReversed);
    for (Visuals::Icon const& icon : set.ownIcons) {
      _form.icons += fmt::format(" {}/{}", toText(icon.set), icon.index);
    }
    _form.drawing = fmt::format("{}", set.showValue);
  }

private:
  VisualForm& _form;
};

}  // namespace

VisualForm makeVisualForm(Visuals::VisualKind const& kind) {
  VisualForm form;
  for (Threshold const* const threshold : listThresholds(kind)) {
    form.thresholds += makeForm(*threshold);
  }
  std::visit(DrawingWriter(form), kind);
  return form;
}

}  // namespace Zorv::Analysis
