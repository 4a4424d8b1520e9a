#pragma once

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/SharedStyle.h"

namespace Zorv::DOM {
class Styles;
class Table;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// Sources with which a table is followed. Borrows everything.
struct LiveSources {
  ValueContextProvider const& provider;
  DOM::Table const& table;
  DOM::Styles const& styles;
  DOM::SharedObjectFactory const& sharedObjectFactory;
};

}  // namespace Zorv::ConditionalFormatters
