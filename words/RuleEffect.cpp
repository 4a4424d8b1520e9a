#include "words/RuleEffect.h"

#include "analysis/Shared/Rules.h"
#include "words/StyleText.h"
#include "words/VisualText.h"

namespace Zorv::Words {

std::string describeEffect(Workbook::Document const& document, Workbook::Rule const& rule) {
  if (rule.visual != nullptr) {
    return describeDrawing(rule.visual->kind);
  }
  return rule.format != nullptr ? describe(Analysis::findRuleStyle(document, rule)) : std::string();
}

}  // namespace Zorv::Words
