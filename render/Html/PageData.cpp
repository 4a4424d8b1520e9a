#include "render/Html/PageData.h"

#include <cstdint>
#include <string_view>

#include <fmt/format.h>

#include "render/Html/AccountDictionary.h"
#include "render/Html/Markup.h"
#include "render/Html/RuledPositions.h"
#include "words/Printable.h"

namespace Zorv::Render {

namespace {

/// Writes the accounts of the cells of a picture that lie in ranges of rules.
class AccountCollector {
public:
  AccountCollector(PageAccounts* accounts, std::size_t accountLimit, std::size_t byteLimit) noexcept
      : _accounts(accounts), _accountLimit(accountLimit), _byteLimit(byteLimit) {}

  /// Appends an object of a sheet's accounts: by row of the table, a list of columns and accounts
  /// in turn.
  void append(std::string& out, SheetPicture const& sheet) {
    out += '{';
    RuledPositions ruled(sheet);
    bool isFirst = true;
    for (std::uint32_t row = 0; row < sheet.rows.size() && !_isCut; ++row) {
      auto const tableRow = sheet.rows[row].index;
      std::string cells;
      for (auto const column : ruled.findColumns(row)) {
        appendCell(cells, sheet.sheet, tableRow, sheet.columns[column].index);
      }
      if (!cells.empty()) {
        out += fmt::format("{}\"{}\":[{}]", isFirst ? "" : ",", tableRow, cells);
        isFirst = false;
      }
    }
    out += '}';
  }

  [[nodiscard]] AccountDictionary const& getDictionary() const noexcept { return _dictionary; }
  [[nodiscard]] std::size_t getCount() const noexcept { return _count; }
  [[nodiscard]] bool isCut() const noexcept { return _isCut; }

private:
  void appendCell(std::string& cells, std::size_t sheet, unsigned long row, unsigned long column) {
    _isCut = _isCut || _accounts == nullptr || _count == _accountLimit ||
             _dictionary.countBytes() >= _byteLimit;
    if (_isCut) {
      return;
    }
    auto const account =
        _dictionary.add(_accounts->explain(sheet, CellIndex(RowIndex(row), ColumnIndex(column))));
    cells += fmt::format("{}{},{}", cells.empty() ? "" : ",", column, account);
    ++_count;
  }

  PageAccounts* _accounts;
  std::size_t _accountLimit;
  std::size_t _byteLimit;
  AccountDictionary _dictionary;
  std::size_t _count = 0;
  bool _isCut = false;
};

void appendShortened(std::string& out, std::string_view text) {
  constexpr std::size_t widest = 300;
  appendJson(out, Words::shorten(text, widest));
}

void appendRule(std::string& out, PictureRule const& rule) {
  out += fmt::format("{{\"number\":{},\"stops\":{},\"text\":", rule.number, rule.stopsWhereTrue);
  appendShortened(out, rule.text);
  out += ",\"style\":";
  appendShortened(out, rule.style);
  out += ",\"ranges\":";
  appendShortened(out, rule.ranges);
  out += ",\"areas\":[";
  for (auto const& area : rule.areas) {
    out +=
        fmt::format("[{},{},{},{}],", area.firstRow, area.firstColumn, area.endRow, area.endColumn);
  }
  out.back() == ',' ? out.pop_back() : void();
  out += "]}";
}

void appendSheetData(std::string& out, SheetPicture const& sheet, AccountCollector& accounts) {
  out += "{\"name\":";
  appendShortened(out, sheet.name);
  out += ",\"columns\":[";
  for (auto const& column : sheet.columns) {
    out += fmt::format("{}{}", &column == sheet.columns.data() ? "" : ",", column.index);
  }
  out += "],\n\"rules\":[";
  for (auto const& rule : sheet.rules) {
    out += &rule == sheet.rules.data() ? "" : ",\n";
    appendRule(out, rule);
  }
  out += "],\n\"decisions\":[";
  for (auto const& decision : sheet.decisions) {
    out += fmt::format("{}[{}]", &decision == sheet.decisions.data() ? "" : ",",
                       fmt::join(decision, ","));
  }
  out += "],\n\"cells\":";
  accounts.append(out, sheet);
  out += '}';
}

}  // namespace

PageData writePageData(Picture const& picture, PageAccounts* accounts, std::size_t accountLimit,
                       std::size_t byteLimit) {
  AccountCollector collector(accounts, accountLimit, byteLimit);
  PageData data;
  data.json = "{\"sheets\":[";
  for (auto const& sheet : picture.sheets) {
    data.json += &sheet == picture.sheets.data() ? "" : ",\n";
    appendSheetData(data.json, sheet, collector);
  }
  data.json += "],\n" + collector.getDictionary().getMembers() + "}";
  data.accountCount = collector.getCount();
  data.isCut = collector.isCut();
  return data;
}

}  // namespace Zorv::Render
