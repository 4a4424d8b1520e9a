#pragma once

#include <memory>
#include <vector>

#include "DOM/ConditionalFormat.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"
#include "Utils/UUID.h"

namespace Zorv::TestSupport {

/// The identity with this number; identities are ordered as their numbers are.
[[nodiscard]] UUID makeUUID(unsigned char number);

/// Conditions that hold for any value but an error, and for no value but an error.
[[nodiscard]] DOM::ConditionalFormatOperator holdsAlways();
[[nodiscard]] DOM::ConditionalFormatOperator holdsNever();

/// Adds a format of lowest priority to a table.
DOM::ConditionalFormat const& addFormat(DOM::Table& table, std::vector<TableRange> const& ranges,
                                        DOM::ConditionalFormatOperator condition,
                                        UUID const& styleUUID = UUID(), bool stop = false);

/// Adds a named style that sets nothing, to be filled in by the test.
DOM::NamedTableStyle& addStyle(DOM::Styles& styles, UUID const& uuid, UUID const& parent = UUID());

/// A property group made by setting members of an empty one.
template <class Props, class Set>
[[nodiscard]] std::shared_ptr<Props const> makeProps(Set const& set) {
  auto props = std::make_shared<Props>();
  set(*props);
  return props;
}

}  // namespace Zorv::TestSupport
