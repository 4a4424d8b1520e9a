#include "render/Build/PageTexts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "Utils/CaseFolding.h"

namespace Zorv::Render {

namespace {

/// Reader of one text, from its beginning to its end.
class PageTextParser {
public:
  PageTextParser(std::string_view rest, PageFacts const& facts) : _rest(rest), _facts(facts) {}

  PageText parse() {
    while (!_rest.empty()) {
      char const c = take();
      if (c == '&' && !_rest.empty()) {
        readCode(take());
      } else if (c != '\r') {
        addText({&c, 1});
      }
    }
    return std::move(_text);
  }

private:
  char take() noexcept {
    char const c = _rest.front();
    _rest.remove_prefix(1);
    return c;
  }
  void skip(std::size_t count) noexcept { _rest.remove_prefix(std::min(count, _rest.size())); }

  void readCode(char code) {
    switch (toAsciiUpper(code)) {
      case 'L':
        _section = &_text.left;
        break;
      case 'C':
        _section = &_text.centre;
        break;
      case 'R':
        _section = &_text.right;
        break;
      case 'P':
        _section->push_back({.kind = PageTextPiece::Kind::PageNumber, .offset = takeOffset()});
        break;
      case 'N':
        _section->push_back({.kind = PageTextPiece::Kind::PageCount});
        break;
      case 'F':
        _section->push_back({.kind = PageTextPiece::Kind::FileName});
        break;
      case 'A':
        addText(_facts.sheetName);
        break;
      case 'D':
        addText(_facts.date);
        break;
      case 'T':
        addText(_facts.time);
        break;
      case '&':
        addText("&");
        break;
      default:
        skipFontCode(code);
        break;
    }
  }

  /// A font stands in quotes, a size in digits, and a colour in six characters behind a K. The
  /// others are a letter each.
  void skipFontCode(char code) noexcept {
    constexpr std::size_t colourSize = 6;
    if (code == '"') {
      skip(std::min(_rest.find('"'), _rest.size()) + 1);
    } else if (isAsciiDigit(code)) {
      while (!_rest.empty() && isAsciiDigit(_rest.front())) {
        take();
      }
    } else if (toAsciiUpper(code) == 'K') {
      skip(colourSize);
    }
  }

  /// Takes the offset that is added to a page's number: `+1` or `-1`.
  long takeOffset() noexcept {
    bool const hasSign = _rest.size() > 1 && (_rest.front() == '+' || _rest.front() == '-');
    if (!hasSign || !isAsciiDigit(_rest[1])) {
      return 0;
    }
    constexpr long most = 1'000'000;
    bool const isNegative = take() == '-';
    long offset = 0;
    while (!_rest.empty() && isAsciiDigit(_rest.front())) {
      offset = std::min(offset * 10 + (take() - '0'), most);
    }
    return isNegative ? -offset : offset;
  }

  void addText(std::string_view text) {
    if (_section->empty() || _section->back().kind != PageTextPiece::Kind::Text) {
      _section->emplace_back();
    }
    _section->back().text += text;
  }

  std::string_view _rest;
  PageFacts const& _facts;
  PageText _text;
  std::vector<PageTextPiece>* _section = &_text.centre;  ///< the one that text goes to
};

}  // namespace

PageText parsePageText(std::string_view text, PageFacts const& facts) {
  return PageTextParser(text, facts).parse();
}

}  // namespace Zorv::Render
