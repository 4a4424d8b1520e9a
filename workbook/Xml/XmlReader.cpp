#include "workbook/Xml/XmlReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <fmt/format.h>

#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Xml/PlainElement.h"
#include "workbook/Xml/Utf8Source.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

// Most parts of a workbook are small, so the buffer begins small and grows with what is read.
constexpr std::size_t firstBufferSize = 2'048;
constexpr std::size_t usualBufferSize = 65'536;

/// Size of a name's prefix with its colon; 0 for a name without a prefix.
std::size_t prefixSizeOf(std::string_view qualifiedName) noexcept {
  auto const* const colon = std::find(qualifiedName.begin(), qualifiedName.end(), ':');
  return colon == qualifiedName.end() ? 0
                                      : static_cast<std::size_t>(colon - qualifiedName.begin()) + 1;
}

char* skipSpaces(char* at, char const* end) noexcept {
  while (at != end && isXmlSpace(*at)) {
    ++at;
  }
  return at;
}

}  // namespace

XmlReader::XmlReader(std::unique_ptr<ByteSource> bytes, Limits const& limits)
    : _utf8(std::make_unique<Utf8Source>(std::move(bytes))),
      _limits(limits),
      _buffer(firstBufferSize) {}

XmlReader::~XmlReader() = default;

XmlReader::Event XmlReader::next() {
  for (;;) {
    Event const event = readEvent();
    bool const isChoice = event != Event::Text && event != Event::Finished &&
                          _namespace == XmlNamespace::Compatibility;
    if (!isChoice || !chooseAlternative(event)) {
      return event;
    }
  }
}

bool XmlReader::keepsSpaces() const noexcept { return !_open.empty() && _open.back().keepsSpaces; }

std::optional<std::string_view> XmlReader::takePlainElement(std::string_view name,
                                                            std::string_view child) {
  constexpr std::size_t depthOfChild = 2;
  bool const isPossible = !_isEmptyElement && _open.size() + depthOfChild <= _limits.xmlDepth &&
                          findPrefix("") == XmlNamespace::Spreadsheet;
  auto const found = isPossible ? findPlainElement(buffered(), name, child, _attributes)
                                : std::optional<PlainElement>();
  if (!found || _attributes.size() > _limits.xmlAttributes) {
    return std::nullopt;
  }
  _begin += found->size;
  return found->text;
}

void XmlReader::skipElement() {
  std::size_t const depth = getDepth();
  while (next() != Event::End || getDepth() >= depth) {
  }
}

std::string XmlReader::readElementText() {
  std::string text;
  for (;;) {
    switch (next()) {
      case Event::Text:
        if (text.size() + _text.size() > _limits.xmlTokenBytes) {
          fail(fmt::format("a text longer than {} bytes", _limits.xmlTokenBytes));
        }
        text += _text;
        break;
      case Event::Start:
        skipElement();
        break;
      default:
        return text;
    }
  }
}

void XmlReader::fail(std::string const& problem) const {
  throw PartError(getPartName(), fmt::format("byte {}", getPosition()), problem);
}

XmlReader::Event XmlReader::readEvent() {
  if (_isEmptyElement) {
    _isEmptyElement = false;
    return closeElement();
  }
  for (;;) {
    if (!ensure(1)) {
      if (!_open.empty() || !_sawRoot) {
        fail("the XML ends before it is complete; the file is cut off or damaged");
      }
      return Event::Finished;
    }
    Event const event = _buffer[_begin] == '<' ? readMarkup() : readCharacterData();
    if (event != Event::Finished) {
      return event;
    }
  }
}

/// Returns Finished for an event that the caller does not see.
XmlReader::Event XmlReader::readMarkup() {
  if (!ensure(2)) {
    fail("the XML ends inside a tag; the file is cut off or damaged");
  }
  switch (_buffer[_begin + 1]) {
    case '/':
      return readEndTag();
    case '?':
      _begin += find("?>", 2, "an instruction") + 2;
      return Event::Finished;
    case '!':
      return readDeclaration().value_or(Event::Finished);
    default:
      return readStartTag();
  }
}

XmlReader::Event XmlReader::readCharacterData() {
  std::size_t size = 0;
  for (;;) {
    auto const* const found = static_cast<char const*>(
        std::memchr(_buffer.data() + _begin + size, '<', _end - _begin - size));
    if (found) {
      size = static_cast<std::size_t>(found - _buffer.data()) - _begin;
      break;
    }
    size = _end - _begin;
    if (!readMore()) {
      break;
    }
  }
  char* const begin = _buffer.data() + _begin;
  if (_open.empty() && !std::all_of(begin, begin + size, isXmlSpace)) {
    fail("text outside the root element; this is no XML");
  }
  _text = decode(begin, begin + size, false);
  _begin += size;
  return _open.empty() ? Event::Finished : Event::Text;
}

