#include <string>

#include <fmt/format.h>

#include "records/DifferenceJson.h"
#include "records/JsonBuilder.h"
#include "records/JsonText.h"
#include "tool/Output/DiffOutput.h"
#include "words/Moment.h"

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
    Records::appendJsonText(_out.text(), selection.getFile());
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

  void setEarlyEnd() { _out.setEarlyEnd(endLists(_list) + ",\"summary\":{\"complete\":false}}\n"); }

  void printSheet(std::string const& name, bool isInFirst) override {
    beginEntry(0);
    _out.text() += "{\"sheet\":";
    Records::appendJsonText(_out.text(), name);
    _out.text() += fmt::format(",\"onlyIn\":\"{}\"}}", isInFirst ? "first" : "second");
    _out.endEntry();
  }

  void printRule(Analysis::RuleDifference const& difference) override {
    printRecord(ruleList, difference);
  }

  void printCell(Analysis::CellDifference const& difference) override {
    printRecord(cellList, difference);
  }

  template <class Difference>
  void printRecord(int list, Difference const& difference) {
    beginEntry(list);
    Records::JsonBuilder json(_out.text());
    Records::DifferenceJson(_versions.first.getDocument(), _versions.second.getDocument(), json)
        .write(difference);
    _out.endEntry();
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
