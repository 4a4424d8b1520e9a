#include "analysis/Tidy/Effect.h"

#include <tuple>

namespace Zorv::Analysis {

namespace {

/// The first bits are those of Effect.h.
constexpr unsigned firstFreeBit = 3;

/// The bits of the members that are set. A bit stands for a member of a group by its place.
template <class Props>
std::uint64_t findBits(Props const& props, unsigned firstBit) noexcept {
  std::uint64_t bits = 0;
  unsigned bit = firstBit;
  std::apply(
      [&](auto const&... member) {
        ((bits |= (props.*member.member).has_value() ? std::uint64_t{1} << bit : 0, ++bit), ...);
      },
      Props::members());
  return bits;
}

template <class Props>
constexpr unsigned countMembers() noexcept {
  return std::tuple_size_v<decltype(Props::members())>;
}

constexpr unsigned runBit = firstFreeBit + 1;
constexpr unsigned paraBit = runBit + countMembers<DOM::RunProps>();
constexpr unsigned cellBit = paraBit + countMembers<DOM::ParaProps>();
constexpr unsigned endBit = cellBit + countMembers<DOM::CellProps>();
static_assert(endBit <= 64);

}  // namespace

std::uint64_t findProperties(DOM::NamedTableStyle const& style) {
  std::uint64_t properties = style.getCellFormat() ? std::uint64_t{1} << firstFreeBit : 0;
  if (auto const& props = style.getRunProps()) {
    DOM::RunProps run = *props;
    // Some programs have one choice of the two.
    run.italic = run.italic ? run.italic : run.bold;
    run.bold.reset();
    properties |= findBits(run, runBit);
  }
  if (auto const& props = style.getParaProps()) {
    properties |= findBits(*props, paraBit);
  }
  if (auto const& props = style.getCellProps()) {
    DOM::CellProps cell = *props;
    if (cell.fillPattern || cell.fillColour || cell.fillPatternColour || cell.fillGradient) {
      properties |= fillProperty;
    }
    cell.fillPattern.reset();
    cell.fillColour.reset();
    cell.fillPatternColour.reset();
    cell.fillGradient.reset();
    properties |= findBits(cell, cellBit);
  }
  return properties;
}

bool canChangePlaces(Effect const& a, Effect const& b) noexcept {
  if (a.isUnknown || b.isUnknown) {
    return false;
  }
  bool const doTheSame = a.look == b.look && a.properties == b.properties && a.stops == b.stops;
  return doTheSame || (!a.stops && !b.stops && (a.properties & b.properties) == 0);
}

}  // namespace Zorv::Analysis
