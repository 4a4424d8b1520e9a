#include "Formulas/Parsing/StructuredReferenceText.h"

#include "Formulas/FormulaParseError.h"
#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

class ReferenceReader {
public:
  ReferenceReader(std::string_view text, std::size_t position) : _text(text), _position(position) {}

  StructuredReferenceText read() {
    // The outer brackets are matched already.
    _text = _text.substr(1, _text.size() - 2);
    ++_position;
    skipSpaces();
    if (takeIf('@')) {
      _result.thisRow = true;
      skipSpaces();
    }
    if (atEnd()) {
      selectDataByDefault();
      return _result;
    }
    if (peek() == '[') {
      readParts();
    } else {
      addPart(std::string_view(_text).substr(_at));
    }
    selectDataByDefault();
    return _result;
  }

private:
  /// `[#Headers],[First]:[Last]`
  void readParts() {
    do {
      skipSpaces();
      addPart(takeBracketed());
      skipSpaces();
      if (takeIf(':')) {
        skipSpaces();
        requireColumnBefore();
        _result.lastColumn = toColumnName(takeBracketed());
        skipSpaces();
      }
    } while (takeIf(','));
    if (!atEnd()) {
      fail("a comma is missing");
    }
  }

  void addPart(std::string_view part) {
    if (part.starts_with('#')) {
      addSpecial(toAsciiUpper(part.substr(1)));
      return;
    }
    if (_result.firstColumn) {
      fail("more than one range of columns");
    }
    _result.firstColumn = toColumnName(part);
    _result.lastColumn = _result.firstColumn;
  }

  void addSpecial(std::string_view special) {
    if (special == "ALL") {
      _result.headers = _result.data = _result.totals = true;
    } else if (special == "HEADERS") {
      _result.headers = true;
    } else if (special == "DATA") {
      _result.data = true;
    } else if (special == "TOTALS") {
      _result.totals = true;
    } else if (special == "THIS ROW") {
      _result.thisRow = true;
    } else {
      fail("an unknown part of a table");
    }
  }

  void selectDataByDefault() {
    if (!_result.headers && !_result.totals && !_result.thisRow) {
      _result.data = true;
    }
  }

  void requireColumnBefore() const {
    if (!_result.firstColumn) {
      fail("a column is missing");
    }
  }

  /// The text between the next brackets, which contain only escaped brackets.
  std::string_view takeBracketed() {
    if (atEnd() || peek() != '[') {
      fail("a bracket is missing");
    }
    std::size_t const start = ++_at;
    while (!atEnd() && peek() != ']') {
      _at += peek() == '\'' ? 2 : 1;
    }
    if (atEnd()) {
      fail("a bracket that does not close");
    }
    return _text.substr(start, _at++ - start);
  }

  /// A column's name without the apostrophes that take a character's meaning away.
  static std::string toColumnName(std::string_view text) {
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
      bool const escapes = text[i] == '\'' && i + 1 < text.size();
      name += text[escapes ? ++i : i];
    }
    return name;
  }

  [[nodiscard]] bool atEnd() const noexcept { return _at >= _text.size(); }
  [[nodiscard]] char peek() const noexcept { return _text[_at]; }
  bool takeIf(char c) noexcept {
    bool const isThere = !atEnd() && peek() == c;
    _at += isThere ? 1 : 0;
    return isThere;
  }
  void skipSpaces() noexcept {
    while (!atEnd() && isSpace(peek())) {
      ++_at;
    }
  }
  [[noreturn]] void fail(char const* reason) const {
    throw FormulaParseError(reason, _position + _at);
  }

  std::string_view _text;
  std::size_t _position;
  std::size_t _at = 0;
  StructuredReferenceText _result;
};

}  // namespace

StructuredReferenceText readStructuredReference(std::string_view text, std::size_t position) {
  return ReferenceReader(text, position).read();
}

}  // namespace Zorv::Formulas
