#include "tool/Output/Report.h"

#include <algorithm>
#include <new>
#include <ostream>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "tool/Output/RuleCounts.h"
#include "words/AccountText.h"
#include "words/Amounts.h"
#include "words/ConditionText.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

/// Longest quotation from a file in a message.
constexpr std::size_t widestQuote = 300;
/// A reason in the line that counts the rules.
constexpr std::size_t widestReason = 80;

/// The next cell would fare no better.
void throwLackOfMemory(std::exception_ptr const& problem) {
  try {
    std::rethrow_exception(problem);
  } catch (std::bad_alloc const&) {
    throw;
  } catch (...) {
    return;
  }
}

std::string listKinds(std::map<std::string, RuleCounts::OfKind> const& kinds) {
  std::string text;
  for (auto const& [kind, ofKind] : kinds) {
    text += fmt::format("{}{}", text.empty() ? " (" : ", ", Words::countOf(ofKind.count, kind));
    if (!ofKind.reason.empty()) {
      text += fmt::format(": {}{}", Words::shorten(ofKind.reason, widestReason),
                          ofKind.hasOthers ? ", and others" : "");
    }
  }
  return text.empty() ? text : text + ")";
}

/// Place of a finding in the file, as a prefix of its message.
std::string placeOf(Workbook::Finding const& finding) {
  std::string place;
  for (auto const* part : {&finding.part, &finding.sheet, &finding.range}) {
    place += part->empty() ? "" : Words::shorten(*part, widestQuote) + ": ";
  }
  return place;
}

/// Items that share a sentence, in the order of the first of each.
template <class Item>
class Groups {
public:
  void add(std::string sentence, Item item) {
    auto const [found, isNew] = _indices.emplace(std::move(sentence), _groups.size());
    if (isNew) {
      _groups.push_back({&found->first, {}});
    }
    _groups[found->second].second.push_back(item);
  }

  /// Pairs of a sentence and its items, at least one.
  [[nodiscard]] std::vector<std::pair<std::string const*, std::vector<Item>>> const& get()
      const noexcept {
    return _groups;
  }

private:
  std::unordered_map<std::string, std::size_t> _indices;
  std::vector<std::pair<std::string const*, std::vector<Item>>> _groups;
};

/// Problems with the same key are told in one sentence.
std::string keyOf(Problem const& problem) {
  return fmt::format("{}: {}: {}", toText(problem.kind), Words::describeType(problem.rule->type),
                     problem.reason);
}

/// Sentence that tells the problem of some rules, apart from the place. Requires problems of one
/// key.
std::string toSentence(std::vector<Problem const*> const& problems) {
  auto const& first = *problems.front();
  switch (first.kind) {
    case ProblemKind::NotResolved:
      return fmt::format("not resolved: {}: {}", Words::describeType(first.rule->type),
                         Words::shorten(first.reason, widestQuote));
    case ProblemKind::Doubtful:
      return fmt::format("in doubt: {}", Words::shorten(first.reason, widestQuote));
    case ProblemKind::Failed:
      break;
  }
  std::uint64_t cellCount = 0;
  for (auto const* problem : problems) {
    cellCount += problem->cellCount;
  }
  return fmt::format("cannot be evaluated for {}, first {}: {}", Words::countOf(cellCount, "cell"),
                     DOM::A1Notation::toAddress(first.firstCell), first.reason);
}

}  // namespace

std::string_view toText(ProblemKind kind) noexcept {
  switch (kind) {
    case ProblemKind::NotResolved:
      return "notResolved";
    case ProblemKind::Doubtful:
      return "doubtful";
    case ProblemKind::Failed:
      break;
  }
  return "failed";
}

void Report::sayFindings() const {
  Groups<Workbook::Finding const*> groups;
  for (auto const& finding : _selection.getDocument().getFindings()) {
    groups.add(finding.message, &finding);
  }
  for (auto const& [sentence, findings] : groups.get()) {
    auto const others = findings.size() - 1;
    say(fmt::format(
        "{}{}{}", Tool::placeOf(*findings.front()), *sentence,
        others == 0 ? "" : fmt::format(" (and {})", Words::countOf(others, "more place"))));
  }
  sayProblems(listStaticProblems());
}

void Report::addFailure(Workbook::Rule const& rule, CellIndex cell,
                        std::exception_ptr const& problem) {
  throwLackOfMemory(problem);
  auto const found = _failures.find(rule.number);
  if (found != _failures.end()) {
    ++found->second.cellCount;
    return;
  }
  _failures.emplace(rule.number, Problem{.rule = &rule,
                                         .kind = ProblemKind::Failed,
                                         .reason = Words::describeProblem(problem),
                                         .cellCount = 1,
                                         .firstCell = cell});
}

