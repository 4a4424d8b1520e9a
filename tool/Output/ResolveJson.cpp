#include <ostream>

#include "tool/Output/JsonText.h"
#include "tool/Output/ResolveOutput.h"

namespace Zorv::Tool {

namespace {

/// Writes each cell at once, so that memory does not grow with the file.
class ResolveJson final : public ResolveOutput {
public:
  ResolveJson(Selection const& selection, std::ostream& out) : _selection(selection), _out(out) {
    _out << beginJsonDocument(selection) << ",\"sheets\":[";
  }

  void beginSheet(Workbook::Sheet const& sheet) override {
    _out << (_hasSheet ? "\n]}," : "") << "\n{\"name\":" << toJsonText(sheet.name)
         << ",\"cells\":[";
    _hasSheet = true;
    _hasCell = false;
  }

  void add(ResolvedCell const& cell) override {
    _out << (_hasCell ? ",\n" : "\n") << toJsonText(cell);
    _hasCell = true;
  }

  void finish() override {
    _out << (_hasSheet ? "\n]}" : "") << "\n],\"summary\":" << toJsonSummary(_selection) << "}\n";
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
