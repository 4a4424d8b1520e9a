#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/Following/CndFrmt_TextPool.h"
#include "Formulas/CriterionText.h"

namespace Zorv::ConditionalFormatters {

/// Counts texts as criteria such as those of COUNTIF compare them: by the number that a text reads
/// as, or else without regard to letter case.
class CriterionTexts {
public:
  /// Counts a text once more. False, and it is not counted, if too many texts crowd in a hash
  /// table.
  [[nodiscard]] bool add(Formulas::CriterionText const& text) {
    if (auto const* const number = std::get_if<double>(&text)) {
      ++_numbers[*number];
      return true;
    }
    return _texts.acquire(std::get<std::string>(text)).has_value();
  }

  /// Counts a text once less. Requires that it was counted.
  void remove(Formulas::CriterionText const& text) {
    if (auto const* const number = std::get_if<double>(&text)) {
      auto const found = _numbers.find(*number);
      if (--found->second == 0) {
        _numbers.erase(found);
      }
      return;
    }
    auto const& folded = std::get<std::string>(text);
    TextPool::Index const index = *_texts.acquire(folded);
    _texts.release(index);
    _texts.release(index);
  }

  /// How many texts are equal to one.
  [[nodiscard]] std::uint64_t count(Formulas::CriterionText const& text) const {
    if (auto const* const number = std::get_if<double>(&text)) {
      auto const found = _numbers.find(*number);
      return found == _numbers.end() ? 0 : found->second;
    }
    return _texts.countUses(std::get<std::string>(text));
  }

  /// About how many bytes it takes.
  [[nodiscard]] std::size_t countBytes() const noexcept {
    constexpr std::size_t bytesOfNode = 48;
    return _texts.countBytes() + _numbers.size() * bytesOfNode;
  }

private:
  TextPool _texts;                                       ///< those that read as no number
  boost::unordered_map<double, std::uint64_t> _numbers;  ///< how many texts read as each number
};

}  // namespace Zorv::ConditionalFormatters
