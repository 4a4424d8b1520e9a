#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zorv::ConditionalFormatters {

/// Texts by index, each kept once for as long as it is used. Texts are equal byte by byte.
class TextPool {
public:
  using Index = std::uint32_t;

  /// The index of a text, which is used once more. None if too many texts crowd at one place of the
  /// hash table, as texts that were chosen for it do.
  [[nodiscard]] std::optional<Index> acquire(std::string_view text);
  /// Uses a text once less.
  void release(Index index) noexcept;

  /// How often a text is used.
  [[nodiscard]] std::uint32_t countUses(std::string_view text) const noexcept;

  [[nodiscard]] std::string const& at(Index index) const noexcept { return _texts[index].text; }
  /// How many texts are used.
  [[nodiscard]] std::size_t size() const noexcept { return _texts.size() - _free.size(); }

  /// About how many bytes it takes, without texts too long for a std::string's own room.
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  static constexpr unsigned mostSteps = 512;

  struct Text {
    std::string text;
    std::size_t hash;
    std::uint32_t useCount;
  };

  void grow();
  void removeSlot(std::size_t gap) noexcept;
  /// The empty slot where a hash belongs. Requires that there is one.
  [[nodiscard]] std::size_t findGap(std::size_t hash) const noexcept;
  [[nodiscard]] Index takeFree();

  std::vector<Text> _texts;   ///< by index
  std::vector<Index> _free;   ///< indices that are not used
  std::vector<Index> _slots;  ///< a hash table with open addressing: index + 1, or 0 if empty
};

}  // namespace Zorv::ConditionalFormatters
