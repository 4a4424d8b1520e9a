#include "workbook/LoadWorkbook.h"

#include <algorithm>
#include <new>
#include <optional>
#include <utility>

#include "workbook/Package/Archive.h"
#include "workbook/Package/PackageFile.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/FormulaCollector.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/WorkbookReader.h"
#include "workbook/Recalculation/Doubts.h"
#include "workbook/Recalculation/Recalculate.h"

namespace Zorv::Workbook {

namespace {

/// `open()` gives the package; what it throws names the file, as do failures of reading.
template <class Open>
Document loadPackage(Open const& open, std::string const& name, LoadOptions const& options) {
  try {
    Archive archive(open(), options.limits, options.budget);
    Document document;
    LoadState state{archive, options.limits, document, MemoryCounter(options.budget),
                    options.semantics};
    WorkbookReader(state).read();
    std::optional<CellFormulas> all;
    if (state.usesClock) {
      all = collectFormulas(state);
    }
    recalculate(document, std::move(state.missing), std::move(all),
                {.localeName = options.localeName,
                 .timeZone = options.timeZone,
                 .positionLimit = options.limits.calculatedPositions,
                 .stepLimit = options.limits.calculatedSteps,
                 .textByteLimit = options.limits.calculatedTextBytes,
                 .newCellLimit = std::min(options.limits.cells - state.cellCount,
                                          std::max(options.limits.arrayCells, state.cellCount)),
                 .budget = options.budget});
    findDoubts(document, DocumentContextProvider(document, options.localeName, options.timeZone),
               options.budget);
    return document;
  } catch (PartError const& error) {
    throw LoadError(name, quote(error.getPart()), quote(error.getPlace()), error.getProblem());
  } catch (std::bad_alloc const&) {
    throw LoadError(name, {}, {},
                    "needs more memory to be read than there is; give the program more memory, or "
                    "save the workbook with fewer sheets and try again");
  }
}

}  // namespace

Document loadWorkbook(std::filesystem::path const& file, LoadOptions const& options) {
  return loadPackage([&] { return openPackageFile(file, options.limits.pipeBytes); },
                     options.name.empty() ? file.string() : options.name, options);
}

Document loadWorkbook(std::span<std::byte const> file, LoadOptions const& options) {
  return loadPackage(
      [file] {
        return openPackageBytes({reinterpret_cast<char const*>(file.data()), file.size()});
      },
      options.name.empty() ? "workbook in memory" : options.name, options);
}

}  // namespace Zorv::Workbook
