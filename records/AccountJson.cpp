#include "records/AccountJson.h"

#include <string_view>
#include <variant>

#include "DOM/A1Notation.h"
#include "records/JsonText.h"
#include "records/VisualJson.h"
#include "words/AccountText.h"
#include "words/ConditionText.h"

namespace Zorv::Records {

namespace {

namespace CF = ConditionalFormatters;
using Analysis::FormatOutcome;

std::string_view nameOfOutcome(Analysis::VisualOutcome outcome) noexcept {
  switch (outcome) {
    case Analysis::VisualOutcome::Draws:
      return "draws";
    case Analysis::VisualOutcome::NoNumber:
      return "noNumber";
    case Analysis::VisualOutcome::NoCondition:
      return "doesNotHold";
    case Analysis::VisualOutcome::Failed:
      return "failed";
    case Analysis::VisualOutcome::NotReached:
      return "notReached";
    case Analysis::VisualOutcome::NotOnThisCell:
      break;
  }
  return "notOnThisCell";
}

std::string_view nameOfOutcome(FormatOutcome outcome) noexcept {
  switch (outcome) {
    case FormatOutcome::Holds:
      return "holds";
    case FormatOutcome::DoesNotHold:
      return "doesNotHold";
    case FormatOutcome::Failed:
      return "failed";
    case FormatOutcome::NotReached:
      return "notReached";
    case FormatOutcome::NotOnThisCell:
      break;
  }
  return "notOnThisCell";
}

/// Writes each kind of operands as an object.
class OperandWriter {
public:
  explicit OperandWriter(JsonBuilder& json) noexcept : _json(json) {}

  void operator()(std::monostate /*none*/) const { _json.null(); }
  void operator()(CF::ArgumentOperand const& operand) const {
    begin("argument");
    add("value", operand.value);
    _json.endObject();
  }
  void operator()(CF::BoundsOperand const& operand) const {
    begin("bounds");
    add("lower", operand.lower);
    add("upper", operand.upper);
    _json.endObject();
  }
  void operator()(CF::PatternOperand const& operand) const {
    begin("pattern");
    _json.key("text");
    operand.pattern ? _json.text(*operand.pattern) : _json.null();
    _json.endObject();
  }
  void operator()(CF::MeanOperand const& operand) const {
    begin("mean");
    add("mean", operand.count == 0 ? boost::none : number(operand.mean));
    _json.key("count").number(operand.count).endObject();
  }
  void operator()(CF::ThresholdOperand const& operand) const {
    begin("threshold");
    add("threshold", operand.threshold ? number(*operand.threshold) : boost::none);
    _json.key("rank").number(operand.rank).endObject();
  }
  void operator()(CF::OccurrenceOperand const& operand) const {
    begin("occurrence");
    _json.key("count").number(operand.count).key("first");
    operand.first ? _json.text(DOM::A1Notation::toAddress(*operand.first)) : _json.null();
    _json.endObject();
  }
  void operator()(CF::PeriodOperand const& operand) const {
    begin("period");
    _json.key("unit").text(operand.unit == CF::DateUnit::Day    ? "day"
                           : operand.unit == CF::DateUnit::Week ? "week"
                                                                : "month");
    add("first", number(FloatNumber(operand.first)));
    add("last", number(FloatNumber(operand.last)));
    _json.endObject();
  }

private:
  static boost::optional<FormulaValue> number(FloatNumber value) {
    return FormulaValue(FormulaModel::FormulaNumber{value});
  }
  void begin(std::string_view kind) const { _json.beginObject().key("kind").text(kind); }
  void add(std::string_view name, boost::optional<FormulaValue> const& value) const {
    _json.key(name);
    value ? _json.value(*value) : _json.null();
  }

