#pragma once

#include <deque>
#include <memory>
#include <utility>

#include "DOM/CellStyle.h"
#include "DOM/StyleProps.h"
#include "DOM/Styles.h"
#include "DOM/TrackChangesViewMode.h"
#include "Utils/PtrUtils.h"

// Flattening of styles: one self-contained style out of a style and everything that it inherits.
//
// The functions read the document's styles and write only to objects that they made themselves.
// None guards against a cycle of parents: the document model rules them out.
namespace Zorv::DOM {

/// The named style that a style inherits from, or null where it names none that exists.
template <class StyleSheet, class Style>
[[nodiscard]] NamedTableStyle const* getParent(StyleSheet& styles, Style const& style) {
  auto const& tableStyles = styles.getTableStyles();
  auto const found = tableStyles.find(style.getParentUUID());
  return found == tableStyles.end() ? nullptr : &found->second;
}

/// Merges a property group that may be unset into one that may be unset.
///
/// The target never shares the source: where it was null it becomes a copy, which later merges may
/// change. A target that is not null must be such a copy.
template <class Props>
void override(std::shared_ptr<Props>& target, std::shared_ptr<Props const> const& source) {
  if (!source) {
    return;
  }
  if (!target) {
    target = std::make_shared<Props>(*source);
    return;
  }
  override(*target, *source);
}

/// Calls the visitor on `start` and each of its ancestors, the farthest ancestor first and `start`
/// last; on nothing when `start` is null.
template <class StyleSheet, class Visitor>
void forEachStyleInHierarchy(StyleSheet& styles, NamedTableStyle const* start,
                             Visitor const& visitor) {
  if (start == nullptr) {
    return;
  }
  std::deque<NamedTableStyle const*> chain{start};
  while (auto const* parent = getParent(styles, *chain.front())) {
    chain.push_front(parent);
  }
  for (NamedTableStyle const* style : chain) {
    visitor(PtrUtils::derefObtained(style));
  }
}

/// Merges the groups of `start` and its ancestors into the target, so that the nearest style that
/// sets a property decides it. `getGroup` takes a group from a NamedTableStyle.
template <class StyleSheet, class Props, class GetGroup>
void overrideWithParentStyles(StyleSheet& styles, std::shared_ptr<Props>& target,
                              NamedTableStyle const* start, GetGroup const& getGroup) {
  forEachStyleInHierarchy(styles, start, [&](NamedTableStyle const& style) {
    std::shared_ptr<Props const> const& group = getGroup(style);
    if (group) {
      override(target, group);
    }
  });
}

/// Flattens a style's cell properties into the target: those that it inherits, then its own.
template <class StyleSheet>
void overrideCellProps(StyleSheet& styles, std::shared_ptr<CellProps>& target,
                       CellStyle const& style) {
  overrideWithParentStyles(
      styles, target, getParent(styles, style),
      [](NamedTableStyle const& named) -> auto const& { return named.getCellProps(); });
  override(target, style.getCellProps());
}

/// The same for character properties. Named styles carry no tracked changes, so the mode does not
/// matter.
template <class StyleSheet>
void overrideRunPropsWithTracked(StyleSheet& styles, std::shared_ptr<RunProps>& target,
                                 CellStyle const& style, TrackChangesViewMode /*mode*/) {
  overrideWithParentStyles(
      styles, target, getParent(styles, style),
      [](NamedTableStyle const& named) -> auto const& { return named.getRunProps(); });
  override(target, style.getRunProps());
}

/// The same for paragraph properties; the mode does not matter either.
template <class StyleSheet>
void overrideParaPropsWithTracked(StyleSheet& styles, std::shared_ptr<ParaProps>& target,
                                  CellStyle const& style, TrackChangesViewMode /*mode*/) {
  overrideWithParentStyles(
      styles, target, getParent(styles, style),
      [](NamedTableStyle const& named) -> auto const& { return named.getParaProps(); });
  override(target, style.getParaProps());
}

/// The number format that a style has or inherits: the nearest one, whole and shared; null where
/// the chain has none.
template <class StyleSheet>
[[nodiscard]] std::shared_ptr<CellFormat const> findCellFormat(StyleSheet& styles,
                                                               CellStyle const& style) {
  if (style.getCellFormat()) {
    return style.getCellFormat();
  }
  auto const* named = getParent(styles, style);
  while (named != nullptr && !named->getCellFormat()) {
    named = getParent(styles, *named);
  }
  return named == nullptr ? nullptr : named->getCellFormat();
}

/// A style with everything that it inherits, and without a parent. The note stays.
///
/// A group that no style of the chain sets is null. Cost: each group is copied once at most; the
/// number format is shared.
template <class StyleSheet>
[[nodiscard]] CellStyle getOverridenAllPropsWithParentStyles(StyleSheet& styles,
                                                             CellStyle const& style,
                                                             TrackChangesViewMode mode) {
  std::shared_ptr<RunProps> runProps;
  std::shared_ptr<ParaProps> paraProps;
  std::shared_ptr<CellProps> cellProps;
  overrideRunPropsWithTracked(styles, runProps, style, mode);
  overrideParaPropsWithTracked(styles, paraProps, style, mode);
  overrideCellProps(styles, cellProps, style);

  CellStyle result;
  result.setCellFormat(findCellFormat(styles, style));
  result.setRunProps(std::move(runProps));
  result.setParaProps(std::move(paraProps));
  result.setCellProps(std::move(cellProps));
  result.setNoteUUID(style.getNoteUUID());
  return result;
}

}  // namespace Zorv::DOM
