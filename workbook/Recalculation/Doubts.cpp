#include "workbook/Recalculation/Doubts.h"

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

#include <fmt/format.h>

#include "DOM/ConditionalFormat.h"
#include "workbook/ConditionFormulas.h"
#include "workbook/Quote.h"

namespace Zorv::Workbook {

namespace {

using DOM::FormulaSyntaxTree::Expr;

/// Gathers the doubts about the formulas of one rule.
class DoubtGatherer {
public:
  DoubtGatherer(DocumentContextProvider const& provider, Rule& rule, StepCounter& counter,
                std::size_t nameCount) noexcept
      : _provider(provider), _rule(rule), _counter(counter), _nameCount(nameCount) {}

  void gather(DOM::ConditionalFormat const& format) const {
    for (Expr const* const formula : listFormulas(format.getOperator())) {
      gather(*formula);
    }
  }

  void gather(Visuals::VisualFormat const& visual) const {
    for (Visuals::Threshold const* const threshold : listThresholds(visual.kind)) {
      if (auto const* const formula = std::get_if<Expr>(&threshold->operand)) {
        gather(*formula);
      }
    }
    if (visual.condition) {
      gather(*visual.condition);
    }
  }

private:
  void gather(Expr const& formula) const {
    // Names are followed: a formula may lead through all of them.
    _counter.count(1 + formula.getParts().nodes.size() +
                   (formula.getTraits().usesNames ? _nameCount : 0));
    constexpr std::size_t mostDoubts = 10;
    for (Formulas::Unresolved const& unresolved :
         Formulas::findUnresolved(formula, _provider, FormulaModel::DocTableIndex(_rule.sheet))) {
      if (unresolved.kind == Formulas::UnresolvedKind::Function) {
        _rule.unknownFunctions.insert(unresolved.text);
      }
      std::string doubt = describe(unresolved);
      if (_rule.doubts.size() < mostDoubts &&
          std::ranges::find(_rule.doubts, doubt) == _rule.doubts.end()) {
        _rule.doubts.push_back(std::move(doubt));
      }
    }
  }

  DocumentContextProvider const& _provider;
  Rule& _rule;
  StepCounter& _counter;
  std::size_t _nameCount;
};

std::string describeSheet(std::string const& name) {
  if (name == "#REF!") {
    return "refers to a sheet that was deleted";
  }
  return name.find(':') == std::string::npos
             ? fmt::format("refers to the missing sheet \"{}\"", quote(name))
             : fmt::format("refers to the sheets \"{}\", of which one is missing", quote(name));
}

}  // namespace

std::string describe(Formulas::Unresolved const& unresolved) {
  std::string const text = quote(unresolved.text);
  switch (unresolved.kind) {
    case Formulas::UnresolvedKind::Name:
      return fmt::format("refers to the unknown name \"{}\"", text);
    case Formulas::UnresolvedKind::Sheet:
      return describeSheet(unresolved.text);
    case Formulas::UnresolvedKind::ExternalWorkbook:
      return fmt::format("refers to another workbook, {}", text);
    case Formulas::UnresolvedKind::ListObject:
      return fmt::format("refers to the missing table or column {}", text);
    case Formulas::UnresolvedKind::Function:
      return fmt::format("calls the unknown function {}", text);
  }
  return {};
}

void findDoubts(Document& document, DocumentContextProvider const& provider, WorkBudget* budget) {
  StepCounter counter(budget);
  for (Rule& rule : document.getRules()) {
    DoubtGatherer const gatherer(provider, rule, counter, document.getDefinedNames().size());
    if (rule.format != nullptr) {
      gatherer.gather(*rule.format);
    } else if (rule.visual != nullptr) {
      gatherer.gather(*rule.visual);
    }
  }
}

}  // namespace Zorv::Workbook
