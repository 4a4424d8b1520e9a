#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <shared_mutex>
#include <vector>

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

  /// Adds the style of a format that holds, after those of higher priority.
  void append(StyleSequence& sequence, FormatNumber format) const;

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

/// Looks styles up for one thread. Neighbouring cells mostly have the same styles, and a sheet few
/// combinations of them, so most look-ups touch nothing that other threads write.
class StyleCursor {
public:
  /// Borrows the sequences, which must outlive the cursor.
  explicit StyleCursor(StyleSequences const& sequences) : _sequences(sequences) {}

  /// The style of a sequence of styles; null for the empty one.
  [[nodiscard]] DOM::SharedCellStylePtr const& styleOf(StyleSequence const& sequence);

private:
  static constexpr std::size_t rememberedSequences = 64;

  StyleSequences const& _sequences;
  StyleSequence _last;
  DOM::SharedCellStylePtr const* _lastStyle = nullptr;
  boost::unordered_map<StyleSequence, DOM::SharedCellStylePtr const*> _styleOf;
};

}  // namespace Zorv::ConditionalFormatters
