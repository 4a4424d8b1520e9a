#pragma once

#include <cstddef>
#include <functional>
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
    return _texts.getJson().size() + _rules.getJson().size() + _accounts.getJson().size();
  }

private:
  /// Entries that are there once each, by what they are made from.
  class List {
  public:
    /// The index of an entry; `append(json)` appends it if it is not there yet.
    template <class Append>
    std::size_t add(std::string_view key, Append const& append);

    [[nodiscard]] std::string const& getJson() const noexcept { return _json; }

  private:
    struct Hash {
      using is_transparent = void;
      std::size_t operator()(std::string_view key) const noexcept {
        return std::hash<std::string_view>()(key);
      }
    };

    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> _indices;  ///< by key
    std::string _json;
  };

  std::size_t addText(std::string_view text);
  std::size_t addRule(Words::RuleText const& rule);
  void appendText(std::string& out, std::string_view text);
  void appendPhrase(std::string& out, Words::StylePhrase const& phrase, std::size_t rule);
  void appendPhrase(std::string& out, Words::StylePhrase const& phrase);
  void appendFormula(std::string& out, Words::FormulaText const& formula);

  List _texts;
  List _rules;
  List _accounts;
};

}  // namespace Zorv::Render
