#include "Formulas/Text/Wildcards.h"

#include "Formulas/Text/Texts.h"

namespace Zorv::Formulas {

namespace {

/// The next sign of a pattern, which is not empty, matched against the next character of a text.
/// False where they differ; a `*` is no such sign.
bool takeMatching(std::string_view& text, std::string_view& pattern) noexcept {
  if (text.empty()) {
    return false;
  }
  if (pattern.front() == '?') {
    pattern.remove_prefix(1);
    static_cast<void>(takeFolded(text));
    return true;
  }
  if (pattern.front() == '~' && pattern.size() > 1) {
    pattern.remove_prefix(1);
  }
  return takeFolded(text) == takeFolded(pattern);
}

enum class Match { No, Yes, TooShort };

/// Matches a pattern at the beginning of a text, or against all of it. `TooShort` says that the
/// part before the first `*` matches and the rest is nowhere in what follows: a later beginning
/// cannot match either.
Match match(std::string_view text, std::string_view pattern, bool isWhole, StepRun& run) {
  bool hasStar = false;
  std::string_view starText;
  std::string_view starPattern;
  while (!pattern.empty() || (isWhole && !text.empty())) {
    run.count(1);
    if (!pattern.empty() && pattern.front() == '*') {
      pattern.remove_prefix(1);
      hasStar = true;
      starText = text;
      starPattern = pattern;
      continue;
    }
    if (!pattern.empty() && takeMatching(text, pattern)) {
      continue;
    }
    if (!hasStar || starText.empty()) {
      return hasStar ? Match::TooShort : Match::No;
    }
    static_cast<void>(takeFolded(starText));
    text = starText;
    pattern = starPattern;
  }
  return Match::Yes;
}

}  // namespace

bool hasWildcards(std::string_view text) noexcept {
  return text.find_first_of("*?~") != std::string_view::npos;
}

bool matchesWildcards(std::string_view text, std::string_view pattern, StepMeter& steps) {
  StepRun run(steps);
  bool const matches = match(text, pattern, true, run) == Match::Yes;
  run.end();
  return matches;
}

std::optional<std::size_t> findWildcards(std::string_view text, std::string_view pattern,
                                         StepMeter& steps) {
  StepRun run(steps);
  std::string_view rest = text;
  while (true) {
    Match const result = match(rest, pattern, false, run);
    if (result != Match::No || rest.empty()) {
      run.end();
      return result == Match::Yes ? std::optional(text.size() - rest.size()) : std::nullopt;
    }
    static_cast<void>(takeFolded(rest));
  }
}

}  // namespace Zorv::Formulas
