#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zorv::ConditionalFormatters {

/// Texts by index, each kept once for as long as it is used. Texts are equal byte by byte.
///
/// Hash tables with open addressing, 256 of them, so that none grows for long: about fifty bytes
/// for a text.
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

  [[nodiscard]] std::string const& at(Index index) const noexcept {
    return _pieces[index % pieceCount].texts[index / pieceCount].text;
  }
  /// How many texts are used.
  [[nodiscard]] std::size_t size() const noexcept;

  /// About how many bytes it takes, without texts too long for a std::string's own room.
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  static constexpr unsigned mostSteps = 512;
  static constexpr unsigned pieceBits = 8;
  static constexpr Index pieceCount = Index{1} << pieceBits;
  static constexpr Index none = ~Index{0};

  struct Text {
    std::string text;
    std::uint32_t hash = 0;
    std::uint32_t useCount = 0;  ///< of a text that is not used, the next one of these
  };

  /// One of the hash tables.
  struct Piece {
    std::vector<Text> texts;   ///< by place
    std::vector<Index> slots;  ///< place + 1, or 0 if empty; none, or a power of two
    std::size_t used = 0;
    Index firstFree = none;  ///< the place of a text that is not used
  };

  [[nodiscard]] static Index pieceOf(std::size_t hash) noexcept {
    return static_cast<Index>(hash >> (64U - pieceBits));
  }
  static void grow(Piece& piece);
  static void removeSlot(Piece& piece, std::size_t gap) noexcept;
  /// The place of a text that is not used.
  [[nodiscard]] static Index takeFree(Piece& piece);

  std::vector<Piece> _pieces;  ///< none as long as there was no text
};

}  // namespace Zorv::ConditionalFormatters
