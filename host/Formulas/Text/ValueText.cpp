#include "Formulas/Text/ValueText.h"

#include "Formulas/Text/Characters.h"
#include "Formulas/Text/DateText.h"
#include "Formulas/Text/NumberText.h"

namespace Zorv::Formulas {

namespace {

bool takeSign(std::string_view& text, std::string_view sign) noexcept {
  bool const isThere = text.starts_with(sign);
  text.remove_prefix(isThere ? sign.size() : 0);
  return isThere;
}

/// Takes a currency sign away, before the figures or behind them.
bool takeCurrency(std::string_view& text) noexcept {
  for (std::string_view const sign : {"$", "€", "£", "¥"}) {
    if (takeSign(text, sign)) {
      text = trimSpaces(text);
      return true;
    }
    if (text.ends_with(sign)) {
      text.remove_suffix(sign.size());
      text = trimSpaces(text);
      return true;
    }
  }
  return false;
}

/// A number with a currency sign, or in parentheses, which mean a minus sign.
std::optional<double> readMoney(std::string_view text, OfficeUtils::LocaleContext const& locale) {
  text = trimSpaces(text);
  bool const isInParentheses = text.size() > 1 && text.front() == '(' && text.back() == ')';
  if (isInParentheses) {
    text = trimSpaces(text.substr(1, text.size() - 2));
  }
  bool const hasMinus = !isInParentheses && takeSign(text, "-");
  bool const hasCurrency = takeCurrency(text);
  bool const hasLateMinus = hasCurrency && !isInParentheses && !hasMinus && takeSign(text, "-");
  bool const hasOtherSign = text.starts_with('-') || text.starts_with('+');
  if (!(hasCurrency || isInParentheses) || hasOtherSign) {
    return std::nullopt;
  }
  auto const number = readNumber(text, locale);
  bool const isNegative = isInParentheses || hasMinus || hasLateMinus;
  return number && isNegative ? std::optional(-*number) : number;
}

}  // namespace

std::optional<double> readValue(std::string_view text, OfficeUtils::LocaleContext const& locale,
                                std::optional<int> currentYear) {
  // Most texts begin with a letter, which is no part of a number.
  if (text.empty() || !isAsciiLetter(text.front())) {
    if (auto const number = readNumber(text, locale)) {
      return number;
    }
    if (auto const money = readMoney(text, locale)) {
      return money;
    }
  }
  auto const moment = readMoment(text, locale, currentYear);
  return moment ? std::optional(moment->serial()) : std::nullopt;
}

}  // namespace Zorv::Formulas
