#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/FollowedAreas.h"
#include "Formulas/Lookups/Memory.h"
#include "Formulas/Lookups/TableArea.h"
#include "Formulas/Values/Area.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// Order-statistic index of an area: its values sorted by kind. Borrows the texts. Immutable.
class OrderedValues {
public:
  using Key = TableArea;

  /// Takes n log n for n cells.
  explicit OrderedValues(Area const& area);
  OrderedValues(OrderedValues const&) = delete;
  OrderedValues& operator=(OrderedValues const&) = delete;
  ~OrderedValues() = default;

  /// How many values of an operand's kind compare to it as an operator says: Less, LessOrEqual,
  /// Greater or GreaterOrEqual. Logarithmic.
  [[nodiscard]] std::uint64_t count(DOM::FormulaSyntaxTree::Operator op,
                                    Value const& operand) const noexcept;

  /// Counts the numbers around a number; nothing where the area holds an error. Logarithmic.
  [[nodiscard]] std::optional<RankCounts> countAround(double number) const noexcept;

  /// The bytes that it takes.
  [[nodiscard]] std::size_t memory() const noexcept {
    return memoryOf(_numbers) + memoryOf(_texts) + memoryOf(_truths);
  }

private:
  std::vector<double> _numbers;
  std::vector<std::string_view> _texts;
  std::vector<std::uint8_t> _truths;  ///< 0 and 1
  bool _hasErrors = false;
};

}  // namespace Zorv::Formulas
