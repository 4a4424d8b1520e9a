#include "workbook/Xml/PlainElement.h"

#include "Utils/CaseFolding.h"

namespace Zorv::Workbook {

namespace {

/// Reads bytes from the front. Each operation says whether it could.
class PlainScanner {
public:
  explicit PlainScanner(std::string_view bytes) noexcept
      : _begin(bytes.data()), _at(_begin), _end(_begin + bytes.size()) {}

  bool take(char wanted) noexcept {
    bool const found = _at != _end && *_at == wanted;
    _at += found ? 1 : 0;
    return found;
  }

  bool take(std::string_view wanted) noexcept {
    char const* at = _at;
    for (char const c : wanted) {
      if (at == _end || *at++ != c) {
        return false;
      }
    }
    _at = at;
    return true;
  }

  /// Letters, up to an equals sign.
  bool takeAttributeName(std::string_view& name) noexcept {
    char const* const begin = _at;
    while (_at != _end && isAsciiLetter(*_at)) {
      ++_at;
    }
    name = {begin, static_cast<std::size_t>(_at - begin)};
    return !name.empty() && take('=');
  }

  /// A value in quotation marks.
  bool takeAttributeValue(std::string_view& value) noexcept {
    if (!take('"')) {
      return false;
    }
    char const* const begin = _at;
    while (_at != _end && *_at != '"') {
      if (*_at == '&' || *_at == '<' || static_cast<unsigned char>(*_at) < ' ') {
        return false;
      }
      ++_at;
    }
    value = {begin, static_cast<std::size_t>(_at - begin)};
    return take('"');
  }

  /// Takes the text before the next tag.
  bool takeText(std::string_view& text) noexcept {
    char const* const begin = _at;
    while (_at != _end && *_at != '<') {
      if (*_at == '&' || *_at == '\r') {
        return false;
      }
      ++_at;
    }
    text = {begin, static_cast<std::size_t>(_at - begin)};
    return _at != _end;
  }

  [[nodiscard]] std::size_t getSize() const noexcept {
    return static_cast<std::size_t>(_at - _begin);
  }

private:
  char const* _begin;
  char const* _at;
  char const* _end;
};

/// True for attributes that declare a namespace or how spaces count.
bool isReserved(std::string_view name) noexcept { return name.starts_with("xml"); }

}  // namespace

std::optional<PlainElement> findPlainElement(std::string_view bytes, std::string_view name,
                                             std::string_view child,
                                             std::vector<XmlAttribute>& attributes) {
  PlainScanner scanner(bytes);
  if (!scanner.take('<') || !scanner.take(name)) {
    return std::nullopt;
  }
  attributes.clear();
  while (scanner.take(' ')) {
    XmlAttribute attribute;
    if (!scanner.takeAttributeName(attribute.name) || isReserved(attribute.name) ||
        !scanner.takeAttributeValue(attribute.value)) {
      return std::nullopt;
    }
    attributes.push_back(attribute);
  }
  std::string_view text;
  bool const isPlain = scanner.take("><") && scanner.take(child) && scanner.take('>') &&
                       scanner.takeText(text) && scanner.take("</") && scanner.take(child) &&
                       scanner.take("></") && scanner.take(name) && scanner.take('>');
  return isPlain ? std::optional(PlainElement{scanner.getSize(), text}) : std::nullopt;
}

}  // namespace Zorv::Workbook
