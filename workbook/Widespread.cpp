#include "workbook/Widespread.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "DOM/A1Notation.h"
#include "Formulas/ParseExpr.h"
#include "workbook/Ranges.h"

namespace Zorv::Workbook {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::Operator;

/// As many as the arguments of a function.
constexpr std::size_t mostAreas = 255;

bool isError(Expr const& expr) noexcept {
  auto const& nodes = expr.getParts().nodes;
  return nodes.size() == 1 && nodes.back().kind == NodeKind::Error;
}

bool isComparison(Expr const& expr) noexcept {
  auto const& nodes = expr.getParts().nodes;
  return !nodes.empty() && nodes.back().kind == NodeKind::Binary &&
         Operator::Equal <= nodes.back().op && nodes.back().op <= Operator::GreaterOrEqual;
}

/// The text of a formula as an operand of a comparison.
std::string toOperand(std::string_view formula, Expr const& expr) {
  formula.remove_prefix(formula.starts_with('=') ? 1 : 0);
  return isComparison(expr) ? fmt::format("({})", formula) : std::string(formula);
}

std::string toStringConstant(std::string_view text) {
  std::string constant = "\"";
  for (char const character : text) {
    constant.append(character == '"' ? 2 : 1, character);
  }
  return constant + '"';
}

/// The table of conditions and the formulas that say what spreadsheet programs at large do. A
/// formula is empty where the condition is one already, or where it would be too long.
class WidespreadFormulas : public boost::static_visitor<std::string> {
public:
  explicit WidespreadFormulas(Rule const& rule)
      : _rule(rule), _cell(DOM::A1Notation::toAddress(findBaseCell(rule.ranges))) {}

  std::string operator()(DOM::NullaryConditionalFormatOperator const& condition) const {
    using Type = DOM::NullaryConditionalFormatType;
    switch (condition.getType()) {
      case Type::Blanks:
        return write("LEN(TRIM({cell}))=0");
      case Type::NoBlanks:
        return write("LEN(TRIM({cell}))>0");
      case Type::Errors:
        return write("ISERROR({cell})");
      case Type::NoErrors:
        return write("NOT(ISERROR({cell}))");
      case Type::Yesterday:
        return write("INT({cell})=TODAY()-1");
      case Type::Today:
        return write("INT({cell})=TODAY()");
      case Type::Tomorrow:
        return write("INT({cell})=TODAY()+1");
      case Type::Last7Days:
        return write("AND(INT({cell})>=TODAY()-6,INT({cell})<=TODAY())");
      // The Saturday before the week, since weeks begin on Sunday.
      case Type::LastWeek:
        return write("INT({cell})-WEEKDAY({cell})=TODAY()-WEEKDAY(TODAY())-7");
      case Type::ThisWeek:
        return write("INT({cell})-WEEKDAY({cell})=TODAY()-WEEKDAY(TODAY())");
      case Type::NextWeek:
        return write("INT({cell})-WEEKDAY({cell})=TODAY()-WEEKDAY(TODAY())+7");
      case Type::LastMonth:
        return write("EOMONTH({cell},0)=EOMONTH(TODAY(),-1)");
      case Type::ThisMonth:
        return write("EOMONTH({cell},0)=EOMONTH(TODAY(),0)");
      case Type::NextMonth:
        return write("EOMONTH({cell},0)=EOMONTH(TODAY(),1)");
    }
    return {};
  }

  std::string operator()(DOM::UnaryConditionalFormatOperator const& condition) const {
    using Type = DOM::UnaryConditionalFormatType;
    switch (condition.getType()) {
      case Type::Equal:
        return compare("=", condition.getArgument());
      case Type::NotEqual:
        // A deleted reference equals nothing.
        return isError(condition.getArgument()) ? write("NOT(ISERROR({cell}))")
                                                : compare("<>", condition.getArgument());
      case Type::Greater:
        return compare(">", condition.getArgument());
      case Type::GreaterOrEqual:
        return compare(">=", condition.getArgument());
      case Type::Less:
        return compare("<", condition.getArgument());
      case Type::LessOrEqual:
        return compare("<=", condition.getArgument());
      case Type::FormulaIsTrue:
        return {};
    }
    return {};
  }

  /// The bounds may stand in either order, and which is the smaller one may depend on the cell.
  std::string operator()(DOM::BinaryConditionalFormatOperator const& condition) const {
    std::string const between =
        write("OR(AND({cell}>={first},{cell}<={second}),AND({cell}>={second},{cell}<={first}))",
              fmt::arg("first", toOperand(_rule.formulas.at(0), condition.getFirstArgument())),
              fmt::arg("second", toOperand(_rule.formulas.at(1), condition.getSecondArgument())));
    return condition.getType() == DOM::BinaryConditionalFormatType::Between
               ? between
               : fmt::format("NOT({})", between);
  }

  std::string operator()(DOM::TextConditionalFormatOperator const& condition) const {
    using Type = DOM::TextConditionalFormatType;
    auto const* const literal = boost::get<std::string>(&condition.getArgument());
    std::string const text = literal != nullptr ? toStringConstant(*literal) : toNeedle(condition);
    switch (condition.getType()) {
      case Type::Contains:
        return write("NOT(ISERROR(SEARCH({text},{cell})))", fmt::arg("text", text));
      case Type::NotContains:
        return write("ISERROR(SEARCH({text},{cell}))", fmt::arg("text", text));
      case Type::BeginsWith:
        return write("LEFT({cell},LEN({text}))={text}", fmt::arg("text", text));
      case Type::EndsWith:
        return write("RIGHT({cell},LEN({text}))={text}", fmt::arg("text", text));
    }
    return {};
  }

