#include "ConditionalFormatters/Predicates/CndFrmt_TextMatch.h"

#include "ConditionalFormatters/Predicates/CndFrmt_NeverHolds.h"

namespace Zorv::ConditionalFormatters {

namespace {

bool contains(std::string const& cellText, std::string const& pattern) {
  return cellText.find(pattern) != std::string::npos;
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
