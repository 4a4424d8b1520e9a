#include "ConditionalFormatters/EditedDocument.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <utility>

#include "DOM/ConditionalFormat.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/ParseExpr.h"
#include "support/Documents.h"
#include "support/RunningClock.h"
#include "support/Values.h"

namespace Zorv::TestSupport {

using namespace DOM;
using ConditionalFormatters::AnythingChanged;
using ConditionalFormatters::Axis;
using ConditionalFormatters::Change;
using ConditionalFormatters::FormatsChanged;
using ConditionalFormatters::LineEdit;
using ConditionalFormatters::LinesChanged;
using ConditionalFormatters::ValueContextProvider;
using ConditionalFormatters::ValuesChanged;

namespace {

constexpr unsigned char editedStyleCount = 4;
constexpr double serialOf21November = 46347;

}  // namespace

/// A sheet of the document. Not in the unnamed namespace: members of EditedDocument::Host have it.
class EditedSheet final : public Formulas::TableContext {
public:
  EditedSheet(DOM::Table const& table, std::string name, unsigned long index)
      : _table(table), _name(std::move(name)), _index(index) {}

  [[nodiscard]] FormulaModel::DocTableIndex getDocTableIndex() const override {
    return FormulaModel::DocTableIndex(_index);
  }
  [[nodiscard]] DOM::Table const& getTable() const override { return _table; }
  [[nodiscard]] std::string const& getSheetName() const override { return _name; }

private:
  DOM::Table const& _table;
  std::string _name;
  unsigned long _index;
};

/// The document as the library sees it; each of its operations may be the one that fails.
class EditedDocument::Host final : public Formulas::ContextProvider {
public:
  explicit Host(EditedDocument& document)
      : _document(document),
        _first(document.table, "Sheet1", 0),
        _second(document.otherTable, "Other", 1) {
    _list.name = "List";
    _list.table = FormulaModel::DocTableIndex(0);
    _list.range = {0, 0, 6, 2};
    _list.columnNames = {"One", "Two"};
    setName("$A$2");
  }

  void setName(std::string_view formula) { _name = Formulas::parseExpr(formula); }
  void setLocale(OfficeUtils::LocaleContext locale) { _locale = std::move(locale); }
  void setListHeight(unsigned long height) { _list.range.endRow = height; }

  void countCall() const {
    if (_document._failingCall > 0 && --_document._failingCall == 0) {
      throw std::runtime_error("the host failed");
    }
  }

  [[nodiscard]] Formulas::TableContext const* getTableContext(
      DOM::Table const& asked) const override {
    countCall();
    return &asked == &_document.table ? &_first : &_second;
  }
  [[nodiscard]] OfficeUtils::LocaleContext const& getLocaleContext() const override {
    return _locale;
  }
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override { return _timeZone; }
  [[nodiscard]] std::size_t getTableCount() const override { return 2; }
  [[nodiscard]] Formulas::TableContext const* findTableContext(
      std::string_view sheetName) const override {
    countCall();
    return sheetName == "Sheet1" ? &_first : sheetName == "Other" ? &_second : nullptr;
  }
  [[nodiscard]] Formulas::TableContext const* findTableContextAt(
      FormulaModel::DocTableIndex index) const override {
    return index.get() == 0 ? &_first : &_second;
  }
  [[nodiscard]] FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view name, FormulaModel::DocTableIndex /*table*/) const override {
    countCall();
    return name == "Named" ? &_name : nullptr;
  }
  [[nodiscard]] Formulas::ListObject const* findListObject(std::string_view name) const override {
    return name == "List" ? &_list : nullptr;
  }
  [[nodiscard]] Formulas::ListObject const* findListObjectAt(FormulaModel::DocTableIndex index,
                                                             unsigned long row,
                                                             unsigned long column) const override {
    return index.get() == 0 && _list.range.contains(row, column) ? &_list : nullptr;
  }

private:
  EditedDocument& _document;
  EditedSheet _first;
  EditedSheet _second;
  FormulaSyntaxTree::Expr _name;
  Formulas::ListObject _list;
  OfficeUtils::LocaleContext _locale;
  DOM::TimeZone _timeZone{"Europe/Berlin"};
};

