// Exports a table as rows of HTML. Styles become classes of a style sheet. All threads of the pass
// share the work, and a budget bounds it.

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <ostream>
#include <sstream>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <boost/variant/get.hpp>

#include <zorv/ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h>
#include <zorv/ConditionalFormatters/CndFrmt_TableResolver.h>
#include <zorv/DOM/Styles.h>
#include <zorv/DOM/Table.h>
#include <zorv/Formulas/OneTableDocument.h>
#include <zorv/Formulas/ParseExpr.h>
#include <zorv/Utils/WorkBudget.h>

using namespace Zorv;
using namespace Zorv::ConditionalFormatters;
using FormulaModel::FormulaNumber;

namespace {

/// The values of a table's cells; may be asked by several threads at once. Borrows the table.
class CellValues final : public ValueContextProvider {
public:
  explicit CellValues(DOM::Table const& table) : _document(table) {}

  FormulaValue getCellValue(DOM::CellInfo const& cell) const override {
    return cell.getCell() ? cell.getCell()->value : FormulaValue();
  }
  DOM::TimeZone const& getTimeZone() const override { return _document.getTimeZone(); }
  Formulas::ContextProvider const& getFormulasContextProvider() const override { return _document; }

private:
  Formulas::OneTableDocument _document;
};

// [classes]
/// Numbers the styles of an export. Equal styles are one object, so a pointer names a style.
class StyleClasses {
public:
  std::size_t number(DOM::SharedCellStylePtr const& style) {
    return _numbers.try_emplace(style, _numbers.size() + 1).first->second;
  }
  std::size_t count() const { return _numbers.size(); }

private:
  std::map<DOM::SharedCellStylePtr, std::size_t> _numbers;
};
// [classes]

// [workers]
/// Texts of the cells of one row block. One thread makes them; visit() writes them in order.
class RowTexts final : public BlockFindings {
public:
  RowTexts(StyleClasses& classes, std::ostream& out) : _classes(classes), _out(out) {}

  void add(std::string text) { _texts.push_back(std::move(text)); }

  void visit(ResolvedCell const& cell) override {
    _out << "<tr><td";
    if (cell.style) {
      _out << " class=s" << _classes.number(cell.style);
    }
    _out << '>' << _texts[_next++] << "</td></tr>\n";
  }

private:
  StyleClasses& _classes;
  std::ostream& _out;
  std::vector<std::string> _texts;
  std::size_t _next = 0;
};

/// Makes the texts of the cells that one thread resolves.
class TextMaker final : public CellWorker {
public:
  TextMaker(StyleClasses& classes, std::ostream& out) : _classes(classes), _out(out) {}

  std::unique_ptr<BlockFindings> beginBlock() override {
    auto texts = std::make_unique<RowTexts>(_classes, _out);
    _texts = texts.get();
    return texts;
  }
  void work(ResolvedCell const& cell) override {
    auto const& value = boost::get<FormulaNumber>(cell.cellInfo.getCell()->value);
    _texts->add(std::to_string(static_cast<long>(value.value.get())));
  }

private:
  StyleClasses& _classes;
  std::ostream& _out;
  RowTexts* _texts = nullptr;
};
// [workers]

// [deadline]
/// Requests a stop when some time is over. Its end cancels that.
class Deadline {
public:
  explicit Deadline(std::chrono::milliseconds time)
      : _thread([this, time](std::stop_token const& cancelled) {
          std::unique_lock lock(_mutex);
          _wake.wait_for(lock, cancelled, time, [] { return false; });
          if (!cancelled.stop_requested()) {
            _stop.request_stop();
          }
        }) {}

  std::stop_token getToken() const { return _stop.get_token(); }

private:
  std::stop_source _stop;
  std::mutex _mutex;
  std::condition_variable_any _wake;
  std::jthread _thread;  // the last member: it uses the others, and ends first
};
// [deadline]

/// Exports a table within a number of steps, 256 MiB and a minute.
void exportTable(TableResolver const& resolver, DOM::Table const& table, std::uint64_t steps) {
  std::ostringstream out;  // a program would write to a file
  StyleClasses classes;
  // [export]
  Deadline const deadline(std::chrono::minutes(1));
  WorkBudget budget({.steps = steps, .bytes = 256 << 20}, deadline.getToken());
  TablePass const pass{.range = table.getUsedRange(), .threadCount = 4, .budget = &budget};
  try {
    resolver.visitWithWorkers(pass, [&] { return std::make_unique<TextMaker>(classes, out); });
    std::cout << out.str().size() << " bytes of rows, " << classes.count() << " classes\n";
  } catch (WorkEnded const& ended) {
    std::cout << "export given up: " << ended.what() << '\n';
  }
  // [export]
}

UUID addStyle(DOM::Styles& styles, DOM::Colour fill) {
  UUID const name = UUID::generate();
  styles.getTableStyles()[name].setCellProps(std::make_shared<DOM::CellProps const>(
      DOM::CellProps{.fillPattern = DOM::FillPattern::Solid, .fillColour = fill}));
  return name;
}

}  // namespace

int main() {
  constexpr unsigned long rows = 100'000;
  DOM::Table table;
  for (unsigned long row = 0; row < rows; ++row) {
    table.setValue(row, 0, FormulaNumber{FloatNumber(static_cast<double>(row * 7919 % rows))});
  }
  DOM::Styles styles;
  TableRange const column{0, 0, rows, 1};
  table.addConditionalFormat(
      {column},
      DOM::TopBottomConditionalFormatOperator(DOM::TopBottomConditionalFormatType::Top, 10, false),
      addStyle(styles, {198, 239, 206}));
  table.addConditionalFormat(
      {column},
      DOM::AboveAverageConditionalFormatOperator(DOM::AboveAverageConditionalFormatType::Below),
      addStyle(styles, {255, 199, 206}));

  ConditionalFormattingPropsCalculator const calculator(std::make_unique<CellValues>(table));
  TableResolver const resolver = calculator.prepare(styles, table);
  exportTable(resolver, table, 10'000'000);
  exportTable(resolver, table, 50'000);

  // [runs]
  // A format that stores ranges, not cells, takes rectangles of one style each.
  TablePass const top{.range = {0, 0, 20, 1}, .threadCount = 4};
  for (StyleRun const& run : resolver.resolveRuns(top)) {
    std::cout << "rows " << run.range.firstRow << " to " << run.range.endRow - 1
              << " have a style\n";
  }
  // [runs]
}
