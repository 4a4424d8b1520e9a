#pragma once

#include <concepts>
#include <deque>
#include <memory>
#include <utility>

#include "DOM/CellStyle.h"
#include "DOM/StyleProps.h"
#include "DOM/Styles.h"
#include "DOM/TrackChangesViewMode.h"
#include "Utils/PtrUtils.h"
#include "Utils/UUID.h"

// Flattening of styles: one self-contained style out of a style and everything that it inherits.
//
// The functions read the document's styles and write only to objects that they created. None
// guards against a cycle of parents: the document model rules them out.

/// Constraints of the templates below. Their names are common words, and argument-dependent lookup
/// finds them for every type of the document model: without constraints they would compete with a
/// host's own functions of the same names.
namespace Zorv::DOM::StyleHierarchy {

/// Ordered map from identity to named style, behind getTableStyles().
template <class T>
concept StyleSheet = requires(T& styles, UUID const& uuid) {
  { styles.getTableStyles().find(uuid)->second } -> std::convertible_to<NamedTableStyle const&>;
};

/// Style that names its parent.
template <class T>
concept Inheriting = requires(T const& style) {
  { style.getParentUUID() } -> std::convertible_to<UUID const&>;
};

/// Property group that is merged property by property.
template <class T>
concept Group =
    std::same_as<T, RunProps> || std::same_as<T, ParaProps> || std::same_as<T, CellProps>;

/// Function that takes a property group from a named style.
template <class T, class Props>
concept GetterOf = requires(T const& getGroup, NamedTableStyle const& style) {
  { getGroup(style) } -> std::convertible_to<std::shared_ptr<Props const> const&>;
};

}  // namespace Zorv::DOM::StyleHierarchy

namespace Zorv::DOM {

/// The named style that a style inherits from, or null where it names none that exists.
template <StyleHierarchy::StyleSheet StyleSheet, StyleHierarchy::Inheriting Style>
[[nodiscard]] NamedTableStyle const* getParent(StyleSheet& styles, Style const& style) {
  auto const& tableStyles = styles.getTableStyles();
  auto const found = tableStyles.find(style.getParentUUID());
  return found == tableStyles.end() ? nullptr : &found->second;
}

/// Merges a property group that may be unset into one that may be unset.
///
/// The target never shares the source: a null target becomes a copy, which later merges may change.
/// Requires that a target that is not null is such a copy.
template <StyleHierarchy::Group Props>
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
/// last. Does nothing when `start` is null.
template <StyleHierarchy::StyleSheet StyleSheet, class Visitor>
requires std::invocable<Visitor const&, NamedTableStyle const&>
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
/// sets a property decides it.
template <StyleHierarchy::StyleSheet StyleSheet, StyleHierarchy::Group Props,
          StyleHierarchy::GetterOf<Props> GetGroup>
void overrideWithParentStyles(StyleSheet& styles, std::shared_ptr<Props>& target,
                              NamedTableStyle const* start, GetGroup const& getGroup) {
  forEachStyleInHierarchy(styles, start, [&](NamedTableStyle const& style) {
    std::shared_ptr<Props const> const& group = getGroup(style);
    if (group) {
      override(target, group);
    }
  });
}

/// Flattens a style's cell properties into the target: first the inherited ones, then its own.
template <StyleHierarchy::StyleSheet StyleSheet>
void overrideCellProps(StyleSheet& styles, std::shared_ptr<CellProps>& target,
                       CellStyle const& style) {
  overrideWithParentStyles(
      styles, target, getParent(styles, style),
      [](NamedTableStyle const& named) -> auto const& { return named.getCellProps(); });
  override(target, style.getCellProps());
}

/// Flattens a style's character properties likewise. Named styles carry no tracked changes, so the
/// mode has no effect.
template <StyleHierarchy::StyleSheet StyleSheet>
void overrideRunPropsWithTracked(StyleSheet& styles, std::shared_ptr<RunProps>& target,
                                 CellStyle const& style, TrackChangesViewMode /*mode*/) {
  overrideWithParentStyles(
      styles, target, getParent(styles, style),
      [](NamedTableStyle const& named) -> auto const& { return named.getRunProps(); });
  override(target, style.getRunProps());
}

/// Flattens a style's paragraph properties likewise; the mode has no effect.
template <StyleHierarchy::StyleSheet StyleSheet>
void overrideParaPropsWithTracked(StyleSheet& styles, std::shared_ptr<ParaProps>& target,
                                  CellStyle const& style, TrackChangesViewMode /*mode*/) {
  overrideWithParentStyles(
      styles, target, getParent(styles, style),
      [](NamedTableStyle const& named) -> auto const& { return named.getParaProps(); });
  override(target, style.getParaProps());
}

/// The number format that a style has or inherits: the nearest one, whole and shared; null where
/// the chain has none.
template <StyleHierarchy::StyleSheet StyleSheet>
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

/// A style with everything that it inherits, and without a parent. The note is kept.
///
/// A group that no style of the chain sets is null. Cost: each group is copied at most once; the
/// number format is shared.
template <StyleHierarchy::StyleSheet StyleSheet>
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
