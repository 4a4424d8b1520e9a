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

void FollowedAnswers::noteChange(PlaceKey place, ValueBits before, ValueBits now) noexcept {
  // No error comes before the first one.
  if ((isErrorBits(before) || isErrorBits(now)) && place <= _firstError) {
    _searchFrom = std::min(_searchFrom, place);
  }
}

/// Another error may be the first one now.
void FollowedAnswers::rowsMoved() noexcept {
  _continuesEdit = true;
  if (_firstError != noPlace) {
    _firstError = noPlace;
    _searchFrom = 0;
  }
}

void FollowedAnswers::noteClass(ValueBits bits) {
  if (!_aspects.classes || bits == noValueBits) {
    return;
  }
  if (isNumberBits(bits)) {
    addChangedClass(std::bit_cast<double>(bits));
  } else {
    _changesOtherClasses = true;
  }
}

bool FollowedAnswers::addText(std::string const& text) {
  if (!_aspects.classes) {
    return true;
  }
  auto read = Formulas::readCriterionText(text, _locale);
  bool const isAdded = _texts.add(read);
  addChangedClass(std::move(read));
  return isAdded;
}

void FollowedAnswers::removeText(std::string const& text) {
  if (_aspects.classes) {
    auto read = Formulas::readCriterionText(text, _locale);
    _texts.remove(read);
    addChangedClass(std::move(read));
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
    return _structures.classes.count(bitsOfNumber(wanted)) + _texts.count(wanted);
  }
  if (auto const* const text = boost::get<FormulaModel::FormulaString>(&value)) {
    return _texts.count(Formulas::readCriterionText(text->value, _locale));
  }
  return _structures.classes.count(
      makeValueKey(value, [](std::string const&) { return std::uint64_t{0}; }).bits());
}

}  // namespace Zorv::ConditionalFormatters
