// Parses any text as a formula, writes it, and moves its references there and back.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "DOM/Table.h"
#include "Formulas/FindReferences.h"
#include "Formulas/OneTableDocument.h"
#include "Formulas/ParseExpr.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/WriteExpr.h"
#include "fuzz/Fuzzing.h"

using namespace Zorv;

namespace {

/// A table of another workbook, of which the expression keeps the sheet alone, has no text.
bool refersToTableElsewhere(DOM::FormulaSyntaxTree::ExprParts const& parts) {
  return std::ranges::any_of(parts.structuredReferences, [&](auto const& reference) {
    return reference.list != DOM::FormulaSyntaxTree::noIndex &&
           parts.texts[reference.list].find('[') != std::string::npos;
  });
}

void checkWriting(DOM::FormulaSyntaxTree::Expr const& expr) {
  constexpr std::size_t longestFormula = 8'192;
  auto const written = Formulas::writeExpr(expr);
  if (written.size() <= longestFormula && !refersToTableElsewhere(expr.getParts())) {
    Fuzzing::require(Formulas::writeExpr(Formulas::parseExpr(written)) == written,
                     "a written formula is read and written as it is");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string_view const text(reinterpret_cast<char const*>(data), size);
  DOM::FormulaSyntaxTree::Expr expr;
  try {
    expr = Formulas::parseExpr(text);
  } catch (Formulas::FormulaParseError const& error) {
    Fuzzing::require(error.getPosition() <= size, "an error lies inside the text");
    return 0;
  }
  Fuzzing::require(Formulas::parseExpr(text) == expr, "a text has one meaning");

  checkWriting(expr);

  static DOM::Table const table;
  static Formulas::OneTableDocument const document(table);
  auto const& context = *document.getTableContext(table);
  auto const shift = [&](DOM::FormulaSyntaxTree::Expr const& from, int columns, int rows) {
    return Formulas::shiftExpr(from, context, columns, rows, context.getDocTableIndex(), true);
  };
  Fuzzing::require(*shift(expr, 0, 0) == expr, "to move nowhere changes nothing");
  Fuzzing::require(*shift(*shift(expr, 7, 1'000), -7, -1'000) == expr,
                   "references come back to where they were");

  Formulas::Context const place(&context, RowIndex(3), ColumnIndex(2), boost::none, DOM::RowID(0),
                                DOM::ColumnID(0));
  for (auto const& reference : Formulas::findReferences(expr, 2, 3, place, document)) {
    Fuzzing::require(reference.range.endRow <= DOM::Table::rowCount &&
                         reference.range.endColumn <= DOM::Table::columnCount,
                     "a reference lies inside the sheet");
  }
  return 0;
}
