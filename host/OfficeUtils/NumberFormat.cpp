#include "OfficeUtils/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "OfficeUtils/NumberFormatCode.h"
#include "OfficeUtils/NumberFormatDates.h"
#include "OfficeUtils/NumberFormatNumbers.h"
#include "OfficeUtils/NumberFormatParser.h"

namespace Zorv::OfficeUtils {

using NumberFormatCode::Comparison;
using NumberFormatCode::Condition;
using NumberFormatCode::Section;
using NumberFormatCode::SectionKind;
using NumberFormatCode::Token;
using NumberFormatCode::TokenKind;

struct NumberFormat::Data {
  std::vector<Section> numbers;  ///< at least one
  std::optional<Section> texts;
};

namespace {

Section makeGeneral() {
  return {.kind = SectionKind::General, .tokens = {{.kind = TokenKind::General}}};
}

void addCondition(Section& section, Comparison comparison) {
  if (!section.condition) {
    section.condition = Condition{.comparison = comparison};
  }
}

/// Adds the default conditions: positive numbers, negative numbers, zero, in this order. The last
/// section formats all remaining numbers.
void addConditions(std::vector<Section>& sections) {
  if (sections.size() == 2) {
    addCondition(sections[0], Comparison::GreaterOrEqual);
  } else if (sections.size() > 2) {
    addCondition(sections[0], Comparison::Greater);
    addCondition(sections[1], Comparison::Less);
  }
}

/// True if the condition leaves only negative numbers to the next section.
bool leavesNegatives(Condition const& condition) noexcept {
  return (condition.comparison == Comparison::GreaterOrEqual && condition.operand <= 0.0) ||
         (condition.comparison == Comparison::Greater && condition.operand < 0.0);
}

/// The index of the section that formats a number; nothing where none does.
std::optional<std::size_t> findSection(std::vector<Section> const& sections,
                                       double number) noexcept {
  auto const found = std::ranges::find_if(sections, [number](Section const& section) {
    return !section.condition || section.condition->holds(number);
  });
  return std::isfinite(number) && found != sections.end()
             ? std::optional<std::size_t>(found - sections.begin())
             : std::nullopt;
}

std::string writeUnsigned(Section const& section, double number, LocaleContext const& locale) {
  if (section.kind == SectionKind::Number) {
    return NumberFormatCode::writeNumber(section, number, locale);
  }
  std::string text;
  for (Token const& token : section.tokens) {
    bool const isNumber = token.kind == TokenKind::General || token.kind == TokenKind::AnyText;
    text += isNumber ? NumberFormatCode::writeGeneral(number, locale) : token.text;
  }
  return text;
}

}  // namespace

NumberFormat::NumberFormat(std::shared_ptr<Data const> data) noexcept : _data(std::move(data)) {}

std::optional<NumberFormat> NumberFormat::compile(std::string_view code) {
  auto sections = NumberFormatCode::parseNumberFormat(code);
  if (!sections) {
    return std::nullopt;
  }
  constexpr std::size_t textSection = 3;
  Data data{.numbers = std::move(*sections), .texts = std::nullopt};
  bool const hasTexts =
      data.numbers.size() > textSection || data.numbers.back().kind == SectionKind::Text;
  if (hasTexts) {
    data.texts = std::move(data.numbers.back());
    data.numbers.pop_back();
  }
  if (data.numbers.empty()) {
    data.numbers.push_back(makeGeneral());
  }
  addConditions(data.numbers);
  return NumberFormat(std::make_shared<Data const>(std::move(data)));
}

bool NumberFormat::showsDate(double number) const noexcept {
  auto const section = findSection(_data->numbers, number);
  return section && std::ranges::any_of(_data->numbers[*section].tokens, [](Token const& token) {
           return token.kind == TokenKind::Year || token.kind == TokenKind::Month ||
                  token.kind == TokenKind::Day;
         });
}

std::optional<std::string> NumberFormat::formatNumber(double number,
                                                      LocaleContext const& locale) const {
  auto const index = findSection(_data->numbers, number);
  if (!index) {
    return std::nullopt;
  }
  std::vector<Section> const& sections = _data->numbers;
  Section const& section = sections[*index];
  if (section.kind == SectionKind::DateTime) {
    return NumberFormatCode::writeDateTime(section, number, locale);
  }
  bool const isOfNegatives = section.condition
                                 ? section.condition->isOfNegatives()
                                 : *index == 1 && leavesNegatives(*sections.front().condition);
  bool const hasSign = number < 0.0 && !isOfNegatives && !section.tokens.empty();
  std::string text = hasSign ? "-" : "";
  text += writeUnsigned(section, std::abs(number), locale);
  return text;
}

std::string NumberFormat::formatText(std::string_view text) const {
  if (!_data->texts) {
    return std::string(text);
  }
  std::string result;
  for (Token const& token : _data->texts->tokens) {
    result += token.kind == TokenKind::AnyText ? text : std::string_view(token.text);
  }
  return result;
}

}  // namespace Zorv::OfficeUtils
