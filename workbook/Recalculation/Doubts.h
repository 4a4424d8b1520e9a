#pragma once

#include <string>

#include "Formulas/FindUnresolved.h"
#include "Utils/WorkBudget.h"
#include "workbook/Document.h"
#include "workbook/DocumentContextProvider.h"

namespace Zorv::Workbook {

/// In words: `refers to the unknown name "Rate"`, `refers to the missing sheet "Old"`, `refers to
/// another workbook, [1]`, `calls the unknown function FOO`.
[[nodiscard]] std::string describe(Formulas::Unresolved const& unresolved);

/// Sets the doubts and unknown functions of each rule that is resolved. Spends from the budget,
/// which may be null.
void findDoubts(Document& document, DocumentContextProvider const& provider, WorkBudget* budget);

}  // namespace Zorv::Workbook