EditedDocument::EditedDocument(std::uint32_t seed)
    : _random(seed),
      _hasNaN(seed % 4 == 0),
      _comparesNumbers(seed % 4 == 1),
      _moment(noonOn21November()),
      _host(std::make_unique<Host>(*this)) {
  for (unsigned long row = 0; row < rows; ++row) {
    for (unsigned long column = 0; column < columns; ++column) {
      if (draw(4) != 0) {
        setRandomValue(table, row, column);
        setRandomValue(otherTable, row, column);
      }
    }
  }
  for (unsigned char style = 1; style <= editedStyleCount; ++style) {
    drawStyle(style);
  }
  for (unsigned long format = 0; format < 6; ++format) {
    _formats.push_back(drawFormat());
  }
  makeFormats();
}

EditedDocument::~EditedDocument() = default;

std::unique_ptr<ValueContextProvider> EditedDocument::makeProvider() {
  class Provider final : public ValueContextProvider {
  public:
    explicit Provider(Host const& host) : _host(host) {}
    [[nodiscard]] FormulaValue getCellValue(CellInfo const& cellInfo) const override {
      _host.countCall();
      auto const* const cell = cellInfo.getCell();
      return cell != nullptr ? cell->value : FormulaValue();
    }
    [[nodiscard]] DOM::TimeZone const& getTimeZone() const override {
      _host.countCall();
      return _host.getTimeZone();
    }
    [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
      _host.countCall();
      return _host;
    }

  private:
    Host const& _host;
  };
  return std::make_unique<Provider>(*_host);
}

TableRange EditedDocument::drawRange() {
  unsigned long const row = draw(rows);
  unsigned long const column = draw(columns);
  return {row, column, row + 1 + draw(rows), column + 1 + draw(columns)};
}

FormulaValue EditedDocument::drawValue() {
  if (_comparesNumbers) {
    double const drawn = 1 + static_cast<double>(draw(3));
    return number(std::array{drawn, std::nextafter(drawn, 0), std::nextafter(drawn, 9)}[draw(3)]);
  }
  std::vector<FormulaValue> values = {FormulaValue(),
                                      number(-2),
                                      number(-0.0),
                                      number(0.0),
                                      number(1),
                                      number(1.5),
                                      number(2),
                                      number(7),
                                      number(0.1),
                                      number(1e300),
                                      number(infinity),
                                      number(-infinity),
                                      number(serialOf21November),
                                      number(serialOf21November + 1),
                                      number(serialOf21November - 7),
                                      text(""),
                                      text("a"),
                                      text("abc"),
                                      text("1"),
                                      text("ABC"),
                                      boolean(false),
                                      boolean(true),
                                      error(FormulaModel::FormulaErrorCode::Value),
                                      error(FormulaModel::FormulaErrorCode::NotAvailable)};
  if (_hasNaN) {
    values.push_back(number(std::numeric_limits<double>::quiet_NaN()));
  }
  return values[draw(values.size())];
}