std::optional<XmlReader::Event> XmlReader::readDeclaration() {
  constexpr std::string_view comment = "<!--";
  constexpr std::string_view characterData = "<![CDATA[";
  bool const isComment = ensure(comment.size()) && buffered().starts_with(comment);
  if (isComment) {
    _begin += find("-->", comment.size(), "a comment") + 3;
    return std::nullopt;
  }
  if (ensure(characterData.size()) && buffered().starts_with(characterData) && !_open.empty()) {
    std::size_t const end = find("]]>", characterData.size(), "character data");
    _text = buffered().substr(characterData.size(), end - characterData.size());
    _begin += end + 3;
    return Event::Text;
  }
  fail(
      "a document type declaration, which no workbook needs; it is refused, as it may declare "
      "entities that unpack without bounds");
}

XmlReader::Event XmlReader::readStartTag() {
  if (_open.empty() && _sawRoot) {
    fail("a second root element");
  }
  std::size_t const size = findTagEnd();
  char* const begin = _buffer.data() + _begin + 1;
  char* end = _buffer.data() + _begin + size - 1;
  _isEmptyElement = end != begin && end[-1] == '/';
  parseTag(begin, _isEmptyElement ? end - 1 : end);
  _tagPosition = getPosition();
  _begin += size;
  _sawRoot = true;
  openElement();
  return Event::Start;
}

XmlReader::Event XmlReader::readEndTag() {
  std::string_view const innermost =
      _open.empty() ? std::string_view()
                    : std::string_view(_openNames).substr(_open.back().nameBegin);
  std::size_t size = innermost.size() + 3;
  if (innermost.empty() || !endsInnermost(size, innermost)) {
    size = findTagEnd();
    std::string_view const name = trimXmlSpaces(buffered().substr(2, size - 3));
    if (_open.empty() || innermost != name) {
      fail(fmt::format("the end of an element \"{}\" that is not open", quote(name)));
    }
  }
  _tagPosition = getPosition();
  _begin += size;
  return closeElement();
}

/// True if an end tag of that name comes next, written without spaces as nearly all are.
bool XmlReader::endsInnermost(std::size_t tagSize, std::string_view name) {
  return ensure(tagSize) && buffered()[tagSize - 1] == '>' &&
         buffered().substr(2, name.size()) == name;
}

XmlReader::Event XmlReader::closeElement() {
  OpenElement const closed = _open.back();
  _open.pop_back();
  _bindings.erase(_bindings.begin() + static_cast<std::ptrdiff_t>(closed.bindingCount),
                  _bindings.end());
  _namespace = closed.ns;
  _closedName.assign(_openNames, closed.nameBegin + closed.prefixSize);
  _name = _closedName;
  _openNames.resize(closed.nameBegin);
  return Event::End;
}

void XmlReader::parseTag(char* begin, char* end) {
  char* at = std::find_if(begin, end, [](char c) { return isXmlSpace(c); });
  _qualifiedName = {begin, static_cast<std::size_t>(at - begin)};
  if (_qualifiedName.empty()) {
    fail("a tag without a name");
  }
  _attributes.clear();
  for (;;) {
    at = skipSpaces(at, end);
    if (at == end) {
      return;
    }
    at = parseAttribute(at, end);
  }
}

char* XmlReader::parseAttribute(char* at, char* end) {
  char* const nameEnd = std::find_if(at, end, [](char c) { return c == '=' || isXmlSpace(c); });
  char* value = skipSpaces(nameEnd, end);
  value = value == end || *value != '=' ? end : skipSpaces(value + 1, end);
  if (value == end || (*value != '"' && *value != '\'')) {
    fail("an attribute without a quoted value");
  }
  char* const valueEnd = std::find(value + 1, end, *value);
  std::string_view const name(at, static_cast<std::size_t>(nameEnd - at));
  if (_attributes.size() >= _limits.xmlAttributes) {
    fail(fmt::format("an element with more than {} attributes, which is the limit",
                     _limits.xmlAttributes));
  }
  // A tag ends outside quotes, so the closing quote is there.
  _attributes.push_back({XmlNamespace::None, name, decode(value + 1, valueEnd, true)});
  return valueEnd + 1;
}

void XmlReader::openElement() {
  if (_open.size() >= _limits.xmlDepth) {
    fail(fmt::format("more than {} elements inside one another; it is refused", _limits.xmlDepth));
  }
  std::size_t const bindingCount = _bindings.size();
  bool keepsSpacesInside = keepsSpaces();
  for (XmlAttribute const& attribute : _attributes) {
    if (!attribute.name.starts_with('x')) {
      continue;
    }
    if (attribute.name == "xmlns") {
      bindPrefix("", attribute.value);
    } else if (attribute.name.starts_with("xmlns:")) {
      bindPrefix(attribute.name.substr(prefixSizeOf(attribute.name)), attribute.value);
    } else if (attribute.name == "xml:space") {
      keepsSpacesInside = attribute.value == "preserve";
    }
  }
  resolveNames();
  _open.push_back({_openNames.size(), bindingCount, _qualifiedName.size() - _name.size(),
                   _namespace, keepsSpacesInside});
  _openNames += _qualifiedName;
}

