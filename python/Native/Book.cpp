#include "python/Native/Book.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/PinnedMoment.h"
#include "workbook/DocumentValueProvider.h"
#include "workbook/LoadWorkbook.h"

namespace Zorv::Python {

namespace {

/// Bytes as a file in memory, which has a path for this process alone.
class MemoryFile {
public:
  /// Throws std::system_error if there is no room for them.
  explicit MemoryFile(std::string_view bytes) : _descriptor(memfd_create("workbook", MFD_CLOEXEC)) {
    while (_descriptor >= 0 && !bytes.empty()) {
      auto const count = write(_descriptor, bytes.data(), bytes.size());
      if (count < 0) {
        close(_descriptor);
        throw std::system_error(errno, std::generic_category(), "memory for the workbook");
      }
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }
  MemoryFile(MemoryFile const&) = delete;
  MemoryFile& operator=(MemoryFile const&) = delete;
  ~MemoryFile() { close(_descriptor); }

  [[nodiscard]] std::filesystem::path getPath() const {
    return "/proc/self/fd/" + std::to_string(_descriptor);
  }

private:
  int _descriptor;
};

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
    MemoryFile const file(*bytes);
    return Workbook::loadWorkbook(file.getPath(), loading);
  }
  return Workbook::loadWorkbook(std::get<std::filesystem::path>(source), loading);
}

std::unique_ptr<ConditionalFormatters::ValueContextProvider> makeValues(
    Workbook::Document const& document, BookOptions const& options) {
  return std::make_unique<Workbook::DocumentValueProvider>(document, options.localeName,
                                                           options.timeZone);
}

}  // namespace

Book::Book(BookSource const& source, BookOptions options, WorkBudget& budget)
    : _options(std::move(options)),
      _document(load(source, _options, budget)),
      _visualValues(makeValues(_document, _options)),
      _calculator(makeValues(_document, _options)) {}

Book::Resolvers::Resolvers(
    Workbook::Document const& document, std::size_t sheet,
    ConditionalFormatters::ConditionalFormattingPropsCalculator const& calculator,
    ConditionalFormatters::ValueContextProvider const& values)
    : rules(document, sheet,
            calculator.getConditionalFormatRefs(*document.getSheets()[sheet].table)),
      conditions(calculator.prepare(document.getStyles(), *document.getSheets()[sheet].table)),
      visuals({.table = *document.getSheets()[sheet].table,
               .formats = document.getSheets()[sheet].visualFormats,
               .provider = values,
               .conditionalFormats =
                   calculator.getConditionalFormatRefs(*document.getSheets()[sheet].table),
               .resolver = conditions,
               .styles = document.getStyles()}) {}

Book::Resolvers const& Book::getResolvers(std::size_t sheet) const {
  std::scoped_lock const lock(_mutex);
  auto& resolvers = _resolvers[sheet];
  if (!resolvers) {
    resolvers = std::make_unique<Resolvers const>(_document, sheet, _calculator, *_visualValues);
  }
  return *resolvers;
}

}  // namespace Zorv::Python
