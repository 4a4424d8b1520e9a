#include "ConditionalFormatters/WholeTable/CndFrmt_StyleSequences.h"

#include <utility>

#include "ConditionalFormatters/CndFrmt_FormatWalk.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/Styles.h"

namespace Zorv::ConditionalFormatters {

StyleSequences::StyleSequences(ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                               DOM::SharedObjectFactory const& sharedObjectFactory)
    : _formatRefs(formatRefs),
      _styles(styles),
      _sharedObjectFactory(sharedObjectFactory),
      _flattened(formatRefs.size()) {}

DOM::SharedCellStylePtr const& StyleSequences::styleOf(FormatSequence const& sequence) const {
  {
    std::shared_lock const lock(_mutex);
    auto const found = _styleOf.find(sequence);
    if (found != _styleOf.end()) {
      return found->second;
    }
  }
  std::unique_lock const lock(_mutex);
  auto const found = _styleOf.find(sequence);
  if (found != _styleOf.end()) {
    return found->second;
  }
  return _styleOf.emplace(sequence, merge(sequence)).first->second;
}

DOM::CellStyle const& StyleSequences::flattened(FormatNumber format) const {
  auto& style = _flattened[format];
  if (!style) {
    style = flattenNamedStyle(_styles, _formatRefs[format].second.get().getStyleUUID());
  }
  return *style;
}

DOM::SharedCellStylePtr StyleSequences::merge(FormatSequence const& sequence) const {
  boost::optional<DOM::CellStyle> accumulated;
  for (FormatNumber const format : sequence) {
    mergeUnder(accumulated, flattened(format));
  }
  return _sharedObjectFactory.create(std::move(*accumulated));
}

DOM::SharedCellStylePtr const& StyleCursor::styleOf(FormatSequence const& sequence) {
  static DOM::SharedCellStylePtr const noStyle;
  if (sequence.empty()) {
    return noStyle;
  }
  if (_lastStyle != nullptr && sequence == _last) {
    return *_lastStyle;
  }
  auto found = _styleOf.find(sequence);
  if (found == _styleOf.end()) {
    if (_styleOf.size() == rememberedSequences) {
      _styleOf.clear();
    }
    found = _styleOf.emplace(sequence, &_sequences.styleOf(sequence)).first;
  }
  _last = sequence;
  _lastStyle = found->second;
  return *_lastStyle;
}

}  // namespace Zorv::ConditionalFormatters
