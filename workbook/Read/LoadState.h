#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "Utils/WorkBudget.h"
#include "workbook/Document.h"
#include "workbook/Limits.h"
#include "workbook/Package/Archive.h"
#include "workbook/Package/PartError.h"
#include "workbook/Read/FormatUses.h"
#include "workbook/Recalculation/CellFormulas.h"
#include "workbook/Recalculation/VolatileWords.h"
#include "workbook/Semantics.h"

namespace Zorv::Workbook {

/// Takes the memory that a document keeps from a budget, in lumps.
class MemoryCounter {
public:
  /// Borrows the budget; null for none.
  explicit MemoryCounter(WorkBudget* budget) noexcept : _budget(budget) {}

  /// Throws like WorkBudget::takeMemory().
  void take(std::uint64_t bytes) {
    _pending += bytes;
    if (_budget != nullptr && _pending >= lump) {
      _budget->takeMemory(std::exchange(_pending, 0));
    }
  }

private:
  static constexpr std::uint64_t lump = 1'048'576;

  WorkBudget* _budget;
  std::uint64_t _pending = 0;
};

/// State that the readers of one file's parts share.
struct LoadState {
  Archive& archive;
  Limits limits;
  Document& document;
  MemoryCounter memory;
  Semantics semantics = Semantics::Own;
  std::uint64_t cellCount = 0;
  std::uint64_t sharedTextBytes = 0;  ///< copied into cells
  std::uint64_t formulaBytes = 0;     ///< of rules and defined names
  std::size_t tableColumnCount = 0;
  std::size_t hyperlinkCount = 0;
  std::size_t textRunCount = 0;
  std::size_t ruleCount = 0;  ///< the number of the next rule
  std::uint64_t ruleAreaCount = 0;
  FormatUses formatUses{};
  CellFormulas missing{};         ///< the formulas without results in the file
  VolatileWords volatileWords{};  ///< of the workbook's names
  bool usesClock = false;         ///< a cell's formula depends on the current date or time

  /// Counts a formula that is kept parsed. Throws PartError beyond the limit.
  void countFormula(std::string_view formula, std::string const& part) {
    formulaBytes += formula.size();
    memory.take(formula.size() * parsedBytesPerByte);
    if (formulaBytes > limits.formulaBytes) {
      throw PartError(part, {},
                      fmt::format("the formulas of rules and names have more than {} bytes, which "
                                  "is the limit",
                                  limits.formulaBytes));
    }
  }

  /// A parsed formula takes about that many bytes for each byte of its text.
  static constexpr std::uint64_t parsedBytesPerByte = 32;
};

}  // namespace Zorv::Workbook
