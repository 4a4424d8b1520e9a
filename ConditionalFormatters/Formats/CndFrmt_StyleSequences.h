#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <shared_mutex>
#include <vector>

#include <boost/container/flat_map.hpp>
#include <boost/container_hash/hash.hpp>
#include <boost/optional.hpp>
#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "DOM/CellStyle.h"
#include "DOM/SharedStyle.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {
class Styles;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// A named style by its index among those that a table's formats name, from 0.
using StyleIndex = std::uint32_t;

/// The styles of the formats that hold for a cell, in order of priority and each once: merging a
/// style a second time sets nothing.
using StyleSequence = std::vector<StyleIndex>;

/// Cache of the merged and interned style of each style sequence, made for the first cell that has
/// it. There are few sequences, even if thousands of formats name the same styles.
///
/// Ownership: borrows everything that it is made from.
/// Threads: may be asked from several threads at once.
class StyleSequences {
public:
  StyleSequences(ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                 DOM::SharedObjectFactory const& sharedObjectFactory);

  [[nodiscard]] StyleIndex styleIndexOf(FormatIndex format) const noexcept {
    return _styleOfFormat[format];
  }

  /// The style of a sequence, which must not be empty. Valid as long as this object.
  [[nodiscard]] DOM::SharedCellStylePtr const& styleOf(StyleSequence const& sequence) const;

  /// Everything that the named style of a format sets. Valid as long as this object.
  [[nodiscard]] DOM::CellStyle const& flattenedStyleOf(FormatIndex format) const;

private:
  [[nodiscard]] DOM::CellStyle const& flattened(StyleIndex style) const;
  [[nodiscard]] DOM::SharedCellStylePtr merge(StyleSequence const& sequence) const;

  DOM::Styles const& _styles;
  DOM::SharedObjectFactory const& _sharedObjectFactory;
  std::vector<StyleIndex> _styleOfFormat;
  std::vector<UUID> _uuids;                                         ///< by style
  mutable std::shared_mutex _mutex;                                 ///< guards what follows
  mutable std::vector<boost::optional<DOM::CellStyle>> _flattened;  ///< by style
  mutable boost::unordered_map<StyleSequence, DOM::SharedCellStylePtr> _styleOf;
};

/// Finds the styles of one cell after the other, for one thread.
///
/// A trie over the sequences that the thread has met: a format that holds is one step in it, so
/// that a cell needs no list of formats, no hash and no lock.
class StyleCursor {
public:
  /// Borrows the sequences, which must outlive the cursor.
  explicit StyleCursor(StyleSequences const& sequences);
  StyleCursor(StyleCursor const&) = delete;
  StyleCursor& operator=(StyleCursor const&) = delete;
  ~StyleCursor() = default;

  /// Begins a cell: no format holds yet.
  void restart() noexcept { _at = &_steps.front(); }

  /// Adds a format that holds, after those of higher priority.
  void add(FormatIndex format) {
    StyleIndex const style = _sequences.styleIndexOf(format);
    auto const next = _at->next.find(style);
    _at = next != _at->next.end() ? next->second : &extend(style);
  }

  /// The style of the added formats; null if there are none.
  [[nodiscard]] DOM::SharedCellStylePtr const& getStyle() {
    return _at->style != nullptr ? *_at->style : findStyle();
  }

private:
  struct Step {
    StyleSequence sequence;
    DOM::SharedCellStylePtr const* style = nullptr;  ///< null until it is needed
    boost::container::flat_map<StyleIndex, Step*> next;
  };

  Step& extend(StyleIndex style);
  DOM::SharedCellStylePtr const& findStyle();

  StyleSequences const& _sequences;
  std::deque<Step> _steps;  ///< the first is the empty sequence
  Step* _at;
};

}  // namespace Zorv::ConditionalFormatters
