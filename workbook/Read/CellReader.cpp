#include "workbook/Read/CellReader.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "DOM/CellStore.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

FormulaValue numberValue(double number) { return FormulaModel::FormulaNumber{FloatNumber(number)}; }

FormulaValue textValue(std::string text) { return FormulaModel::FormulaString{std::move(text)}; }

}  // namespace

CellReader::CellReader(LoadState& state, SharedStrings const& sharedStrings, StylesReader& styles,
                       std::size_t sheet, XmlReader& reader)
    : _state(state),
      _sharedStrings(sharedStrings),
      _styles(styles),
      _sheet(state.document.getSheets()[sheet]),
      _reader(reader),
      _places(reader),
      _formulas(state.missing, sheet, reader) {}

void CellReader::readCell() {
  CellIndex const place = _places.findCell();
  DOM::SharedCellStylePtr style = findStyle(place);
  _content.type = _reader.getAttribute("t").value_or("n");
  readContent(place);
  store(place, std::move(style));
}

void CellReader::readPlainCells() {
  while (auto const value = _reader.takePlainElement("c", "v")) {
    CellIndex const place = _places.findCell();
    DOM::SharedCellStylePtr style = findStyle(place);
    clearContent();
    _content.type = _reader.getAttribute("t").value_or("n");
    _content.value = *value;
    _content.hasValue = true;
    store(place, std::move(style));
  }
}

/// Cells that name no style have the first one, which is not kept with each of them.
DOM::SharedCellStylePtr CellReader::findStyle(CellIndex place) {
  auto const text = _reader.getAttribute("s");
  if (!text || *text == "0") {
    return nullptr;
  }
  auto const index = parseInteger(*text);
  auto const& style = _styles.getCellStyle(index && *index >= 0 ? static_cast<std::size_t>(*index)
                                                                : _styles.getCellStyleCount());
  if (!style) {
    addFinding(place, fmt::format("the cell has the style \"{}\", which the file does not have",
                                  quote(*text)));
  }
  return style;
}

void CellReader::clearContent() {
  _content.value.clear();
  _content.inlineText.reset();
  _content.runs.reset();
  _content.hasValue = false;
  _content.hasFormula = false;
}

void CellReader::readContent(CellIndex place) {
  std::size_t const depth = _reader.getDepth();
  clearContent();
  for (;;) {
    auto const event = _reader.next();
    if (event == XmlReader::Event::End && _reader.getDepth() < depth) {
      return;
    }
    if (event != XmlReader::Event::Start) {
      continue;
    }
    if (_reader.is("v")) {
      readValueText();
    } else if (_reader.is("is")) {
      TextItem item = readTextItem(_reader, _state, _styles.getPalette());
      _content.inlineText = std::move(item.text);
      _content.runs = std::move(item.runs);
    } else if (_reader.is("f")) {
      _content.hasFormula = true;
      _formulas.read(place);
      _state.usesClock =
          _state.usesClock || _state.volatileWords.findIn(_formulas.getLastText()).clock;
    } else {
      _reader.skipElement();
    }
  }
}

void CellReader::readValueText() {
  std::size_t const depth = _reader.getDepth();
  _content.hasValue = true;
  for (;;) {
    auto const event = _reader.next();
    if (event == XmlReader::Event::Text) {
      _content.value += _reader.getText();
    } else if (event == XmlReader::Event::Start) {
      _reader.skipElement();
    } else if (_reader.getDepth() < depth) {
      return;
    }
  }
}

void CellReader::store(CellIndex place, DOM::SharedCellStylePtr style) {
  bool const isMissing = lacksResult();  // interpret() takes the text
  FormulaValue value = interpret(place);
  bool const repeated = isRepeated(place);
  if (FormulaModel::isFormulaEmpty(value) && !style && !_content.hasFormula && !repeated) {
    return;
  }
  countCell(place);
  DOM::Cell& cell = _sheet.table->obtainCell(place.getRow().get(), place.getColumn().get());
  cell.value = std::move(value);
  cell.style = std::move(style);
  cell.hasFormula = _content.hasFormula;
  keepRuns(place, repeated);
  if (isMissing) {
    _formulas.keepCell(place);
  }
}

/// A repeated cell may hide an earlier one with runs.
void CellReader::keepRuns(CellIndex place, bool repeated) {
  if (_content.runs || (repeated && !_sheet.richCells.empty())) {
    _sheet.richCells.push_back(
        {place.getRow().get(), place.getColumn().get(), std::move(_content.runs)});
    _state.memory.take(sizeof(RichCell));
  }
}

void CellReader::finish() {
  auto& cells = _sheet.richCells;
  auto const placeOf = [](RichCell const& cell) { return std::pair(cell.row, cell.column); };
  std::ranges::stable_sort(cells, {}, placeOf);
  // The last of each place counts, so the order is turned around to find it first.
  std::ranges::reverse(cells);
  auto const hasSamePlace = [&](RichCell const& a, RichCell const& b) {
    return placeOf(a) == placeOf(b);
  };
  cells.erase(std::unique(cells.begin(), cells.end(), hasSamePlace), cells.end());
  std::ranges::reverse(cells);
  std::erase_if(cells, [](RichCell const& cell) { return !cell.text; });
}

