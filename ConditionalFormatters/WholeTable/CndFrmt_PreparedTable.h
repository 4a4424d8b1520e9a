#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <span>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Formats/CndFrmt_PointIndex.h"
#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/Formats/CndFrmt_StyleSequences.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_Lazy.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_SharedOperands.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_VerdictScope.h"
#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "Formulas/LookupCache.h"

namespace Zorv::ConditionalFormatters {

/// The state that all passes over a table share: its formats with their index, conditions and
/// styles.
///
/// Ownership: borrows what it is made from. Threads: may be used from several threads.
class PreparedTable {
public:
  PreparedTable(ValueContextProvider const& provider, DOM::Table const& table,
                ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                DOM::SharedObjectFactory const& sharedObjectFactory);

  [[nodiscard]] DOM::Table const& getTable() const noexcept { return _table; }
  [[nodiscard]] ValueContextProvider const& getProvider() const noexcept { return _provider; }
  [[nodiscard]] ConditionalFormatRefs const& getFormatRefs() const noexcept { return _formatRefs; }
  [[nodiscard]] RangeIndex const& getRangeIndex() const noexcept { return _rangeIndex; }
  [[nodiscard]] StyleSequences const& getStyleSequences() const noexcept { return _sequences; }
  /// Guards itself.
  [[nodiscard]] Formulas::LookupCache& getLookups() const noexcept { return *_lookups; }

  /// The index of a format. Throws std::out_of_range if there is no such format.
  [[nodiscard]] FormatIndex checkFormat(std::size_t format) const;

  /// The condition of a format, prepared for the request of the first call. Throws what its
  /// preparation throws, each time.
  [[nodiscard]] PreparedCondition const& getOrCreateCondition(FormatIndex format,
                                                              PassRequest const& request) const {
    return _conditions[format].getOrCreate(_preparation, [&] {
      return prepareCondition({_provider, _table, _operands.find(format), request},
                              _formatRefs[format]);
    });
  }

  /// True for a position in the ranges of a format. See PointIndex for the cost.
  [[nodiscard]] bool liesInRanges(FormatIndex format, CellIndex cell) const;

  /// True if the cells of a row or a column share the verdict of some format.
  [[nodiscard]] bool hasSharedVerdicts() const noexcept { return !_scopes.empty(); }
  /// Requires hasSharedVerdicts().
  [[nodiscard]] VerdictScope getVerdictScope(FormatIndex format) const noexcept {
    return _scopes[format];
  }

  /// Takes over that the cells of some areas of this table or another one have new values: the
  /// operands that formats take from their ranges, and what formulas ask of areas, follow or are
  /// forgotten, but for the conditions of these formulas. `moved`: cells that only stand elsewhere
  /// after edits of lines, which the operands follow already. Needs exclusive access. Throws what
  /// the provider throws, and has then forgotten everything that was prepared.
  OperandChanges valuesChanged(DOM::Table const& table, std::span<TableRange const> areas,
                               std::span<TableRange const> moved = {});

  /// Takes over what follows edits, and the indexes of formulas, from another state of the table's
  /// formats, which may only be destroyed then; see SharedOperands. Needs exclusive access to both.
  /// What has changed beside lines and formats is to be told to valuesChanged().
  void takeOver(PreparedTable& before, DocumentMoves const& moves);

  /// Takes over that rows and columns of other tables were edited; see SharedOperands. Needs
  /// exclusive access.
  void linesChanged(DocumentMoves const& moves) { _operands.linesChanged(moves); }

  /// Adds areas of formulas to what follows edits; see SharedOperands. Needs exclusive access.
  void addAreas(std::span<FormulaArea const> areas) {
    _operands.addAreas(areas);
    _lookups->follow(_operands.getAreas());
  }

  /// Works on operands that follow edits; see SharedOperands. Needs exclusive access.
  bool prepareSome(std::chrono::microseconds budget) { return _operands.prepareSome(budget); }

  /// All ranges of all formats.
  [[nodiscard]] std::vector<TableRange> listRanges() const;

  /// True if the condition of a format is prepared and has given up.
  [[nodiscard]] bool hasGivenUp(FormatIndex format) const noexcept {
    PreparedCondition const* const condition = _conditions[format].find();
    return condition != nullptr && condition->hasGivenUp();
  }

  /// Answers kept for an area of formulas, if an aspect of it follows edits; else null.
  [[nodiscard]] FollowedAnswers const* findAnswers(FormulaArea const& area,
                                                   Formulas::AreaAspect aspect) const noexcept {
    return _operands.getAreas().find(*area.table, area.range, aspect);
  }

  /// The condition of a format if it is prepared; else null.
  [[nodiscard]] PreparedCondition const* findCondition(FormatIndex format) const noexcept {
    return _conditions[format].find();
  }
  /// Another one in its place. Throws what its preparation throws.
  [[nodiscard]] std::unique_ptr<PreparedCondition const> prepareAnother(FormatIndex format) const {
    return prepareCondition({_provider, _table, _operands.find(format), {}}, _formatRefs[format]);
  }
  /// Puts it in its place. Needs exclusive access.
  void replaceCondition(FormatIndex format,
                        std::unique_ptr<PreparedCondition const> condition) noexcept {
    _conditions[format].reset();
    _conditions[format].keepFirst(std::move(condition));
  }

  /// Forgets what was prepared for the condition of a format; the next that needs it prepares it
  /// again. Needs exclusive access, as the other one does.
  void forgetCondition(FormatIndex format) noexcept { _conditions[format].reset(); }

private:
  ValueContextProvider const& _provider;
  DOM::Table const& _table;
  ConditionalFormatRefs const& _formatRefs;
  RangeIndex _rangeIndex;
  StyleSequences _sequences;
  SharedOperands _operands;
  std::vector<VerdictScope> _scopes;                 ///< by format; empty if all are of the cell
  std::vector<Lazy<PreparedCondition>> _conditions;  ///< by format
  std::vector<Lazy<PointIndex>> _pointIndexes;       ///< by format
  mutable std::recursive_mutex _preparation;
  std::unique_ptr<Formulas::LookupCache> _lookups;  ///< never null, but where it was taken over
};

}  // namespace Zorv::ConditionalFormatters
