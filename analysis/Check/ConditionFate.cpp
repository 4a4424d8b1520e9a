#include "analysis/Check/ConditionFate.h"

#include <memory>
#include <utility>

#include <fmt/format.h>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "analysis/Check/Conjunctions.h"
#include "analysis/Check/Constants.h"
#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::NodeKind;
using Fate = std::optional<ConditionFate>;

Fate never(std::string reason) {
  return ConditionFate{.holds = false, .reason = std::move(reason)};
}
Fate always(std::string reason) {
  return ConditionFate{.holds = true, .reason = std::move(reason)};
}

bool isNumber(FormulaValue const& value) noexcept {
  return value.which() == FormulaModel::FormulaValueKind::Number;
}

/// True for a text such as `5`, ` 1,200.50 ` or `20%`: digits among signs that numbers have.
bool looksLikeNumber(FormulaValue const& value) {
  auto const* const text = boost::get<FormulaModel::FormulaString>(&value);
  return text != nullptr && text->value.find_first_of("0123456789") != std::string::npos &&
         text->value.find_first_not_of("0123456789.,+-% ") == std::string::npos;
}

/// Numbers of values in the cells of a rule's ranges.
struct KindCounts {
  std::size_t numbers = 0;
  std::size_t numericTexts = 0;  ///< texts that look like numbers
  std::size_t others = 0;        ///< of any other kind, without empty cells
};

/// Counts until `isSettled` accepts what has been counted.
template <class IsSettled>
KindCounts countKinds(CheckedRule const& rule, CheckedSheet const& sheet, StepCounter& steps,
                      IsSettled const& isSettled) {
  KindCounts counts;
  for (TableRange const& range : rule.rule->ranges) {
    auto const [begin, end] = sheet.getTable().getRangeIterators(range);
    for (auto cell = begin; cell != end && !isSettled(counts); ++cell) {
      steps.count();
      FormulaValue const& value = cell.getCellInfo().getCell()->value;
      if (isNumber(value)) {
        ++counts.numbers;
      } else if (looksLikeNumber(value)) {
        ++counts.numericTexts;
      } else if (!FormulaModel::isFormulaEmpty(value)) {
        ++counts.others;
      }
    }
  }
  return counts;
}

class FateFinder : public boost::static_visitor<Fate> {
public:
  FateFinder(CheckedRule const& rule, CheckedSheet const& sheet,
             Formulas::ContextProvider const& provider, StepCounter& steps) noexcept
      : _rule(rule), _sheet(sheet), _provider(provider), _steps(steps) {}

  Fate operator()(DOM::NullaryConditionalFormatOperator const& /*condition*/) const {
    return std::nullopt;
  }

  Fate operator()(DOM::UnaryConditionalFormatOperator const& condition) const {
    if (condition.getType() == DOM::UnaryConditionalFormatType::FormulaIsTrue) {
      return findOfFormula(condition.getArgument());
    }
    if (isTestedCell(condition.getArgument())) {
      return findOfSelfComparison(condition.getType());
    }
    auto const operand = evaluate(condition.getArgument());
    return operand ? findOfOtherKind(*operand) : std::nullopt;
  }

  Fate operator()(DOM::BinaryConditionalFormatOperator const& condition) const {
    auto const lower = evaluate(condition.getFirstArgument());
    auto const upper = evaluate(condition.getSecondArgument());
    if (!lower || !upper) {
      return std::nullopt;
    }
    bool const isBetween = condition.getType() == DOM::BinaryConditionalFormatType::Between;
    if (isNumber(*lower) && isNumber(*upper) && numberOf(*lower) > numberOf(*upper)) {
      std::string reason = fmt::format("its first bound, {}, is above its second, {}",
                                       toFormulaText(*lower), toFormulaText(*upper));
      return isBetween ? never(std::move(reason)) : always(reason + ", for every number");
    }
    return isBetween && lower->which() != upper->which()
               ? never(fmt::format("nothing lies between values of different kinds, {} and {}",
                                   toFormulaText(*lower), toFormulaText(*upper)))
               : std::nullopt;
  }

  Fate operator()(DOM::TextConditionalFormatOperator const& condition) const {
    auto const* const text = boost::get<std::string>(&condition.getArgument());
    if (text == nullptr || !text->empty()) {
      return std::nullopt;
    }
    return condition.getType() == DOM::TextConditionalFormatType::NotContains
               ? never("every text contains the empty text")
               : always("the text that it looks for is empty");
  }

