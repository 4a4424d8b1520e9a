#include "workbook/LoadWorkbook.h"

#include <utility>

#include "workbook/Package/Archive.h"
#include "workbook/Package/FileKind.h"
#include "workbook/Package/PartError.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/WorkbookReader.h"
#include "workbook/Recalculation/Recalculate.h"

namespace Zorv::Workbook {

Document loadWorkbook(std::filesystem::path const& file, LoadOptions const& options) {
  try {
    refuseForeignFile(file);
    Archive archive(file, options.limits, options.budget);
    Document document;
    LoadState state{archive, options.limits, document};
    WorkbookReader(state).read();
    recalculate(document, std::move(state.missing),
                {.localeName = options.localeName,
                 .timeZone = options.timeZone,
                 .positionLimit = options.limits.calculatedPositions,
                 .newCellLimit = options.limits.cells - state.cellCount});
    return document;
  } catch (PartError const& error) {
    throw LoadError(file.string(), error.getPart(), error.getPlace(), error.getProblem());
  }
}

}  // namespace Zorv::Workbook
