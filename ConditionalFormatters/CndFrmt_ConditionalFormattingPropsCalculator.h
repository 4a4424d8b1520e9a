#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/CndFrmt_LiveResolver.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/Ids.h"
#include "DOM/SharedStyle.h"
#include "Utils/IDHolder.h"
#include "Utils/TableRange.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {
class CellInfo;
class Styles;
class Table;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// Decides which conditional formats of a table hold for a cell, and what style they contribute.
///
/// A calculator is made once for a document's view and kept. It remembers the formats of each table
/// with their ranges, and the style of each cell that was asked about; nothing is forgotten but by
/// the two clear operations, which the caller calls when the document changes.
///
/// Ownership: owns its provider. Results are shared, immutable styles, which may outlive it.
/// Threads: every operation may be called from several threads at once while the document stays
/// unchanged, with one exception: see clearTablesRangesCache(). The provider may call the same
/// calculator again on the same thread.
class CNDFRMT_EXPORT ConditionalFormattingPropsCalculator {
public:
  /// Takes the provider over. A null one is accepted, and stops the process when the first cell of
  /// a table with conditional formats is resolved.
  ConditionalFormattingPropsCalculator(std::unique_ptr<ValueContextProvider> provider);

  /// Forgets the style of every cell; to be called when cell values, formats or styles change.
  void clearCellStylesCache() const;

  /// Forgets the style of each cell in some areas of a table: for changes of which these are known
  /// to reach no other cell; see LiveResolver::apply(). Where rows, columns or formats changed,
  /// clearTablesRangesCache() is to be called, too.
  /// Cost: a search for each remembered cell of the table.
  void forgetCells(DOM::Table const& table, std::vector<TableRange> const& areas) const;

  /// Forgets the formats of every table; to be called when a table's formats or their ranges
  /// change, and before they are destroyed.
  ///
  /// Must not be called while another thread resolves cells: resolving reads what this destroys.
  void clearTablesRangesCache() const;

  /// The table's live formats in order of priority, each with its ranges at the current positions.
  ///
  /// The list is made at the first call for a table and kept: changes of the formats are not seen
  /// before clearTablesRangesCache(), which ends the validity of the reference. A null among the
  /// table's formats stops the process. Throws what the host throws, and then remembers nothing.
  /// Cost: one tree search and no allocation once the list is made.
  [[nodiscard]] ConditionalFormatRefs const& getConditionalFormatRefs(
      DOM::Table const& table) const;

  /// The style that the formats of the cell's table contribute to the cell, computed anew; null
  /// where no format holds. Equal results are one object.
  ///
  /// The formats whose ranges hold the cell's current position are evaluated by priority, until one
  /// that holds stops the evaluation. The first that sets a property decides it. The provider is
  /// asked for the cell's value once for each evaluated format.
  /// Throws what the provider, the conditions and the host throw.
  [[nodiscard]] DOM::SharedCellStylePtr resolve(DOM::Styles const& styles,
                                                DOM::CellInfo const& cellInfo) const;

  /// Result of resolve(), remembered for each cell that exists, also where it is null.
  ///
  /// Cells are known by their identities, not by their positions. A cell is resolved once even when
  /// several threads ask for it together. What fails is not remembered.
  /// Cost of a remembered cell: one lock, one binary search over the tables, one hash look-up, one
  /// reference counted, and no allocation. A table without formats costs nothing of this.
  [[nodiscard]] DOM::SharedCellStylePtr getConditionalFormatCellStyle(
      DOM::Styles const& styles, DOM::CellInfo const& cellInfo) const;

  /// An object that answers what resolve() does, for many cells of one table at a time; see
  /// TableResolver for how long it is good. Makes the table's list of formats if need be, and an
  /// index of their ranges. Stops the process, or throws, where resolve() would for every cell.
  [[nodiscard]] TableResolver prepare(DOM::Styles const& styles, DOM::Table const& table) const;

  /// An object that answers what resolve() does and follows changes of the document; see
  /// LiveResolver. Stops the process, or throws, where prepare() does. Makes its own list of the
  /// table's formats, so that it does not depend on clearTablesRangesCache().
  [[nodiscard]] LiveResolver follow(DOM::Styles const& styles, DOM::Table const& table) const;

private:
  using CellStyleMap =
      boost::unordered_map<std::pair<DOM::RowID, DOM::ColumnID>, DOM::SharedCellStylePtr>;
  /// Sorted by the tables' identities.
  using CellStylesCache = std::vector<std::pair<UUID, CellStyleMap>>;

  // Where both mutexes are held, that of the cell styles was locked first. They are recursive
  // because the provider may call back.
  std::unique_ptr<ValueContextProvider> _valueContextProvider;
  mutable CellStylesCache _cellStylesCache;
  mutable std::recursive_mutex _cellStylesMutex;
  mutable std::map<IDHolder::ID, ConditionalFormatRefs> _tablesRangesCache;
  mutable std::recursive_mutex _tablesRangesMutex;
  mutable DOM::SharedObjectFactory _sharedObjectFactory;
};

}  // namespace Zorv::ConditionalFormatters
