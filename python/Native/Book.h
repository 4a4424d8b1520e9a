#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <variant>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Exceptions.h"
#include "Utils/WorkBudget.h"
#include "workbook/Document.h"
#include "workbook/DocumentResolver.h"
#include "workbook/Limits.h"
#include "workbook/Semantics.h"

/// The C++ half of the Python module.
namespace Zorv::Python {

/// An option that the caller has given a value that it cannot have.
class OptionError : public BaseRuntimeError {
public:
  using BaseRuntimeError::BaseRuntimeError;
};

/// How a workbook is read and resolved.
struct BookOptions {
  std::string name;  ///< in messages; empty: that of the file
  std::string localeName;
  DOM::TimeZone timeZone;
  OfficeUtils::Clock::TimePoint now;
  Workbook::Semantics semantics = Workbook::Semantics::Own;
  Workbook::Limits limits;
};

/// A file's path, or the bytes of one, which are borrowed while the book is made.
using BookSource = std::variant<std::filesystem::path, std::string_view>;

/// A workbook that is read once and then asked many things.
///
/// What the rules of a sheet need is prepared when the first cell of the sheet asks for it, and
/// kept. Threads: const members may run concurrently.
class Book {
public:
  /// Throws OptionError for an unknown locale, Workbook::LoadError, and what the budget throws.
  Book(BookSource const& source, BookOptions options, WorkBudget& budget);

  [[nodiscard]] Workbook::Document const& getDocument() const noexcept { return _document; }
  [[nodiscard]] BookOptions const& getOptions() const noexcept { return _options; }
  /// Throws std::out_of_range for an index that is not there.
  [[nodiscard]] Workbook::Sheet const& getSheet(std::size_t sheet) const {
    return _document.getSheets().at(sheet);
  }

  /// Resolver of the cells of a sheet. Valid as long as the book.
  [[nodiscard]] Workbook::SheetResolver const& getResolver(std::size_t sheet) const;

private:
  BookOptions _options;
  Workbook::Document _document;
  Workbook::DocumentResolver _resolver;
  mutable std::mutex _mutex;
  mutable std::map<std::size_t, Workbook::SheetResolver> _sheetResolvers;  ///< by sheet
};

}  // namespace Zorv::Python
