#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Utils/CellIndex.h"
#include "workbook/Document.h"

namespace Zorv::Workbook {

/// Reason why a formula has no result, or a doubtful one.
enum class Uncalculated : std::uint8_t {
  NoText,            ///< the file does not say what the formula is
  Unreadable,        ///< the text is no formula; the detail is the parser's message
  TooMuch,           ///< beyond the limit of what is calculated
  Failed,            ///< the detail is the exception's message
  Circular,          ///< it needs its own result
  UnknownFunctions,  ///< the details are their names
  Lost,              ///< it refers to what the document lacks; the details are the doubts
};

/// Formulas that could not be calculated, as one finding for each sheet and reason.
class UncalculatedReport {
public:
  struct Key {
    std::size_t sheet;
    Uncalculated reason;
    bool keepsResult;  ///< the cell has a result in the file, which stays

    // NOLINTNEXTLINE(readability-implicit-bool-conversion): `keepsResult` is compared as it is.
    friend auto operator<=>(Key const&, Key const&) noexcept = default;
  };

  void add(Key const& key, CellIndex cell, std::vector<std::string> const& details);

  /// Adds the findings to the document.
  void writeTo(Document& document) const;

private:
  struct Entry {
    std::uint64_t count = 0;
    CellIndex first{RowIndex(0), ColumnIndex(0)};
    std::set<std::string> details;
  };

  [[nodiscard]] static std::string describe(Key const& key, Entry const& entry);

  std::map<Key, Entry> _entries;
};

}  // namespace Zorv::Workbook
