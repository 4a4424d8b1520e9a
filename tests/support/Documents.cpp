#include "support/Documents.h"

#include <utility>

namespace Zorv::TestSupport {

UUID makeUUID(unsigned char number) {
  boost::uuids::uuid value{};
  value.data[15] = number;
  return UUID(value);
}

DOM::ConditionalFormatOperator holdsAlways() {
  return DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::NoErrors);
}

DOM::ConditionalFormatOperator holdsNever() {
  return DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::Errors);
}

DOM::ConditionalFormat const& addFormat(DOM::Table& table, std::vector<TableRange> const& ranges,
                                        DOM::ConditionalFormatOperator condition,
                                        UUID const& styleUUID, bool stop) {
  table.addConditionalFormat(ranges, std::move(condition), styleUUID, stop);
  return *table.getLiveConditionalFormats().back();
}

DOM::NamedTableStyle& addStyle(DOM::Styles& styles, UUID const& uuid, UUID const& parent) {
  DOM::NamedTableStyle& style = styles.getTableStyles()[uuid];
  style.setParentUUID(parent);
  return style;
}

}  // namespace Zorv::TestSupport
