#pragma once

#include <span>

#include "ConditionalFormatters/Parallel/CndFrmt_PassResources.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Question of a pass, and its resources.
struct PassRequest {
  PassResources resources = {};
  /// The cells that are asked about lie in these areas, which are borrowed. None if they may lie
  /// anywhere.
  std::span<TableRange const> areas = {};
  /// True if one format's condition is asked, and not those of all formats on a cell.
  bool asksOneFormat = false;
};

}  // namespace Zorv::ConditionalFormatters
