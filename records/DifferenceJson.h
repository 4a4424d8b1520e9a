#pragma once

#include "analysis/Diff/CompareCells.h"
#include "analysis/Diff/CompareRules.h"
#include "records/JsonBuilder.h"
#include "workbook/Document.h"

namespace Zorv::Records {

/// Writer of what differs between two documents, as objects. Borrows its arguments.
class DifferenceJson {
public:
  DifferenceJson(Workbook::Document const& first, Workbook::Document const& second,
                 JsonBuilder& json) noexcept
      : _first(first), _second(second), _json(json) {}

  /// A rule that is not the same in both.
  void write(Analysis::RuleDifference const& difference);
  /// A cell that looks different.
  void write(Analysis::CellDifference const& difference);

private:
  void addRule(Workbook::Document const& document, Workbook::Rule const* rule);
  void addLook(Analysis::CellLook const& look);

  Workbook::Document const& _first;
  Workbook::Document const& _second;
  JsonBuilder& _json;
};

}  // namespace Zorv::Records
