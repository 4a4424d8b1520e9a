#pragma once

#include "analysis/Check/CheckFinding.h"
#include "records/JsonBuilder.h"
#include "workbook/Document.h"

namespace Zorv::Records {

/// Adds the members of a finding about rules to an object that has been begun.
void addFinding(JsonBuilder& json, Workbook::Document const& document,
                Analysis::CheckFinding const& finding);

}  // namespace Zorv::Records
