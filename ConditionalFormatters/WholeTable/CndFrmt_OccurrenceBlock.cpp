#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"

#include <utility>

namespace Zorv::ConditionalFormatters {

OccurrenceBlock OccurrenceBlockBuilder::finalize() {
  for (std::size_t index = 0; index < _texts.size(); ++index) {
    _texts[index].text = &_block.strings[index];
  }
  constexpr auto keyOf = [](auto const& entry) { return entry.key.bits(); };
  _block.texts = PartitionedEntries(_texts, _partitions, keyOf);
  _block.others = PartitionedEntries(_others, _partitions, keyOf);
  return std::move(_block);
}

}  // namespace Zorv::ConditionalFormatters
