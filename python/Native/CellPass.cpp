#include "python/Native/CellPass.h"

#include <map>
#include <unordered_map>
#include <utility>

#include <boost/container_hash/hash.hpp>

#include "DOM/CellStyle.h"
#include "OfficeUtils/PinnedMoment.h"
#include "records/JsonText.h"
#include "records/VisualJson.h"
#include "words/AccountText.h"
#include "workbook/OwnStyle.h"

namespace Zorv::Python {

namespace {

namespace CF = ConditionalFormatters;

/// Indices of styles, by identity, and their records.
class StyleList {
public:
  /// The index of a style; none for null.
  [[nodiscard]] std::int32_t indexOf(DOM::SharedCellStylePtr const& style) {
    if (!style) {
      return PassCell::none;
    }
    auto const [found, isNew] =
        _indices.try_emplace(style, static_cast<std::int32_t>(_records.size()));
    if (isNew) {
      _records.push_back(Records::toJsonText(style->get()));
    }
    return found->second;
  }

  [[nodiscard]] std::vector<std::string> takeRecords() noexcept { return std::move(_records); }

private:
  // The pointers keep the styles alive, so no address is used twice.
  std::unordered_map<DOM::SharedCellStylePtr, std::int32_t, boost::hash<DOM::SharedCellStylePtr>>
      _indices;
  std::vector<std::string> _records;
};

/// Indices of sequences of formats, in the order in which they occur.
class FormatSequences {
public:
  [[nodiscard]] std::int32_t indexOf(std::span<CF::FormatIndex const> formats) {
    // Neighbours mostly have the same.
    if (_last != nullptr && std::ranges::equal(_last->first, formats)) {
      return _last->second;
    }
    _key.assign(formats.begin(), formats.end());
    _last = &*_indices.try_emplace(_key, static_cast<std::int32_t>(_indices.size())).first;
    return _last->second;
  }

  /// The numbers of the rules of each sequence.
  [[nodiscard]] std::vector<std::vector<std::size_t>> listRules(
      Workbook::SheetRules const& rules) const {
    std::vector<std::vector<std::size_t>> numbers(_indices.size());
    for (auto const& [formats, index] : _indices) {
      for (CF::FormatIndex const format : formats) {
        numbers[static_cast<std::size_t>(index)].push_back(rules.ruleOf(format).number);
      }
    }
    return numbers;
  }

private:
  using Formats = std::vector<CF::FormatIndex>;

  std::unordered_map<Formats, std::int32_t, boost::hash<Formats>> _indices;
  std::pair<Formats const, std::int32_t> const* _last = nullptr;
  Formats _key;
};

CF::TablePass makePass(PassArea const& area, CF::TablePass::Positions positions) {
  return {.range = area.range,
          .positions = positions,
          .threadCount = area.threadCount,
          .onFailure = CF::TablePass::OnFailure::Skip,
          .budget = area.budget};
}

/// Takes the cells of a pass in.
class CellCollector {
public:
  CellCollector(Book const& book, PassArea const& area)
      : _book(book),
        _sheet(area.sheet),
        _rules(book.getResolver(area.sheet).getRules()),
        _memory(area.budget) {}

  void add(Visuals::VisualCell const& cell) {
    auto const& [cellInfo, style, formats, failure] = cell.resolved;
    auto const visualRules = _rules.rulesOf(cell.visuals);
    auto const own = Workbook::findSharedOwnStyle(_book.getDocument(), _sheet, cellInfo);
    _memory.count(sizeof(PassCell));
    _cells.cells.push_back({.row = static_cast<std::uint32_t>(cellInfo.getRowIndex()),
                            .column = static_cast<std::uint32_t>(cellInfo.getColIndex()),
                            .own = _styles.indexOf(own),
                            .conditional = _styles.indexOf(style),
                            .effective = mergeStyles(own, style),
                            .rules = addRules(formats, visualRules),
                            .visuals = addVisuals(cell.visuals, visualRules),
                            .failure = addFailure(cell)});
  }

  [[nodiscard]] PassCells take() {
    _cells.styles = _styles.takeRecords();
    return std::move(_cells);
  }

private:
  /// Spends memory in lumps.
  class MemoryLumps {
  public:
    explicit MemoryLumps(WorkBudget* budget) noexcept : _budget(budget) {}
    void count(std::uint64_t bytes) {
      _pending += bytes;
      if (_pending >= lump && _budget != nullptr) {
        _budget->takeMemory(std::exchange(_pending, 0));
      }
    }

  private:
    static constexpr std::uint64_t lump = 65'536;
    WorkBudget* _budget;
    std::uint64_t _pending = 0;
  };

  /// The conditional style over the cell's own.
  std::int32_t mergeStyles(DOM::SharedCellStylePtr const& own,
                           DOM::SharedCellStylePtr const& conditional) {
    if (!own || !conditional) {
      return _styles.indexOf(own ? own : conditional);
    }
    auto const [found, isNew] =
        _merged.try_emplace({_styles.indexOf(own), _styles.indexOf(conditional)}, PassCell::none);
    if (isNew) {
      DOM::CellStyle style = own->get();
      override(style, conditional->get());
      found->second =
          _styles.indexOf(_book.getDocument().getCellStyleFactory().create(std::move(style)));
    }
    return found->second;
  }

