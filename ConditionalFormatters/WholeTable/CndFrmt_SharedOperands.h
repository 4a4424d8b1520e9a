#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <span>
#include <vector>

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedAreas.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"
#include "DOM/Table.h"
#include "Formulas/FollowedAreas.h"
#include "Utils/CellIndex.h"
#include "Utils/FloatNumber.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Effect of new values in cells on formats that take operands from their ranges.
struct OperandChanges {
  /// The formats of which the condition is to be prepared again.
  FormatIndices touched;
  /// Those of them that may hold for other cells than before, anywhere in their ranges.
  FormatIndices moved;

  /// A format that may hold for other cells than before where these have numbers from one number
  /// up to another one, both included.
  struct Shifted {
    FormatIndex format;
    double least;
    double most;
  };
  std::vector<Shifted> shifted;

  /// Further cells, outside of those with new values, for which a format may hold now, or hold no
  /// longer.
  std::vector<CellIndex> cells;
};

/// The range operands of a table's formats. Formats with the same list of ranges share one object,
/// and so do formulas that ask something of such a range.
///
/// Ownership: borrows what it is made from. Threads: see RangeOperands; the operations that are not
/// const need exclusive access.
class SharedOperands {
public:
  /// Most values that follow edits: about 500 megabytes.
  static constexpr std::size_t defaultMostFollowed = std::size_t{1} << 23U;

  SharedOperands(ValueContextProvider const& provider, DOM::Table const& table,
                 ConditionalFormatRefs const& formatRefs,
                 std::size_t mostFollowed = defaultMostFollowed);

  /// The operands of a format; null if its condition takes none from its ranges.
  [[nodiscard]] RangeOperands const* find(FormatIndex format) const noexcept {
    return _byFormat.empty() ? nullptr : _byFormat[format];
  }

  /// Adds areas to which formulas of the formats refer, of this table and others, to what follows
  /// edits. Small ones are left out. To be called once, before prepareSome(); needs exclusive
  /// access.
  void addAreas(std::span<FormulaArea const> areas);

  /// Takes over what follows edits from the operands of other formats of the same table, where
  /// these have the same ranges, or those ranges where `moves`, the edits that lie between the two,
  /// put them. Needs exclusive access to both. Throws what the provider throws.
  void takeOver(SharedOperands& others, DocumentMoves const& moves);

  /// The areas of formulas, as far as they follow edits.
  [[nodiscard]] FollowedFormulaAreas const& getAreas() const noexcept { return _areas; }

  /// Takes over that the cells of some areas of a table have new values, which may be none. What
  /// does not follow edits is forgotten. If this throws, everything is.
  [[nodiscard]] OperandChanges valuesChanged(DOM::Table const& table,
                                             std::span<TableRange const> areas);

  /// Takes over that rows and columns were edited, and all ranges are as before. If this throws,
  /// everything is forgotten.
  void linesChanged(DocumentMoves const& moves);

  /// Works on operands that follow edits, as far as these have few enough values, for about the
  /// time that is given, a few milliseconds more at most. True if there is more to do. Throws what
  /// the provider throws.
  bool prepareSome(std::chrono::microseconds budget);

private:
  /// The operands of one list of ranges, and the formats that share them.
  struct Shared {
    Shared(ValueContextProvider const& provider, DOM::Table const& table,
           std::vector<TableRange> const& ranges) noexcept
        : operands(provider, table, ranges) {}
    /// For formulas alone.
    Shared(ValueContextProvider const& provider, FormulaArea const& area)
        : ownRanges{area.range}, operands(provider, *area.table, ownRanges) {}

    std::vector<TableRange> ownRanges;  ///< unless they are those of formats
    RangeOperands operands;
    FormatIndices formats;
  };

  /// The number that a condition is tested against, if it is one.
  using Reference = boost::optional<FloatNumber>;

  /// The references of formats whose operands follow edits; none if they do not.
  [[nodiscard]] std::vector<Reference> listFollowed(Shared const& shared) const;
  void forget() noexcept;
  static void addMove(FormatIndex format, Reference const& before, Reference const& after,
                      OperandChanges& changes);
  void follow(Shared& shared, std::span<TableRange const> areas, OperandChanges& changes);

  ValueContextProvider const& _provider;
  ConditionalFormatRefs const& _formatRefs;
  std::size_t _mostFollowed;
  std::deque<Shared> _shared;
  std::vector<RangeOperands const*> _byFormat;  ///< null for most; none if all are null
  FollowedFormulaAreas _areas;
};

}  // namespace Zorv::ConditionalFormatters
