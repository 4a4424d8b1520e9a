#include "python/Native/Book.h"

#include <filesystem>
#include <span>
#include <utility>

#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/PinnedMoment.h"
#include "workbook/LoadWorkbook.h"

namespace Zorv::Python {

namespace {

/// Loads the document at the moment of the options.
Workbook::Document load(BookSource const& source, BookOptions const& options, WorkBudget& budget) {
  try {
    OfficeUtils::LocaleContext const checked(options.localeName);
  } catch (BaseRuntimeError const& error) {
    throw OptionError(error.what());
  }
  OfficeUtils::PinnedMoment const moment(options.now);
  Workbook::LoadOptions const loading{.limits = options.limits,
                                      .localeName = options.localeName,
                                      .timeZone = options.timeZone,
                                      .name = options.name,
                                      .semantics = options.semantics,
                                      .budget = &budget};
  if (auto const* bytes = std::get_if<std::string_view>(&source)) {
    return Workbook::loadWorkbook(std::as_bytes(std::span(*bytes)), loading);
  }
  return Workbook::loadWorkbook(std::get<std::filesystem::path>(source), loading);
}

}  // namespace

Book::Book(BookSource const& source, BookOptions options, WorkBudget& budget)
    : _options(std::move(options)),
      _document(load(source, _options, budget)),
      _resolver(_document, _options.localeName, _options.timeZone) {}

Workbook::SheetResolver const& Book::getResolver(std::size_t sheet) const {
  std::scoped_lock const lock(_mutex);
  auto const found = _sheetResolvers.find(sheet);
  return found != _sheetResolvers.end()
             ? found->second
             : _sheetResolvers.emplace(sheet, _resolver.prepare(sheet)).first->second;
}

}  // namespace Zorv::Python
