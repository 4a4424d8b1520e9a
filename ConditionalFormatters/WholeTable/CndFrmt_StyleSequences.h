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
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeIndex.h"
#include "DOM/CellStyle.h"
#include "DOM/SharedStyle.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {
class Styles;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// A named style by its place among those that a table's formats name, from 0.
using StyleNumber = std::uint32_t;

/// The styles of the formats that hold for a cell, in order of priority, each once: where a style
/// stands already, naming it again sets nothing new.
using StyleSequence = std::vector<StyleNumber>;

/// The merged and interned style of each sequence of styles that some cell got: made at the first
/// such cell, then looked up. There are few, also where thousands of formats name the same styles.
///
/// Ownership: borrows everything that it is made from.
/// Threads: may be asked from several threads at once.
class StyleSequences {
public:
  StyleSequences(ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                 DOM::SharedObjectFactory const& sharedObjectFactory);

  [[nodiscard]] StyleNumber styleNumberOf(FormatNumber format) const noexcept {
    return _styleOfFormat[format];
  }

  /// The style of a sequence that is not empty; the reference stays valid as long as this object.
  [[nodiscard]] DOM::SharedCellStylePtr const& styleOf(StyleSequence const& sequence) const;

private:
  [[nodiscard]] DOM::CellStyle const& flattened(StyleNumber style) const;
  [[nodiscard]] DOM::SharedCellStylePtr merge(StyleSequence const& sequence) const;

  DOM::Styles const& _styles;
  DOM::SharedObjectFactory const& _sharedObjectFactory;
  std::vector<StyleNumber> _styleOfFormat;
  std::vector<UUID> _uuids;                                         ///< by style
  mutable std::shared_mutex _mutex;                                 ///< guards what follows
  mutable std::vector<boost::optional<DOM::CellStyle>> _flattened;  ///< by style
  mutable boost::unordered_map<StyleSequence, DOM::SharedCellStylePtr> _styleOf;
};

/// Finds the styles of one cell after the other, for one thread: from each sequence of styles that
/// it has met a step leads to every sequence that went on from there, so that neither the formats
/// that hold are listed nor anything is touched that other threads write.
class StyleCursor {
public:
  /// Borrows the sequences, which must outlive the cursor.
  explicit StyleCursor(StyleSequences const& sequences);
  StyleCursor(StyleCursor const&) = delete;
  StyleCursor& operator=(StyleCursor const&) = delete;
  ~StyleCursor() = default;

  /// Begins with a cell: no format holds yet.
  void restart() noexcept { _at = &_steps.front(); }

  /// Adds a format that holds, after those of higher priority.
  void add(FormatNumber format) {
    StyleNumber const style = _sequences.styleNumberOf(format);
    auto const next = _at->next.find(style);
    _at = next != _at->next.end() ? next->second : &goOn(style);
  }

  /// The style of the formats added; null for none of them.
  [[nodiscard]] DOM::SharedCellStylePtr const& getStyle() {
    return _at->style != nullptr ? *_at->style : findStyle();
  }

private:
  struct Step {
    StyleSequence sequence;
    DOM::SharedCellStylePtr const* style = nullptr;  ///< null until it is asked for
    boost::container::flat_map<StyleNumber, Step*> next;
  };

  Step& goOn(StyleNumber style);
  DOM::SharedCellStylePtr const& findStyle();

  StyleSequences const& _sequences;
  std::deque<Step> _steps;  ///< the first is that of no style
  Step* _at;
};

}  // namespace Zorv::ConditionalFormatters
