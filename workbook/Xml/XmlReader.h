#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/Limits.h"
#include "workbook/Package/ByteSource.h"
#include "workbook/Xml/XmlNamespace.h"

namespace Zorv::Workbook {

/// Attribute of a starting element; valid until the next event.
struct XmlAttribute {
  XmlNamespace ns = XmlNamespace::None;
  std::string_view name;  ///< without prefix
  std::string_view value;
};

/// Pull parser of XML documents; memory is bounded by the longest tag or text.
///
/// Resolves namespaces, skips comments and processing instructions, and selects alternate content
/// (ISO/IEC 29500-3, 7.6). Documents with a document type, and so with entities of their own, are
/// refused. Every operation that reads throws PartError if the document is not well-formed or
/// beyond the limits.
class XmlReader {
public:
  enum class Event : std::uint8_t { Start, End, Text, Finished };

  /// Reads a document in UTF-8 or UTF-16.
  XmlReader(std::unique_ptr<ByteSource> bytes, Limits const& limits);
  XmlReader(XmlReader const&) = delete;
  XmlReader& operator=(XmlReader const&) = delete;
  ~XmlReader();

  /// Reads the next event. An empty element gives a start and an end.
  Event next();

  /// The element that starts or ends; valid until the next event.
  [[nodiscard]] XmlNamespace getNamespace() const noexcept { return _namespace; }
  [[nodiscard]] std::string_view getName() const noexcept { return _name; }
  [[nodiscard]] bool is(XmlNamespace ns, std::string_view name) const noexcept {
    return _namespace == ns && _name == name;
  }
  /// True if the current element is in the main namespace and has that name.
  [[nodiscard]] bool is(std::string_view name) const noexcept {
    return is(XmlNamespace::Spreadsheet, name);
  }
  [[nodiscard]] std::vector<XmlAttribute> const& getAttributes() const noexcept {
    return _attributes;
  }
  /// Attribute of the starting element, or nothing. Cells ask for names of one letter, which the
  /// compiler turns into a comparison of bytes where it sees this body.
  [[nodiscard]] std::optional<std::string_view> getAttribute(
      std::string_view name, XmlNamespace ns = XmlNamespace::None) const noexcept {
    for (XmlAttribute const& attribute : _attributes) {
      if (attribute.name == name && attribute.ns == ns) {
        return attribute.value;
      }
    }
    return std::nullopt;
  }

  /// Text of a text event, with entities replaced; valid until the next event. One text may come in
  /// several events.
  [[nodiscard]] std::string_view getText() const noexcept { return _text; }
  /// True if `xml:space` preserves the spaces in the innermost open element.
  [[nodiscard]] bool keepsSpaces() const noexcept;

  /// Number of open elements; a starting element counts, an ending one does not.
  [[nodiscard]] std::size_t getDepth() const noexcept { return _open.size(); }

  /// Bytes of the document read so far, in UTF-8.
  [[nodiscard]] std::uint64_t getPosition() const noexcept { return _bufferPosition + _begin; }

  /// Position of the tag of the current start or end: that of its `<`, in UTF-8.
  [[nodiscard]] std::uint64_t getTagPosition() const noexcept { return _tagPosition; }

  /// Reads an element such as `<c r="A1" t="s"><v>0</v></c>` at once if it comes next: in the main
  /// namespace, with attributes of short names, and one child `child` that has no attributes and
  /// holds some text. Gives the text; the attributes are those of the element.
  ///
  /// Gives nothing, and reads nothing, for an element that is written in any other way; next()
  /// reads it then. The attributes of the element before are gone all the same. Most cells of a
  /// sheet are like that, and this takes a tenth of the time.
  [[nodiscard]] std::optional<std::string_view> takePlainElement(std::string_view name,
                                                                 std::string_view child);

  /// After the start of an element: reads up to its end.
  void skipElement();
  /// After the start of an element: reads up to its end, and returns the text directly in it.
  [[nodiscard]] std::string readElementText();

  [[nodiscard]] Limits const& getLimits() const noexcept { return _limits; }
  [[nodiscard]] std::string const& getPartName() const noexcept { return _utf8->getName(); }
  /// Throws PartError with the reader's position.
  [[noreturn]] void fail(std::string const& problem) const;

private:
  struct OpenElement {
    std::size_t nameBegin;     ///< of its name in _openNames, with the prefix
    std::size_t bindingCount;  ///< of the elements around it
    std::size_t prefixSize;    ///< with the colon
    XmlNamespace ns;
    bool keepsSpaces;
  };
  struct Binding {
    std::string prefix;
    XmlNamespace ns;
  };
  /// An open mc:AlternateContent.
  struct Alternatives {
    std::size_t depth;
    bool chosen;
  };

  Event readEvent();
  Event readMarkup();
  Event readCharacterData();
  std::optional<Event> readDeclaration();
  Event readStartTag();
  Event readEndTag();
  Event closeElement();
  void parseTag(char* begin, char* end);
  char* parseAttribute(char* at, char* end);
  void bindPrefix(std::string_view prefix, std::string_view uri);
  void resolveNames();
  void openElement();
  [[nodiscard]] XmlNamespace findPrefix(std::string_view prefix) const noexcept;
  [[nodiscard]] bool understandsChoice() const;
  /// Handles the elements of alternate content; true if the caller does not see the event.
  bool chooseAlternative(Event event);
  void skipRaw();

  [[nodiscard]] std::string_view buffered() const noexcept {
    return {_buffer.data() + _begin, _end - _begin};
  }
  bool readMore();
  [[nodiscard]] bool ensure(std::size_t size);
  [[nodiscard]] std::size_t find(std::string_view wanted, std::size_t from, char const* what);
  [[nodiscard]] std::size_t findTagEnd();
  [[nodiscard]] bool endsInnermost(std::size_t tagSize, std::string_view name);
  [[nodiscard]] std::string_view decode(char* begin, char* end, bool isAttribute) const;

  std::unique_ptr<ByteSource> _utf8;
  Limits _limits;
  std::vector<char> _buffer;
  std::size_t _begin = 0;             ///< next byte to be read
  std::size_t _end = 0;               ///< end of the buffered bytes
  std::uint64_t _bufferPosition = 0;  ///< of the buffer's first byte in the document
  std::uint64_t _tagPosition = 0;
  bool _sawRoot = false;
  bool _isEmptyElement = false;  ///< the starting element ends at once

  XmlNamespace _namespace = XmlNamespace::None;
  std::string_view _qualifiedName;
  std::string_view _name;
  std::string_view _text;
  std::vector<XmlAttribute> _attributes;
  std::vector<OpenElement> _open;
  std::string _openNames;
  std::string _closedName;
  std::vector<Binding> _bindings;
  std::vector<Alternatives> _alternatives;
};

}  // namespace Zorv::Workbook
