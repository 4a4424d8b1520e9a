#include "BenchTable.h"

#include <algorithm>
#include <array>
#include <random>
#include <utility>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/ConditionalFormat.h"
#include "Formulas/ParseExpr.h"
#include "support/PlainHost.h"

namespace Zorv::Benchmarks {

namespace {

using namespace DOM;
using FormulaModel::FormulaNumber;
using FormulaModel::FormulaString;

constexpr unsigned seed = 20261121;
constexpr double today = 46347;  // 2026-11-21

UnaryConditionalFormatOperator unary(UnaryConditionalFormatType type, std::string_view formula) {
  return {type, Formulas::parseExpr(formula)};
}

void addGreater(BenchTable& table) {
  table.addFormat(unary(UnaryConditionalFormatType::Greater, "46400"));
}
void addFormula(BenchTable& table) {
  table.addFormat(unary(UnaryConditionalFormatType::FormulaIsTrue, "AND(A1>46400,MOD(A1,7)=0)"));
}
void addTop10(BenchTable& table) {
  table.addFormat(
      TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Top, 10, false));
}
void addTop10Percent(BenchTable& table) {
  table.addFormat(
      TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Top, 10, true));
}
void addAboveAverage(BenchTable& table) {
  table.addFormat(AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above));
}
void addDuplicate(BenchTable& table) {
  table.addFormat(UniquenessConditionalFormatOperator{UniquenessType::Duplicate});
}
void addUnique(BenchTable& table) {
  table.addFormat(UniquenessConditionalFormatOperator{UniquenessType::Unique});
}
void addTextContains(BenchTable& table) {
  table.addFormat(
      TextConditionalFormatOperator(TextConditionalFormatType::Contains, std::string("43")));
}
void addBetween(BenchTable& table) {
  table.addFormat(BinaryConditionalFormatOperator(BinaryConditionalFormatType::Between,
                                                  Formulas::parseExpr("46000"),
                                                  Formulas::parseExpr("46400")));
}
void addThisMonth(BenchTable& table) {
  table.addFormat(NullaryConditionalFormatOperator(NullaryConditionalFormatType::ThisMonth));
}
void addCountIf(BenchTable& table) {
  std::string const column = "$A$1:$A$" + std::to_string(table.getCellCount());
  table.addFormat(unary(UnaryConditionalFormatType::FormulaIsTrue, "COUNTIF(" + column + ",A1)>1"));
}

void addFormulaOfColumn(BenchTable& table) {
  std::string formula = "A1>AVERAGE($A$1:$A$";
  formula += std::to_string(table.getCellCount());
  formula += ")";
  table.addFormat(unary(UnaryConditionalFormatType::FormulaIsTrue, formula));
}

/// 5,000 disjoint pieces of the column for each of two rules, as years of copying leave them.
void addFragments(BenchTable& table) {
  constexpr std::size_t fragmentCount = 5000;
  std::size_t const step = std::max<std::size_t>(2, table.getCellCount() / fragmentCount);
  for (std::size_t row = 0; row + step <= table.getCellCount(); row += step) {
    TableRange const fragment{row, 0, row + step / 2, 1};
    table.addFormat(unary(UnaryConditionalFormatType::Greater, "46400"), fragment);
    table.addFormat(unary(UnaryConditionalFormatType::Less, "46200"), fragment);
  }
}

void addAll(BenchTable& table) {
  for (auto const add :
       {addGreater, addFormula, addTop10, addTop10Percent, addAboveAverage, addDuplicate, addUnique,
        addTextContains, addBetween, addThisMonth, addCountIf}) {
    add(table);
  }
}

}  // namespace

