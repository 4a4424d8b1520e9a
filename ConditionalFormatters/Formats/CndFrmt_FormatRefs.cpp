#include "ConditionalFormatters/Formats/CndFrmt_FormatRefs.h"

#include <functional>

#include "DOM/ConditionalFormat.h"
#include "DOM/Table.h"
#include "DOM/TableRangeByID.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

ConditionalFormatRefs makeConditionalFormatRefs(DOM::Table const& table) {
  ConditionalFormatRefs refs;
  for (auto const& element : table.getLiveConditionalFormats()) {
    DOM::ConditionalFormat const& format = PtrUtils::derefHeld(element);
    refs.emplace_back(DOM::convertToTableRanges(table, format.getRanges()), std::cref(format));
  }
  return refs;
}

}  // namespace Zorv::ConditionalFormatters
