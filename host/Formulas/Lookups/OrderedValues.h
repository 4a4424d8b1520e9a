#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/Evaluation/Area.h"
#include "Formulas/Evaluation/Value.h"
#include "Formulas/Lookups/LookupIndex.h"

namespace Zorv::Formulas {

/// How many numbers are below a number, how many equal it, and how many are above.
struct Standing {
  std::uint64_t below = 0;
  std::uint64_t equal = 0;
  std::uint64_t above = 0;
};

/// The numbers and the texts of an area in their order, to tell how many are above or below one.
class OrderedValues final : public LookupIndex {
public:
  explicit OrderedValues(Area const& area);

  /// How many values of an operand's kind stand to it as an operator says: Less, LessOrEqual,
  /// Greater or GreaterOrEqual. Logarithmic.
  [[nodiscard]] std::uint64_t count(DOM::FormulaSyntaxTree::Operator op,
                                    Value const& operand) const noexcept;

  /// Where a number stands among the numbers; nothing where the area holds an error, too.
  /// Logarithmic.
  [[nodiscard]] std::optional<Standing> findStanding(double number) const noexcept;

  [[nodiscard]] std::size_t memory() const noexcept override;

private:
  std::vector<double> _numbers;
  std::vector<std::string_view> _texts;
  std::vector<std::uint8_t> _truths;  ///< 0 and 1
  bool _hasErrors = false;
};

}  // namespace Zorv::Formulas
