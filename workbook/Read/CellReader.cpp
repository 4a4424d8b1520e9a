#include "workbook/Read/CellReader.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "workbook/Package/PartError.h"
#include "workbook/Read/SharedStrings.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

FormulaValue numberValue(double number) { return FormulaModel::FormulaNumber{FloatNumber(number)}; }

FormulaValue textValue(std::string text) { return FormulaModel::FormulaString{std::move(text)}; }

/// Error codes that the value model does not have become `#VALUE!`.
FormulaValue errorValue(std::string_view text) {
  return FormulaModel::FormulaError{FormulaModel::parseErrorCode(trimXmlSpaces(text))
                                        .value_or(FormulaModel::FormulaErrorCode::Value)};
}

}  // namespace

CellReader::CellReader(LoadState& state, std::vector<std::string> const& sharedStrings,
                       StylesReader const& styles, std::size_t sheet, XmlReader& reader)
    : _state(state),
      _sharedStrings(sharedStrings),
      _styles(styles),
      _sheet(state.document.getSheets()[sheet]),
      _reader(reader),
      _formulas(state, sheet, reader) {}

unsigned long CellReader::beginRow() {
  if (auto const text = _reader.getAttribute("r")) {
    auto const number = parseInteger(*text);
    if (!number || *number < 1 || static_cast<unsigned long>(*number) > DOM::Table::rowCount) {
      fail(fmt::format("row {}", *text), "lies outside the sheet; the file is damaged");
    }
    _row = static_cast<unsigned long>(*number) - 1;
  } else {
    _row = _nextRow;
  }
  _nextRow = _row + 1;
  _nextColumn = 0;
  return _row;
}

void CellReader::readCell() {
  CellIndex const place = findPlace();
  _nextColumn = place.getColumn().get() + 1;
  DOM::SharedCellStylePtr style = findStyle(place);
  _content.type = _reader.getAttribute("t").value_or("n");
  readContent(place);
  store(place, std::move(style));
}

CellIndex CellReader::findPlace() {
  auto const reference = _reader.getAttribute("r");
  if (reference) {
    auto const place = DOM::A1Notation::parseCell(*reference);
    if (!place) {
      fail(fmt::format("cell {}", *reference), "is no cell of the sheet; the file is damaged");
    }
    return *place;
  }
  if (_row >= DOM::Table::rowCount || _nextColumn >= DOM::Table::columnCount) {
    fail(fmt::format("row {}", _row + 1), "has more cells than a sheet has columns");
  }
  return {RowIndex(_row), ColumnIndex(_nextColumn)};
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
    _state.document.addFinding(
        {_sheet.part, _sheet.name, DOM::A1Notation::toAddress(place),
         fmt::format("the cell has the style \"{}\", which the file does not have", *text)});
  }
  return style;
}

void CellReader::readContent(CellIndex place) {
  std::size_t const depth = _reader.getDepth();
  _content.value.clear();
  _content.inlineText.reset();
  _content.hasValue = false;
  _content.hasFormula = false;
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
      _content.inlineText = readTextItem(_reader);
    } else if (_reader.is("f")) {
      _content.hasFormula = true;
      _formulas.read(place);
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
  if (FormulaModel::isFormulaEmpty(value) && !style && !_content.hasFormula) {
    return;
  }
  if (++_state.cellCount > _state.limits.cells) {
    fail(fmt::format("cell {}", DOM::A1Notation::toAddress(place)),
         fmt::format("the workbook has more than {} cells, which is the limit",
                     _state.limits.cells));
  }
  DOM::Cell& cell = _sheet.table->obtainCell(place.getRow().get(), place.getColumn().get());
  cell.value = std::move(value);
  cell.style = std::move(style);
  cell.hasFormula = _content.hasFormula;
  if (isMissing) {
    _formulas.addMissingResult(place);
  }
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
    return errorValue(value);
  }
  bool const isDate = type == "d";
  auto const number =
      isDate ? parseIsoDate(value, _state.document.getDateSystem()) : parseNumber(value);
  return number ? numberValue(*number) : refuse(place, isDate ? "no date" : "no number");
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
  if (!index || *index < 0 || static_cast<std::size_t>(*index) >= _sharedStrings.size()) {
    fail(fmt::format("cell {}", DOM::A1Notation::toAddress(place)),
         fmt::format("refers to the shared text \"{}\", but the file has {}; the file is damaged",
                     _content.value, _sharedStrings.size()));
  }
  return textValue(_sharedStrings[static_cast<std::size_t>(*index)]);
}

/// A value that does not fit its type: the cell stays empty.
FormulaValue CellReader::refuse(CellIndex place, std::string_view what) {
  constexpr std::size_t shownSize = 40;
  _state.document.addFinding({_sheet.part, _sheet.name, DOM::A1Notation::toAddress(place),
                              fmt::format("the value \"{}\" is {}; the cell is read as empty",
                                          _content.value.substr(0, shownSize), what)});
  return {};
}

void CellReader::fail(std::string const& place, std::string const& problem) const {
  throw PartError(_sheet.part, place, problem);
}

}  // namespace Zorv::Workbook