BenchTable::BenchTable(std::size_t cellCount, unsigned long columnCount)
    : _cellCount(cellCount), _columnCount(columnCount) {
  std::mt19937 random(seed);
  // Numbers around today, about as many different ones as there are cells.
  std::uniform_int_distribution<int> number(
      static_cast<int>(today) - static_cast<int>(cellCount / 2),
      static_cast<int>(today) + static_cast<int>(cellCount / 2));
  std::uniform_int_distribution<int> kind(0, 4);
  for (std::size_t cell = 0; cell < cellCount; ++cell) {
    int const drawn = number(random);
    _table.setValue(cell / columnCount, cell % columnCount,
                    kind(random) == 0
                        ? FormulaValue(FormulaString{"Item " + std::to_string(drawn)})
                        : FormulaValue(FormulaNumber{FloatNumber(static_cast<double>(drawn))}));
  }
  for (unsigned char colour = 0; colour < 16; ++colour) {
    auto props = std::make_shared<CellProps>();
    props->fillColour = Colour{colour, colour, colour};
    _styleUUIDs.push_back(UUID::generate());
    _styles.getTableStyles()[_styleUUIDs.back()].setCellProps(std::move(props));
  }
}

void BenchTable::addFormat(ConditionalFormatOperator condition, std::optional<TableRange> range) {
  auto const& style = _styleUUIDs[_table.getLiveConditionalFormats().size() % _styleUUIDs.size()];
  _table.addConditionalFormat({range.value_or(getColumn())}, std::move(condition), style);
}

void BenchTable::makeCalculator() {
  makeCalculator(std::make_unique<TestSupport::PlainValueContextProvider>(_table));
}

void BenchTable::makeCalculator(
    std::unique_ptr<ConditionalFormatters::ValueContextProvider> provider) {
  _calculator = std::make_unique<ConditionalFormatters::ConditionalFormattingPropsCalculator>(
      std::move(provider));
}

std::vector<FormulaValue> BenchTable::getValues() const {
  std::vector<FormulaValue> values;
  auto const [begin, end] = _table.getRangeIterators(getColumn());
  for (auto cell = begin; cell != end; ++cell) {
    values.push_back(cell.getCellInfo().getCell()->value);
  }
  return values;
}

std::size_t resolveColumn(BenchTable const& table, unsigned threadCount) {
  std::size_t styled = 0;
  auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
  resolver.visit(
      {.range = table.getColumn(), .threadCount = threadCount},
      [&](ConditionalFormatters::ResolvedCell const& cell) { styled += cell.style ? 1 : 0; });
  return styled;
}

void addTwelve(BenchTable& table) {
  for (auto const add : {addGreater, addBetween, addTextContains, addThisMonth, addFormula,
                         addTop10, addTop10Percent, addAboveAverage, addDuplicate, addUnique}) {
    add(table);
  }
  table.addFormat(
      TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Bottom, 10, false));
  table.addFormat(
      AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::EqualOrBelow));
}

void addSevenFormulas(BenchTable& table) {
  addFormulaOfColumn(table);
  addCountIf(table);
  for (char const* const formula :
       {"A1=MAX($A:$A)", "A1>=LARGE($A:$A,10)", "A1<=PERCENTILE($A:$A,0.1)", "A1<SMALL($A:$A,5)",
        "A1>MEDIAN($A:$A)"}) {
    table.addFormat(unary(UnaryConditionalFormatType::FormulaIsTrue, formula));
  }
}

std::vector<Scenario> const& getScenarios() {
  static std::vector<Scenario> const scenarios = {
      {"greater", addGreater},
      {"between", addBetween},
      {"textContains", addTextContains},
      {"thisMonth", addThisMonth},
      {"aboveAverage", addAboveAverage},
      {"top10", addTop10},
      {"top10Percent", addTop10Percent},
      {"duplicate", addDuplicate},
      {"unique", addUnique},
      {"formula", addFormula},
      {"formulaOfColumn", addFormulaOfColumn},
      {"countIf", addCountIf},
      {"fragments", addFragments},
      {"all", addAll},
  };
  return scenarios;
}

}  // namespace Zorv::Benchmarks
