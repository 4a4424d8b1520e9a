// Formats the rows of a database by rules. The table has a cell for each field, but no values: the
// provider reads those from the database when a rule asks for them.

#include <chrono>
#include <cstddef>
#include <iostream>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <sqlite3.h>

#include <zorv/ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h>
#include <zorv/ConditionalFormatters/CndFrmt_TableResolver.h>
#include <zorv/DOM/Styles.h>
#include <zorv/DOM/Table.h>
#include <zorv/Formulas/OneTableDocument.h>
#include <zorv/OfficeUtils/Clock.h>

using namespace Zorv;
using namespace Zorv::ConditionalFormatters;

namespace {

struct Closer {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

/// A database in memory with some invoices.
class Database {
public:
  Database() {
    sqlite3* opened = nullptr;
    int const result = sqlite3_open(":memory:", &opened);
    _connection.reset(opened);
    require(result == SQLITE_OK);
    execute(
        "CREATE TABLE invoices (customer TEXT, due TEXT, amount REAL);"
        "INSERT INTO invoices VALUES"
        " ('Ackermann', '2026-11-30', 410.5), ('Birch & Sons', '2026-11-19', 1980),"
        " ('Corvo', NULL, 72), ('Ackermann', '2026-11-20', 6410), ('Dahl', '2026-12-24', 2500)");
  }

  void execute(char const* sql) {
    require(sqlite3_exec(_connection.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK);
  }

  Statement prepare(char const* sql) const {
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(_connection.get(), sql, -1, &statement, nullptr) == SQLITE_OK);
    return Statement(statement);
  }

private:
  void require(bool succeeded) const {
    if (!succeeded) {
      throw std::runtime_error(sqlite3_errmsg(_connection.get()));
    }
  }

  std::unique_ptr<sqlite3, Closer> _connection;
};

std::string getText(Statement const& statement, int column) {
  auto const* bytes = static_cast<char const*>(sqlite3_column_blob(statement.get(), column));
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), column))};
}

// [provider]
/// The fields of the invoices as cells: customer, due and amount, one invoice a row.
class InvoiceValues final : public ValueContextProvider {
public:
  /// `keys`: the key of the invoice in each row. Borrows the database and the table.
  InvoiceValues(Database const& database, DOM::Table const& table, std::vector<sqlite3_int64> keys)
      : _document(table),
        _keys(std::move(keys)),
        // Rules compare dates as numbers of days; day 0 is 30 December 1899.
        _select(database.prepare("SELECT customer, julianday(due) - julianday('1899-12-30'), amount"
                                 " FROM invoices WHERE rowid = ?")) {}

  FormulaValue getCellValue(DOM::CellInfo const& cell) const override {
    std::lock_guard const lock(_mutex);  // the threads of a pass share the statement
    sqlite3_reset(_select.get());
    sqlite3_bind_int64(_select.get(), 1, _keys.at(cell.getRowIndex()));
    if (sqlite3_step(_select.get()) != SQLITE_ROW) {
      throw std::runtime_error("an invoice is gone");  // reaches the caller of the pass
    }
    return readField(static_cast<int>(cell.getColIndex()));
  }
  DOM::TimeZone const& getTimeZone() const override { return _document.getTimeZone(); }
  Formulas::ContextProvider const& getFormulasContextProvider() const override { return _document; }

private:
  FormulaValue readField(int column) const {
    switch (sqlite3_column_type(_select.get(), column)) {
      case SQLITE_NULL:
        return {};
      case SQLITE_TEXT:
        return FormulaModel::FormulaString{getText(_select, column)};
      default:
        return FormulaModel::FormulaNumber{
            FloatNumber(sqlite3_column_double(_select.get(), column))};
    }
  }

  Formulas::OneTableDocument _document;
  std::vector<sqlite3_int64> _keys;
  Statement _select;
  mutable std::mutex _mutex;
};
// [provider]

constexpr unsigned long fieldCount = 3;

/// The keys of all invoices, in the order of the rows.
std::vector<sqlite3_int64> readKeys(Database const& database) {
  std::vector<sqlite3_int64> keys;
  Statement const select = database.prepare("SELECT rowid FROM invoices ORDER BY rowid");
  while (sqlite3_step(select.get()) == SQLITE_ROW) {
    keys.push_back(sqlite3_column_int64(select.get(), 0));
  }
  return keys;
}

void addFormat(DOM::Table& table, DOM::Styles& styles, unsigned long column,
               DOM::ConditionalFormatOperator condition, DOM::RunProps run) {
  UUID const style = UUID::generate();
  styles.getTableStyles()[style].setRunProps(std::make_shared<DOM::RunProps const>(std::move(run)));
  auto const rows = table.getUsedRows().second;
  table.addConditionalFormat({{0, column, rows, column + 1}}, std::move(condition), style);
}

std::string describe(DOM::SharedCellStylePtr const& style) {
  if (!style) {
    return "";
  }
  DOM::RunProps const& run = *style->get().getRunProps();
  return run.bold == true ? " [bold]" : run.italic == true ? " [italic]" : " [underlined]";
}

/// Prints the invoices, and behind each field its style.
void print(Database const& database, TableResolver const& resolver, DOM::Table const& table) {
  Statement const select = database.prepare(
      "SELECT customer, coalesce(due, 'at once'), printf('%.2f', amount) FROM invoices"
      " ORDER BY rowid");
  for (unsigned long row = 0; sqlite3_step(select.get()) == SQLITE_ROW; ++row) {
    for (unsigned long column = 0; column < fieldCount; ++column) {
      auto const style = resolver.resolve(table.getCellInfo(row, column));
      std::cout << (column == 0 ? "" : ", ") << getText(select, static_cast<int>(column))
                << describe(style);
    }
    std::cout << '\n';
  }
}

}  // namespace

int main() {
  // Rules about dates read this clock; without it, that of the system.
  OfficeUtils::ScopedClock const clock(std::chrono::sys_days(std::chrono::November / 21 / 2026));

  Database database;
  std::vector<sqlite3_int64> const keys = readKeys(database);
  // [table]
  DOM::Table table;
  for (unsigned long row = 0; row < keys.size(); ++row) {
    for (unsigned long column = 0; column < fieldCount; ++column) {
      table.obtainCell(row, column);  // a position, and no value
    }
  }
  // [table]
  DOM::Styles styles;
  addFormat(table, styles, 0,
            DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Duplicate},
            {.italic = true});
  addFormat(table, styles, 1,
            DOM::NullaryConditionalFormatOperator(DOM::NullaryConditionalFormatType::Last7Days),
            {.underline = DOM::Underline::Single});
  addFormat(
      table, styles, 2,
      DOM::TopBottomConditionalFormatOperator(DOM::TopBottomConditionalFormatType::Top, 2, false),
      {.bold = true});

  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<InvoiceValues>(database, table, keys));
  print(database, calculator.prepare(styles, table), table);

  std::cout << "\nCorvo owes more\n";
  database.execute(
      "UPDATE invoices SET amount = 9000, due = '2026-11-18' WHERE customer = 'Corvo'");
  // What was prepared is good until values change, so this asks a new one.
  print(database, calculator.prepare(styles, table), table);
}
