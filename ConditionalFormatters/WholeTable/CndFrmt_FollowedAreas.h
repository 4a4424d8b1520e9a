#pragma once

#include <cstddef>
#include <functional>

#include <boost/container_hash/hash.hpp>
#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedAnswers.h"
#include "Formulas/FollowedAreas.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

class RangeOperands;

/// An area of a table to which formulas refer, and what they ask of it.
struct FormulaArea {
  DOM::Table const* table;
  TableRange range;
  Formulas::AreaAspects aspects;
};

/// The areas of formulas, by the operands that may follow edits.
///
/// Borrows the operands. Threads: find() may be called from several threads.
class FollowedFormulaAreas final : public Formulas::FollowedAreas {
public:
  void add(FormulaArea const& area, RangeOperands const& operands);

  [[nodiscard]] FollowedAnswers const* find(DOM::Table const& table, TableRange const& area,
                                            Formulas::AreaAspect aspect) const noexcept override;

private:
  struct Key {
    DOM::Table const* table;
    TableRange range;

    friend bool operator==(Key const&, Key const&) noexcept = default;
    friend std::size_t hash_value(Key const& key) noexcept {
      std::size_t hash = std::hash<DOM::Table const*>()(key.table);
      boost::hash_combine(hash, key.range.firstRow);
      boost::hash_combine(hash, key.range.firstColumn);
      boost::hash_combine(hash, key.range.endRow);
      boost::hash_combine(hash, key.range.endColumn);
      return hash;
    }
  };

  boost::unordered_map<Key, RangeOperands const*> _operands;
};

}  // namespace Zorv::ConditionalFormatters
