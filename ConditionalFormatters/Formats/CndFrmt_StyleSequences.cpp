#include "ConditionalFormatters/Formats/CndFrmt_StyleSequences.h"

#include <algorithm>
#include <utility>

#include "ConditionalFormatters/Formats/CndFrmt_StyleFlattening.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/Styles.h"

namespace Zorv::ConditionalFormatters {

StyleSequences::StyleSequences(ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                               DOM::SharedObjectFactory const& sharedObjectFactory)
    : _styles(styles), _sharedObjectFactory(sharedObjectFactory) {
  boost::unordered_map<UUID, StyleIndex> indices;
  _styleOfFormat.reserve(formatRefs.size());
  for (auto const& [ranges, format] : formatRefs) {
    UUID const& uuid = format.get().getStyleUUID();
    auto const [index, isNew] = indices.emplace(uuid, static_cast<StyleIndex>(_uuids.size()));
    if (isNew) {
      _uuids.push_back(uuid);
    }
    _styleOfFormat.push_back(index->second);
  }
  _flattened.resize(_uuids.size());
}

DOM::SharedCellStylePtr const& StyleSequences::styleOf(StyleSequence const& sequence) const {
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

DOM::CellStyle const& StyleSequences::flattenedStyleOf(FormatIndex format) const {
  std::unique_lock const lock(_mutex);
  return flattened(styleIndexOf(format));
}

DOM::CellStyle const& StyleSequences::flattened(StyleIndex style) const {
  auto& known = _flattened[style];
  if (!known) {
    known = flattenNamedStyle(_styles, _uuids[style]);
  }
  return *known;
}

DOM::SharedCellStylePtr StyleSequences::merge(StyleSequence const& sequence) const {
  boost::optional<DOM::CellStyle> accumulated;
  for (StyleIndex const style : sequence) {
    mergeUnder(accumulated, flattened(style));
  }
  return _sharedObjectFactory.create(std::move(*accumulated));
}

StyleCursor::StyleCursor(StyleSequences const& sequences)
    : _sequences(sequences), _steps(1), _at(&_steps.front()) {
  static DOM::SharedCellStylePtr const noStyle;
  _steps.front().style = &noStyle;
}

StyleCursor::Step& StyleCursor::extend(StyleIndex style) {
  StyleSequence const& sequence = _at->sequence;
  bool const isKnown = std::find(sequence.begin(), sequence.end(), style) != sequence.end();
  Step* next = _at;
  if (!isKnown) {
    next = &_steps.emplace_back();
    next->sequence = sequence;
    next->sequence.push_back(style);
  }
  _at->next.emplace(style, next);
  return *next;
}

DOM::SharedCellStylePtr const& StyleCursor::findStyle() {
  _at->style = &_sequences.styleOf(_at->sequence);
  return *_at->style;
}

}  // namespace Zorv::ConditionalFormatters
