#include "ConditionalFormatters/Live/CndFrmt_ReachedCells.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Live/CndFrmt_FewAreas.h"
#include "ConditionalFormatters/Parallel/CndFrmt_CellWalk.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/CriterionText.h"

namespace Zorv::ConditionalFormatters {

namespace {

using Formulas::CriterionText;

/// The value that formulas read at a position, which is empty where there is no cell.
FormulaValue const& heldAt(DOM::CellInfo const& cellInfo) {
  static FormulaValue const none;
  return cellInfo.getCell() == nullptr ? none : cellInfo.getCell()->value;
}

/// True for a text that as a criterion may ask for more than the values that are equal to it.
bool mayBeMoreThanValue(std::string const& text) noexcept {
  return text.empty() || std::string_view("<>=").find(text.front()) != std::string_view::npos ||
         text.find_first_of("*?~") != std::string::npos;
}

/// Numbers from some to others, both included.
class NumberSpans {
public:
  [[nodiscard]] bool isEmpty() const noexcept { return _spans.empty(); }

  void add(double least, double most) {
    if (least <= most) {
      _spans.push_back({least, most});
    }
  }

  /// To be called between the last add() and the first contains().
  void join() {
    std::ranges::sort(_spans, {}, &Span::least);
    std::vector<Span> joined;
    for (Span const& span : _spans) {
      if (!joined.empty() && span.least <= joined.back().most) {
        joined.back().most = std::max(joined.back().most, span.most);
      } else {
        joined.push_back(span);
      }
    }
    _spans = std::move(joined);
  }

  [[nodiscard]] bool contains(FormulaValue const& value) const noexcept {
    auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value);
    if (number == nullptr || std::isnan(number->value.get())) {
      return false;
    }
    auto const after = std::ranges::upper_bound(_spans, number->value.get(), {}, &Span::least);
    return after != _spans.begin() && number->value.get() <= std::prev(after)->most;
  }

private:
  struct Span {
    double least;
    double most;
  };
  std::vector<Span> _spans;
};

/// Values as criteria compare them.
class Classes {
public:
  void add(std::vector<CriterionText> const& values) {
    _areWanted = true;
    // What is no number is equal to none, and has no place in an order.
    std::ranges::copy_if(values, std::back_inserter(_values), [](CriterionText const& value) {
      auto const* const number = std::get_if<double>(&value);
      return number == nullptr || !std::isnan(*number);
    });
  }

  /// To be called between the last add() and the first contains().
  void join() {
    std::ranges::sort(_values);
    _values.erase(std::unique(_values.begin(), _values.end()), _values.end());
  }

  /// True also for texts that may ask for more than one of the values.
  [[nodiscard]] bool contains(FormulaValue const& value,
                              ValueContextProvider const& provider) const {
    if (!_areWanted) {
      return false;
    }
    if (auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value)) {
      return !std::isnan(number->value.get()) && isAmong(number->value.get());
    }
    auto const* const text = boost::get<FormulaModel::FormulaString>(&value);
    if (text == nullptr || mayBeMoreThanValue(text->value)) {
      return text != nullptr;
    }
    auto const& locale = provider.getFormulasContextProvider().getLocaleContext();
    return isAmong(Formulas::readCriterionText(text->value, locale));
  }

private:
  [[nodiscard]] bool isAmong(CriterionText const& wanted) const {
    return std::ranges::binary_search(_values, wanted);
  }

  bool _areWanted = false;
  std::vector<CriterionText> _values;
};

/// Numbers and values that are sought in an area: a cell with none of them looks as before.
struct Wanted {
  NumberSpans held;   ///< by the cells
  NumberSpans given;  ///< by the provider
  Classes classes;

  void join() {
    held.join();
    given.join();
    classes.join();
  }

  [[nodiscard]] bool isAt(DOM::CellInfo const& cellInfo,
                          ValueContextProvider const& provider) const {
    FormulaValue const& value = heldAt(cellInfo);
    return held.contains(value) || classes.contains(value, provider) ||
           (!given.isEmpty() && given.contains(provider.getCellValue(cellInfo)));
  }
};

struct ByPlace {
  bool operator()(TableRange const& a, TableRange const& b) const noexcept {
    return std::tie(a.firstRow, a.firstColumn, a.endRow, a.endColumn) <
           std::tie(b.firstRow, b.firstColumn, b.endRow, b.endColumn);
  }
};

using WantedByArea = std::map<TableRange, Wanted, ByPlace>;

WantedByArea groupByArea(ReachedAreas const& reached, TableRange const& range) {
  WantedByArea wanted;
  for (NumberArea const& numbers : reached.numbers) {
    Wanted& ofArea = wanted[intersect(numbers.area, range)];
    (numbers.isOfCells ? ofArea.held : ofArea.given).add(numbers.least, numbers.most);
  }
  for (ClassArea const& classes : reached.classes) {
    wanted[intersect(classes.area, range)].classes.add(classes.values);
  }
  return wanted;
}

/// The cells of an area that hold what is wanted, or the area.
std::vector<TableRange> findWanted(PreparedTable const& prepared, TableRange const& area,
                                   Wanted const& wanted) {
  constexpr std::size_t mostCells = 1'024;
  std::vector<TableRange> cells;
  auto const addCell = [&](DOM::CellInfo const& cellInfo) {
    if (cells.size() <= mostCells && wanted.isAt(cellInfo, prepared.getProvider())) {
      cells.push_back({cellInfo.getRowIndex(), cellInfo.getColIndex(), cellInfo.getRowIndex() + 1,
                       cellInfo.getColIndex() + 1});
    }
  };
  try {
    forEachCell(prepared.getTable(), area, false, addCell);
  } catch (...) {
    // The pass over the area meets the failure for the cell that has it.
    return {area};
  }
  return cells.size() <= mostCells ? cells : std::vector{area};
}

}  // namespace

std::vector<TableRange> findReachedCells(PreparedTable const& prepared, ReachedAreas const& reached,
                                         TableRange const& range) {
  std::vector<TableRange> areas;
  for (auto& [area, wanted] : groupByArea(reached, range)) {
    wanted.join();
    appendAll(findWanted(prepared, area, wanted), areas);
  }
  return areas;
}

}  // namespace Zorv::ConditionalFormatters