  Fate operator()(DOM::TopBottomConditionalFormatOperator const& condition) const {
    return condition.getValue() == 0
               ? never(condition.getUsePercent() ? "0 percent of the numbers is none"
                                                 : "its rank is 0")
               : std::nullopt;
  }

  /// One that measures in standard deviations never holds here, but does in other programs, which
  /// the comparison with them tells.
  Fate operator()(DOM::AboveAverageConditionalFormatOperator const& /*condition*/) const {
    return std::nullopt;
  }

  Fate operator()(DOM::UniquenessConditionalFormatOperator const& /*condition*/) const {
    return std::nullopt;
  }

private:
  [[nodiscard]] std::optional<FormulaValue> evaluate(Expr const& expr) const {
    return evaluateConstant(expr, _provider, _sheet.getTable());
  }

  [[nodiscard]] Fate findOfFormula(Expr const& formula) const {
    if (auto const value = evaluate(formula)) {
      return findOfConstant(*value);
    }
    auto const conjunction = findConjunction(formula);
    if (!conjunction) {
      return std::nullopt;
    }
    return conjunction->isContradiction ? never(conjunction->reason) : always(conjunction->reason);
  }

  [[nodiscard]] Fate findOfConstant(FormulaValue const& value) const {
    namespace Cast = OfficeUtils::FormulaValueCast;
    auto const truth =
        Cast::toBoolOpt(value, _provider.getLocaleContext(), Cast::CastMode::Condition, false);
    if (truth.value_or(false)) {
      auto fate = always(fmt::format("its formula is {} for every cell", toFormulaText(value)));
      fate->severity = Severity::Note;
      return fate;
    }
    if (value.which() == FormulaModel::FormulaValueKind::String && !truth) {
      return never(
          fmt::format("its formula is the text {} and no condition; quotation marks around "
                      "a formula make it a text",
                      toFormulaText(value)));
    }
    return never(fmt::format("its formula is {} for every cell", toFormulaText(value)));
  }

  /// True for a formula that is the cell that is tested.
  [[nodiscard]] bool isTestedCell(Expr const& formula) const {
    auto const& parts = formula.getParts();
    if (parts.nodes.size() != 1 || parts.nodes.back().kind != NodeKind::Reference) {
      return false;
    }
    auto const& reference = parts.references[parts.nodes.back().index];
    CellIndex const base = Workbook::findBaseCell(_rule.rule->ranges);
    return reference.isSingleCell() && reference.firstRowIsRelative &&
           reference.firstColumnIsRelative && reference.sheet == DOM::FormulaSyntaxTree::noIndex &&
           reference.firstRow == base.getRow().get() &&
           reference.firstColumn == base.getColumn().get();
  }

  [[nodiscard]] static Fate findOfSelfComparison(DOM::UnaryConditionalFormatType type) {
    using Type = DOM::UnaryConditionalFormatType;
    constexpr char const* reason = "it compares each cell with itself";
    return type == Type::Equal || type == Type::GreaterOrEqual || type == Type::LessOrEqual
               ? always(reason)
               : never(reason);
  }

  /// A number is compared with texts alone, or a text with numbers alone, that were hardly meant to
  /// be texts.
  [[nodiscard]] Fate findOfOtherKind(FormulaValue const& operand) const {
    if (!isNumber(operand) && !looksLikeNumber(operand)) {
      return std::nullopt;
    }
    bool const isOfNumber = isNumber(operand);
    KindCounts const counts = countKinds(_rule, _sheet, _steps, [isOfNumber](KindCounts const& so) {
      return so.others > 0 || (isOfNumber ? so.numbers : so.numericTexts) > 0;
    });
    if (counts.others > 0 || (isOfNumber ? counts.numbers : counts.numericTexts) > 0) {
      return std::nullopt;
    }
    if (isOfNumber && counts.numericTexts > 0) {
      return never(
          fmt::format("it compares with the number {}, and the numbers in its cells are stored as "
                      "texts",
                      toFormulaText(operand)));
    }
    return !isOfNumber && counts.numbers > 0
               ? never(fmt::format("it compares with the text {}, and its cells hold numbers",
                                   toFormulaText(operand)))
               : std::nullopt;
  }

  CheckedRule const& _rule;
  CheckedSheet const& _sheet;
  Formulas::ContextProvider const& _provider;
  StepCounter& _steps;
};

}  // namespace

Fate findFate(CheckedRule const& rule, CheckedSheet const& sheet,
              Formulas::ContextProvider const& provider, StepCounter& steps) {
  return boost::apply_visitor(FateFinder(rule, sheet, provider, steps), rule.getCondition());
}

}  // namespace Zorv::Analysis
