#include "analysis/Tidy/SheetMarkup.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <utility>

#include "analysis/Tidy/CanonicalXml.h"
#include "workbook/Package/ByteSource.h"
#include "workbook/Xml/XmlReader.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Analysis {

namespace {

using namespace std::string_view_literals;
using Workbook::XmlAttribute;
using Workbook::XmlNamespace;
using Workbook::XmlReader;

/// Bytes in memory, which must outlive the source.
class MemorySource final : public Workbook::ByteSource {
public:
  MemorySource(std::string_view bytes, std::string name) noexcept
      : _rest(bytes), _name(std::move(name)) {}

  std::size_t read(char* bytes, std::size_t size) override {
    std::size_t const count = std::min(size, _rest.size());
    std::memcpy(bytes, _rest.data(), count);
    _rest.remove_prefix(count);
    return count;
  }
  [[nodiscard]] std::string const& getName() const noexcept override { return _name; }

private:
  std::string_view _rest;
  std::string _name;
};

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isUtf16(std::string_view bytes) noexcept {
  constexpr std::array beginnings{"\xFF\xFE"sv, "\xFE\xFF"sv, "<\0"sv, "\0<"sv};
  return std::ranges::any_of(beginnings,
                             [bytes](std::string_view begin) { return bytes.starts_with(begin); });
}

/// The value of an attribute without a prefix, inside a well-formed tag; nothing if the tag has
/// none. Spans count from the beginning of the tag.
std::optional<Span> findAttribute(std::string_view tag, std::string_view wanted) noexcept {
  std::size_t at = std::min(tag.find_first_of(" \t\r\n"), tag.size());
  for (;;) {
    at = std::min(tag.find_first_not_of(" \t\r\n", at), tag.size());
    std::size_t const equals = tag.find('=', at);
    if (equals == std::string_view::npos) {
      return std::nullopt;
    }
    std::string_view const name = Workbook::trimXmlSpaces(tag.substr(at, equals - at));
    std::size_t const quote = tag.find_first_of("\"'", equals);
    std::size_t const end =
        quote == std::string_view::npos ? quote : tag.find(tag[quote], quote + 1);
    if (end == std::string_view::npos) {
      return std::nullopt;
    }
    if (name == wanted) {
      return Span{quote + 1, end};
    }
    at = end + 1;
  }
}

/// Reader of the conditional formats in one sheet's part.
class MarkupReader {
public:
  MarkupReader(std::string_view bytes, std::string const& part, Workbook::Limits const& limits)
      : _bytes(bytes),
        _shift(bytes.starts_with(byteOrderMark) ? byteOrderMark.size() : 0),
        _reader(std::make_unique<MemorySource>(bytes, part), limits) {}

  [[nodiscard]] std::vector<FormatMarkup> read() {
    for (auto event = _reader.next(); event != XmlReader::Event::Finished; event = _reader.next()) {
      bool const isFormat = event == XmlReader::Event::Start &&
                            _reader.getName() == "conditionalFormatting" && isKnownNamespace();
      if (isFormat) {
        readFormat();
      } else if (event == XmlReader::Event::Start &&
                 _reader.getNamespace() == XmlNamespace::Other) {
        _reader.skipElement();  // as the loader does
      }
    }
    return std::move(_formats);
  }

private:
  [[nodiscard]] bool isKnownNamespace() const noexcept {
    return _reader.getNamespace() == XmlNamespace::Spreadsheet ||
           _reader.getNamespace() == XmlNamespace::Extension2009;
  }

  // Places of the reader in the bytes.
  [[nodiscard]] std::size_t tagBegin() const noexcept {
    return static_cast<std::size_t>(_reader.getTagPosition()) + _shift;
  }
  [[nodiscard]] std::size_t tagEnd() const noexcept {
    return static_cast<std::size_t>(_reader.getPosition()) + _shift;
  }

  void readFormat() {
    FormatMarkup format;
    format.isExtension = _reader.getNamespace() == XmlNamespace::Extension2009;
    format.startTag = {tagBegin(), tagEnd()};
    format.span.begin = format.startTag.begin;
    // Deeper inside are alternatives, which other programs may choose otherwise.
    std::size_t const usualDepth = format.isExtension ? 5 : 2;
    std::size_t const depth = _reader.getDepth();
    format.isPlain = depth == usualDepth && hasPlainAttributes(format.isExtension);
    if (!format.isExtension) {
      readRangesAttribute(format);
    }
    std::size_t rangesCount = format.isExtension ? 0 : 1;
    for (;;) {
      auto const event = _reader.next();
      if (event == XmlReader::Event::Start) {
        readChild(format, rangesCount);
      } else if (event == XmlReader::Event::End && _reader.getDepth() < depth) {
        break;
      }
    }
    format.isPlain = format.isPlain && rangesCount == 1;
    format.endTag = {tagBegin(), tagEnd()};
    format.span.end = format.endTag.end;
    _formats.push_back(std::move(format));
  }

  [[nodiscard]] bool hasPlainAttributes(bool isExtension) const {
    return std::ranges::all_of(_reader.getAttributes(), [&](XmlAttribute const& attribute) {
      return attribute.ns == XmlNamespace::Other || attribute.name == "xmlns" ||
             (!isExtension && attribute.ns == XmlNamespace::None && attribute.name == "sqref");
    });
  }