  JsonBuilder& _json;
};

void addTraced(Formulas::TracedValue const& traced, JsonBuilder& json) {
  using Kind = Formulas::TracedValue::Kind;
  switch (traced.kind) {
    case Kind::Single:
      json.key("value").value(traced.value);
      break;
    case Kind::Ranges:
      json.key("ranges").number(traced.rangeCount);
      break;
    case Kind::Function:
      json.key("function").boolean(true);
      break;
    case Kind::Range:
    case Kind::Array:
      json.key("rows").number(traced.rows).key("columns").number(traced.columns);
      json.key("firstValues").beginArray();
      for (auto const& value : traced.firstValues) {
        json.value(value);
      }
      json.endArray();
      break;
  }
  if (traced.isDate) {
    json.key("date").boolean(true);
  }
}

void addTrace(Analysis::FormulaAccount const& formula, JsonBuilder& json) {
  json.beginObject().key("written").text(formula.written);
  json.key("here").text(formula.trace.text).key("steps").beginArray();
  for (auto const& step : formula.trace.steps) {
    json.beginObject().key("text").text(step.text).key("depth").number(step.depth);
    addTraced(step.value, json);
    json.endObject();
  }
  json.endArray().key("cut").boolean(formula.trace.isCut).endObject();
}

void addSetter(Workbook::Rule const* setter, JsonBuilder& json) {
  setter != nullptr ? json.number(setter->number) : json.null();
}

/// The properties that the rule decides, and those that an earlier rule does.
void addProperties(Analysis::RuleAccount const& account, JsonBuilder& json) {
  json.key("sets").beginArray();
  for (auto const& property : account.properties) {
    if (property.takenBy == nullptr) {
      json.text(property.name);
    }
  }
  json.endArray().key("taken").beginObject();
  for (auto const& property : account.properties) {
    if (property.takenBy != nullptr) {
      json.key(property.name).number(property.takenBy->number);
    }
  }
  json.endObject();
}

void addRule(Analysis::RuleAccount const& account, JsonBuilder& json) {
  auto const& rule = *account.rule;
  json.beginObject().key("rule").number(rule.number).key("kind").text(rule.type);
  json.key("condition")
      .text(Words::describeCondition(rule))
      .key("ranges")
      .text(Words::describeRanges(rule));
  json.key("priority");
  rule.priority ? json.number(*rule.priority) : json.null();
  json.key("stop").boolean(rule.stopIfTrue);
  json.key("outcome").text(account.outcome  ? nameOfOutcome(*account.outcome)
                           : account.visual ? nameOfOutcome(*account.visual)
                                            : "notResolved");
  if (!rule.isResolved()) {
    json.key("reason").text(rule.unresolvedReason);
  }
  if (account.endedBy != nullptr) {
    json.key("endedBy").number(account.endedBy->number);
  }
  if (account.holdsByItself) {
    json.key("holdsByItself").boolean(*account.holdsByItself);
  }
  if (account.failure) {
    json.key("failure").text(Words::describeProblem(account.failure));
  }
  if (account.elsewhere) {
    json.key("elsewhere").beginObject().key("holds").boolean(account.elsewhere->holds);
    json.key("reason").text(account.elsewhere->reason);
    json.key("formula").text(account.elsewhere->formula).endObject();
  }
  json.key("operands");
  std::visit(OperandWriter(json), account.operands);
  json.key("formulas").beginArray();
  for (auto const& formula : account.formulas) {
    addTrace(formula, json);
  }
  json.endArray();
  addProperties(account, json);
  json.endObject();
}

void addNearest(Analysis::CellAccount const& account, JsonBuilder& json) {
  json.key("nearest").beginArray();
  for (auto const& near : account.nearest) {
    json.beginObject().key("rule").number(near.rule->number);
    json.key("range").text(DOM::A1Notation::toAddress(near.range));
    json.key("rows").number(near.rows).key("columns").number(near.columns).endObject();
  }
  json.endArray();
}

}  // namespace

void AccountJson::write(Analysis::CellAccount const& account, JsonBuilder& json) {
  json.key("sheet").text(_document.getSheets()[account.sheet].name);
  json.key("cell").text(DOM::A1Notation::toAddress(account.cell));
  json.key("value").value(account.content != nullptr ? account.content->value : FormulaValue());
  auto const* const format = account.effectiveStyle.getCellFormat().get();
  json.key("shown").text(account.content != nullptr ? _formatter.toText(*account.content, format)
                                                    : "");
  json.key("ownStyle").raw(toJsonText(account.ownStyle));
  json.key("style").raw(toJsonText(account.effectiveStyle));
  json.key("setBy").beginObject();
  for (auto const& property : account.properties) {
    addSetter(property.setBy, json.key(property.name));
  }
  json.endObject();
  if (!account.visuals.isEmpty()) {
    json.key("visuals").raw(toJsonText(account.visuals, account.visualRules));
  }
  json.key("rules").beginArray();
  for (auto const& rule : account.rules) {
    addRule(rule, json);
  }
  json.endArray().key("rulesElsewhere").number(account.rulesElsewhere);
  addNearest(account, json);
}

}  // namespace Zorv::Records
