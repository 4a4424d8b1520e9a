#pragma once

#include <tuple>

#include "DOM/CellStyle.h"
#include "DOM/StyleProps.h"

/// The properties that a style sets, one by one.
namespace Zorv::DOM {

/// Calls `visit(name, value)` for every property that a group sets, in the order of its members.
/// The names live as long as the program.
template <class Props, class Visitor>
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
template <class Visitor>
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
