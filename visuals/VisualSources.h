#pragma once

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "visuals/VisualFormat.h"

namespace Zorv::Visuals {

/// What a VisualResolver works with. Borrows everything.
struct VisualSources {
  DOM::Table const& table;
  VisualFormats const& formats;
  ConditionalFormatters::ValueContextProvider const& provider;
  /// Those of the calculator for the table, and the resolver that it prepared.
  ConditionalFormatters::ConditionalFormatRefs const& conditionalFormats;
  ConditionalFormatters::TableResolver const& resolver;
  DOM::Styles const& styles;
};

}  // namespace Zorv::Visuals
