#include "workbook/Recalculation/VolatileWords.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "Utils/CaseFolding.h"

namespace Zorv::Workbook {

namespace {

/// True for the characters of names and functions (ISO/IEC 29500-1, 18.17.2.5), as far as they
/// divide a formula into words.
constexpr bool isWordCharacter(char c) noexcept {
  return isAsciiLetter(c) || isAsciiDigit(c) || c == '_' || c == '.' || c == '\\' || c == '?' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool equalsInUpperCase(std::string_view word, std::string_view upperCase) noexcept {
  return std::ranges::equal(word, upperCase, [](char a, char b) { return toAsciiUpper(a) == b; });
}

VolatileUse useOfFunction(std::string_view name) noexcept {
  constexpr std::array<std::string_view, 2> clock{"TODAY", "NOW"};
  constexpr std::array<std::string_view, 4> random{"RAND", "RANDBETWEEN", "RANDARRAY",
                                                   "_XLFN.RANDARRAY"};
  constexpr std::array<std::string_view, 2> place{"OFFSET", "INDIRECT"};
  auto const isName = [name](std::string_view known) { return equalsInUpperCase(name, known); };
  return {std::ranges::any_of(clock, isName), std::ranges::any_of(random, isName),
          std::ranges::any_of(place, isName)};
}

/// End of a text in quotes that begins at `at`.
std::size_t skipQuoted(std::string_view formula, std::size_t at) noexcept {
  return std::min(formula.find(formula[at], at + 1), formula.size() - 1) + 1;
}

/// Calls `visit(word, isFunction)` for each word outside quotes.
template <class Visit>
void forEachWord(std::string_view formula, Visit const& visit) {
  for (std::size_t at = 0; at < formula.size();) {
    if (formula[at] == '"' || formula[at] == '\'') {
      at = skipQuoted(formula, at);
      continue;
    }
    std::size_t const begin = at;
    while (at < formula.size() && isWordCharacter(formula[at])) {
      ++at;
    }
    if (at == begin) {
      ++at;
    } else {
      visit(formula.substr(begin, at - begin), at < formula.size() && formula[at] == '(');
    }
  }
}

void include(VolatileUse use, VolatileUse& target) noexcept {
  target.clock = target.clock || use.clock;
  target.random = target.random || use.random;
  target.place = target.place || use.place;
}

}  // namespace

/// Goes from the names that call volatile functions themselves to those that use them, and on.
VolatileWords::VolatileWords(std::vector<DefinedName> const& names) {
  std::vector<std::string> changed;
  std::unordered_map<std::string, std::vector<std::string>> usersOfName;
  auto const add = [this, &changed](std::string const& name, VolatileUse use) {
    VolatileUse& known = _names[name];
    VolatileUse const before = known;
    include(use, known);
    if (known != before) {
      changed.push_back(name);
    }
  };
  for (DefinedName const& name : names) {
    std::string const folded = foldCase(name.name);
    forEachWord(name.formulaText, [&](std::string_view word, bool isFunction) {
      if (!isFunction) {
        usersOfName[foldCase(word)].push_back(folded);
      } else if (VolatileUse const use = useOfFunction(word); use != VolatileUse()) {
        add(folded, use);
      }
    });
  }
  while (!changed.empty()) {
    std::string const name = std::move(changed.back());
    changed.pop_back();
    VolatileUse const use = _names[name];
    for (std::string const& user : usersOfName[name]) {
      add(user, use);
    }
  }
}

VolatileUse VolatileWords::findIn(std::string_view formula) const {
  VolatileUse use;
  forEachWord(formula, [this, &use](std::string_view word, bool isFunction) {
    if (isFunction) {
      include(useOfFunction(word), use);
    } else if (!_names.empty()) {
      auto const name = _names.find(foldCase(word));
      include(name == _names.end() ? VolatileUse() : name->second, use);
    }
  });
  return use;
}

}  // namespace Zorv::Workbook
