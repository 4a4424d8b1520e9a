#include "words/VisualText.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <variant>

#include <fmt/format.h>

#include "words/StyleText.h"

namespace Zorv::Words {

namespace {

using Visuals::ColourScale;
using Visuals::DataBar;
using Visuals::IconSet;
using Visuals::Threshold;
using Visuals::ThresholdKind;

void append(std::string& list, std::string_view item) {
  list += list.empty() ? "" : ", ";
  list += item;
}

std::string colourWord(std::optional<DOM::Colour> const& colour) {
  return colour ? " " + toText(*colour) : std::string();
}

std::string describeIcon(Visuals::Icon const& icon) {
  unsigned const count = countIcons(icon.set);
  return count == 0 ? std::string("no icon")
                    : fmt::format("icon {} {} of {}", toText(icon.set), icon.index + 1, count);
}

std::string describeThreshold(Threshold const& threshold) {
  switch (threshold.kind) {
    case ThresholdKind::Min:
      return "lowest";
    case ThresholdKind::Max:
      return "highest";
    case ThresholdKind::AutoMin:
      return "lowest or 0";
    case ThresholdKind::AutoMax:
      return "highest or 0";
    case ThresholdKind::Percent:
      return threshold.text + " %";
    case ThresholdKind::Percentile:
      return "percentile " + threshold.text;
    case ThresholdKind::Number:
    case ThresholdKind::Formula:
      break;
  }
  return threshold.text;
}

/// Describes what a kind decides by.
struct ThresholdDescriber {
  std::string operator()(ColourScale const& scale) const {
    std::string points;
    for (auto const& point : scale.points) {
      append(points, describeThreshold(point.threshold));
    }
    return "colour scale: " + points;
  }
  std::string operator()(DataBar const& bar) const {
    return fmt::format("data bar: {} to {}", describeThreshold(bar.minimum),
                       describeThreshold(bar.maximum));
  }
  std::string operator()(IconSet const& set) const {
    std::string steps;
    for (std::size_t step = 1; step < set.steps.size(); ++step) {
      append(steps, fmt::format("{} {}", set.steps[step].orEqual ? ">=" : ">",
                                describeThreshold(set.steps[step])));
    }
    return "icon set: " + steps;
  }
};

/// Describes what a kind draws.
struct DrawingDescriber {
  std::string operator()(ColourScale const& scale) const {
    std::string colours;
    for (auto const& point : scale.points) {
      append(colours, toText(point.colour));
    }
    return colours;
  }

  std::string operator()(DataBar const& bar) const {
    std::string text = "bar" + colourWord(bar.fill);
    if (!bar.isGradient) {
      append(text, "solid");
    }
    if (bar.border) {
      append(text, "border" + colourWord(bar.border));
    }
    if (bar.negativeFill) {
      append(text, "negative" + colourWord(bar.negativeFill));
    }
    if (bar.axis == Visuals::BarAxis::Middle) {
      append(text, "axis in the middle");
    }
    if (bar.direction == Visuals::BarDirection::RightToLeft) {
      append(text, "from the right");
    }
    return endDrawing(text, bar.showValue);
  }

  std::string operator()(IconSet const& set) const {
    std::string text = "icons";
    if (set.ownIcons.empty()) {
      text += fmt::format(" {}", toText(set.name));
    }
    for (std::size_t icon = 0; icon < set.ownIcons.size(); ++icon) {
      auto const& own = set.ownIcons[icon];
      text += fmt::format("{}{}", icon == 0 ? " " : ", ",
                          countIcons(own.set) == 0
                              ? std::string("none")
                              : fmt::format("{}/{}", toText(own.set), own.index + 1));
    }
    if (set.isReversed) {
      append(text, "reversed");
    }
    return endDrawing(text, set.showValue);
  }

private:
  static std::string endDrawing(std::string text, bool showValue) {
    if (!showValue) {
      append(text, "value hidden");
    }
    return text;
  }
};

}  // namespace

std::string describe(Visuals::CellVisuals const& visuals) {
  std::string text;
  if (auto const& scale = visuals.scale) {
    append(text, fmt::format("scale {}{}", toText(scale->colour),
                             scale->isBehindFill ? " behind the fill" : ""));
  }
  if (auto const& bar = visuals.bar) {
    constexpr double percent = 100;
    append(text, fmt::format("bar {:.0f}%{}", (bar->extent.to - bar->extent.from) * percent,
                             colourWord(bar->getFill())));
  }
  if (auto const& icon = visuals.icon) {
    append(text, describeIcon(icon->icon));
  }
  if (!visuals.showValue) {
    append(text, "value hidden");
  }
  return text;
}

std::string describeOf(Visuals::CellVisuals const& visuals, Visuals::VisualKind const& kind) {
  Visuals::CellVisuals one;
  if (std::holds_alternative<ColourScale>(kind)) {
    one.scale = visuals.scale;
  } else if (auto const* const bar = std::get_if<DataBar>(&kind)) {
    one.bar = visuals.bar;
    one.showValue = bar->showValue;
  } else {
    one.icon = visuals.icon;
    one.showValue = std::get<IconSet>(kind).showValue;
  }
  return describe(one);
}

std::string describeThresholds(Visuals::VisualKind const& kind) {
  return std::visit(ThresholdDescriber(), kind);
}

std::string describeDrawing(Visuals::VisualKind const& kind) {
  return std::visit(DrawingDescriber(), kind);
}

std::string describeWholeDrawing(Visuals::VisualKind const& kind) {
  std::string text = describeDrawing(kind);
  if (auto const* const bar = std::get_if<DataBar>(&kind)) {
    append(text, fmt::format("{} to {} % long", bar->minLength, bar->maxLength));
    if (bar->negativeBorder) {
      append(text, "negative border" + colourWord(bar->negativeBorder));
    }
    append(text, fmt::format("axis {}{}", toText(bar->axis), colourWord(bar->axisColour)));
    append(text, fmt::format("direction {}", toText(bar->direction)));
  }
  return text;
}

}  // namespace Zorv::Words
