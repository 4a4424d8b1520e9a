#pragma once

#include <concepts>
#include <tuple>

#include "DOM/CellStyle.h"
#include "DOM/StyleProps.h"

/// Constraints of the templates below, which argument-dependent lookup finds for every type of the
/// document model: without them they would compete with a program's own functions of these names.
namespace Zorv::DOM::SetProperties {

/// Property group whose members are listed.
template <class T>
concept Group =
    std::same_as<T, RunProps> || std::same_as<T, ParaProps> || std::same_as<T, CellProps>;

/// Function that takes the name and the value of a property. Every group has truth values.
template <class T>
concept Visitor = std::invocable<T const&, char const*, bool const&>;

}  // namespace Zorv::DOM::SetProperties

/// The properties that a style sets, one by one.
namespace Zorv::DOM {

/// Calls `visit(name, value)` for every property that a group sets, in the order of its members.
/// The names live as long as the program.
template <SetProperties::Group Props, SetProperties::Visitor Visitor>
void forEachSetMember(Props const& props, Visitor const& visit) {
  auto const visitOne = [&](auto const& member) {
    if (auto const& value = props.*member.member) {
      visit(member.name, *value);
    }
  };
  std::apply([&](auto const&... members) { (visitOne(members), ...); }, Props::members());
}

/// Calls `visit(name, value)` for every property that a style sets: cell, text and paragraph
/// properties, then the code of the number format as `numberFormat`.
template <SetProperties::Visitor Visitor>
void forEachSetProperty(CellStyle const& style, Visitor const& visit) {
  if (auto const& props = style.getCellProps()) {
    forEachSetMember(*props, visit);
  }
  if (auto const& props = style.getRunProps()) {
    forEachSetMember(*props, visit);
  }
  if (auto const& props = style.getParaProps()) {
    forEachSetMember(*props, visit);
  }
  if (auto const& format = style.getCellFormat()) {
    visit("numberFormat", format->code);
  }
}

}  // namespace Zorv::DOM