/// Cells stand in the order of rows and columns, so that only one out of order can be a repeated
/// one.
bool CellReader::isRepeated(CellIndex place) {
  if (!_last || *_last < place) {
    _last = place;
    return false;
  }
  bool const repeated =
      _sheet.table->findCell(place.getRow().get(), place.getColumn().get()) != nullptr;
  if (repeated) {
    addFinding(place, "the file has the cell more than once; the last one counts");
  }
  return repeated;
}

void CellReader::countCell(CellIndex place) {
  if (++_state.cellCount > _state.limits.cells) {
    fail(fmt::format("cell {}", DOM::A1Notation::toAddress(place)),
         fmt::format("the workbook has more than {} cells, which is the limit",
                     _state.limits.cells));
  }
  _state.memory.take(sizeof(DOM::CellStore::Entry));
}

/// An empty text is a result, if it is marked as a text.
bool CellReader::lacksResult() const noexcept {
  return _content.hasFormula && !_content.inlineText &&
         (_content.type != "str" || !_content.hasValue) && trimXmlSpaces(_content.value).empty();
}

FormulaValue CellReader::interpret(CellIndex place) {
  std::string_view const type = _content.type;
  if (_content.inlineText) {
    return textValue(std::move(*_content.inlineText));
  }
  if (type == "str" && _content.hasValue) {
    return interpretResult();
  }
  std::string_view const value = trimXmlSpaces(_content.value);
  if (value.empty()) {
    return {};
  }
  if (type == "s") {
    return interpretShared(place);
  }
  if (type == "b") {
    auto const truth = parseBoolean(value);
    return truth ? FormulaModel::FormulaBoolean{*truth} : refuse(place, "no truth value");
  }
  if (type == "e") {
    return interpretError(place, value);
  }
  if (type == "d") {
    auto const date = parseIsoDate(value, _state.document.getDateSystem());
    return date ? numberValue(*date) : refuse(place, "no date");
  }
  return interpretNumber(place, value);
}

/// Also values of unknown types.
FormulaValue CellReader::interpretNumber(CellIndex place, std::string_view text) {
  if (_content.type != "n" && _content.type != "str" && _content.type != "inlineStr") {
    addFinding(place,
               fmt::format("the type \"{}\" of the cell is not known; it is read as a number",
                           quote(_content.type)));
  }
  auto const number = parseNumber(text);
  return number ? numberValue(*number) : refuse(place, "no number");
}

/// Error codes that the value model does not have become `#VALUE!`.
FormulaValue CellReader::interpretError(CellIndex place, std::string_view text) {
  auto const code = FormulaModel::parseErrorCode(text);
  if (!code) {
    addFinding(place,
               fmt::format("the error \"{}\" is not known; it is read as #VALUE!", quote(text)));
  }
  return FormulaModel::FormulaError{code.value_or(FormulaModel::FormulaErrorCode::Value)};
}

/// A formula's result that is not a number. Some writers store errors as texts; formulas whose
/// result is such a text are far rarer.
FormulaValue CellReader::interpretResult() const {
  auto const error = _content.hasFormula ? FormulaModel::parseErrorCode(_content.value)
                                         : boost::optional<FormulaModel::FormulaErrorCode>();
  if (error) {
    return FormulaModel::FormulaError{*error};
  }
  return textValue(unescapeXstring(_content.value));
}

FormulaValue CellReader::interpretShared(CellIndex place) {
  auto const index = parseInteger(_content.value);
  if (!index || *index < 0 || static_cast<std::size_t>(*index) >= _sharedStrings.texts.size()) {
    fail(fmt::format("cell {}", DOM::A1Notation::toAddress(place)),
         fmt::format("refers to the shared text \"{}\", but the file has {}; the file is damaged",
                     quote(_content.value), _sharedStrings.texts.size()));
  }
  std::string const& text = _sharedStrings.texts[static_cast<std::size_t>(*index)];
  if (!_sharedStrings.richTexts.empty()) {
    auto const runs = _sharedStrings.richTexts.find(static_cast<std::size_t>(*index));
    _content.runs = runs != _sharedStrings.richTexts.end() ? runs->second : nullptr;
  }
  _state.sharedTextBytes += text.size();
  _state.memory.take(text.size());
  std::uint64_t const limit =
      std::max(_state.limits.sharedTextBytes,
               _state.limits.textBytesPerFileByte * _state.archive.getFileBytes());
  if (_state.sharedTextBytes > limit) {
    fail(fmt::format("cell {}", DOM::A1Notation::toAddress(place)),
         fmt::format("the texts that cells share have more than {} bytes in all cells together, "
                     "which is the limit for a file of its size",
                     limit));
  }
  return textValue(text);
}

/// A value that does not fit its type: the cell stays empty.
FormulaValue CellReader::refuse(CellIndex place, std::string_view what) {
  constexpr std::size_t shownSize = 40;
  addFinding(place, fmt::format("the value \"{}\" is {}; the cell is read as empty",
                                quote(_content.value, shownSize), what));
  return {};
}

void CellReader::addFinding(CellIndex place, std::string message) {
  _state.document.addFinding(
      {_sheet.part, _sheet.name, DOM::A1Notation::toAddress(place), std::move(message)});
}

void CellReader::fail(std::string const& place, std::string const& problem) const {
  throw PartError(_sheet.part, place, problem);
}

}  // namespace Zorv::Workbook
