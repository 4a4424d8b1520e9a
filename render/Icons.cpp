#include "render/Icons.h"

#include <charconv>
#include <cstddef>

#include "render/IconPaths.h"

namespace Zorv::Render {

// Beside the paths, which they name often.
namespace IconPaths {

constexpr DOM::Colour iconRed{0xE0, 0x44, 0x3E};
constexpr DOM::Colour iconRedRim{0xA1, 0x23, 0x1F};
constexpr DOM::Colour iconYellow{0xFB, 0xC0, 0x2D};
constexpr DOM::Colour iconYellowRim{0xA8, 0x74, 0x00};
constexpr DOM::Colour iconGreen{0x34, 0xA8, 0x53};
constexpr DOM::Colour iconGreenRim{0x1E, 0x7A, 0x38};
constexpr DOM::Colour iconGrey{0x9A, 0x9A, 0x9A};
constexpr DOM::Colour iconGreyRim{0x5E, 0x5E, 0x5E};
constexpr DOM::Colour iconAsh{0xA8, 0xA8, 0xA8};
constexpr DOM::Colour iconPink{0xF6, 0xC5, 0xC2};
constexpr DOM::Colour iconBlue{0x2F, 0x6F, 0xB7};
constexpr DOM::Colour iconPale{0xD3, 0xDA, 0xE3};
constexpr DOM::Colour iconPaleRim{0x8F, 0xA1, 0xB5};
constexpr DOM::Colour iconWhite{0xFF, 0xFF, 0xFF};
constexpr DOM::Colour iconInk{0x33, 0x33, 0x33};

/// Icon with its words. Borrows its outlines.
struct IconDrawing {
  std::string_view name;
  std::span<IconOutline const> outlines;
};

// Arrows.
constexpr std::array redDown{IconOutline{arrowDownRim, iconRedRim},
                             IconOutline{arrowDown, iconRed}};
constexpr std::array yellowDownRight{IconOutline{arrowDownRightRim, iconYellowRim},
                                     IconOutline{arrowDownRight, iconYellow}};
constexpr std::array yellowRight{IconOutline{arrowRightRim, iconYellowRim},
                                 IconOutline{arrowRight, iconYellow}};
constexpr std::array yellowUpRight{IconOutline{arrowUpRightRim, iconYellowRim},
                                   IconOutline{arrowUpRight, iconYellow}};
constexpr std::array greenUp{IconOutline{arrowUpRim, iconGreenRim},
                             IconOutline{arrowUp, iconGreen}};
constexpr std::array greyDown{IconOutline{arrowDownRim, iconGreyRim},
                              IconOutline{arrowDown, iconGrey}};
constexpr std::array greyDownRight{IconOutline{arrowDownRightRim, iconGreyRim},
                                   IconOutline{arrowDownRight, iconGrey}};
constexpr std::array greyRight{IconOutline{arrowRightRim, iconGreyRim},
                               IconOutline{arrowRight, iconGrey}};
constexpr std::array greyUpRight{IconOutline{arrowUpRightRim, iconGreyRim},
                                 IconOutline{arrowUpRight, iconGrey}};
constexpr std::array greyUp{IconOutline{arrowUpRim, iconGreyRim}, IconOutline{arrowUp, iconGrey}};

constexpr IconDrawing redDownArrow{"red arrow down", redDown};
constexpr IconDrawing yellowDownRightArrow{"yellow arrow down and right", yellowDownRight};
constexpr IconDrawing yellowRightArrow{"yellow arrow right", yellowRight};
constexpr IconDrawing yellowUpRightArrow{"yellow arrow up and right", yellowUpRight};
constexpr IconDrawing greenUpArrow{"green arrow up", greenUp};
constexpr IconDrawing greyDownArrow{"grey arrow down", greyDown};
constexpr IconDrawing greyDownRightArrow{"grey arrow down and right", greyDownRight};
constexpr IconDrawing greyRightArrow{"grey arrow right", greyRight};
constexpr IconDrawing greyUpRightArrow{"grey arrow up and right", greyUpRight};
constexpr IconDrawing greyUpArrow{"grey arrow up", greyUp};

constexpr std::array arrows3{redDownArrow, yellowRightArrow, greenUpArrow};
constexpr std::array arrowsGray3{greyDownArrow, greyRightArrow, greyUpArrow};
constexpr std::array arrows4{redDownArrow, yellowDownRightArrow, yellowUpRightArrow, greenUpArrow};
constexpr std::array arrowsGray4{greyDownArrow, greyDownRightArrow, greyUpRightArrow, greyUpArrow};
constexpr std::array arrows5{redDownArrow, yellowDownRightArrow, yellowRightArrow,
                             yellowUpRightArrow, greenUpArrow};
constexpr std::array arrowsGray5{greyDownArrow, greyDownRightArrow, greyRightArrow,
                                 greyUpRightArrow, greyUpArrow};

// Flags of three shapes, so that they differ without their colours.
constexpr std::array redSwallowtail{IconOutline{swallowtailRim, iconRedRim},
                                    IconOutline{swallowtail, iconRed},
                                    IconOutline{flagPole, iconInk}};
constexpr std::array yellowPennant{IconOutline{pennantRim, iconYellowRim},
                                   IconOutline{pennant, iconYellow},
                                   IconOutline{flagPole, iconInk}};
constexpr std::array greenBanner{IconOutline{bannerRim, iconGreenRim},
                                 IconOutline{banner, iconGreen}, IconOutline{flagPole, iconInk}};
constexpr std::array flags3{IconDrawing{"red flag", redSwallowtail},
                            IconDrawing{"yellow flag", yellowPennant},
                            IconDrawing{"green flag", greenBanner}};

// Traffic lights: a bright spot stands where the lamp stands in the street.
constexpr std::array redLight{IconOutline{disc, iconRedRim}, IconOutline{discInner, iconRed},
                              IconOutline{glintHigh, iconWhite}};
constexpr std::array yellowLight{IconOutline{disc, iconYellowRim},
                                 IconOutline{discInner, iconYellow},
                                 IconOutline{glintMiddle, iconWhite}};
constexpr std::array greenLight{IconOutline{disc, iconGreenRim}, IconOutline{discInner, iconGreen},
                                IconOutline{glintLow, iconWhite}};
constexpr std::array blackDisc{IconOutline{disc, iconGrey}, IconOutline{discInner, iconInk}};
constexpr std::array redLamp{IconOutline{housing, iconInk}, IconOutline{lamp, iconRed},
                             IconOutline{glintHigh, iconWhite}};
constexpr std::array yellowLamp{IconOutline{housing, iconInk}, IconOutline{lamp, iconYellow},
                                IconOutline{glintMiddle, iconWhite}};
constexpr std::array greenLamp{IconOutline{housing, iconInk}, IconOutline{lamp, iconGreen},
                               IconOutline{glintLow, iconWhite}};
constexpr std::array trafficLights3One{IconDrawing{"red light", redLight},
                                       IconDrawing{"yellow light", yellowLight},
                                       IconDrawing{"green light", greenLight}};
constexpr std::array trafficLights3Two{IconDrawing{"red traffic light", redLamp},
                                       IconDrawing{"yellow traffic light", yellowLamp},
                                       IconDrawing{"green traffic light", greenLamp}};
constexpr std::array trafficLights4{
    IconDrawing{"black light", blackDisc}, IconDrawing{"red light", redLight},
    IconDrawing{"yellow light", yellowLight}, IconDrawing{"green light", greenLight}};

// Signs and symbols.
constexpr std::array redDiamond{IconOutline{diamondRim, iconRedRim}, IconOutline{diamond, iconRed}};
constexpr std::array yellowTriangle{IconOutline{triangleRim, iconYellowRim},
                                    IconOutline{triangle, iconYellow},
                                    IconOutline{bangInTriangle, iconInk}};
constexpr std::array greenDisc{IconOutline{disc, iconGreenRim}, IconOutline{discInner, iconGreen}};
constexpr std::array signs3{IconDrawing{"red diamond", redDiamond},
                            IconDrawing{"yellow triangle", yellowTriangle},
                            IconDrawing{"green circle", greenDisc}};
constexpr std::array circledCross{IconOutline{disc, iconRedRim}, IconOutline{discInner, iconRed},
                                  IconOutline{crossInDisc, iconWhite}};
constexpr std::array circledBang{IconOutline{disc, iconYellowRim},
                                 IconOutline{discInner, iconYellow},
                                 IconOutline{bangInDisc, iconInk}};
constexpr std::array circledCheck{IconOutline{disc, iconGreenRim},
                                  IconOutline{discInner, iconGreen},
                                  IconOutline{checkInDisc, iconWhite}};
constexpr std::array symbols3{IconDrawing{"red cross in a circle", circledCross},
                              IconDrawing{"yellow exclamation mark in a circle", circledBang},
                              IconDrawing{"green check mark in a circle", circledCheck}};
constexpr std::array plainCross{IconOutline{crossRim, iconRedRim}, IconOutline{cross, iconRed}};
constexpr std::array plainBang{IconOutline{bangRim, iconYellowRim}, IconOutline{bang, iconYellow}};
constexpr std::array plainCheck{IconOutline{checkRim, iconGreenRim}, IconOutline{check, iconGreen}};
constexpr std::array symbols3Two{IconDrawing{"red cross", plainCross},
                                 IconDrawing{"yellow exclamation mark", plainBang},
                                 IconDrawing{"green check mark", plainCheck}};

// Red to black: four discs that differ in lightness.
constexpr std::array greyDisc{IconOutline{disc, iconGreyRim}, IconOutline{discInner, iconAsh}};
constexpr std::array pinkDisc{IconOutline{disc, iconRedRim}, IconOutline{discInner, iconPink}};
constexpr std::array redDisc{IconOutline{disc, iconRedRim}, IconOutline{discInner, iconRed}};
constexpr std::array redToBlack4{
    IconDrawing{"black circle", blackDisc}, IconDrawing{"grey circle", greyDisc},
    IconDrawing{"pink circle", pinkDisc}, IconDrawing{"red circle", redDisc}};

// Ratings.
constexpr std::array noBars{IconOutline{barOne, iconPale}, IconOutline{barTwo, iconPale},
                            IconOutline{barThree, iconPale}, IconOutline{barFour, iconPale}};
constexpr std::array oneBar{IconOutline{barOne, iconBlue}, IconOutline{barTwo, iconPale},
                            IconOutline{barThree, iconPale}, IconOutline{barFour, iconPale}};
constexpr std::array twoBars{IconOutline{barOne, iconBlue}, IconOutline{barTwo, iconBlue},
                             IconOutline{barThree, iconPale}, IconOutline{barFour, iconPale}};
constexpr std::array threeBars{IconOutline{barOne, iconBlue}, IconOutline{barTwo, iconBlue},
                               IconOutline{barThree, iconBlue}, IconOutline{barFour, iconPale}};
constexpr std::array fourBars{IconOutline{barOne, iconBlue}, IconOutline{barTwo, iconBlue},
                              IconOutline{barThree, iconBlue}, IconOutline{barFour, iconBlue}};
constexpr std::array rating5{
    IconDrawing{"none of four bars", noBars}, IconDrawing{"one of four bars", oneBar},
    IconDrawing{"two of four bars", twoBars}, IconDrawing{"three of four bars", threeBars},
    IconDrawing{"four of four bars", fourBars}};
constexpr std::array rating4{rating5[1], rating5[2], rating5[3], rating5[4]};

// Quarters of a circle.
constexpr std::array noQuarter{IconOutline{disc, iconGreyRim}, IconOutline{discInner, iconWhite}};
constexpr std::array oneQuarter{IconOutline{disc, iconGreyRim}, IconOutline{discInner, iconWhite},
                                IconOutline{quarterOne, iconInk}};
constexpr std::array twoQuarters{IconOutline{disc, iconGreyRim}, IconOutline{discInner, iconWhite},
                                 IconOutline{quarterTwo, iconInk}};
constexpr std::array threeQuarters{IconOutline{disc, iconGreyRim},
                                   IconOutline{discInner, iconWhite},
                                   IconOutline{quarterThree, iconInk}};
constexpr std::array fourQuarters{IconOutline{disc, iconGreyRim}, IconOutline{discInner, iconInk}};
constexpr std::array quarters5{IconDrawing{"white circle", noQuarter},
                               IconDrawing{"circle, one quarter black", oneQuarter},
                               IconDrawing{"circle, half black", twoQuarters},
                               IconDrawing{"circle, three quarters black", threeQuarters},
                               IconDrawing{"black circle", fourQuarters}};

// Stars.
constexpr std::array emptyStar{IconOutline{starRim, iconGreyRim}, IconOutline{star, iconWhite}};
constexpr std::array halfStar{IconOutline{starRim, iconYellowRim}, IconOutline{star, iconWhite},
                              IconOutline{starLeft, iconYellow}};
constexpr std::array fullStar{IconOutline{starRim, iconYellowRim}, IconOutline{star, iconYellow}};
constexpr std::array stars3{IconDrawing{"empty star", emptyStar},
                            IconDrawing{"half star", halfStar}, IconDrawing{"full star", fullStar}};

// Triangles.
constexpr std::array redWedge{IconOutline{wedgeDownRim, iconRedRim},
                              IconOutline{wedgeDown, iconRed}};
constexpr std::array yellowDash{IconOutline{dashRim, iconYellowRim}, IconOutline{dash, iconYellow}};
constexpr std::array greenWedge{IconOutline{wedgeUpRim, iconGreenRim},
                                IconOutline{wedgeUp, iconGreen}};
constexpr std::array triangles3{IconDrawing{"red triangle down", redWedge},
                                IconDrawing{"yellow dash", yellowDash},
                                IconDrawing{"green triangle up", greenWedge}};

// Boxes.
constexpr IconOutline lowLeftBlue{boxLowLeft, iconBlue};
constexpr IconOutline lowRightBlue{boxLowRight, iconBlue};
constexpr IconOutline highLeftBlue{boxHighLeft, iconBlue};
constexpr IconOutline highRightBlue{boxHighRight, iconBlue};
constexpr IconOutline lowLeftRim{boxLowLeft, iconPaleRim};
constexpr IconOutline lowRightRim{boxLowRight, iconPaleRim};
constexpr IconOutline highLeftRim{boxHighLeft, iconPaleRim};
constexpr IconOutline highRightRim{boxHighRight, iconPaleRim};
constexpr IconOutline lowLeftWhite{boxInnerLowLeft, iconWhite};
constexpr IconOutline lowRightWhite{boxInnerLowRight, iconWhite};
constexpr IconOutline highLeftWhite{boxInnerHighLeft, iconWhite};
constexpr IconOutline highRightWhite{boxInnerHighRight, iconWhite};
constexpr std::array noBox{lowLeftRim,   lowRightRim,   highLeftRim,   highRightRim,
                           lowLeftWhite, lowRightWhite, highLeftWhite, highRightWhite};
constexpr std::array oneBox{lowLeftBlue,   lowRightRim,   highLeftRim,   highRightRim,
                            lowRightWhite, highLeftWhite, highRightWhite};
constexpr std::array twoBoxes{lowLeftBlue,  lowRightBlue,  highLeftRim,
                              highRightRim, highLeftWhite, highRightWhite};
constexpr std::array threeBoxes{lowLeftBlue, lowRightBlue, highLeftBlue, highRightRim,
                                highRightWhite};
constexpr std::array fourBoxes{lowLeftBlue, lowRightBlue, highLeftBlue, highRightBlue};
constexpr std::array boxes5{
    IconDrawing{"none of four boxes", noBox}, IconDrawing{"one of four boxes", oneBox},
    IconDrawing{"two of four boxes", twoBoxes}, IconDrawing{"three of four boxes", threeBoxes},
    IconDrawing{"four of four boxes", fourBoxes}};

/// In the order of IconSetName. NoIcons has none.
constexpr std::array<std::span<IconDrawing const>, 21> drawnSets{
    arrows3,        arrowsGray3, flags3,      trafficLights3One, trafficLights3Two, signs3,
    symbols3,       symbols3Two, arrows4,     arrowsGray4,       redToBlack4,       rating4,
    trafficLights4, arrows5,     arrowsGray5, rating5,           quarters5,         stars3,
    triangles3,     boxes5,      {}};

}  // namespace IconPaths

namespace {

IconPaths::IconDrawing findDrawing(Visuals::Icon const& icon) noexcept {
  auto const set = static_cast<std::size_t>(icon.set);
  auto const& sets = IconPaths::drawnSets;
  return set < sets.size() && icon.index < sets[set].size() ? sets[set][icon.index]
                                                            : IconPaths::IconDrawing{};
}

std::size_t countCoordinates(IconStep::Kind kind) noexcept {
  switch (kind) {
    case IconStep::Kind::Move:
    case IconStep::Kind::Line:
      return 2;
    case IconStep::Kind::Curve:
      return 6;
    case IconStep::Kind::Close:
      return 0;
  }
  return 0;
}

IconStep::Kind toKind(char command) noexcept {
  switch (command) {
    case 'M':
      return IconStep::Kind::Move;
    case 'L':
      return IconStep::Kind::Line;
    case 'C':
      return IconStep::Kind::Curve;
    default:
      return IconStep::Kind::Close;
  }
}

}  // namespace

std::span<IconOutline const> outlineIcon(Visuals::Icon const& icon) noexcept {
  return findDrawing(icon).outlines;
}

std::string_view nameIcon(Visuals::Icon const& icon) noexcept { return findDrawing(icon).name; }

void visitIconSteps(std::string_view path, std::function<void(IconStep const&)> const& visit) {
  char const* place = path.data();
  char const* const end = place + path.size();
  while (place != end) {
    IconStep step{toKind(*place++)};
    for (std::size_t i = 0; i < countCoordinates(step.kind); ++i) {
      place += *place == ' ' ? 1 : 0;
      place = std::from_chars(place, end, step.coordinates[i]).ptr;
    }
    visit(step);
  }
}

}  // namespace Zorv::Render