void Report::sayClipped(std::size_t sheet, std::vector<std::size_t> const& ruleNumbers,
                        std::vector<TableRange> const& used) {
  addClippedSheet(sheet);
  say(
      fmt::format("{}: ranges to the end of the sheet, and very large ones, are looked at {} "
                  "({} {}; --range names other cells)",
                  Words::shorten(nameOf(sheet), widestQuote),
                  used.empty() ? "nowhere, since the sheet has no cell"
                               : fmt::format("in {} alone", DOM::A1Notation::toAddress(used)),
                  ruleNumbers.size() == 1 ? "rule" : "rules", Words::listNumbers(ruleNumbers)));
}

void Report::saySparse(std::size_t sheet, std::uint64_t positions) {
  addClippedSheet(sheet);
  say(
      fmt::format("{}: the rules cover {} positions; only those that hold a cell are looked at "
                  "(--range names fewer)",
                  Words::shorten(nameOf(sheet), widestQuote), positions));
}

void Report::addFinding(std::string_view message) {
  _hasFindings = true;
  say(message);
}

void Report::saySummary() const {
  std::vector<Problem> failures;
  for (auto const& [number, failure] : _failures) {
    failures.push_back(failure);
  }
  sayProblems(failures);
  if (_checked) {
    say(fmt::format("{}, {}, {}", Words::countOf(_checked->errors, "error"),
                    Words::countOf(_checked->warnings, "warning"),
                    Words::countOf(_checked->notes, "note")));
  }
  RuleCounts const counts(_selection.getRules());
  auto line = fmt::format("{} read, {} resolved, {} not resolved{}",
                          Words::countOf(counts.read, "rule"), counts.resolved,
                          counts.read - counts.resolved, listKinds(counts.notResolvedByKind));
  if (counts.doubtful > 0) {
    line += fmt::format("; {} in doubt", counts.doubtful);
  }
  if (!_failures.empty()) {
    line += fmt::format("; {} not evaluated for every cell", _failures.size());
  }
  if (!counts.unknownFunctions.empty()) {
    line += fmt::format("; functions not known: {}", fmt::join(counts.unknownFunctions, ", "));
  }
  say(line);
}

std::vector<Problem> Report::listProblems() const {
  auto problems = listStaticProblems();
  for (auto const& [number, failure] : _failures) {
    problems.push_back(failure);
  }
  return problems;
}

bool Report::isClean() const {
  bool const hasFindings = _hasFindings || (_checked && _checked->errors + _checked->warnings > 0);
  return _isComplete && !hasFindings && _failures.empty() && _clippedSheets.empty() &&
         std::ranges::all_of(_selection.getDocument().getFindings(), &Workbook::Finding::isNote) &&
         listStaticProblems().empty();
}

void Report::say(std::string_view message) const {
  _err << Words::toMessageLine(
              fmt::format("{}: {}", Words::shorten(_selection.getFile(), widestQuote), message))
       << '\n';
}

void Report::sayProblems(std::vector<Problem> const& problems) const {
  Groups<Problem const*> groups;
  for (auto const& problem : problems) {
    groups.add(keyOf(problem), &problem);
  }
  for (auto const& [key, ofKey] : groups.get()) {
    auto const place = placeOf(*ofKey.front()->rule);
    if (ofKey.size() == 1) {
      say(fmt::format("{}: rule {}: {}", place, ofKey.front()->rule->number, toSentence(ofKey)));
      continue;
    }
    std::vector<std::size_t> numbers;
    for (auto const* problem : ofKey) {
      numbers.push_back(problem->rule->number);
    }
    say(fmt::format("{} and {}: rules {}: {}", place,
                    Words::countOf(ofKey.size() - 1, "more place"), Words::listNumbers(numbers),
                    toSentence(ofKey)));
  }
}

std::vector<Problem> Report::listStaticProblems() const {
  std::vector<Problem> problems;
  auto const rules = _selection.getRules();
  for (auto const* rule : rules) {
    if (!rule->isResolved()) {
      problems.push_back(
          {.rule = rule, .kind = ProblemKind::NotResolved, .reason = rule->unresolvedReason});
    }
  }
  for (auto const* rule : rules) {
    if (rule->isResolved() && !rule->doubts.empty()) {
      problems.push_back({.rule = rule,
                          .kind = ProblemKind::Doubtful,
                          .reason = fmt::format("{}", fmt::join(rule->doubts, ", "))});
    }
  }
  return problems;
}

void Report::addClippedSheet(std::size_t sheet) {
  auto const& name = nameOf(sheet);
  if (_clippedSheets.empty() || _clippedSheets.back() != name) {
    _clippedSheets.push_back(name);
  }
}

std::string const& Report::nameOf(std::size_t sheet) const {
  return _selection.getDocument().getSheets()[sheet].name;
}

std::string Report::placeOf(Workbook::Rule const& rule) const {
  auto const sheet = Words::shorten(nameOf(rule.sheet), widestQuote);
  auto const ranges = Words::describeRanges(rule);
  return ranges.empty() ? sheet : fmt::format("{}!{}", sheet, ranges);
}

}  // namespace Zorv::Tool