void XmlReader::bindPrefix(std::string_view prefix, std::string_view uri) {
  if (_bindings.size() >= _limits.xmlNamespaces) {
    fail(fmt::format("more than {} namespaces at one place, which is the limit",
                     _limits.xmlNamespaces));
  }
  _bindings.push_back({std::string(prefix), findNamespace(uri)});
}

void XmlReader::resolveNames() {
  std::size_t const size = prefixSizeOf(_qualifiedName);
  _namespace = findPrefix(_qualifiedName.substr(0, size == 0 ? 0 : size - 1));
  _name = _qualifiedName.substr(size);
  for (XmlAttribute& attribute : _attributes) {
    if (std::size_t const prefixSize = prefixSizeOf(attribute.name)) {
      attribute.ns = findPrefix(attribute.name.substr(0, prefixSize - 1));
      attribute.name.remove_prefix(prefixSize);
    }
  }
}

XmlNamespace XmlReader::findPrefix(std::string_view prefix) const noexcept {
  auto const innermost =
      std::find_if(_bindings.rbegin(), _bindings.rend(),
                   [prefix](Binding const& binding) { return binding.prefix == prefix; });
  if (innermost != _bindings.rend()) {
    return innermost->ns;
  }
  if (prefix == "xml") {
    return XmlNamespace::Xml;
  }
  return prefix.empty() ? XmlNamespace::Spreadsheet : XmlNamespace::Other;
}

bool XmlReader::understandsChoice() const {
  std::string_view required = trimXmlSpaces(getAttribute("Requires").value_or(""));
  while (!required.empty()) {
    auto const size = static_cast<std::size_t>(
        std::find_if(required.begin(), required.end(), isXmlSpace) - required.begin());
    if (findPrefix(required.substr(0, size)) == XmlNamespace::Other) {
      return false;
    }
    required = trimXmlSpaces(required.substr(size));
  }
  return true;
}

bool XmlReader::chooseAlternative(Event event) {
  if (event == Event::End) {
    if (_name == "AlternateContent" && !_alternatives.empty()) {
      _alternatives.pop_back();
    }
    return true;
  }
  if (_name == "AlternateContent") {
    _alternatives.push_back({getDepth(), false});
    return true;
  }
  bool const isFallback = _name == "Fallback";
  bool const isAlternative = (isFallback || _name == "Choice") && !_alternatives.empty();
  if (!isAlternative || _alternatives.back().chosen || !(isFallback || understandsChoice())) {
    skipRaw();
    return true;
  }
  _alternatives.back().chosen = true;
  return true;
}

void XmlReader::skipRaw() {
  std::size_t const depth = getDepth();
  while (readEvent() != Event::End || getDepth() >= depth) {
  }
}

/// Moves the unread bytes to the buffer's front and appends more; false at the end.
bool XmlReader::readMore() {
  if (_begin > 0) {
    std::memmove(_buffer.data(), _buffer.data() + _begin, _end - _begin);
    _bufferPosition += _begin;
    _end -= _begin;
    _begin = 0;
  }
  bool const isFull = _end == _buffer.size();
  if (isFull && _buffer.size() >= _limits.xmlTokenBytes) {
    fail(fmt::format("a tag or a text longer than {} bytes; it is refused", _limits.xmlTokenBytes));
  }
  if (isFull || _buffer.size() < usualBufferSize) {
    _buffer.resize(2 * _buffer.size());
  }
  std::size_t const count = _utf8->read(_buffer.data() + _end, _buffer.size() - _end);
  _end += count;
  return count > 0;
}

bool XmlReader::ensure(std::size_t size) {
  while (_end - _begin < size) {
    if (!readMore()) {
      return false;
    }
  }
  return true;
}

/// Offset of a text from the next byte to be read.
std::size_t XmlReader::find(std::string_view wanted, std::size_t from, char const* what) {
  for (;;) {
    std::size_t const found = buffered().find(wanted, from);
    if (found != std::string_view::npos) {
      return found;
    }
    std::size_t const searched = _end - _begin;
    from = std::max(from, searched - std::min(searched, wanted.size() - 1));
    if (!readMore()) {
      fail(fmt::format("the XML ends inside {}; the file is cut off or damaged", what));
    }
  }
}

/// Size of the tag that begins at the next byte to be read.
std::size_t XmlReader::findTagEnd() {
  char quote = '\0';
  std::size_t at = 1;
  for (;;) {
    for (; at < _end - _begin; ++at) {
      char const character = _buffer[_begin + at];
      if (quote != '\0') {
        quote = character == quote ? '\0' : quote;
      } else if (character == '"' || character == '\'') {
        quote = character;
      } else if (character == '>') {
        return at + 1;
      } else if (character == '<') {
        fail("a tag inside a tag");
      }
    }
    if (!readMore()) {
      fail("the XML ends inside a tag; the file is cut off or damaged");
    }
  }
}

std::string_view XmlReader::decode(char* begin, char* end, bool isAttribute) const {
  if (char const* const problem = decodeXmlText(begin, end, isAttribute)) {
    fail(problem);
  }
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace Zorv::Workbook
