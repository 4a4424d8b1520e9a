#pragma once

#include <vector>

#include "DOM/Styles.h"
#include "DOM/Table.h"

namespace Zorv::TestSupport {

/// How random tables come out.
struct RandomTableOptions {
  /// True if conditions may be of kinds that no record has, some of which throw when asked.
  bool withUnknownKinds = false;
};

/// A small table with values of all kinds and formats of all kinds over random ranges, many of them
/// overlapping, and a style sheet with chains of parents. Draws from RapidCheck, so it must be made
/// inside a property.
struct RandomTable {
  static constexpr unsigned long rows = 14;
  static constexpr unsigned long columns = 5;

  explicit RandomTable(RandomTableOptions const& options = {});

  DOM::Table table;
  DOM::Styles styles;
};

}  // namespace Zorv::TestSupport
