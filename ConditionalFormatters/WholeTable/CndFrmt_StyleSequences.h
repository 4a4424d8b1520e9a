#pragma once

#include <cstddef>
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

namespace Zorv::DOM {
class Styles;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// Formats that hold for a cell, in order of priority.
using FormatSequence = std::vector<FormatNumber>;

/// The merged and interned style of each sequence of formats that held for some cell: made at the
/// first such cell, then looked up.
///
/// Ownership: borrows everything that it is made from.
/// Threads: may be asked from several threads at once.
class StyleSequences {
public:
  StyleSequences(ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                 DOM::SharedObjectFactory const& sharedObjectFactory);

  /// The style of a sequence that is not empty; the reference stays valid as long as this object.
  [[nodiscard]] DOM::SharedCellStylePtr const& styleOf(FormatSequence const& sequence) const;

private:
  [[nodiscard]] DOM::CellStyle const& flattened(FormatNumber format) const;
  [[nodiscard]] DOM::SharedCellStylePtr merge(FormatSequence const& sequence) const;

  ConditionalFormatRefs const& _formatRefs;
  DOM::Styles const& _styles;
  DOM::SharedObjectFactory const& _sharedObjectFactory;
  mutable std::shared_mutex _mutex;                                 ///< guards what follows
  mutable std::vector<boost::optional<DOM::CellStyle>> _flattened;  ///< by format
  mutable boost::unordered_map<FormatSequence, DOM::SharedCellStylePtr> _styleOf;
};

/// Looks styles up for one thread. Neighbouring cells mostly have the same formats, and a sheet few
/// combinations of them, so most look-ups touch nothing that other threads write.
class StyleCursor {
public:
  /// Borrows the sequences, which must outlive the cursor.
  explicit StyleCursor(StyleSequences const& sequences) : _sequences(sequences) {}

  /// The style of a sequence of formats; null for the empty one.
  [[nodiscard]] DOM::SharedCellStylePtr const& styleOf(FormatSequence const& sequence);

private:
  static constexpr std::size_t rememberedSequences = 64;

  StyleSequences const& _sequences;
  FormatSequence _last;
  DOM::SharedCellStylePtr const* _lastStyle = nullptr;
  boost::unordered_map<FormatSequence, DOM::SharedCellStylePtr const*> _styleOf;
};

}  // namespace Zorv::ConditionalFormatters
