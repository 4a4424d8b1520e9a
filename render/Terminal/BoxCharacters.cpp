#include "render/Terminal/BoxCharacters.h"

#include <cstddef>
#include <string_view>

namespace Zorv::Render {

namespace {

/// By the weights of left, right, up and down, each of four.
constexpr std::u16string_view boxCharacters =
    u" ╷╻║╵│╽║╹╿┃║║║║║"
    u"╶┌┎╓└├┟╟┖┞┠╟╙╟╟╟"
    u"╺┍┏╓┕┝┢╟┗┡┣╟╙╟╟╟"
    u"═╒╒╔╘╞╞╠╘╞╞╠╚╠╠╠"
    u"╴┐┒╖┘┤┧╢┚┦┨╢╜╢╢╢"
    u"─┬┰╥┴┼╁╫┸╀╂╫╨╫╫╫"
    u"╼┮┲╥┶┾╆╫┺╄╊╫╨╫╫╫"
    u"═╤╤╦╧╪╪╬╧╪╪╬╩╬╬╬"
    u"╸┑┓╖┙┥┪╢┛┩┫╢╜╢╢╢"
    u"╾┭┱╥┵┽╅╫┹╃╉╫╨╫╫╫"
    u"━┯┳╥┷┿╈╫┻╇╋╫╨╫╫╫"
    u"═╤╤╦╧╪╪╬╧╪╪╬╩╬╬╬"
    u"═╕╕╗╛╡╡╣╛╡╡╣╝╣╣╣"
    u"═╤╤╦╧╪╪╬╧╪╪╬╩╬╬╬"
    u"═╤╤╦╧╪╪╬╧╪╪╬╩╬╬╬"
    u"═╤╤╦╧╪╪╬╧╪╪╬╩╬╬╬";
static_assert(boxCharacters.size() == std::size_t{4} * 4 * 4 * 4);

}  // namespace

LineWeight toLineWeight(DOM::LineStyle style) noexcept {
  switch (style) {
    case DOM::LineStyle::None:
      return LineWeight::None;
    case DOM::LineStyle::Double:
      return LineWeight::Double;
    case DOM::LineStyle::Medium:
    case DOM::LineStyle::Thick:
    case DOM::LineStyle::MediumDashed:
    case DOM::LineStyle::MediumDashDot:
    case DOM::LineStyle::MediumDashDotDot:
    case DOM::LineStyle::SlantDashDot:
      return LineWeight::Heavy;
    default:
      return LineWeight::Light;
  }
}

char32_t findBoxCharacter(LineArms const& arms) noexcept {
  std::size_t index = 0;
  for (LineWeight const weight : {arms.left, arms.right, arms.up, arms.down}) {
    index = index * 4 + static_cast<std::size_t>(weight);
  }
  return boxCharacters[index];
}

char32_t findLineCharacter(DOM::LineStyle style, bool isVertical) noexcept {
  switch (style) {
    case DOM::LineStyle::Hair:
    case DOM::LineStyle::Dotted:
      return isVertical ? U'┊' : U'┈';
    case DOM::LineStyle::Dashed:
      return isVertical ? U'╎' : U'╌';
    case DOM::LineStyle::MediumDashed:
      return isVertical ? U'╏' : U'╍';
    case DOM::LineStyle::DashDot:
    case DOM::LineStyle::DashDotDot:
      return isVertical ? U'┆' : U'┄';
    case DOM::LineStyle::MediumDashDot:
    case DOM::LineStyle::MediumDashDotDot:
    case DOM::LineStyle::SlantDashDot:
      return isVertical ? U'┇' : U'┅';
    default: {
      auto const weight = toLineWeight(style);
      return findBoxCharacter(isVertical ? LineArms{.up = weight, .down = weight}
                                         : LineArms{.left = weight, .right = weight});
    }
  }
}

}  // namespace Zorv::Render
