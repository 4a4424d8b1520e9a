#include "Formulas/OneTableDocument.h"

#include <string_view>

#include <gtest/gtest.h>

#include "Formulas/CalcExpr.h"
#include "Formulas/ParseExpr.h"
#include "Utils/Exceptions.h"
#include "host/Formulas/FormulaDocument.h"

namespace Zorv::Formulas {
namespace {

constexpr FormulaModel::DocTableIndex first(0);
constexpr FormulaModel::DocTableIndex second(1);

/// The result of a formula at the first cell of a document's table, as a text.
std::string calcAtFirstCell(OneTableDocument const& document, std::string_view formula) {
  RuntimeDependenciesResolver resolver;
  Context const context(document.findTableContextAt(first), RowIndex(0), ColumnIndex(0),
                        boost::none, DOM::RowID(0), DOM::ColumnID(0));
  return describe(calcExpr(parseExpr(formula), context, document, resolver));
}

TEST(OneTableDocument, HasOneTableUnderEachOfItsNames) {
  DOM::Table const table;
  OneTableDocument const document(table, {.sheetName = "Größe"});
  TableContext const* const context = document.getTableContext(table);
  EXPECT_EQ(&context->getTable(), &table);
  EXPECT_EQ(context->getSheetName(), "Größe");
  EXPECT_EQ(context->getDocTableIndex(), first);
  EXPECT_EQ(document.getTableCount(), 1U);
  EXPECT_EQ(document.findTableContext("Größe"), context);
  EXPECT_EQ(document.findTableContextAt(first), context);
}

TEST(OneTableDocument, FindsItsSheetWithoutRegardToCase) {
  DOM::Table const table;
  OneTableDocument const document(table, {.sheetName = "Größe"});
  EXPECT_EQ(document.findTableContext("GRÖSSE"), document.getTableContext(table));
  EXPECT_EQ(document.findTableContext("Große"), nullptr);
  EXPECT_EQ(document.findTableContext(""), nullptr);
}

TEST(OneTableDocument, KnowsNoOtherTable) {
  DOM::Table const table;
  DOM::Table const other;
  OneTableDocument const document(table);
  EXPECT_THROW((void)document.getTableContext(other), BaseRuntimeError);
  EXPECT_EQ(document.findTableContext("Sheet2"), nullptr);
  EXPECT_EQ(document.findTableContextAt(second), nullptr);
}

TEST(OneTableDocument, HasNoNamesAndNoListObjects) {
  DOM::Table const table;
  OneTableDocument const document(table);
  EXPECT_EQ(document.findDefinedName("Sheet1", first), nullptr);
  EXPECT_EQ(document.findListObject("Sheet1"), nullptr);
  EXPECT_EQ(document.findListObjectAt(first, 0, 0), nullptr);
}

TEST(OneTableDocument, TakesDefaultsForWhatIsNotSet) {
  DOM::Table const table;
  OneTableDocument const document(table);
  EXPECT_EQ(document.getTableContext(table)->getSheetName(), "Sheet1");
  EXPECT_EQ(document.getLocaleContext().getName(), OfficeUtils::LocaleContext().getName());
  EXPECT_EQ(document.getTimeZone().getName(), DOM::TimeZone().getName());
}

TEST(OneTableDocument, KeepsItsLocaleAndItsTimeZone) {
  DOM::Table const table;
  OfficeUtils::LocaleContext const locale("de-DE");
  DOM::TimeZone const timeZone("Europe/Berlin");
  OneTableDocument const document(table, {.locale = locale, .timeZone = timeZone});
  EXPECT_TRUE(document.getLocaleContext().sharesDataWith(locale));
  EXPECT_TRUE(document.getTimeZone().sharesDataWith(timeZone));
}

TEST(OneTableDocument, GivesFormulasTheTablesCellsAndTheLocale) {
  DOM::Table table;
  table.setValue(1, 2, FormulaModel::FormulaNumber{FloatNumber(2.5)});
  OneTableDocument const document(
      table, {.sheetName = "Sales", .locale = OfficeUtils::LocaleContext("de-DE")});
  EXPECT_EQ(calcAtFirstCell(document, "C2*2"), "5");
  EXPECT_EQ(calcAtFirstCell(document, "SALES!C2&\"\""), "\"2,5\"");
  EXPECT_EQ(calcAtFirstCell(document, "Other!C2"), "#REF!");
  EXPECT_EQ(calcAtFirstCell(document, "Revenue"), "#NAME?");
}

/// Offers one defined name.
class NamingDocument final : public OneTableDocument {
public:
  using OneTableDocument::OneTableDocument;

  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view name, FormulaModel::DocTableIndex /*table*/) const override {
    return name == "Revenue" ? &_revenue : nullptr;
  }

private:
  DOM::FormulaSyntaxTree::Expr _revenue = parseExpr("$C$2");
};

TEST(OneTableDocument, MayBeGivenNamesByADerivedClass) {
  DOM::Table table;
  table.setValue(1, 2, FormulaModel::FormulaNumber{FloatNumber(2.5)});
  EXPECT_EQ(calcAtFirstCell(NamingDocument(table), "Revenue+1"), "3.5");
}

}  // namespace
}  // namespace Zorv::Formulas
