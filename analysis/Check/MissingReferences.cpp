#include <algorithm>
#include <string>
#include <utility>

#include "FormulaModel/FormulaValue.h"
#include "analysis/Check/ReferenceChecks.h"
#include "workbook/ConditionFormulas.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;

/// A reference to cells that were deleted is the error `#REF!` in the formula.
bool refersToDeletedCells(Workbook::Rule const& rule) {
  if (rule.format == nullptr) {
    return false;
  }
  return std::ranges::any_of(
      Workbook::listFormulas(rule.format->getOperator()), [](Expr const* formula) {
        return std::ranges::any_of(formula->getParts().nodes, [](Node const& node) {
          return node.kind == NodeKind::Error &&
                 node.index ==
                     static_cast<std::uint32_t>(FormulaModel::FormulaErrorCode::Reference);
        });
      });
}

std::string listDoubts(Workbook::Rule const& rule) {
  std::string list;
  for (std::string const& doubt : rule.doubts) {
    list += (list.empty() ? "it " : "; it ") + doubt;
  }
  if (refersToDeletedCells(rule)) {
    list += std::string(list.empty() ? "" : "; ") + "it refers to cells that were deleted (#REF!)";
  }
  return list;
}

}  // namespace

void addMissingReferences(CheckedSheet const& sheet, std::vector<CheckFinding>& findings) {
  for (Workbook::Rule const* const rule : sheet.getAllRules()) {
    std::string reason = listDoubts(*rule);
    if (!reason.empty()) {
      findings.push_back({.code = CheckCode::MissingReference,
                          .severity = kindOf(CheckCode::MissingReference).severity,
                          .sheet = sheet.getIndex(),
                          .ranges = rule->ranges,
                          .rules = {rule->number},
                          .reason = std::move(reason)});
    }
  }
}

}  // namespace Zorv::Analysis
