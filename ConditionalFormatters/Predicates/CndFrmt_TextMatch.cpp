#include "ConditionalFormatters/Predicates/CndFrmt_TextMatch.h"

#include <cstddef>
#include <cstring>

#include "ConditionalFormatters/Predicates/CndFrmt_NeverHolds.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// `find` takes the product of both lengths for texts of one letter, memmem their sum; for short
/// patterns `find` is quicker.
bool contains(std::string const& cellText, std::string const& pattern) {
  constexpr std::size_t longPattern = 256;
  return pattern.size() < longPattern
             ? cellText.find(pattern) != std::string::npos
             : memmem(cellText.data(), cellText.size(), pattern.data(), pattern.size()) != nullptr;
}

bool doesNotContain(std::string const& cellText, std::string const& pattern) {
  return !contains(cellText, pattern);
}

bool beginsWith(std::string const& cellText, std::string const& pattern) {
  return cellText.starts_with(pattern);
}

bool endsWith(std::string const& cellText, std::string const& pattern) {
  return cellText.ends_with(pattern);
}

}  // namespace

TextTest findTextTest(DOM::TextConditionalFormatType type) noexcept {
  using Type = DOM::TextConditionalFormatType;
  switch (type) {
    case Type::Contains:
      return contains;
    case Type::NotContains:
      return doesNotContain;
    case Type::BeginsWith:
      return beginsWith;
    case Type::EndsWith:
      return endsWith;
  }
  return neverHolds;
}

}  // namespace Zorv::ConditionalFormatters
