#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedAnswers.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <utility>

#include <boost/variant/get.hpp>

#include "FormulaModel/ValueKey.h"

namespace Zorv::ConditionalFormatters {

namespace {

using FormulaModel::FormulaErrorCode;
using FormulaModel::ValueKey;

constexpr unsigned errorCodeBits = 8;

bool isErrorBits(ValueBits bits) noexcept {
  return bits >> errorCodeBits == ValueKey::ofError(FormulaErrorCode{}).bits() >> errorCodeBits;
}

FormulaErrorCode errorOfBits(ValueBits bits) noexcept {
  return static_cast<FormulaErrorCode>(bits & ((ValueBits{1} << errorCodeBits) - 1));
}

std::uint32_t hashOfCriterion(Formulas::CriterionText const& criterion) noexcept {
  return static_cast<std::uint32_t>(std::hash<Formulas::CriterionText>()(criterion));
}

bool isSameValue(FormulaValue const& a, FormulaValue const& b) noexcept {
  if (a.which() != b.which()) {
    return false;
  }
  if (auto const* const number = boost::get<FormulaModel::FormulaNumber>(&a)) {
    double const other = boost::get<FormulaModel::FormulaNumber>(&b)->value.get();
    return number->value.get() == other && std::signbit(number->value.get()) == std::signbit(other);
  }
  if (auto const* const text = boost::get<FormulaModel::FormulaString>(&a)) {
    return text->value == boost::get<FormulaModel::FormulaString>(&b)->value;
  }
  auto const noText = [](std::string const& /*text*/) { return std::uint64_t{0}; };
  return makeValueKey(a, noText) == makeValueKey(b, noText);
}

}  // namespace

void FollowedAnswers::noteRead(FormulaValue const& ofProvider,
                               FormulaValue const& ofCell) noexcept {
  _differsFromCells = _differsFromCells || !isSameValue(ofProvider, ofCell);
}

void FollowedAnswers::noteNumber(double number) noexcept {
  _hasNonFinite = _hasNonFinite || !std::isfinite(number);
  _hasNegativeZero = _hasNegativeZero || (number == 0.0 && std::signbit(number));
}

std::uint32_t FollowedAnswers::noteText(std::string_view text) {
  auto read = Formulas::readCriterionText(text, _locale);
  std::uint32_t const hash = hashOfCriterion(read);
  addChangedClass(std::move(read));
  return hash;
}

void FollowedAnswers::noteChange(PlaceKey place, ValueBits before, ValueBits now) {
  // No error comes before the first one.
  if ((isErrorBits(before) || isErrorBits(now)) && place <= _firstError) {
    _searchFrom = std::min(_searchFrom, place);
  }
  noteClass(before);
  if (!isTextBits(now)) {  // else it was noted when it was read
    noteClass(now);
  }
}

/// Another error may be the first one now.
void FollowedAnswers::cellsMoved() noexcept {
  _continuesEdit = true;
  if (_firstError != noPlace) {
    _firstError = noPlace;
    _searchFrom = 0;
  }
}

void FollowedAnswers::noteClass(ValueBits bits) {
  if (!_aspects.classes || bits == noValueBits || _changesOtherClasses) {
    return;
  }
  if (isNumberBits(bits)) {
    addChangedClass(std::bit_cast<double>(bits));
  } else if (isTextBits(bits)) {
    addChangedClass(Formulas::readCriterionText(_structures.texts.at(textOfBits(bits)), _locale));
  } else {
    _changesOtherClasses = true;
  }
}

void FollowedAnswers::addChangedClass(Formulas::CriterionText value) {
  constexpr std::size_t fewClasses = 16;
  _changesOtherClasses = _changesOtherClasses || _changedClasses.size() == fewClasses;
  if (!_changesOtherClasses) {
    _changedClasses.push_back(std::move(value));
  }
}

void FollowedAnswers::settle(FloatNumber sum) {
  ValueColumn const& column = _structures.column;
  _summary.sum = sum.get();
  _summary.numberCount = column.countNumbers();
  _summary.valueCount = column.size();
  if (_searchFrom == noPlace) {
    return;
  }
  auto const error = column.findFirst(_searchFrom, isErrorBits);
  _firstError = error ? error->place : noPlace;
  _summary.firstError = error ? std::optional(errorOfBits(error->value)) : std::nullopt;
  _searchFrom = noPlace;
}

bool FollowedAnswers::knows(Formulas::AreaAspect aspect) const noexcept {
  if (_differsFromCells || _hasNonFinite) {
    return false;
  }
  switch (aspect) {
    case Formulas::AreaAspect::Summary:
      return _aspects.summary;
    case Formulas::AreaAspect::Order:
      return _aspects.order && !_hasNegativeZero;
    default:
      return _aspects.classes;
  }
}

Formulas::RankCounts FollowedAnswers::countAround(double number) const noexcept {
  auto const [below, equal, above] = _structures.ranking.countAround(FloatNumber(number));
  return {below, equal, above};
}

std::uint64_t FollowedAnswers::countEqual(FormulaValue const& value) const {
  if (auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value)) {
    double const wanted = number->value.get();
    return _structures.classes.count(bitsOfNumber(wanted)) + countTexts(wanted);
  }
  if (auto const* const text = boost::get<FormulaModel::FormulaString>(&value)) {
    return countTexts(Formulas::readCriterionText(text->value, _locale), text->value);
  }
  return _structures.classes.count(
      makeValueKey(value, [](std::string const&) { return std::uint64_t{0}; }).bits());
}

std::uint64_t FollowedAnswers::countTexts(Formulas::CriterionText const& wanted,
                                          std::optional<std::string_view> known) const {
  std::uint64_t count = 0;
  _structures.texts.forEachOfHash(
      hashOfCriterion(wanted), [&](std::string_view text, std::uint64_t cells) {
        // Most texts occur as they are asked for, and to read one takes longer than to compare it.
        bool const isEqual = text == known || Formulas::readCriterionText(text, _locale) == wanted;
        count += isEqual ? cells : 0;
      });
  return count;
}

}  // namespace Zorv::ConditionalFormatters