std::string EditedDocument::drawFormula() {
  static std::vector<std::string> const formulas = {"1",
                                                    "\"a\"",
                                                    "A1",
                                                    "$A$1",
                                                    "B$2",
                                                    "XFD1048576",
                                                    "A1>1",
                                                    "$A1>1",
                                                    "A$1>1",
                                                    "$B1=\"a\"",
                                                    "IF($A1=\"a\",1/$B1,$B1)",
                                                    "SUM(A1:B2)>2",
                                                    "SUM(A$1:A1)>2",
                                                    "SUM($A$1:$B$14)>4",
                                                    "A1>AVERAGE($A$1:$A$14)",
                                                    "COUNTIF($A$1:$A$14,A1)>1",
                                                    "MATCH(\"a\",A$1:A$14,0)>2",
                                                    "A1=LARGE($A$1:$A$14,2)",
                                                    "SUMIF($A$1:$A$9,1,$B$1)>1",
                                                    "A1>AVERAGE($A:$A)",
                                                    "SUM($A:$B)-SUM($A:$B,0)=0",
                                                    "COUNT($A:$A)>COUNTA(Other!$A:$B)",
                                                    "A1=MAX($A:$A)",
                                                    "A1>=LARGE($A:$B,3)",
                                                    "A1<=SMALL($A:$A,2)+MIN($B:$B)",
                                                    "A1>MEDIAN(Other!$A:$A)",
                                                    "A1>=MEDIAN($A:$A)*2-2",
                                                    "A1=MIN(Other!$A:$B)+1",
                                                    "A1<PERCENTILE($A:$A,0.3)",
                                                    "A1<QUARTILE($A:$B,3)",
                                                    "RANK(A1,$A:$A)<4",
                                                    "COUNTIF($A:$A,A1)>1",
                                                    "COUNTIF($A:$B,\"<>\"&A1)>9",
                                                    "COUNTIF($1:$3,A1)>1",
                                                    "A1>AVERAGE($2:$4)",
                                                    "A1=MAX(Other!$1:$2)",
                                                    "COUNTIF($A:$A,\">\"&A1)>3",
                                                    "MATCH(A1,$A:$A,0)>2",
                                                    "SUMIF($A:$A,A1,$B:$B)>1",
                                                    "SUMIF($A:$A,\"ABC\",$B:$B)>A1",
                                                    "SUMIF($A:$B,A1)>2",
                                                    "SUMIF($A$2:$A$90,A1,Other!$A$2:$A$90)>1",
                                                    "SUMIFS($B:$B,$A:$A,A1,$C:$C,C1)>1",
                                                    "COUNTIFS($A:$A,A1,Other!$A:$A,A1)>0",
                                                    "COUNTIFS($A:$A,\"1\",$B:$B,\"<>\"&B1)>1",
                                                    "AVERAGEIF($A:$A,A1,$B:$B)>1",
                                                    "AVERAGEIF(Other!$B:$B,A1)>0",
                                                    "MATCH(A1,$B:$B,0)<MATCH(\"a\",$A:$A,0)",
                                                    "Other!$A$1>1",
                                                    "Other!A1>A1",
                                                    "COUNT(Other!$A$1:$B$9)>9",
                                                    "Named>1",
                                                    "A1>Named",
                                                    "SUM(List[Two])>A1",
                                                    "List[@One]>1",
                                                    "[@Two]>1",
                                                    "OFFSET($A$1,B1,0)>1",
                                                    "INDIRECT(\"Other!B2\")>1",
                                                    "SUM($A$1:INDEX($A$1:$A$9,$B$1))>3",
                                                    "A1=TODAY()",
                                                    "HOUR(NOW())>12",
                                                    "ROW(A1)+COLUMN()>5",
                                                    "1/0",
                                                    "A1:A3",
                                                    "VALUE(\"1,5\")>1"};
  return formulas[draw(formulas.size())];
}

