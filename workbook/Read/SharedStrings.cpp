#include "workbook/Read/SharedStrings.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <pugixml.hpp>

#include "workbook/Read/FormatElements.h"
#include "workbook/Xml/XmlText.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

namespace {

/// After the start of a `t` element: reads its text. Leading and trailing spaces count only with
/// xml:space.
std::string readText(XmlReader& reader) {
  bool const keepsSpaces = reader.keepsSpaces();
  std::string const text = reader.readElementText();
  return unescapeXstring(keepsSpaces ? std::string_view(text) : trimXmlSpaces(text));
}

/// After the start of an `rPr` element: reads up to its end.
DOM::RunProps readRunProps(XmlReader& reader, Palette& palette) {
  pugi::xml_document document;
  DOM::RunProps props;
  readFont(readTree(reader, document.root()), palette, props);
  return props;
}

/// The runs of a text, while it is read.
class RunCollector {
public:
  RunCollector(XmlReader& reader, LoadState& state, Palette& palette) noexcept
      : _reader(reader), _state(state), _palette(palette) {}

  void begin(std::size_t byte) {
    if (_state.textRunCount > _state.limits.textRuns) {
      return;
    }
    if (++_state.textRunCount > _state.limits.textRuns) {
      _runs.clear();
      _state.document.addFinding(
          {_reader.getPartName(),
           {},
           {},
           fmt::format("the texts have more than {} runs, which is the limit; later runs look like "
                       "their cells",
                       _state.limits.textRuns)});
      return;
    }
    _runs.push_back({byte, {}});
    _state.memory.take(sizeof(TextRun));
  }

  /// After the start of an `rPr` element: reads up to its end.
  void readProps() {
    DOM::RunProps props = readRunProps(_reader, _palette);
    if (!_runs.empty()) {
      _runs.back().props = std::move(props);
    }
  }

  /// The runs of the whole text; null if none looks other than its cell.
  [[nodiscard]] std::shared_ptr<RichText const> finish() {
    bool const isPlain =
        std::ranges::all_of(_runs, [](TextRun const& run) { return run.props == DOM::RunProps(); });
    if (isPlain) {
      return nullptr;
    }
    if (_runs.front().begin > 0) {
      _runs.insert(_runs.begin(), TextRun());
    }
    return std::make_shared<RichText const>(std::move(_runs));
  }

private:
  XmlReader& _reader;
  LoadState& _state;
  Palette& _palette;
  RichText _runs;
};

}  // namespace

TextItem readTextItem(XmlReader& reader, LoadState& state, Palette& palette) {
  std::size_t const depth = reader.getDepth();
  std::string text;
  RunCollector runs(reader, state, palette);
  for (;;) {
    auto const event = reader.next();
    if (event == XmlReader::Event::End && reader.getDepth() < depth) {
      return {std::move(text), runs.finish()};
    }
    if (event != XmlReader::Event::Start) {
      continue;
    }
    if (reader.is("t")) {
      text += readText(reader);
      if (text.size() > reader.getLimits().xmlTokenBytes) {
        reader.fail(fmt::format("a text longer than {} bytes", reader.getLimits().xmlTokenBytes));
      }
    } else if (reader.is("r")) {
      runs.begin(text.size());
    } else if (reader.is("rPr")) {
      runs.readProps();
    } else {
      reader.skipElement();
    }
  }
}

SharedStrings readSharedStrings(XmlReader& reader, LoadState& state, Palette& palette) {
  SharedStrings strings;
  for (auto event = reader.next(); event != XmlReader::Event::Finished; event = reader.next()) {
    if (event != XmlReader::Event::Start || !reader.is("si")) {
      continue;
    }
    if (strings.texts.size() >= reader.getLimits().sharedTexts) {
      reader.fail(fmt::format("the workbook has more than {} shared texts, which is the limit",
                              reader.getLimits().sharedTexts));
    }
    TextItem item = readTextItem(reader, state, palette);
    if (item.runs) {
      strings.richTexts.emplace(strings.texts.size(), std::move(item.runs));
    }
    strings.texts.push_back(std::move(item.text));
    state.memory.take(sizeof(std::string) + strings.texts.back().size());
  }
  return strings;
}

}  // namespace Zorv::Workbook