  std::int32_t addRules(std::span<CF::FormatIndex const> formats,
                        Workbook::VisualRules const& visuals) {
    _rules.listDeciding(formats, visuals, _deciding);
    if (_deciding.empty()) {
      return PassCell::none;
    }
    std::vector<std::size_t> numbers;
    for (auto const* const rule : _deciding) {
      numbers.push_back(rule->number);
    }
    auto const [found, isNew] =
        _ruleSets.try_emplace(numbers, static_cast<std::int32_t>(_cells.rules.size()));
    if (isNew) {
      _cells.rules.push_back(std::move(numbers));
    }
    return found->second;
  }

  std::int32_t addVisuals(Visuals::CellVisuals const& visuals, Workbook::VisualRules const& rules) {
    if (visuals.isEmpty()) {
      return PassCell::none;
    }
    _cells.visuals.push_back(Records::toJsonText(visuals, rules));
    _memory.count(_cells.visuals.back().size());
    return static_cast<std::int32_t>(_cells.visuals.size() - 1);
  }

  std::int32_t addFailure(Visuals::VisualCell const& cell) {
    if (cell.resolved.failure == nullptr && cell.failure == nullptr) {
      return PassCell::none;
    }
    bool const isCondition = cell.resolved.failure != nullptr;
    auto const& rule = isCondition ? _rules.ruleOf(cell.resolved.failure->format)
                                   : _rules.ruleOfVisual(cell.failure->format);
    auto const& problem = isCondition ? cell.resolved.failure->exception : cell.failure->exception;
    _cells.failures.push_back({rule.number, Words::describeProblem(problem)});
    _memory.count(_cells.failures.back().reason.size());
    return static_cast<std::int32_t>(_cells.failures.size() - 1);
  }

  using RuleNumbers = std::vector<std::size_t>;

  Book const& _book;
  std::size_t _sheet;
  Workbook::SheetRules const& _rules;
  MemoryLumps _memory;
  StyleList _styles;
  std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> _merged;
  std::unordered_map<RuleNumbers, std::int32_t, boost::hash<RuleNumbers>> _ruleSets;
  std::vector<Workbook::Rule const*> _deciding;
  PassCells _cells;
};

/// Visits the formatted positions of an area with their place in a table of the area.
template <class Visit>
void visitPlaces(Book const& book, PassArea const& area, Visit const& visit) {
  OfficeUtils::PinnedMoment const moment(book.getOptions().now);
  auto const width = area.range.endColumn - area.range.firstColumn;
  book.getResolver(area.sheet)
      .getTableResolver()
      .visit(makePass(area, CF::TablePass::Positions::Formatted),
             [&](CF::ResolvedCell const& cell) {
               auto const row = cell.cellInfo.getRowIndex() - area.range.firstRow;
               auto const column = cell.cellInfo.getColIndex() - area.range.firstColumn;
               visit(row * width + column, cell);
             });
}

}  // namespace

PassCells resolveCells(Book const& book, PassArea const& area, CF::TablePass::Positions positions,
                       bool onlyDecided) {
  OfficeUtils::PinnedMoment const moment(book.getOptions().now);
  CellCollector collector(book, area);
  book.getResolver(area.sheet)
      .getVisualResolver()
      .visit(makePass(area, positions), [&](Visuals::VisualCell const& cell) {
        bool const isDecided = cell.resolved.style || cell.resolved.failure != nullptr ||
                               cell.failure != nullptr || !cell.visuals.isEmpty();
        if (isDecided || !onlyDecided) {
          collector.add(cell);
        }
      });
  return collector.take();
}

PassRuns resolveRuns(Book const& book, PassArea const& area) {
  OfficeUtils::PinnedMoment const moment(book.getOptions().now);
  StyleList styles;
  PassRuns runs;
  auto const pass = makePass(area, CF::TablePass::Positions::Formatted);
  for (auto const& run : book.getResolver(area.sheet).getTableResolver().resolveRuns(pass)) {
    runs.runs.push_back({run.range, static_cast<std::size_t>(styles.indexOf(run.style))});
  }
  runs.styles = styles.takeRecords();
  return runs;
}

void fillFirstRules(Book const& book, PassArea const& area, std::span<std::int32_t> numbers) {
  std::ranges::fill(numbers, noRule);
  auto const& rules = book.getResolver(area.sheet).getRules();
  visitPlaces(book, area, [&](std::size_t place, CF::ResolvedCell const& cell) {
    if (cell.failure != nullptr) {
      numbers[place] = failedCell;
    } else if (!cell.formats.empty()) {
      numbers[place] = static_cast<std::int32_t>(rules.ruleOf(cell.formats.front()).number);
    }
  });
}

std::vector<std::vector<std::size_t>> fillRuleSets(Book const& book, PassArea const& area,
                                                   std::span<std::int32_t> numbers) {
  std::ranges::fill(numbers, noRule);
  FormatSequences sequences;
  visitPlaces(book, area, [&](std::size_t place, CF::ResolvedCell const& cell) {
    if (cell.failure != nullptr) {
      numbers[place] = failedCell;
    } else if (!cell.formats.empty()) {
      numbers[place] = sequences.indexOf(cell.formats);
    }
  });
  return sequences.listRules(book.getResolver(area.sheet).getRules());
}

}  // namespace Zorv::Python
