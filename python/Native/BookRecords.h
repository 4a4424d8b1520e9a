#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "DOM/Cell.h"
#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"
#include "python/Native/Book.h"

/// Answers about a book as JSON, in the records that the tool prints, too. Each sees the moment of
/// the book.
namespace Zorv::Python {

/// The rules of a sheet, by priority: a list of rules.
[[nodiscard]] std::string listRules(Book const& book, std::size_t sheet);

/// Findings of loading: a list of objects with `part`, `sheet`, `range`, `message` and `note`.
[[nodiscard]] std::string listFindings(Book const& book);

/// Why the cells of a range look as they do: a list of accounts. `onlyRule` is the number of a rule
/// of the sheet. Throws what the budget throws.
[[nodiscard]] std::string explainCells(Book const& book, std::size_t sheet, TableRange const& range,
                                       std::optional<std::size_t> onlyRule, WorkBudget& budget);

/// Findings for an auditor of the rules, as a list; those of one sheet, or of the workbook. Throws
/// what the budget throws.
[[nodiscard]] std::string checkRules(Book const& book, std::optional<std::size_t> sheet,
                                     WorkBudget& budget);

/// Differences between two books: an object with the lists `sheets`, `rules` and `cells`.
/// Conditions are evaluated by the options of the first, each for the moment of its own book.
/// Throws what the budget throws.
[[nodiscard]] std::string compareBooks(Book const& first, Book const& second, unsigned threadCount,
                                       WorkBudget& budget);

/// The text that a cell shows. `format` is a number format that replaces the cell's own.
[[nodiscard]] std::string showValue(Book const& book, DOM::Cell const& cell,
                                    std::optional<std::string> const& format);

/// `now` of the book as a civil time in its time zone.
[[nodiscard]] std::string describeNow(Book const& book);

}  // namespace Zorv::Python
