#include "OfficeUtils/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

#include "OfficeUtils/DateNames.h"
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

/// A number without its sign; nothing where a general format does not fit.
std::optional<std::string> writeUnsigned(Section const& section, double number,
                                         LocaleContext const& locale, unsigned generalCharacters) {
  if (section.kind == SectionKind::Number) {
    return NumberFormatCode::writeNumber(section, number, locale);
  }
  std::string text;
  for (Token const& token : section.tokens) {
    if (token.kind == TokenKind::General || token.kind == TokenKind::AnyText) {
      auto const general = NumberFormatCode::writeGeneral(number, locale, generalCharacters);
      if (!general) {
        return std::nullopt;
      }
      text += *general;
    } else {
      text += token.text;
    }
  }
  return text;
}

/// A number with the mark of a fill.
std::optional<std::string> writeMarked(std::vector<Section> const& sections, std::size_t index,
                                       double number, LocaleContext const& locale,
                                       unsigned generalCharacters) {
  Section const& section = sections[index];
  if (section.kind == SectionKind::DateTime) {
    return NumberFormatCode::writeDateTime(section, number, locale);
  }
  bool const isOfNegatives = section.condition
                                 ? section.condition->isOfNegatives()
                                 : index == 1 && leavesNegatives(*sections.front().condition);
  bool const writesNothing = std::ranges::all_of(
      section.tokens, [](Token const& token) { return token.kind == TokenKind::Fill; });
  bool const hasSign = number < 0.0 && !isOfNegatives && !writesNothing;
  unsigned const characters = generalCharacters - (hasSign && generalCharacters > 0 ? 1 : 0);
  auto text = writeUnsigned(section, std::abs(number), locale, characters);
  if (text && hasSign) {
    text->insert(text->begin(), '-');
  }
  return text;
}

/// Takes the mark out of a text.
ShownText showMarked(std::string text, Section const& section) {
  ShownText shown{.text = std::move(text), .colour = section.colour};
  if (!section.fill.empty()) {
    if (auto const at = shown.text.find(NumberFormatCode::fillMark); at != std::string::npos) {
      shown.text.erase(at, 1);
      shown.fillAt = at;
      shown.fill = section.fill;
    }
  }
  return shown;
}

constexpr unsigned unlimited = std::numeric_limits<unsigned>::max();

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

std::string NumberFormat::findDateCode(LocaleContext const& locale) {
  return DateNames::of(locale.getName()).shortDateCode;
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
  auto shown = showNumber(number, locale, unlimited);
  return shown ? std::optional(std::move(shown->text)) : std::nullopt;
}

std::optional<ShownText> NumberFormat::showNumber(double number, LocaleContext const& locale,
                                                  unsigned generalCharacters) const {
  auto const index = findSection(_data->numbers, number);
  if (!index) {
    return std::nullopt;
  }
  auto text = writeMarked(_data->numbers, *index, number, locale, generalCharacters);
  return text ? std::optional(showMarked(*std::move(text), _data->numbers[*index])) : std::nullopt;
}

bool NumberFormat::isGeneral(double number) const noexcept {
  auto const index = findSection(_data->numbers, number);
  return index && std::ranges::any_of(_data->numbers[*index].tokens, [](Token const& token) {
           return token.kind == TokenKind::General || token.kind == TokenKind::AnyText;
         });
}

std::string NumberFormat::formatText(std::string_view text) const { return showText(text).text; }

ShownText NumberFormat::showText(std::string_view text) const {
  if (!_data->texts) {
    return {.text = std::string(text)};
  }
  // A cell's text may contain the mark, so that the place is noted while the text is put together.
  ShownText shown{.text = {}, .colour = _data->texts->colour};
  for (Token const& token : _data->texts->tokens) {
    if (token.kind == TokenKind::Fill) {
      shown.fillAt = shown.text.size();
      shown.fill = _data->texts->fill;
    } else {
      shown.text += token.kind == TokenKind::AnyText ? text : std::string_view(token.text);
    }
  }
  return shown;
}

}  // namespace Zorv::OfficeUtils
