#include "ConditionalFormatters/Live/CndFrmt_ChangeChecker.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormatRefs.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormatWalk.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_VerdictPass.h"
#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The answer of `ask()`, or none if it throws anything but a lack of memory.
template <class Ask>
std::optional<bool> attempt(Ask const& ask) {
  try {
    return ask();
  } catch (std::bad_alloc const&) {
    throw;
  } catch (...) {
    return std::nullopt;
  }
}

bool haveSameFormats(ConditionalFormatRefs const& a, ConditionalFormatRefs const& b) {
  return std::ranges::equal(
      a, b, [](ConditionalFormatRef const& left, ConditionalFormatRef const& right) {
        return &left.second.get() == &right.second.get() && left.first == right.first;
      });
}

bool isInside(CellIndex cell, std::vector<TableRange> const& areas) noexcept {
  return std::ranges::any_of(areas, [&](TableRange const& area) {
    return area.contains(cell.getRow().get(), cell.getColumn().get());
  });
}

}  // namespace

std::string describe(UntoldChange const& change) {
  if (change.kind == UntoldChange::Kind::Formats) {
    return "the formats of the table or their ranges changed, which was not told";
  }
  std::string text =
      DOM::A1Notation::toText({{static_cast<std::uint32_t>(change.cell.getRow().get()), true},
                               {static_cast<std::uint32_t>(change.cell.getColumn().get()), true}});
  text += ": format ";
  text += std::to_string(change.format);
  if (change.kind == UntoldChange::Kind::Verdict) {
    text +=
        change.held ? " held before and does not hold now" : " did not hold before and holds now";
    text += ", but no change that was told reaches the cell";
  } else {
    text += change.held ? " holds by the known values and not by those of now"
                        : " holds by the values of now and not by those known";
    text += ", but no change that was told reaches what it compares with";
  }
  return text;
}

/// Operators that are made when they are first asked, good until the document changes.
class ChangeChecker::PlainOperators {
public:
  PlainOperators(LiveSources const& sources, FollowedFormats const& formats)
      : _sources(sources),
        _formats(formats),
        _factory(sources.provider, sources.table),
        _operators(formats.getRefs().size()) {}

  [[nodiscard]] Verdict ask(FormatIndex format, CellIndex cell) {
    return attempt([&] {
      if (!_operators[format]) {
        _operators[format] = _factory.create(_formats.getRefs()[format]);
      }
      auto const cellInfo = _sources.table.getCellInfo(cell.getRow().get(), cell.getColumn().get());
      return (*_operators[format])(
          FormulaValueData{_sources.provider.getCellValue(cellInfo), cell});
    });
  }

private:
  LiveSources const& _sources;
  FollowedFormats const& _formats;
  OperatorsFactory _factory;
  std::vector<std::unique_ptr<Operator>> _operators;  ///< by format
};

bool ChangeChecker::check(FollowedFormats const& formats, std::vector<TableRange> const& areas) {
  _isAllTold = true;
  checkFormats(formats);
  if (_isAllTold) {
    PlainOperators operators(_sources, formats);
    checkNoted(operators, areas);
    noteCells(formats, operators);
  }
  return _isAllTold;
}

void ChangeChecker::report(UntoldChange const& change) {
  _isAllTold = false;
  if (_checks.report) {
    _checks.report(change);
  }
}

void ChangeChecker::checkFormats(FollowedFormats const& formats) {
  if (!haveSameFormats(formats.getRefs(), makeConditionalFormatRefs(_sources.table))) {
    report({});
  }
}

void ChangeChecker::checkNoted(PlainOperators& operators, std::vector<TableRange> const& areas) {
  for (NotedCell const& noted : _noted) {
    if (isInside(noted.cell, areas)) {
      continue;
    }
    for (auto const& [format, before] : noted.verdicts) {
      Verdict const now = operators.ask(format, noted.cell);
      if (before && now && *before != *now) {
        report({UntoldChange::Kind::Verdict, noted.cell, format, *before, *now});
      }
    }
  }
}

void ChangeChecker::noteCells(FollowedFormats const& formats, PlainOperators& operators) {
  _noted.clear();
  for (std::size_t count = 0; count < _checks.cellCount; ++count) {
    if (auto const cell = drawCell(formats)) {
      noteCell(formats, operators, *cell);
    }
  }
}

void ChangeChecker::noteCell(FollowedFormats const& formats, PlainOperators& operators,
                             CellIndex cell) {
  auto const cellInfo = _sources.table.getCellInfo(cell.getRow().get(), cell.getColumn().get());
  auto const& dependencies = formats.getOrFindDependencies();
  NotedCell noted{cell, {}};
  for (FormatIndex const format : findFormatsOn(formats.getRefs(), cellInfo)) {
    // What depends on the moment answers otherwise at each call.
    if (dependencies[format]->areOnMoment()) {
      continue;
    }
    Verdict const plain = operators.ask(format, cell);
    ConditionAsker asker(formats.getPrepared(), format, {},
                         OfficeUtils::PinnedMoment::readMoment());
    Verdict const prepared = attempt([&] { return asker.holdsInRanges(cellInfo); });
    if (plain && prepared && *plain != *prepared) {
      report({UntoldChange::Kind::Operands, cell, format, *prepared, *plain});
    }
    noted.verdicts.emplace_back(format, plain);
  }
  _noted.push_back(std::move(noted));
}

std::optional<CellIndex> ChangeChecker::drawCell(FollowedFormats const& formats) {
  std::vector<TableRange> ranges;
  formats.appendRanges(ranges);
  if (ranges.empty()) {
    return std::nullopt;
  }
  auto const draw = [this](unsigned long first, unsigned long end) {
    return std::uniform_int_distribution<unsigned long>(first, end - 1)(_random);
  };
  TableRange range = ranges[draw(0, ranges.size())];
  auto const [firstRow, endRow] = _sources.table.getUsedRows();
  TableRange const used = intersect(range, {firstRow, 0, endRow, DOM::Table::columnCount});
  range = used.isEmpty() ? range : used;
  CellIndex const drawn(RowIndex(draw(range.firstRow, range.endRow)),
                        ColumnIndex(draw(range.firstColumn, range.endColumn)));
  // Most positions of large ranges are empty: the next cell tells more.
  TableRange const rest{drawn.getRow().get(), drawn.getColumn().get(), range.endRow,
                        range.endColumn};
  auto const [cell, end] = _sources.table.getRangeIterators(rest);
  return cell == end ? drawn : cell.getCellInfo().getCellIndex();
}

}  // namespace Zorv::ConditionalFormatters