std::function<ConditionalFormatOperator()> EditedDocument::drawCondition() {
  std::string const first = drawFormula();
  std::string const second = drawFormula();
  auto const type = static_cast<std::uint8_t>(draw(14));
  bool const flag = draw(2) == 0;
  auto const amount = static_cast<std::uint32_t>(draw(60));
  switch (draw(_hasNaN ? 6 : 7)) {
    case 0:
      return [=] {
        return NullaryConditionalFormatOperator(static_cast<NullaryConditionalFormatType>(type));
      };
    case 1:
      return [=] {
        return UnaryConditionalFormatOperator(
            flag ? UnaryConditionalFormatType::FormulaIsTrue
                 : static_cast<UnaryConditionalFormatType>(type % 7),
            Formulas::parseExpr(first));
      };
    case 2:
      return [=] {
        return BinaryConditionalFormatOperator(static_cast<BinaryConditionalFormatType>(type % 2),
                                               Formulas::parseExpr(first),
                                               Formulas::parseExpr(second));
      };
    case 3:
      return [=] {
        return TextConditionalFormatOperator(
            static_cast<TextConditionalFormatType>(type % 4),
            std::make_unique<FormulaSyntaxTree::Expr>(Formulas::parseExpr(first)));
      };
    case 4:
      return [=] {
        return TopBottomConditionalFormatOperator(
            static_cast<TopBottomConditionalFormatType>(type % 2), amount, flag);
      };
    case 5:
      return [=] {
        return AboveAverageConditionalFormatOperator(
            static_cast<AboveAverageConditionalFormatType>(type % 4));
      };
    default:
      return [=] {
        return UniquenessConditionalFormatOperator{static_cast<UniquenessType>(type % 2)};
      };
  }
}

std::function<ConditionalFormatOperator()> EditedDocument::drawComparison() {
  static std::vector<std::string> const operators = {"=", "<>", "<", "<=", ">", ">="};
  static std::vector<std::string> const asked = {
      "AVERAGE($A:$A)", "MAX($A:$A)",        "MIN($A:$A)",     "MEDIAN($A:$A)",
      "LARGE($A:$A,2)", "SMALL($A:$A,3)",    "COUNT($A:$A)/5", "PERCENTILE($A:$A,0.3)",
      "SUM($A:$A)/20",  "COUNTIF($A:$A,2)/2"};
  static std::vector<std::string> const rest = {"", "*2-1", "/2+1", "-4"};
  std::string formula = "A1" + operators[draw(operators.size())] + asked[draw(asked.size())] +
                        rest[draw(rest.size())];
  return [formula = std::move(formula)] {
    return UnaryConditionalFormatOperator(UnaryConditionalFormatType::FormulaIsTrue,
                                          Formulas::parseExpr(formula));
  };
}

EditedDocument::FormatPlan EditedDocument::drawFormat() {
  FormatPlan plan;
  if (_comparesNumbers && draw(3) != 0) {
    plan.ranges.push_back(table.toRangeByID({0, 0, rows, 1}));
    plan.makeCondition = drawComparison();
  } else {
    unsigned long const rangeCount = 1 + draw(3);
    for (unsigned long range = 0; range < rangeCount; ++range) {
      plan.ranges.push_back(table.toRangeByID(drawRange()));
    }
    plan.makeCondition = drawCondition();
  }
  // One identity more than there are styles: a format may name a style that does not exist.
  plan.style = makeUUID(static_cast<unsigned char>(1 + draw(editedStyleCount + 1)));
  plan.stops = draw(5) == 0;
  return plan;
}

void EditedDocument::drawStyle(unsigned char index) {
  NamedTableStyle& style =
      addStyle(styles, makeUUID(index), makeUUID(static_cast<unsigned char>(draw(index))));
  auto const colour = static_cast<std::uint8_t>(draw(3));
  style.setCellProps(makeProps<CellProps>([colour](CellProps& props) {
    props.fillColour = Colour{colour, 0, 0};
  }));
  style.setRunProps(draw(2) == 0 ? nullptr : makeProps<RunProps>([colour](RunProps& props) {
    props.bold = colour != 0;
  }));
}

void EditedDocument::makeFormats() {
  Table::LiveConditionalFormats made;
  for (FormatPlan const& plan : _formats) {
    made.push_back(std::make_unique<ConditionalFormat const>(plan.ranges, plan.makeCondition(),
                                                             plan.style, plan.stops));
  }
  table.setConditionalFormats(std::move(made));
}

void EditedDocument::setRandomValue(DOM::Table& changed, unsigned long row, unsigned long column) {
  changed.setValue(row, column, drawValue());
}

