#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/Evaluation/Area.h"
#include "Formulas/Evaluation/Value.h"
#include "Formulas/Lookups/LookupIndex.h"

namespace Zorv::Formulas {

/// The numbers and the texts of an area in their order, to tell how many are above or below one.
class OrderedValues final : public LookupIndex {
public:
  explicit OrderedValues(Area const& area);

  /// How many values of an operand's kind stand to it as an operator says: Less, LessOrEqual,
  /// Greater or GreaterOrEqual. Logarithmic.
  [[nodiscard]] std::uint64_t count(DOM::FormulaSyntaxTree::Operator op,
                                    Value const& operand) const noexcept;

  [[nodiscard]] std::size_t memory() const noexcept override;

private:
  std::vector<double> _numbers;
  std::vector<std::string_view> _texts;
  std::vector<std::uint8_t> _truths;  ///< 0 and 1
};

}  // namespace Zorv::Formulas
