#pragma once

#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/Table.h"
#include "Formulas/FindDependencies.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Cells of one table, known by its address, of which the values are new.
struct ChangedCells {
  DOM::Table const* table = nullptr;
  std::vector<TableRange> areas;     ///< disjoint
  std::vector<TableRange> fewAreas;  ///< hold the others, and perhaps other cells
};

/// What a change of values means for a format.
struct Reach {
  std::vector<TableRange> areas;  ///< outside of them no verdict changes; they may overlap
  bool operandsChange = false;    ///< a part of a formula that is the same for all cells is new
  bool lookupsChange = false;     ///< indexes of ranges of formulas may be out of date
};

/// What the verdicts of one format depend on, besides its own condition. A value, which refers to
/// nothing but tables, by their address.
class FormatDependencies {
public:
  /// Looks names and sheets up with the provider, and throws what that throws.
  FormatDependencies(ConditionalFormatRef const& formatRef, DOM::Table const& table,
                     ValueContextProvider const& provider);

  /// The verdicts depend on all values of the format's ranges; what that means for a change of
  /// values, SharedOperands knows.
  [[nodiscard]] bool areOnRanges() const noexcept { return _onRanges; }
  [[nodiscard]] bool areOnDay() const noexcept { return _formulas.onDay; }
  /// The verdicts depend on the current moment, or on chance.
  [[nodiscard]] bool areOnMoment() const noexcept { return _formulas.onMoment; }

  /// Adds what a change means for the format. `ranges`: those with which this was made.
  void reach(ChangedCells const& changed, std::vector<TableRange> const& ranges,
             Reach& reach) const;

private:
  void add(Formulas::Dependencies const& dependencies);
  /// Adds the cells whose moved reference meets an area.
  void addDependents(Formulas::Dependencies::Reference const& reference, TableRange const& area,
                     std::vector<TableRange> const& ranges, Reach& reach) const;

  DOM::Table const* _table;
  CellIndex _baseCell;
  bool _onRanges = false;
  Formulas::Dependencies _formulas;  ///< of all formulas
};

}  // namespace Zorv::ConditionalFormatters
