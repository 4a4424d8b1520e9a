#include <string>

#include "records/AccountJson.h"
#include "records/JsonBuilder.h"
#include "tool/Output/ExplainOutput.h"
#include "tool/Output/JsonDocument.h"

namespace Zorv::Tool {

namespace {

class ExplainJson final : public ExplainOutput {
public:
  ExplainJson(Selection const& selection, OfficeUtils::LocaleContext const& locale,
              Report const& report, OutputBuffer& out)
      : _report(report), _writer(selection.getDocument(), locale), _out(out) {
    _out.text() += beginJsonDocument(selection) + ",\"cells\":[";
    _out.setEarlyEnd("\n],\"complete\":false}\n");
  }

  void add(Analysis::CellAccount const& account) override {
    _out.text() += _hasCell ? ",\n" : "\n";
    _hasCell = true;
    Records::JsonBuilder json(_out.text());
    json.beginObject();
    _writer.write(account, json);
    json.endObject();
    _out.endEntry();
  }

  void finish() override {
    _out.text() += "\n],\"complete\":";
    _out.text() += _report.isComplete() ? "true}\n" : "false}\n";
  }

private:
  Report const& _report;
  Records::AccountJson _writer;
  OutputBuffer& _out;
  bool _hasCell = false;
};

class ExplainJsonLines final : public ExplainOutput {
public:
  ExplainJsonLines(Selection const& selection, OfficeUtils::LocaleContext const& locale,
                   OutputBuffer& out)
      : _file(selection.getFile()), _writer(selection.getDocument(), locale), _out(out) {}

  void add(Analysis::CellAccount const& account) override {
    Records::JsonBuilder json(_out.text());
    json.beginObject().key("file").text(_file);
    _writer.write(account, json);
    json.endObject();
    _out.text() += '\n';
    _out.endEntry();
  }

  void finish() override {}

private:
  std::string const& _file;
  Records::AccountJson _writer;
  OutputBuffer& _out;
};

}  // namespace

std::unique_ptr<ExplainOutput> makeExplainJson(Selection const& selection,
                                               OfficeUtils::LocaleContext const& locale,
                                               Report const& report, OutputBuffer& out) {
  return std::make_unique<ExplainJson>(selection, locale, report, out);
}

std::unique_ptr<ExplainOutput> makeExplainJsonLines(Selection const& selection,
                                                    OfficeUtils::LocaleContext const& locale,
                                                    OutputBuffer& out) {
  return std::make_unique<ExplainJsonLines>(selection, locale, out);
}

}  // namespace Zorv::Tool
