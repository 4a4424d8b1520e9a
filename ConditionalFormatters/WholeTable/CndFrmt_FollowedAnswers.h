#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_NumberRanking.h"
#include "ConditionalFormatters/Following/CndFrmt_TextClasses.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueClasses.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"
#include "Formulas/CriterionText.h"
#include "Formulas/FollowedAreas.h"
#include "OfficeUtils/LocaleContext.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

/// Answers to formulas about one range whose values FollowedOperands keeps, from its structures and
/// from what these lack.
///
/// Formulas read cells, conditions ask the provider: where the two differ, nothing is answered. Nor
/// is it where a walk over the cells would depend on more than the values' order: of two zeros the
/// sign of the first one counts, and for formulas a cell with NaN or an infinity holds an error.
///
/// Borrows the structures. Threads: const operations may be called from several threads.
class FollowedAnswers final : public Formulas::FollowedArea {
public:
  struct Structures {
    ValueColumn const& column;
    NumberRanking const& ranking;
    ValueClasses const& classes;
    TextClasses const& texts;
  };

  FollowedAnswers(Structures const& structures, Formulas::AreaAspects const& aspects,
                  OfficeUtils::LocaleContext locale)
      : _structures(structures), _aspects(aspects), _locale(std::move(locale)) {}

  /// The aspects that the structures serve.
  [[nodiscard]] Formulas::AreaAspects const& getAspects() const noexcept { return _aspects; }

  // To be told of each value that is read, and of each change of a kept one before the structures
  // of equal values follow it.

  void noteRead(FormulaValue const& ofProvider, FormulaValue const& ofCell) noexcept;
  void noteNumber(double number) noexcept;
  /// For AreaAspect::Classes. Gives the hash of the text for the structures: texts that are equal
  /// for criteria have one hash, so that they are found together.
  [[nodiscard]] std::uint32_t noteText(std::string_view text);
  void noteChange(PlaceKey place, ValueBits before, ValueBits now);

  /// Takes over that values were moved with their rows and columns. The next edit is part of this
  /// one.
  void cellsMoved() noexcept;

  /// Forgets which classes the edit before changed.
  void startEdit() noexcept {
    if (!std::exchange(_continuesEdit, false)) {
      _changedClasses.clear();
      _changesOtherClasses = false;
    }
  }
  /// Takes over that all changes of an edit were told. `sum`: of the numbers.
  void settle(FloatNumber sum);

  /// The values whose number the last edit may have changed, as criteria see them; nothing if they
  /// are many, or others than numbers and texts. Empty values and texts do not count.
  [[nodiscard]] std::vector<Formulas::CriterionText> const* findChangedClasses() const noexcept {
    return _changesOtherClasses ? nullptr : &_changedClasses;
  }

  /// True for an aspect that can be answered.
  [[nodiscard]] bool knows(Formulas::AreaAspect aspect) const noexcept;

  [[nodiscard]] Formulas::AreaSummary const& getSummary() const noexcept override {
    return _summary;
  }
  [[nodiscard]] double numberAt(std::uint64_t index) const noexcept override {
    return _structures.ranking.atIndex(index).get();
  }
  [[nodiscard]] Formulas::RankCounts countAround(double number) const noexcept override;
  [[nodiscard]] std::uint64_t countEqual(FormulaValue const& value) const override;

private:
  void noteClass(ValueBits bits);
  void addChangedClass(Formulas::CriterionText value);
  /// How many cells have a text that is equal to one for criteria. `known`: a text that is.
  [[nodiscard]] std::uint64_t countTexts(Formulas::CriterionText const& wanted,
                                         std::optional<std::string_view> known = {}) const;

  /// After all places.
  static constexpr PlaceKey noPlace = ~PlaceKey{0};

  Structures _structures;
  Formulas::AreaAspects _aspects;
  OfficeUtils::LocaleContext _locale;

  // Once set, they stay: what they mean is rare.
  bool _differsFromCells = false;
  bool _hasNonFinite = false;
  bool _hasNegativeZero = false;

  PlaceKey _firstError = noPlace;
  PlaceKey _searchFrom = noPlace;  ///< errors from here on are to be looked for
  std::vector<Formulas::CriterionText> _changedClasses;  ///< by the last edit
  bool _changesOtherClasses = false;
  bool _continuesEdit = false;
  Formulas::AreaSummary _summary;
};

}  // namespace Zorv::ConditionalFormatters
