#include "workbook/Read/ExternalLinkReader.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "DOM/CellStore.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "workbook/Package/PartError.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/OpenXml.h"
#include "workbook/Xml/XmlText.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

namespace {

/// Reader of one external link part.
class ExternalLinkReader {
public:
  ExternalLinkReader(LoadState& state, XmlReader& reader, std::size_t number) noexcept
      : _state(state), _reader(reader), _number(number) {}

  void read() {
    _reader.next();
    requireRoot(_reader, XmlNamespace::Spreadsheet, "externalLink");
    for (auto event = _reader.next(); event != XmlReader::Event::Finished; event = _reader.next()) {
      if (event == XmlReader::Event::Start) {
        readElement();
      }
    }
  }

private:
  void readElement() {
    if (_reader.is("sheetName")) {
      _names.push_back(unescapeXstring(_reader.getAttribute("val").value_or("")));
    } else if (_reader.is("sheetData")) {
      beginSheet();
    } else if (_reader.is("cell")) {
      readCell();
    }
  }

  /// Cells that follow belong to the sheet; to none if it has no name.
  void beginSheet() {
    _table = nullptr;
    auto const id = parseInteger(_reader.getAttribute("sheetId").value_or(""));
    if (id && *id >= 0 && static_cast<std::size_t>(*id) < _names.size()) {
      auto& sheets = _state.document.getExternalSheets();
      if (sheets.size() >= _state.limits.sheets) {
        _reader.fail(fmt::format("more than {} sheets of other workbooks, which is the limit",
                                 _state.limits.sheets));
      }
      sheets.push_back({fmt::format("[{}]{}", _number, _names[static_cast<std::size_t>(*id)]),
                        std::make_unique<DOM::Table>()});
      _table = sheets.back().table.get();
    }
  }

  void readCell() {
    auto const place = DOM::A1Notation::parseCell(_reader.getAttribute("r").value_or(""));
    std::string const type(_reader.getAttribute("t").value_or("n"));
    std::optional<std::string> text;
    std::size_t const depth = _reader.getDepth();
    while (_reader.next() != XmlReader::Event::End || _reader.getDepth() >= depth) {
      if (_reader.is("v") && !text) {
        text = _reader.readElementText();
      }
    }
    if (place && text && _table != nullptr) {
      store(*place, interpret(type, *text));
    }
  }

  [[nodiscard]] static FormulaValue interpret(std::string_view type, std::string const& text) {
    if (type == "str") {
      return FormulaModel::FormulaString{unescapeXstring(text)};
    }
    if (type == "b") {
      return FormulaModel::FormulaBoolean{parseBoolean(text).value_or(false)};
    }
    if (type == "e") {
      return FormulaModel::FormulaError{FormulaModel::parseErrorCode(trimXmlSpaces(text))
                                            .value_or(FormulaModel::FormulaErrorCode::Value)};
    }
    auto const number = parseNumber(text);
    return number ? FormulaValue(FormulaModel::FormulaNumber{FloatNumber(*number)})
                  : FormulaValue();
  }

  void store(CellIndex place, FormulaValue value) {
    if (++_state.cellCount > _state.limits.cells) {
      _reader.fail(fmt::format("the workbook has more than {} cells, which is the limit",
                               _state.limits.cells));
    }
    _state.memory.take(sizeof(DOM::CellStore::Entry));
    _table->obtainCell(place.getRow().get(), place.getColumn().get()).value = std::move(value);
  }

  LoadState& _state;
  XmlReader& _reader;
  std::size_t _number;
  std::vector<std::string> _names;
  DOM::Table* _table = nullptr;
};

}  // namespace

void readExternalLink(LoadState& state, std::string const& part, std::size_t number) {
  auto const reader = openXml(state.archive, part, PartUse::Streamed, state.limits);
  ExternalLinkReader(state, *reader, number).read();
}

}  // namespace Zorv::Workbook
