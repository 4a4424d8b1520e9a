#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Utils/Exceptions.h"
#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"
#include "python/Native/Book.h"

namespace Zorv::Python {

/// Thrown when sheets cannot be drawn; what() says why.
class RenderError : public BaseRuntimeError {
public:
  using BaseRuntimeError::BaseRuntimeError;
};

struct RenderRequest {
  std::vector<std::size_t> sheets;  ///< none: those that can be seen
  std::optional<TableRange> range;  ///< of each sheet; nothing: all that is seen of it
  std::string format = "html";      ///< `html`, `png`, `svg` or `pdf`
  std::string theme = "auto";       ///< of a page: `auto`, `light` or `dark`
  double scale = 1;                 ///< of a picture
  unsigned threadCount = 1;
  std::string title;             ///< the name that a page shows
  std::filesystem::path module;  ///< the file of the module that draws
};

/// Bytes of a file, and what could not be drawn as the workbook means it.
struct Rendered {
  std::string bytes;
  std::vector<std::string> findings;
};

/// Sheets of a book as they look. A PNG or SVG shows the first one alone.
///
/// Throws OptionError for a format or a theme that there is not, RenderError, and what the budget
/// throws.
[[nodiscard]] Rendered renderSheets(Book const& book, RenderRequest const& request,
                                    WorkBudget& budget);

}  // namespace Zorv::Python
