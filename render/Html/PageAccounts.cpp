#include "render/Html/PageAccounts.h"

#include "OfficeUtils/LocaleContext.h"
#include "analysis/Explain/Explainer.h"

namespace Zorv::Render {

namespace {

class DocumentAccounts final : public PageAccounts {
public:
  DocumentAccounts(Workbook::Document const& document, std::string const& localeName,
                   DOM::TimeZone const& timeZone, WorkBudget* budget)
      : _locale(localeName, document.getDateSystem()),
        _explainer(document, localeName, timeZone, budget),
        _writer(document, _locale) {}

  Words::AccountText explain(std::size_t sheet, CellIndex cell) override {
    return _writer.describe(_explainer.explain(sheet, cell));
  }

private:
  OfficeUtils::LocaleContext _locale;
  Analysis::Explainer _explainer;
  Words::AccountWriter _writer;
};

}  // namespace

std::unique_ptr<PageAccounts> makePageAccounts(Workbook::Document const& document,
                                               std::string const& localeName,
                                               DOM::TimeZone const& timeZone, WorkBudget* budget) {
  return std::make_unique<DocumentAccounts>(document, localeName, timeZone, budget);
}

}  // namespace Zorv::Render
