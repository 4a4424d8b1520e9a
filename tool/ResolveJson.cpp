#include <ostream>

#include "tool/Json.h"
#include "tool/ResolveOutput.h"
#include "workbook/Addresses.h"

namespace Zorv::Tool {

namespace {

/// Writes cell by cell, so that what is kept in memory does not grow with the file.
class ResolveJson final : public ResolveOutput {
public:
  ResolveJson(Selection const& selection, std::ostream& out) : _selection(selection), _out(out) {
    auto const head = toLine(describeRun(selection));
    _out << head.substr(0, head.size() - 1) << ",\"sheets\":[";
  }

  void beginSheet(Workbook::Sheet const& sheet) override {
    _out << (_hasSheet ? "\n]}," : "") << "\n{\"name\":" << toLine(sheet.name) << ",\"cells\":[";
    _hasSheet = true;
    _hasCell = false;
  }

  void add(ResolvedCell const& cell) override {
    auto const* cellObject = cell.cellInfo.getCell();
    auto rules = Json::array();
    for (auto const* rule : cell.deciding) {
      rules.push_back(toJson(*rule));
    }
    Json const json = {{"cell", Workbook::toAddress(cell.cellInfo.getCellIndex())},
                       {"value", cellObject ? toJson(cellObject->value) : Json(nullptr)},
                       {"style", toJson(cell.style->get())},
                       {"rules", rules}};
    _out << (_hasCell ? ",\n" : "\n") << toLine(json);
    _hasCell = true;
  }

  void finish() override {
    _out << (_hasSheet ? "\n]}" : "") << "\n],\"summary\":" << toLine(summarise(_selection))
         << "}\n";
  }

private:
  Selection const& _selection;
  std::ostream& _out;
  bool _hasSheet = false;
  bool _hasCell = false;
};

}  // namespace

std::unique_ptr<ResolveOutput> makeResolveJson(Selection const& selection, std::ostream& out) {
  return std::make_unique<ResolveJson>(selection, out);
}

}  // namespace Zorv::Tool
