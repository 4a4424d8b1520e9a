#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "OfficeUtils/LocaleContext.h"
#include "analysis/Explain/CellAccount.h"
#include "words/CellText.h"
#include "words/StyleText.h"
#include "words/ValueText.h"
#include "workbook/Document.h"
#include "workbook/Rule.h"

/// The account of a cell in words, for whoever lays it out. Texts may hold anything that the
/// workbook holds: make them printable, or escape them.
namespace Zorv::Words {

/// How an outcome is meant.
enum class Tone : std::uint8_t {
  Plain,
  Good,   ///< the rule counts
  Bad,    ///< the rule failed
  Faint,  ///< the rule was not looked at
};

/// A part of a formula, and its value.
struct StepText {
  std::string text;   ///< `D7<TODAY()`
  std::string value;  ///< `TRUE`, `12 cells: 1, 2, 3, ...`
};

/// How a formula came to its value.
struct FormulaText {
  std::string here;             ///< at the cell; empty if the last step reads so
  std::vector<StepText> steps;  ///< the whole formula last
  bool isCut = false;           ///< more steps are left out
};

/// A property that an earlier rule has set.
struct TakenText {
  StylePhrase phrase;
  std::size_t takenBy = 0;  ///< that rule's number
};

/// Account of one rule.
struct RuleText {
  std::size_t number = 0;
  std::string outcome;  ///< `holds`, `draws bar 37% #638EC6`
  Tone tone = Tone::Plain;
  std::string condition;             ///< as describeCondition() has it
  std::vector<std::string> reasons;  ///< the ranges and the priority, then how it was decided
  std::vector<FormulaText> formulas;
  std::string elsewhere;  ///< the other answer of other programs; empty if they agree
  bool holds = false;     ///< it is a condition that holds, and so it has a style
  std::vector<StylePhrase> sets;
  std::vector<TakenText> taken;
  std::vector<std::string> doubts;
};

/// The words for a rule that are the same for every cell.
struct RuleWords {
  std::string condition;           ///< as describeCondition() has it
  std::string place;               ///< the ranges and the priority
  std::vector<StylePhrase> style;  ///< of a condition that is resolved
};

/// Something that is seen, and the rule that sets it.
struct SetText {
  StylePhrase phrase;
  std::size_t rule = 0;
};

/// Why a cell looks as it does.
struct AccountText {
  std::string cell;                  ///< `Sheet1!A1`
  std::string value;                 ///< `12.5%, the value 0.125`
  std::string absence;               ///< why there are no rules; empty if there are
  std::vector<RuleText> rules;       ///< by priority
  std::vector<std::string> nearest;  ///< the nearest rules where none is on the cell
  std::vector<SetText> style;        ///< what rules set of the cell as it is seen
  std::vector<SetText> visuals;      ///< what they draw
  std::vector<StylePhrase> own;      ///< what the cell itself sets
};

/// Writes accounts of cells of a document.
///
/// Borrows its arguments, and the rules of the accounts. One thread at a time.
class AccountWriter {
public:
  AccountWriter(Workbook::Document const& document,
                OfficeUtils::LocaleContext const& locale) noexcept
      : _document(document), _locale(locale), _formatter(locale) {}

  /// The account in words.
  [[nodiscard]] AccountText describe(Analysis::CellAccount const& account);

private:
  [[nodiscard]] std::string describeContent(Analysis::CellAccount const& account);
  [[nodiscard]] NumberMeaning findMeaning(Analysis::CellAccount const& account);
  [[nodiscard]] RuleWords const& getOrCreateWords(Workbook::Rule const& rule);

  Workbook::Document const& _document;
  OfficeUtils::LocaleContext const& _locale;
  CellFormatter _formatter;
  std::unordered_map<Workbook::Rule const*, RuleWords> _words;
};

/// The words for a rule that are the same for every cell.
[[nodiscard]] RuleWords makeRuleWords(Workbook::Document const& document,
                                      Workbook::Rule const& rule);

/// Account of one rule, in words. `meaning` is that of the cell's number.
[[nodiscard]] RuleText describeRule(Analysis::RuleAccount const& rule, RuleWords const& words,
                                    Analysis::CellAccount const& cell, NumberMeaning meaning,
                                    OfficeUtils::LocaleContext const& locale);

/// The message of an exception, printable and shortened.
[[nodiscard]] std::string describeProblem(std::exception_ptr const& problem);

}  // namespace Zorv::Words
