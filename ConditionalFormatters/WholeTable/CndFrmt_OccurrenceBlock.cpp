#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"

#include <functional>
#include <utility>

namespace Zorv::ConditionalFormatters {

void OccurrenceBlockBuilder::add(DOM::CellInfo const& cellInfo, FormulaValue&& value) {
  if (!isComparable(value)) {
    return;
  }
  auto const key = FormulaModel::makeValueKey(value, std::hash<std::string>());
  if (auto* const string = boost::get<FormulaModel::FormulaString>(&value)) {
    _texts.push_back({key, _block.positions.size(), nullptr});
    _block.strings.push_back(std::move(string->value));
  } else {
    _others.push_back({key, _block.positions.size()});
  }
  _block.positions.push_back({static_cast<std::uint32_t>(cellInfo.getRowIndex()),
                              static_cast<std::uint32_t>(cellInfo.getColIndex())});
}

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
