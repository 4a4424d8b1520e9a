#pragma once

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/Styles.h"
#include "DOM/Table.h"
#include "visuals/VisualFormat.h"

namespace Zorv::Visuals {

/// Sources of a VisualResolver. Borrows everything.
struct VisualSources {
  DOM::Table const& table;                                      ///< the table of the cells
  VisualFormats const& formats;                                 ///< its visual formats
  ConditionalFormatters::ValueContextProvider const& provider;  ///< the values of the cells
  /// Those of the calculator for the table, and the resolver that it prepared.
  ConditionalFormatters::ConditionalFormatRefs const& conditionalFormats;
  ConditionalFormatters::TableResolver const& resolver;  ///< see `conditionalFormats`
  DOM::Styles const& styles;                             ///< the named styles of the document
};

}  // namespace Zorv::Visuals