  /// A percentage is at least one cell; a rank is at most the number of numbers.
  std::string operator()(DOM::TopBottomConditionalFormatOperator const& condition) const {
    std::string const areas = listAreas();
    if (areas.empty()) {
      return {};
    }
    std::string const numbers = fmt::format("({})", areas);
    std::string const rank = condition.getUsePercent()
                                 ? fmt::format("MAX(1,INT(COUNT({})*{}/100))", numbers,
                                               std::min<std::uint32_t>(condition.getValue(), 100))
                                 : fmt::format("MIN({},COUNT({}))", condition.getValue(), numbers);
    bool const isTop = condition.getType() == DOM::TopBottomConditionalFormatType::Top;
    return write("AND(ISNUMBER({cell}),{cell}{op}{function}({numbers},{rank}))",
                 fmt::arg("op", isTop ? ">=" : "<="),
                 fmt::arg("function", isTop ? "LARGE" : "SMALL"), fmt::arg("numbers", numbers),
                 fmt::arg("rank", rank));
  }

  /// Errors do not spoil the mean: AGGREGATE(1,6,...) is AVERAGE without errors, and
  /// AGGREGATE(8,6,...) STDEV.P.
  std::string operator()(DOM::AboveAverageConditionalFormatOperator const& condition) const {
    using Type = DOM::AboveAverageConditionalFormatType;
    std::string const areas = listAreas();
    if (areas.empty()) {
      return {};
    }
    auto const type = condition.getType();
    bool const isAbove = type == Type::Above || type == Type::EqualOrAbove;
    bool const orEqual =
        type == Type::EqualOrAbove || type == Type::EqualOrBelow || condition.getStdDev();
    std::string const deviations = condition.getStdDev()
                                       ? fmt::format("{}{}*AGGREGATE(8,6,{})", isAbove ? '+' : '-',
                                                     *condition.getStdDev(), areas)
                                       : std::string();
    return write("AND(ISNUMBER({cell}),{cell}{op}{equal}AGGREGATE(1,6,{areas}){deviations})",
                 fmt::arg("op", isAbove ? ">" : "<"), fmt::arg("equal", orEqual ? "=" : ""),
                 fmt::arg("areas", areas), fmt::arg("deviations", deviations));
  }

  /// COUNTIF takes one range at a time.
  std::string operator()(DOM::UniquenessConditionalFormatOperator const& condition) const {
    std::string counts;
    for (TableRange const& area : makeDisjoint(_rule.ranges, mostAreas)) {
      counts += fmt::format("{}COUNTIF({},{})", counts.empty() ? "" : "+", toAbsoluteAddress(area),
                            _cell);
    }
    return counts.empty()
               ? std::string()
               : fmt::format("AND({}{},NOT(ISBLANK({})))", counts,
                             condition.type == DOM::UniquenessType::Duplicate ? ">1" : "=1", _cell);
  }

private:
  template <class... Arguments>
  [[nodiscard]] std::string write(std::string_view pattern, Arguments const&... arguments) const {
    return fmt::format(fmt::runtime(pattern), fmt::arg("cell", _cell), arguments...);
  }

  [[nodiscard]] std::string compare(std::string_view op, Expr const& argument) const {
    return fmt::format("{}{}{}", _cell, op, toOperand(_rule.formulas.at(0), argument));
  }

  /// The formula of the text that is looked for. A text comparison written as `cellIs` has it as
  /// its only formula.
  [[nodiscard]] std::string toNeedle(DOM::TextConditionalFormatOperator const& condition) const {
    auto const& expr = *boost::get<std::unique_ptr<Expr>>(condition.getArgument());
    return toOperand(_rule.needleFormula.empty() ? _rule.formulas.at(0) : _rule.needleFormula,
                     expr);
  }

  /// All areas, separated by commas; empty if there are too many.
  [[nodiscard]] std::string listAreas() const {
    std::string list;
    for (TableRange const& area : makeDisjoint(_rule.ranges, mostAreas)) {
      list += (list.empty() ? "" : ",") + toAbsoluteAddress(area);
    }
    return list;
  }

  Rule const& _rule;
  std::string _cell;
};

}  // namespace

bool isFormula(DOM::ConditionalFormatOperator const& condition) noexcept {
  auto const* const unary = boost::get<DOM::UnaryConditionalFormatOperator>(&condition);
  return unary != nullptr && unary->getType() == DOM::UnaryConditionalFormatType::FormulaIsTrue;
}

std::optional<WidespreadCondition> findWidespread(DOM::ConditionalFormatOperator const& condition,
                                                  Rule const& rule) {
  if (rule.ranges.empty() || isFormula(condition)) {
    return std::nullopt;
  }
  std::string formula = boost::apply_visitor(WidespreadFormulas(rule), condition);
  if (formula.empty()) {
    return std::nullopt;
  }
  try {
    Expr expr = Formulas::parseExpr(formula);
    return WidespreadCondition{std::move(formula), std::move(expr)};
  } catch (Formulas::FormulaParseError const&) {
    // Its operands can be read, so the formula is too long or too deep.
    return std::nullopt;
  }
}

std::optional<WidespreadCondition> findWidespread(Rule const& rule) {
  return rule.format == nullptr ? std::nullopt : findWidespread(rule.format->getOperator(), rule);
}

}  // namespace Zorv::Workbook