  void readRangesAttribute(FormatMarkup& format) const {
    std::size_t const begin = format.startTag.begin;
    auto const value = findAttribute(_bytes.substr(begin, format.startTag.end - begin), "sqref");
    format.isPlain = format.isPlain && value.has_value();
    if (value) {
      format.ranges = {begin + value->begin, begin + value->end};
      format.rangesText = _reader.getAttribute("sqref").value_or("");
    }
  }

  void readChild(FormatMarkup& format, std::size_t& rangesCount) {
    XmlNamespace const own =
        format.isExtension ? XmlNamespace::Extension2009 : XmlNamespace::Spreadsheet;
    if (_reader.is(own, "cfRule")) {
      format.rules.push_back(readRule());
    } else if (format.isExtension && _reader.is(XmlNamespace::ExtensionMain, "sqref")) {
      std::size_t const begin = tagBegin();
      FormulaMarkup const content = readFormula();
      format.rangesElement = {begin, tagEnd()};
      format.ranges = content.content.value_or(Span());
      format.rangesText = content.text;
      format.isPlain = format.isPlain && content.content.has_value();
      ++rangesCount;
    } else {
      format.isPlain = false;
      _reader.skipElement();
    }
  }

  [[nodiscard]] RuleMarkup readRule() {
    RuleMarkup rule;
    rule.span.begin = tagBegin();
    rule.index = _ruleCount++;
    if (auto const index = _reader.getAttribute("dxfId")) {
      rule.formatIndex = std::string(*index);
    }
    rule.extensionId = _reader.getAttribute("id").value_or("");
    appendStart(rule.content, _reader, {"priority", "stopIfTrue", "dxfId", "id"});
    std::size_t const depth = _reader.getDepth();
    for (;;) {
      auto const event = _reader.next();
      if (event == XmlReader::Event::Start) {
        readRuleChild(rule);
      } else if (event == XmlReader::Event::End && _reader.getDepth() < depth) {
        break;
      }
    }
    rule.span.end = tagEnd();
    return rule;
  }

  void readRuleChild(RuleMarkup& rule) {
    if (_reader.is(XmlNamespace::Spreadsheet, "formula") ||
        _reader.is(XmlNamespace::ExtensionMain, "f")) {
      rule.formulas.push_back(readFormula());
    } else if (_reader.is(XmlNamespace::Spreadsheet, "extLst")) {
      readExtensions(rule);
    } else {
      appendElement(rule.content, _reader);
    }
  }

  /// A lone identity is set apart; whatever else there is belongs to the rule's content.
  void readExtensions(RuleMarkup& rule) {
    std::size_t const depth = _reader.getDepth();
    for (;;) {
      auto const event = _reader.next();
      if (event == XmlReader::Event::Start && _reader.is(XmlNamespace::Extension2009, "id")) {
        rule.extensionId = Workbook::trimXmlSpaces(_reader.readElementText());
      } else if (event == XmlReader::Event::Start &&
                 !_reader.is(XmlNamespace::Spreadsheet, "ext")) {
        appendElement(rule.content, _reader);
      } else if (event == XmlReader::Event::End && _reader.getDepth() < depth) {
        return;
      }
    }
  }

  /// After the start of an element that holds a text alone; a child makes the content nothing.
  [[nodiscard]] FormulaMarkup readFormula() {
    FormulaMarkup formula;
    Span content{tagEnd(), tagEnd()};
    std::size_t const depth = _reader.getDepth();
    bool isPlain = true;
    for (;;) {
      auto const event = _reader.next();
      if (event == XmlReader::Event::Text) {
        formula.text += _reader.getText();
      } else if (event == XmlReader::Event::Start) {
        isPlain = false;
      } else if (_reader.getDepth() < depth) {
        break;
      }
    }
    content.end = tagBegin();
    if (isPlain && content.begin <= content.end) {
      formula.content = content;
    }
    return formula;
  }

  std::string_view _bytes;
  std::size_t _shift;  ///< the reader does not count the byte-order mark
  XmlReader _reader;
  std::vector<FormatMarkup> _formats;
  std::size_t _ruleCount = 0;
};

}  // namespace

std::optional<std::vector<FormatMarkup>> readSheetMarkup(std::string_view bytes,
                                                         std::string const& part,
                                                         Workbook::Limits const& limits) {
  if (isUtf16(bytes)) {
    return std::nullopt;
  }
  return MarkupReader(bytes, part, limits).read();
}

std::vector<std::string> readDifferentialFormats(std::string const& bytes, std::string const& part,
                                                 Workbook::Limits const& limits) {
  XmlReader reader(std::make_unique<MemorySource>(bytes, part), limits);
  std::vector<std::string> formats;
  bool isInList = false;
  for (auto event = reader.next(); event != XmlReader::Event::Finished; event = reader.next()) {
    constexpr std::size_t listDepth = 2;
    if (event == XmlReader::Event::Start && isInList) {
      std::string& format = formats.emplace_back();
      appendElement(format, reader);
      // Lines between cells; a cell has none, and programs write them empty or not at all.
      eraseEmptyElements(format, "vertical");
      eraseEmptyElements(format, "horizontal");
    } else if (event == XmlReader::Event::Start) {
      isInList = reader.getDepth() == listDepth && reader.is("dxfs");
    } else if (event == XmlReader::Event::End && reader.getDepth() < listDepth) {
      isInList = false;
    }
  }
  return formats;
}

}  // namespace Zorv::Analysis
