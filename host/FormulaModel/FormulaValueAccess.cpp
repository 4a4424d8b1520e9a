#include "FormulaModel/FormulaValueAccess.h"

#include <algorithm>
#include <array>

#include "Utils/CaseFolding.h"

namespace Zorv::FormulaModel {

namespace {

struct ErrorText {
  FormulaErrorCode code;
  std::string_view text;
};

constexpr std::array errorTexts{
    ErrorText{FormulaErrorCode::Null, "#NULL!"},
    ErrorText{FormulaErrorCode::DivisionByZero, "#DIV/0!"},
    ErrorText{FormulaErrorCode::Value, "#VALUE!"},
    ErrorText{FormulaErrorCode::Reference, "#REF!"},
    ErrorText{FormulaErrorCode::Name, "#NAME?"},
    ErrorText{FormulaErrorCode::Number, "#NUM!"},
    ErrorText{FormulaErrorCode::NotAvailable, "#N/A"},
    ErrorText{FormulaErrorCode::GettingData, "#GETTING_DATA"},
    ErrorText{FormulaErrorCode::Spill, "#SPILL!"},
    ErrorText{FormulaErrorCode::Calculation, "#CALC!"},
};

}  // namespace

std::string_view toText(FormulaErrorCode code) noexcept {
  auto const* const found = std::ranges::find(errorTexts, code, &ErrorText::code);
  return found != errorTexts.end() ? found->text : "#UNKNOWN!";
}

boost::optional<FormulaErrorCode> parseErrorCode(std::string_view text) noexcept {
  auto const* const found = std::ranges::find_if(errorTexts, [&](ErrorText const& error) {
    return std::ranges::equal(text, error.text, {}, [](char c) { return toAsciiUpper(c); });
  });
  return found != errorTexts.end() ? boost::make_optional(found->code) : boost::none;
}

}  // namespace Zorv::FormulaModel
