#include "DOM/StyleProps.h"

#include <type_traits>

#include <boost/container_hash/hash.hpp>

namespace Zorv::DOM {

namespace {

template <class Props, class Visit>
void forEachMember(Visit const& visit) {
  std::apply([&](auto const&... member) { (visit(member.member), ...); }, Props::members());
}

template <class Props>
void overrideMembers(Props& target, Props const& source) {
  forEachMember<Props>([&](auto member) {
    if (source.*member) {
      target.*member = source.*member;
    }
  });
}

template <class Props>
bool areMembersEqual(Props const& a, Props const& b) noexcept {
  bool areEqual = true;
  forEachMember<Props>([&](auto member) { areEqual = areEqual && a.*member == b.*member; });
  return areEqual;
}

std::size_t hashValue(Colour const& colour) noexcept {
  std::uint32_t const packed = std::uint32_t{colour.red} << 24U |
                               std::uint32_t{colour.green} << 16U |
                               std::uint32_t{colour.blue} << 8U | std::uint32_t{colour.alpha};
  return boost::hash<std::uint32_t>()(packed);
}

template <class Value>
std::size_t hashValue(Value const& value) noexcept {
  if constexpr (std::is_enum_v<Value>) {
    return static_cast<std::size_t>(value);
  } else {
    return boost::hash<Value>()(value);
  }
}

template <class Value>
void combine(std::size_t& seed, std::optional<Value> const& value) noexcept;

std::size_t hashValue(BorderLine const& line) noexcept {
  std::size_t seed = hashValue(line.style);
  combine(seed, line.colour);
  return seed;
}

std::size_t hashValue(GradientFill const& fill) noexcept {
  std::size_t seed = hashValue(fill.type);
  for (double const number : {fill.degree, fill.left, fill.right, fill.top, fill.bottom}) {
    boost::hash_combine(seed, number);
  }
  for (GradientStop const& stop : fill.stops) {
    boost::hash_combine(seed, stop.position);
    boost::hash_combine(seed, hashValue(stop.colour));
  }
  return seed;
}

template <class Value>
void combine(std::size_t& seed, std::optional<Value> const& value) noexcept {
  boost::hash_combine(seed, value.has_value());
  if (value) {
    boost::hash_combine(seed, hashValue(*value));
  }
}

template <class Props>
std::size_t hashMembers(Props const& props) noexcept {
  std::size_t seed = 0;
  forEachMember<Props>([&](auto member) { combine(seed, props.*member); });
  return seed;
}

}  // namespace

void override(RunProps& target, RunProps const& source) { overrideMembers(target, source); }
void override(ParaProps& target, ParaProps const& source) { overrideMembers(target, source); }
void override(CellProps& target, CellProps const& source) { overrideMembers(target, source); }

bool operator==(RunProps const& a, RunProps const& b) noexcept { return areMembersEqual(a, b); }
bool operator==(ParaProps const& a, ParaProps const& b) noexcept { return areMembersEqual(a, b); }
bool operator==(CellProps const& a, CellProps const& b) noexcept { return areMembersEqual(a, b); }

std::size_t hash_value(RunProps const& props) noexcept { return hashMembers(props); }
std::size_t hash_value(ParaProps const& props) noexcept { return hashMembers(props); }
std::size_t hash_value(CellProps const& props) noexcept { return hashMembers(props); }
std::size_t hash_value(CellFormat const& format) noexcept { return hashValue(format.code); }

}  // namespace Zorv::DOM
