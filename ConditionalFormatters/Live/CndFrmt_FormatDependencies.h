#pragma once

#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedAreas.h"
#include "DOM/Table.h"
#include "Formulas/FindDependencies.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Cells of one table, known by its address, of which the values are new.
struct ChangedCells {
  DOM::Table const* table = nullptr;
  std::vector<TableRange> areas;     ///< disjoint; without cells that edits of lines moved
  std::vector<TableRange> moved;     ///< where cells stand elsewhere after such edits; disjoint
  std::vector<TableRange> fewAreas;  ///< hold all of them, and perhaps other cells
};

/// Effect of a change of values on a format.
struct Reach {
  /// Outside of them no verdict changes, as long as what `fixed` refers to stays; they may overlap.
  std::vector<TableRange> areas;
  /// References to changed cells that move with no cell.
  std::vector<Formulas::Dependencies::Reference const*> fixed;
  bool operandsChange = false;  ///< a part of a formula that is the same for all cells may be new
};

/// True if a reference of a formula of a table, one that moves with no cell, is to changed cells.
[[nodiscard]] bool isFixedReached(Formulas::Dependencies::Reference const& reference,
                                  DOM::Table const& table, std::span<ChangedCells const> changes);

/// Dependencies of one format's verdicts, besides its own condition. A value, which refers to
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

  [[nodiscard]] CellIndex getBaseCell() const noexcept { return _baseCell; }

  /// Area that a fixed reference stands for.
  [[nodiscard]] FormulaArea areaOf(Formulas::Dependencies::Reference const& reference) const;

  /// Appends the areas of which formulas ask something as a whole.
  void appendAreas(std::vector<FormulaArea>& areas) const;

  /// Adds what a change means for the format. `ranges`: those with which this was made.
  void reach(std::span<ChangedCells const> changes, std::vector<TableRange> const& ranges,
             Reach& reach) const;

private:
  /// Adds the cells whose moved reference meets changed cells, or an area of them.
  void addDependents(Formulas::Dependencies::Reference const& reference,
                     std::span<ChangedCells const> changes, std::vector<TableRange> const& ranges,
                     Reach& reach) const;
  void addDependents(Formulas::Dependencies::Reference const& reference, TableRange const& area,
                     std::vector<TableRange> const& ranges, std::vector<TableRange>& areas) const;

  DOM::Table const* _table;
  CellIndex _baseCell;
  bool _onRanges = false;
  Formulas::Dependencies _formulas;  ///< of all formulas
};

}  // namespace Zorv::ConditionalFormatters