void EditedDocument::addRandomFormat() {
  _formats.push_back(drawFormat());
  makeFormats();
}

void EditedDocument::editValues(std::vector<Change>& changes) {
  DOM::Table& changed = draw(3) == 0 ? otherTable : table;
  ValuesChanged told{&changed, {}};
  unsigned long const count = 1 + draw(3);
  for (unsigned long cell = 0; cell < count; ++cell) {
    unsigned long const row = draw(rows + 2);
    unsigned long const column = draw(columns + 2);
    if (draw(4) == 0) {
      changed.removeCell(row, column);
    } else {
      setRandomValue(changed, row, column);
    }
    told.areas.push_back({row, column, row + 1, column + 1});
  }
  changes.emplace_back(std::move(told));
}

void EditedDocument::editLines(std::vector<Change>& changes) {
  LinesChanged told;
  DOM::Table& changed = draw(4) == 0 ? otherTable : table;
  told.table = &changed;
  told.axis = draw(2) == 0 ? Axis::Rows : Axis::Columns;
  bool const isRows = told.axis == Axis::Rows;
  told.first = draw(isRows ? rows : columns);
  told.count = 1 + draw(2);
  bool const isFar = draw(5) == 0;
  if (isFar) {
    // Many lines behind all cells, for formulas of whole rows and columns.
    told.first = 40 + draw(9);
    told.count = isRows ? 1'000'000 : 15'000;
  }
  TableRange const used = changed.getUsedRange();
  bool const isFull = (isRows ? used.endRow : used.endColumn) + 4 > (isRows ? 24UL : 9UL);
  switch (isFull ? 1 : draw(3)) {
    case 0:
      told.edit = LineEdit::Insert;
      isRows ? changed.insertRows(told.first, told.count)
             : changed.insertColumns(told.first, told.count);
      break;
    case 1:
      told.edit = LineEdit::Delete;
      isRows ? changed.deleteRows(told.first, told.count)
             : changed.deleteColumns(told.first, told.count);
      break;
    default:
      told.edit = LineEdit::Move;
      told.before =
          !isFar && draw(2) == 0 ? draw(told.first + 1) : told.first + told.count + draw(4);
      isRows ? changed.moveRows(told.first, told.count, told.before)
             : changed.moveColumns(told.first, told.count, told.before);
  }
  changes.emplace_back(told);
}

void EditedDocument::editFormats() {
  switch (draw(4)) {
    case 0:
      _formats.push_back(drawFormat());
      break;
    case 1:
      if (_formats.size() > 3) {
        _formats.erase(_formats.begin() + static_cast<std::ptrdiff_t>(draw(_formats.size())));
      }
      break;
    case 2:
      std::shuffle(_formats.begin(), _formats.end(), _random);
      break;
    default:
      _formats[draw(_formats.size())].ranges = drawFormat().ranges;
  }
  makeFormats();
}

void EditedDocument::edit(std::vector<Change>& changes) {
  static std::vector<std::string> const names = {"$A$2", "A1", "Other!$B$1", "TODAY()-$A$1"};
  switch (draw(12)) {
    case 0:
      editFormats();
      changes.emplace_back(FormatsChanged{&table});
      break;
    case 1:
      drawStyle(static_cast<unsigned char>(1 + draw(editedStyleCount)));
      changes.emplace_back(FormatsChanged{&table});
      break;
    case 2:
      _host->setName(names[draw(names.size())]);
      _host->setLocale(OfficeUtils::LocaleContext(draw(2) == 0 ? "de-DE" : "en-US"));
      _host->setListHeight(2 + draw(8));
      changes.emplace_back(AnythingChanged());
      break;
    case 3:
      _moment += std::chrono::hours(draw(30));
      break;
    case 4:
    case 5:
      editLines(changes);
      break;
    default:
      editValues(changes);
  }
}

}  // namespace Zorv::TestSupport
