#include "host/Formulas/LookupFormulas.h"

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/ParseExpr.h"
#include "Formulas/ShiftExpr.h"

namespace Zorv::Formulas {

namespace {

Context contextAt(TableContext const& sheet, unsigned long row) {
  constexpr unsigned long besideTheValues = 10;
  return {&sheet,      RowIndex(row), ColumnIndex(besideTheValues),
          boost::none, DOM::RowID(0), DOM::ColumnID(0)};
}

}  // namespace

std::vector<std::string> const& LookupFormulas::getValues() {
  static std::vector<std::string> const values = {"",
                                                  "",
                                                  "empty",
                                                  "0",
                                                  "-0.0",
                                                  "1",
                                                  "2",
                                                  "2",
                                                  "0.1",
                                                  "0.2",
                                                  "0.3",
                                                  "1e300",
                                                  "-1e300",
                                                  "5",
                                                  "\"5\"",
                                                  "\"5.0\"",
                                                  "\" 5 \"",
                                                  "\"$5\"",
                                                  "\"1/2/2020\"",
                                                  "43832",
                                                  "\"\"",
                                                  "\"a\"",
                                                  "\"A\"",
                                                  "\"abc\"",
                                                  "\"ä\"",
                                                  "\"Ä\"",
                                                  "\"ß\"",
                                                  "\"a*\"",
                                                  "\"a~*\"",
                                                  "\"*\"",
                                                  "\"?\"",
                                                  "\">1\"",
                                                  "\"<>\"",
                                                  "\"=\"",
                                                  "\"=5\"",
                                                  "\"TRUE\"",
                                                  "TRUE",
                                                  "FALSE",
                                                  "\"#N/A\"",
                                                  "#N/A",
                                                  "#DIV/0!",
                                                  "\"1E999\"",
                                                  "\"K\"",
                                                  "\"\xE2\x84\xAA\"",
                                                  "\"\xFF\"",
                                                  "7",
                                                  "7",
                                                  "7"};
  return values;
}

std::vector<std::string_view> const& LookupFormulas::getFormulas() {
  static std::vector<std::string_view> const formulas = {
      "COUNTIF($A$1:$A$150,A1)",
      "COUNTIF($A$1:$A$150,A1)>1",
      "COUNTIF($A$1:$A$150,\"<>\"&A1)",
      "COUNTIF($A$1:$A$150,\"=\"&A1)",
      "COUNTIF($A$1:$A$150,\">\"&A1)",
      "COUNTIF($A$1:$A$150,\"<=\"&A1)",
      "COUNTIF($A$1:$A$150,\"<\"&A1)",
      "COUNTIF($A$1:$A$150,\">=\"&A1)",
      "COUNTIF($A$1:$A$150,\"=\")",
      "COUNTIF($A$1:$A$150,\"<>\")",
      "COUNTIF($A$1:$A$150,\"\")",
      "COUNTIF($A$1:$A$150,\"a*\")",
      "COUNTIF($A:$A,B1)",
      "COUNTIF($A$1:A1,A1)",
      "COUNTIF($A$20:$A$140,A1)",
      "COUNTIF(A1:A90,A1)",
      "COUNTIF($A$1:$C$150,A1)",
      "COUNTIF($A$1:$C$150,\">\"&B1)",
      "COUNTIF($A$1:$ZZ$1,A1)",
      "COUNTIF(Other!$A$1:$A$100,A1)",
      "COUNTIFS($A$1:$A$150,A1,$B$1:$B$150,B1)",
      "COUNTIFS($A$1:$A$150,A1,$B$1:$B$150,\"<>\"&B1)",
      "COUNTIFS($A$1:$A$150,A1,$B$1:$B$150,\"\")",
      "COUNTIFS($A$1:$A$150,\">1\",$B$1:$B$150,B1,$C$1:$C$150,C1)",
      "COUNTIFS($A$1:$A$150,A1,$A$1:$A$150,A1,$B$1:$B$150,B1,$C$1:$C$150,C1,$D$1:$D$150,D1)",
      "COUNTIFS($A$11:$A$110,A1,$B$1:$B$100,B1)",
      "COUNTIFS($A$1:$B$100,A1,$B$1:$C$100,A1)",
      "COUNTIFS($A$1:$A$150,A1,$B$1:$B$149,B1)",
      "SUMIF($A$1:$A$150,A1)",
      "SUMIF($A$1:$A$150,A1,$C$1:$C$150)",
      "SUMIF($A$1:$A$150,\"<>\"&A1,$D$1)",
      "SUMIF($A$1:$A$150,A1,$D$1)",
      "SUMIF($A$1:$A$150,A1,$D$1048500)",
      "SUMIF($A$1:$B$150,A1,$C$1)",
      "SUMIF($A$20:$A$140,A1,$D$2:$D$122)",
      "AVERAGEIF($A$1:$A$150,A1,$D$1:$D$150)",
      "SUMIFS($D$1:$D$150,$A$1:$A$150,A1)",
      "SUMIFS($D$1:$D$150,$A$1:$A$150,A1,$B$1:$B$150,B1)",
      "SUMIFS($D$1:$D$150,$A$1:$A$150,A1,$B$1:$B$150,\"<\"&B1)",
      "AVERAGEIFS($D$1:$D$150,$A$1:$A$150,A1,$B$1:$B$150,B1)",
      "MAXIFS($D$1:$D$150,$A$1:$A$150,A1)",
      "MINIFS($D$1:$D$150,$A$1:$A$150,A1)",
      "MATCH(A1,$B$1:$B$150,0)",
      "MATCH(B1,$A$20:$A$140,0)",
      "MATCH(A1,$A$1:A1,0)",
      "MATCH(A1,$A$1:$ZZ$1,0)",
      "MATCH(\"a*\",$A$1:$A$150,0)",
      "MATCH(A1,$A:$A,0)",
      "SUM(IFERROR(MATCH(A1:A90,$B$1:$B$150,0),0))",
      "VLOOKUP(A1,$B$1:$D$150,2,FALSE)",
      "HLOOKUP(A1,$A$1:$ZZ$3,2,FALSE)",
      "XMATCH(A1,$B$1:$B$150)",
      "XMATCH(A1,$B$1:$B$150,0,-1)",
      "XMATCH(A1,$B$1:$B$150,2)",
      "XLOOKUP(A1,$B$1:$B$150,$C$1:$C$150,\"none\")",
      "XLOOKUP(A1,$B$1:$B$150,$C$1:$C$150,\"none\",0,-1)",
      "INDEX($C$1:$C$150,MATCH(A1,$B$1:$B$150,0))",
      "RANK(C1,$C$1:$C$150)&RANK.AVG(C1,$C$1:$C$150,1)",
      "RANK(D1,$A$1:$D$150)",
      "IFERROR(RANK(D1,$D$1:$D$150,1),\"none\")",
      "SUM($C$1:$C$150)",
      "AVERAGE(A$1:$C150,B$1:B$150)",
      "MAX($A$1:A100)",
      "COUNTA(Other!$A$1:$A$100,$A$1:$A$2)",
      "LARGE($C$1:$C$150,2)&SMALL($C$1:$C$150,2)&LARGE($C$1:$C$150,1)&LARGE($B$1:$B$150,2)",
      "LARGE($C$1:$C$150,ROW())",
      "COUNT($C$1:$C$150,5)&COUNT($C$1:$C$150,TRUE)&COUNT($C$1:$C$150)",
      "CONCAT($A$1:$A$150)&CONCAT($B$1:$B$70)",
      "SUM(TRANSPOSE($C$1:$C$150))",
      "ROWS($A$1:$A$150)+ROW($A$1:$A$150)+SUM($A$1:$A$1048576)",
      "SUMPRODUCT($C$1:$C$150,$C$1:$C$150)",
      "SUM($A$1:INDEX($A$1:$A$150,ROW()))",
  };
  return formulas;
}

void LookupFormulas::fill(FormulaDocument& document,
                          std::function<std::size_t(std::size_t)> const& choose) {
  // Few values in all make equal neighbours in several columns likely.
  std::vector<std::string> values;
  for (std::size_t i = 0; i < 12; ++i) {
    values.push_back(getValues()[choose(getValues().size())]);
  }
  for (unsigned long row = 0; row < rows; ++row) {
    for (char column = 'A'; column <= 'D'; ++column) {
      auto const& pool = choose(3) == 0 ? getValues() : values;
      std::string const& value = pool[choose(pool.size())];
      bool const isErrorToSum = column == 'D' && value.starts_with('#') && choose(4) != 0;
      if (!value.empty() && !isErrorToSum) {
        document.set(column + std::to_string(row + 1), value);
      }
    }
  }
}

std::string LookupFormulas::calcPlainly(FormulaDocument& document, std::string_view formula,
                                        unsigned long row) {
  RuntimeDependenciesResolver resolver;
  FormulaSheet const& sheet = document.sheet();
  auto const shifted = shiftExpr(parseExpr(formula), sheet, 0, static_cast<int>(row),
                                 sheet.getDocTableIndex(), true);
  return describe(calcExpr(*shifted, contextAt(sheet, row), document, resolver));
}

std::string LookupFormulas::calcInSession(FormulaDocument const& document,
                                          TableContext const& sheet,
                                          DOM::FormulaSyntaxTree::Expr const& expr,
                                          unsigned long row, EvaluationSession& session) {
  RuntimeDependenciesResolver resolver;
  return describe(calcShiftedExpr(expr, 0, static_cast<int>(row), contextAt(sheet, row), document,
                                  resolver, session));
}

}  // namespace Zorv::Formulas
