#include <string>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "tool/Output/DiffOutput.h"
#include "tool/Output/DiffText.h"
#include "tool/Output/JsonText.h"
#include "words/Moment.h"
#include "words/VisualText.h"

namespace Zorv::Tool {

namespace {

/// One document: the sheets, the rules and the cells that differ, each in a line of its own.
class DiffJson final : public DiffOutput {
public:
  DiffJson(VersionPair const& versions, MomentPair const& moments, OutputBuffer& out)
      : _versions(versions), _out(out) {
    _out.text() += "{\"version\":1,\"first\":";
    appendVersion(versions.first, moments.first);
    _out.text() += ",\"second\":";
    appendVersion(versions.second, moments.second);
    _out.text() += ",\"sheets\":[";
    setEarlyEnd();
  }

  void finish(bool isComplete) override {
    _out.text() += endLists(_list);
    _out.text() +=
        fmt::format(",\"summary\":{{\"sheets\":{},\"rules\":{},\"cells\":{},\"complete\":{}}}}}\n",
                    countSheets(), countRules(), countCells(), isComplete);
    _out.setEarlyEnd({});
    _out.endEntry();
  }

private:
  // The lists of the document, in their order.
  static constexpr int ruleList = 1;
  static constexpr int cellList = 2;

  /// The end of a list and of those after it.
  static std::string endLists(int list) {
    std::string text = "\n]";
    text += list < ruleList ? ",\"rules\":[\n]" : "";
    text += list < cellList ? ",\"cells\":[\n]" : "";
    return text;
  }

  void appendVersion(Selection const& selection, OfficeUtils::Clock::TimePoint moment) {
    auto const now =
        std::chrono::floor<std::chrono::seconds>(selection.getOptions().timeZone.toLocal(moment));
    _out.text() += "{\"file\":";
    appendJsonText(_out.text(), selection.getFile());
    _out.text() += fmt::format(",\"now\":\"{}\"}}", Words::toText(now));
  }

  /// Begins an entry of a list, after the end of the lists before it.
  void beginEntry(int list) {
    if (_list < list) {
      for (; _list < list; _hasEntry = false) {
        ++_list;
        _out.text() += _list == ruleList ? "\n],\"rules\":[" : "\n],\"cells\":[";
      }
      setEarlyEnd();
    }
    _out.text() += _hasEntry ? ",\n" : "\n";
    _hasEntry = true;
  }

  void endEntry() {
    _out.text() += '}';
    _out.endEntry();
  }

  void setEarlyEnd() { _out.setEarlyEnd(endLists(_list) + ",\"summary\":{\"complete\":false}}\n"); }

  void printSheet(std::string const& name, bool isInFirst) override {
    beginEntry(0);
    _out.text() += "{\"sheet\":";
    appendJsonText(_out.text(), name);
    _out.text() += fmt::format(",\"onlyIn\":\"{}\"", isInFirst ? "first" : "second");
    endEntry();
  }

  void printRule(Analysis::RuleDifference const& difference) override {
    auto const& selection = difference.first ? _versions.first : _versions.second;
    auto const& rule = difference.first ? *difference.first : *difference.second;
    beginEntry(ruleList);
    appendSheet(selection.getDocument().getSheets()[rule.sheet].name);
    _out.text() += fmt::format(",\"change\":\"{}\",\"first\":", describeChange(difference));
    appendRule(_versions.first, difference.first);
    _out.text() += ",\"second\":";
    appendRule(_versions.second, difference.second);
    endEntry();
  }

  void printCell(Analysis::CellDifference const& difference) override {
    beginEntry(cellList);
    appendSheet(_versions.first.getDocument().getSheets()[difference.firstSheet].name);
    _out.text() +=
        fmt::format(",\"cell\":\"{}\",\"first\":", DOM::A1Notation::toAddress(difference.cell));
    appendLook(difference.first);
    _out.text() += ",\"second\":";
    appendLook(difference.second);
    endEntry();
  }

  void appendSheet(std::string const& name) {
    _out.text() += "{\"sheet\":";
    appendJsonText(_out.text(), name);
  }

  void appendRule(Selection const& selection, Workbook::Rule const* rule) {
    _out.text() += rule != nullptr ? toJsonText(selection.getDocument(), *rule) : "null";
  }

  void appendLook(Analysis::CellLook const& look) {
    if (look.hasFailed) {
      _out.text() += "{\"failed\":true}";
      return;
    }
    _out.text() += "{\"style\":";
    _out.text() += look.style ? toJsonText(look.style->get()) : "{}";
    if (std::string const visuals = Words::describe(look.visuals); !visuals.empty()) {
      _out.text() += ",\"visuals\":";
      appendJsonText(_out.text(), visuals);
    }
    _out.text() += '}';
  }

  VersionPair const& _versions;
  OutputBuffer& _out;
  int _list = 0;
  bool _hasEntry = false;
};

}  // namespace

std::unique_ptr<DiffOutput> makeDiffJson(VersionPair const& versions, MomentPair const& moments,
                                         OutputBuffer& out) {
  return std::make_unique<DiffJson>(versions, moments, out);
}

}  // namespace Zorv::Tool
