#include "python/Native/BookRecords.h"

#include <chrono>
#include <numeric>
#include <vector>

#include "DOM/CellStyle.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/PinnedMoment.h"
#include "analysis/Check/Check.h"
#include "analysis/Diff/CompareCells.h"
#include "analysis/Diff/CompareRules.h"
#include "analysis/Diff/MatchSheets.h"
#include "analysis/Explain/Explainer.h"
#include "analysis/Shared/Rules.h"
#include "records/AccountJson.h"
#include "records/DifferenceJson.h"
#include "records/FindingJson.h"
#include "records/JsonBuilder.h"
#include "records/JsonText.h"
#include "words/CellText.h"
#include "words/Moment.h"

namespace Zorv::Python {

namespace {

using OfficeUtils::PinnedMoment;
using Records::JsonBuilder;

OfficeUtils::LocaleContext makeLocale(Book const& book) {
  return OfficeUtils::LocaleContext(book.getOptions().localeName,
                                    book.getDocument().getDateSystem());
}

std::vector<std::size_t> listSheets(Workbook::Document const& document) {
  std::vector<std::size_t> sheets(document.getSheets().size());
  std::iota(sheets.begin(), sheets.end(), std::size_t{0});
  return sheets;
}

/// Writes the sheets that only one of two documents has.
void addLonelySheets(JsonBuilder& json, Workbook::Document const& document,
                     std::vector<std::size_t> const& sheets, std::string_view side) {
  for (std::size_t const sheet : sheets) {
    json.beginObject().key("sheet").text(document.getSheets()[sheet].name);
    json.key("onlyIn").text(side).endObject();
  }
}

}  // namespace

std::string listRules(Book const& book, std::size_t sheet) {
  std::vector<Workbook::Rule const*> rules;
  for (auto const& rule : book.getDocument().getRulesOfSheet(sheet)) {
    rules.push_back(&rule);
  }
  Analysis::sortByPriority(rules);
  std::string text;
  JsonBuilder json(text);
  json.beginArray();
  for (auto const* const rule : rules) {
    json.raw(Records::toJsonText(book.getDocument(), *rule));
  }
  json.endArray();
  return text;
}

std::string listFindings(Book const& book) {
  std::string text;
  JsonBuilder json(text);
  json.beginArray();
  for (auto const& finding : book.getDocument().getFindings()) {
    json.beginObject().key("part").text(finding.part).key("sheet").text(finding.sheet);
    json.key("range").text(finding.range).key("message").text(finding.message);
    json.key("note").boolean(finding.isNote).endObject();
  }
  json.endArray();
  return text;
}

std::string explainCells(Book const& book, std::size_t sheet, TableRange const& range,
                         std::optional<std::size_t> onlyRule, WorkBudget& budget) {
  PinnedMoment const moment(book.getOptions().now);
  auto const locale = makeLocale(book);
  Analysis::Explainer explainer(book.getDocument(), book.getOptions().localeName,
                                book.getOptions().timeZone, &budget);
  Records::AccountJson writer(book.getDocument(), locale);
  std::string text;
  JsonBuilder json(text);
  json.beginArray();
  for (auto row = range.firstRow; row < range.endRow; ++row) {
    for (auto column = range.firstColumn; column < range.endColumn; ++column) {
      CellIndex const cell{RowIndex(row), ColumnIndex(column)};
      auto const before = text.size();
      json.beginObject();
      writer.write(explainer.explain(sheet, cell, onlyRule), json);
      json.endObject();
      budget.takeMemory(text.size() - before);
    }
  }
  json.endArray();
  return text;
}

std::string checkRules(Book const& book, std::optional<std::size_t> sheet, WorkBudget& budget) {
  PinnedMoment const moment(book.getOptions().now);
  auto const findings = Analysis::check(
      book.getDocument(),
      {.localeName = book.getOptions().localeName,
       .timeZone = book.getOptions().timeZone,
       .budget = &budget,
       .sheets = sheet ? std::vector<std::size_t>{*sheet} : std::vector<std::size_t>()});
  std::string text;
  JsonBuilder json(text);
  json.beginArray();
  for (auto const& finding : findings) {
    json.beginObject();
    Records::addFinding(json, book.getDocument(), finding);
    json.endObject();
  }
  json.endArray();
  return text;
}

std::string compareBooks(Book const& first, Book const& second, unsigned threadCount,
                         WorkBudget& budget) {
  auto const& from = first.getDocument();
  auto const& to = second.getDocument();
  auto const match = Analysis::matchSheets(from, listSheets(from), to, listSheets(to));
  std::string text;
  JsonBuilder json(text);
  Records::DifferenceJson writer(from, to, json);
  json.beginObject().key("sheets").beginArray();
  addLonelySheets(json, from, match.onlyInFirst, "first");
  addLonelySheets(json, to, match.onlyInSecond, "second");
  json.endArray().key("rules").beginArray();
  for (auto const& [sheet, partner] : match.pairs) {
    for (auto const& difference : Analysis::compareRules(from, sheet, to, partner)) {
      writer.write(difference);
    }
  }
  json.endArray().key("cells").beginArray();
  for (auto const& [sheet, partner] : match.pairs) {
    Analysis::compareSheets({&from, first.getOptions().now}, sheet, {&to, second.getOptions().now},
                            partner,
                            {.localeName = first.getOptions().localeName,
                             .timeZone = first.getOptions().timeZone,
                             .threadCount = threadCount,
                             .budget = &budget},
                            [&](Analysis::CellDifference const& difference) {
                              auto const before = text.size();
                              writer.write(difference);
                              budget.takeMemory(text.size() - before);
                            });
  }
  json.endArray().endObject();
  return text;
}

std::string showValue(Book const& book, DOM::Cell const& cell,
                      std::optional<std::string> const& format) {
  auto const locale = makeLocale(book);
  DOM::CellFormat const replacing{format.value_or(std::string())};
  return std::string(Words::CellFormatter(locale).toText(cell, format ? &replacing : nullptr));
}

std::string describeNow(Book const& book) {
  auto const& options = book.getOptions();
  return Words::toText(
      std::chrono::floor<std::chrono::seconds>(options.timeZone.toLocal(options.now)));
}

}  // namespace Zorv::Python
