#include "ConditionalFormatters/RandomTable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include <rapidcheck.h>

#include "DOM/ConditionalFormat.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ParseExpr.h"
#include "support/Documents.h"
#include "support/Values.h"

namespace Zorv::TestSupport {

namespace {

using namespace DOM;

constexpr unsigned char styleCount = 6;
constexpr double today = 46347;  // 2026-11-21

template <class Value>
Value const& pick(std::vector<Value> const& values) {
  return values[*rc::gen::inRange<std::size_t>(0, values.size())];
}

int drawBelow(int end) { return *rc::gen::inRange(0, end); }

FormulaValue drawValue() {
  static std::vector<FormulaValue> const values = {
      FormulaValue(),
      number(-2),
      number(-0.0),
      number(0.0),
      number(1),
      number(1.5),
      number(2),
      number(7),
      number(today),
      number(today - 3),
      number(today + 8),
      text(""),
      text("a"),
      text("A"),
      text("abc"),
      text("a longer text that no small string holds"),
      boolean(false),
      boolean(true),
      error(FormulaModel::FormulaErrorCode::Value),
      error(FormulaModel::FormulaErrorCode::NotAvailable)};
  return pick(values);
}

FormulaSyntaxTree::Expr drawFormula() {
  static std::vector<std::string> const formulas = {"1",
                                                    "0",
                                                    "\"a\"",
                                                    "TRUE",
                                                    "A1",
                                                    "$A$1",
                                                    "B$2",
                                                    "A1:A3",
                                                    "A1>1",
                                                    "MOD(ROW(),2)",
                                                    "COUNTIF($A$1:$A$14,A1)>1",
                                                    "SUM(A1:B2)",
                                                    "A1>AVERAGE($A$1:$A$14)",
                                                    "IF(A1=\"a\",1,SUM($A$1:$B$14)>B1)",
                                                    "1/0",
                                                    "IF(A1=\"a\",1,0)",
                                                    "TODAY()",
                                                    "(A1:A2,B1:B2)",
                                                    "AND(A1>0,B1<5)",
                                                    "A1&\"b\"",
                                                    "XFD1048576",
                                                    "NOSUCHFUNCTION(1)",
                                                    "$A1>1",
                                                    "$B1=\"a\"",
                                                    "IF($A1=\"a\",1/$B1,$B1)",
                                                    "SUM($A1:$B2)>2",
                                                    "$A1:$A3",
                                                    "A$1>1",
                                                    "MATCH(\"a\",A$1:A$14,0)>2",
                                                    "$A1+COLUMN()>3",
                                                    "A$1+ROW()>3"};
  return Formulas::parseExpr(pick(formulas));
}

/// A kind of record, among `count` known ones and perhaps one that is not.
template <class Type>
Type drawType(int count, RandomTableOptions const& options) {
  return static_cast<Type>(drawBelow(count + (options.withUnknownKinds ? 1 : 0)));
}

ConditionalFormatOperator drawCondition(RandomTableOptions const& options) {
  switch (drawBelow(7)) {
    case 0:
      return NullaryConditionalFormatOperator(drawType<NullaryConditionalFormatType>(14, options));
    case 1:
      return UnaryConditionalFormatOperator(drawType<UnaryConditionalFormatType>(7, options),
                                            drawFormula());
    case 2:
      return BinaryConditionalFormatOperator(drawType<BinaryConditionalFormatType>(2, options),
                                             drawFormula(), drawFormula());
    case 3: {
      auto const type = drawType<TextConditionalFormatType>(4, options);
      if (drawBelow(2) == 0) {
        return TextConditionalFormatOperator(type, std::string("a"));
      }
      return TextConditionalFormatOperator(
          type, std::make_unique<FormulaSyntaxTree::Expr>(drawFormula()));
    }
    case 4:
      return TopBottomConditionalFormatOperator(
          drawType<TopBottomConditionalFormatType>(2, options),
          static_cast<std::uint32_t>(drawBelow(60)), drawBelow(2) == 0);
    case 5:
      return AboveAverageConditionalFormatOperator(
          drawType<AboveAverageConditionalFormatType>(4, options),
          drawBelow(5) == 0 ? boost::optional<std::uint32_t>(1) : boost::none);
    default:
      return UniquenessConditionalFormatOperator{drawType<UniquenessType>(2, options)};
  }
}

TableRange drawRange() {
  auto const row = static_cast<unsigned long>(drawBelow(RandomTable::rows));
  auto const column = static_cast<unsigned long>(drawBelow(RandomTable::columns));
  return {row, column, row + 1 + static_cast<unsigned long>(drawBelow(RandomTable::rows)),
          column + 1 + static_cast<unsigned long>(drawBelow(RandomTable::columns))};
}

void addStyles(Styles& styles) {
  for (unsigned char index = 1; index <= styleCount; ++index) {
    // A parent of a smaller number, or none: chains end.
    auto const parent = static_cast<unsigned char>(drawBelow(index));
    NamedTableStyle& style = addStyle(styles, makeUUID(index), makeUUID(parent));
    if (drawBelow(2) == 0) {
      style.setCellProps(makeProps<CellProps>([index](CellProps& props) {
        props.fillColour = Colour{index, 0, 0};
      }));
    }
    if (drawBelow(2) == 0) {
      style.setRunProps(makeProps<RunProps>([index](RunProps& props) {
        props.fontSize = index;
        props.bold = index % 2 == 0;
      }));
    }
    if (drawBelow(3) == 0) {
      style.setCellFormat(std::make_shared<CellFormat>(CellFormat{std::string(index, '0')}));
    }
  }
}

}  // namespace

RandomTable::RandomTable(RandomTableOptions const& options) {
  for (unsigned long row = 0; row < rows; ++row) {
    for (unsigned long column = 0; column < columns; ++column) {
      if (drawBelow(4) != 0) {
        table.setValue(row, column, drawValue());
      }
    }
  }
  addStyles(styles);
  int const formatCount = drawBelow(9);
  for (int format = 0; format < formatCount; ++format) {
    std::vector<TableRange> ranges(static_cast<std::size_t>(1 + drawBelow(3)));
    for (TableRange& range : ranges) {
      range = drawRange();
    }
    // One identity more than there are styles: a format may name a style that does not exist.
    auto const style = makeUUID(static_cast<unsigned char>(1 + drawBelow(styleCount + 1)));
    addFormat(table, ranges, drawCondition(options), style, drawBelow(4) == 0);
  }
}

}  // namespace Zorv::TestSupport
