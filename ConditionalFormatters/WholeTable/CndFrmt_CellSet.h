#pragma once

#include <bitset>
#include <cstdint>

#include <boost/container_hash/hash.hpp>
#include <boost/unordered_map.hpp>

namespace Zorv::ConditionalFormatters {

/// Set of cell positions. A cell of a well filled column costs one bit, a lone one about a hundred
/// bytes. Threads: may be asked from several threads at once.
class CellSet {
public:
  CellSet() = default;
  /// A moved-from set may only be assigned to or destroyed.
  CellSet(CellSet&&) = default;
  CellSet& operator=(CellSet&&) = default;
  CellSet(CellSet const&) = delete;
  CellSet& operator=(CellSet const&) = delete;
  ~CellSet() = default;

  /// Adds a cell unless it is there, which it tells. Fastest if the last one added is near it in
  /// the same column.
  bool insert(std::uint32_t row, std::uint32_t column) {
    std::uint64_t const key = keyOf(row, column);
    if (_last == nullptr || key != _lastKey) {
      _last = &_blocks[key];
      _lastKey = key;
    }
    auto const inBlock = row % rowsInBlock;
    bool const isNew = !_last->test(inBlock);
    _last->set(inBlock);
    return isNew;
  }

  /// Removes a cell if it is there, which it tells.
  bool erase(std::uint32_t row, std::uint32_t column) noexcept {
    auto const found = _blocks.find(keyOf(row, column));
    if (found == _blocks.end() || !found->second.test(row % rowsInBlock)) {
      return false;
    }
    found->second.reset(row % rowsInBlock);
    return true;
  }

  [[nodiscard]] bool contains(unsigned long row, unsigned long column) const noexcept {
    auto const found = _blocks.find(keyOf(row, column));
    return found != _blocks.end() && found->second.test(row % rowsInBlock);
  }

private:
  static constexpr unsigned long rowsInBlock = 512;
  using Block = std::bitset<rowsInBlock>;  ///< neighbouring rows of one column

  static std::uint64_t keyOf(unsigned long row, unsigned long column) noexcept {
    return column << 32U | row / rowsInBlock;
  }

  boost::unordered_map<std::uint64_t, Block> _blocks;
  Block* _last = nullptr;
  std::uint64_t _lastKey = 0;
};

}  // namespace Zorv::ConditionalFormatters
