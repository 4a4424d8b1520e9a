#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "words/AccountText.h"

namespace Zorv::Render {

/// Accounts of cells as JSON in which equal parts are there once.
///
/// A text, the account of a rule, and the account of a cell each stand in a list of their own, and
/// name what they are made of by its index. The script of the page puts them together.
class AccountDictionary {
public:
  /// The index of an account.
  [[nodiscard]] std::size_t add(Words::AccountText const& account);

  /// The lists as members of an object: `"texts":[...],"rules":[...],"accounts":[...]`.
  [[nodiscard]] std::string getMembers() const;

  /// Bytes of the lists so far.
  [[nodiscard]] std::size_t countBytes() const noexcept {
    return _texts.json.size() + _rules.json.size() + _accounts.json.size();
  }

private:
  struct List {
    /// The index of an entry, which is added if it is not there yet.
    std::size_t add(std::string entry);

    std::unordered_map<std::string, std::size_t> indices;  ///< by entry
    std::string json;
  };

  std::size_t addText(std::string_view text);
  std::size_t addRule(Words::RuleText const& rule);
  void appendPhrase(std::string& out, Words::StylePhrase const& phrase);
  void appendFormula(std::string& out, Words::FormulaText const& formula);

  List _texts;
  List _rules;
  List _accounts;
};

}  // namespace Zorv::Render
