#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "render/Picture.h"
#include "workbook/Document.h"
#include "workbook/SheetRules.h"

namespace Zorv::Render {

/// The rules of a sheet by priority, and the lists of those that have a part in some cell.
class Decisions {
public:
  using FormatIndex = ConditionalFormatters::FormatIndex;

  /// Borrows both.
  Decisions(Workbook::Document const& document, std::size_t sheet,
            Workbook::SheetRules const& rules);

  /// The index of the list of these rules; 0 for none. Logarithmic in the number of lists, and
  /// constant for the list of the last call.
  [[nodiscard]] std::uint32_t intern(std::span<FormatIndex const> formats,
                                     Workbook::VisualRules const& visuals);

  /// Counts a cell of the picture for each rule of a list.
  void countCell(std::uint32_t decision) noexcept;

  [[nodiscard]] std::vector<PictureRule> takeRules() noexcept { return std::move(_rules); }
  [[nodiscard]] std::vector<std::vector<std::uint32_t>> takeLists() noexcept {
    return std::move(_lists);
  }

private:
  using List = std::vector<std::uint32_t>;

  [[nodiscard]] std::uint32_t indexOf(Workbook::Rule const& rule) const noexcept;

  Workbook::SheetRules const& _sheetRules;
  std::size_t _firstNumber = 0;
  std::vector<std::uint32_t> _indexByNumber;  ///< from `_firstNumber` on
  std::vector<PictureRule> _rules;
  std::vector<List> _lists;  ///< the first is empty
  std::map<List, std::uint32_t> _known;
  List _current;
  std::uint32_t _last = 0;
};

}  // namespace Zorv::Render
