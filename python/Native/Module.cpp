#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

// Python's own header must come first.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "python/Native/Book.h"
#include "python/Native/BookRecords.h"
#include "python/Native/CellPass.h"
#include "python/Native/Conversions.h"
#include "python/Native/Rendering.h"
#include "python/Native/RunWork.h"

// The extension module `_core`: a thin layer of functions with plain arguments and results. The
// package in python/conditional_formatters/ gives them their names, types and documentation.
namespace Zorv::Python {

namespace {

namespace CF = ConditionalFormatters;

using BookPtr = std::shared_ptr<Book>;
using BookClass = py::class_<Book, BookPtr>;

/// Opens a path, or the contents of a file; both are bytes.
BookPtr openBook(py::bytes const& source, bool isPath, py::dict const& settings,
                 AllowanceParts const& allowance) {
  std::string_view const bytes = source;
  BookSource const bookSource =
      isPath ? BookSource(std::filesystem::path(bytes)) : BookSource(bytes);
  auto const options = readOptions(settings);
  return runWork(readAllowance(allowance), [&](WorkBudget& budget) -> BookPtr {
    return std::make_shared<Book>(bookSource, options, budget);
  });
}

/// Cells of a pass, which keep their book alive.
struct CellList {
  BookPtr book;
  std::size_t sheet;
  PassCells pass;
};

CellList resolveCellList(BookPtr const& book, std::size_t sheet, Corners const& corners,
                         std::string const& positions, bool onlyDecided, unsigned threadCount,
                         AllowanceParts const& allowance) {
  auto const visited = positions == "existing"    ? CF::TablePass::Positions::Existing
                       : positions == "formatted" ? CF::TablePass::Positions::Formatted
                                                  : CF::TablePass::Positions::All;
  return runWork(readAllowance(allowance), [&](WorkBudget& budget) {
    return CellList{
        book, sheet,
        resolveCells(*book, {sheet, toRange(corners), threadCount, &budget}, visited, onlyDecided)};
  });
}

py::list takeCells(CellList const& list, std::size_t begin, std::size_t end) {
  auto const& table = *list.book->getSheet(list.sheet).table;
  py::list cells;
  for (auto index = begin; index < std::min(end, list.pass.cells.size()); ++index) {
    PassCell const& cell = list.pass.cells[index];
    cells.append(py::make_tuple(
        cell.row, cell.column, toPython(table.findCell(cell.row, cell.column)), cell.own,
        cell.conditional, cell.effective, cell.rules, cell.visuals, cell.failure));
  }
  return cells;
}

py::list listFailures(CellList const& list) {
  py::list failures;
  for (auto const& [rule, reason] : list.pass.failures) {
    failures.append(py::make_tuple(rule, toPython(reason)));
  }
  return failures;
}

py::tuple resolveRunList(BookPtr const& book, std::size_t sheet, Corners const& corners,
                         unsigned threadCount, AllowanceParts const& allowance) {
  auto const result = runWork(readAllowance(allowance), [&](WorkBudget& budget) {
    return resolveRuns(*book, {sheet, toRange(corners), threadCount, &budget});
  });
  py::list runs;
  for (auto const& [range, style] : result.runs) {
    runs.append(
        py::make_tuple(range.firstRow, range.firstColumn, range.endRow, range.endColumn, style));
  }
  return py::make_tuple(runs, result.styles);
}

/// Fills an array of 32-bit numbers. Returns the sets of rules, or nothing for the first rules.
py::object fillRules(BookPtr const& book, std::size_t sheet, Corners const& corners,
                     py::buffer const& array, bool asSets, unsigned threadCount,
                     AllowanceParts const& allowance) {
  auto const view = array.request(true);
  auto const range = toRange(corners);
  auto const numbers = toNumbers(view, range);
  auto const sets = runWork(readAllowance(allowance), [&](WorkBudget& budget) {
    PassArea const area{sheet, range, threadCount, &budget};
    if (asSets) {
      return fillRuleSets(*book, area, numbers);
    }
    fillFirstRules(*book, area, numbers);
    return std::vector<std::vector<std::size_t>>();
  });
  return asSets ? py::cast(sets) : py::none();
}

py::list listValues(Book const& book, std::size_t sheet, Corners const& corners) {
  auto const& table = *book.getSheet(sheet).table;
  auto const range = toRange(corners);
  py::list rows;
  for (auto row = range.firstRow; row < range.endRow; ++row) {
    py::list values;
    for (auto column = range.firstColumn; column < range.endColumn; ++column) {
      values.append(toPython(table.findCell(row, column)));
    }
    rows.append(values);
  }
  return rows;
}

py::list listSheetTuples(Book const& book) {
  py::list sheets;
  for (auto const& sheet : book.getDocument().getSheets()) {
    auto const used = sheet.table->getUsedRange();
    sheets.append(
        py::make_tuple(toPython(sheet.name), sheet.isWorksheet, sheet.hidden, toCorners(used)));
  }
  return sheets;
}

py::tuple renderBook(BookPtr const& book, std::vector<std::size_t> const& sheets,
                     std::optional<Corners> const& corners, std::string const& format,
                     std::string const& theme, double scale, py::bytes const& title,
                     py::bytes const& module, unsigned threadCount,
                     AllowanceParts const& allowance) {
  RenderRequest const request{.sheets = sheets,
                              .range = corners ? std::optional(toRange(*corners)) : std::nullopt,
                              .format = format,
                              .theme = theme,
                              .scale = scale,
                              .threadCount = threadCount,
                              .title = title,
                              .module = std::string(module)};
  auto const rendered = runWork(readAllowance(allowance), [&](WorkBudget& budget) {
    return renderSheets(*book, request, budget);
  });
  py::list findings;
  for (auto const& finding : rendered.findings) {
    findings.append(toPython(finding));
  }
  return py::make_tuple(py::bytes(rendered.bytes), findings);
}

void bindCellList(py::module_& module) {
  py::class_<CellList>(module, "CellList")
      .def("__len__", [](CellList const& list) { return list.pass.cells.size(); })
      .def("take", &takeCells)
      .def("styles", [](CellList const& list) { return list.pass.styles; })
      .def("rules", [](CellList const& list) { return list.pass.rules; })
      .def("visuals", [](CellList const& list) { return list.pass.visuals; })
      .def("failures", &listFailures);
}

/// Members of a book that answer at once.
void bindContents(BookClass& book) {
  book.def("sheets", &listSheetTuples)
      .def("now", &describeNow)
      .def("find_sheet", [](Book const& self,
                            std::string const& name) { return self.getDocument().findSheet(name); })
      .def("value",
           [](Book const& self, std::size_t sheet, unsigned long row, unsigned long column) {
             return toPython(self.getSheet(sheet).table->findCell(row, column));
           })
      .def("values", &listValues)
      .def("shown",
           [](Book const& self, std::size_t sheet, unsigned long row, unsigned long column,
              std::optional<std::string> const& format) {
             auto const* const cell = self.getSheet(sheet).table->findCell(row, column);
             return toPython(cell != nullptr ? showValue(self, *cell, format) : std::string());
           })
      .def("rules", &listRules)
      .def("findings", &listFindings);
}

/// Members of a book that may take long.
void bindWork(BookClass& book) {
  book.def("cells", &resolveCellList)
      .def("runs", &resolveRunList)
      .def("fill_rules", &fillRules)
      .def("render", &renderBook)
      .def("explain",
           [](Book const& self, std::size_t sheet, Corners const& corners,
              std::optional<std::size_t> rule, AllowanceParts const& allowance) {
             return runWork(readAllowance(allowance), [&](WorkBudget& budget) {
               return explainCells(self, sheet, toRange(corners), rule, budget);
             });
           })
      .def("check",
           [](Book const& self, std::optional<std::size_t> sheet, AllowanceParts const& allowance) {
             return runWork(readAllowance(allowance),
                            [&](WorkBudget& budget) { return checkRules(self, sheet, budget); });
           })
      .def("diff", [](Book const& self, Book const& other, unsigned threadCount,
                      AllowanceParts const& allowance) {
        return runWork(readAllowance(allowance), [&](WorkBudget& budget) {
          return compareBooks(self, other, threadCount, budget);
        });
      });
}

}  // namespace

}  // namespace Zorv::Python

PYBIND11_MODULE(_core, module) {
  using namespace Zorv::Python;
  registerErrors();
  bindCellList(module);
  BookClass book(module, "Book");
  bindContents(book);
  bindWork(book);
  module.def("open", &openBook);
  module.def("default_limits", &listDefaultLimits);
  module.def("parse_range", &parseCorners);
  module.def("address", &toAddress);
  module.attr("DRAWING_MODULE") = CNDFRMT_DRAWING_MODULE;
  module.attr("VERSION") = CNDFRMT_VERSION;
}
