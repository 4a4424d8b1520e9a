#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "DOM/CellStyle.h"
#include "DOM/SharedStyle.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/NumberFormat.h"
#include "render/Build/TextWidths.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// Look of a style in a picture.
struct StyleLook {
  std::uint32_t look = 0;  ///< index in the picture's looks
  CellEdges edges;         ///< before they meet those of neighbours
  bool hasEdges = false;
  bool hasConditionalEdges = false;  ///< a conditional format sets some
  bool hasFill = false;
  bool isFixedInWidth = true;  ///< the text is neither rotated nor shrunk to the width
  bool wraps = false;
  DOM::HorizontalAlignment horizontal = DOM::HorizontalAlignment::General;
  FontMeasures measures;
  OfficeUtils::NumberFormat const* format = nullptr;  ///< never null

  /// True if an empty cell shows something.
  [[nodiscard]] bool isVisible() const noexcept { return hasFill || hasEdges; }
};

/// The looks of one sheet's picture. The conditional style lies over a cell's own, property by
/// property.
///
/// Memory: an entry for each pair of styles. Cost of a known pair: one look into a hash table.
class Looks {
public:
  using Style = DOM::SharedStyle<DOM::CellStyle>;

  /// `usual` is the style of cells without a style of their own; may be null. Borrows both.
  Looks(Style const* usual, OfficeUtils::LocaleContext const& locale);

  /// Either may be null. Borrows both, which must live as long as this object. The reference is
  /// valid as long.
  [[nodiscard]] StyleLook const& find(Style const* own, Style const* conditional);

  /// The font of runs over the font of a look.
  [[nodiscard]] Font makeFont(std::uint32_t look, DOM::RunProps const& props) const;

  [[nodiscard]] Look const& get(std::uint32_t look) const noexcept { return _looks[look]; }
  [[nodiscard]] std::vector<Look> take() && noexcept { return std::move(_looks); }

private:
  struct PairHash {
    std::size_t operator()(std::pair<Style const*, Style const*> const& pair) const noexcept;
  };

  [[nodiscard]] StyleLook makeStyleLook(Style const* own, Style const* conditional);
  [[nodiscard]] std::uint32_t intern(Look look);
  [[nodiscard]] OfficeUtils::NumberFormat const* findFormat(DOM::CellFormat const* format);

  Style const* _usual;
  OfficeUtils::LocaleContext const& _locale;
  std::unordered_map<std::pair<Style const*, Style const*>, StyleLook, PairHash> _known;
  std::vector<Look> _looks;
  std::unordered_multimap<std::size_t, std::uint32_t> _looksByHash;
  OfficeUtils::NumberFormat _general;
  std::unordered_map<std::string, std::optional<OfficeUtils::NumberFormat>> _formats;  ///< by code
};

}  // namespace Zorv::Render
