#include "workbook/LoadWorkbook.h"

#include "workbook/Package/Archive.h"
#include "workbook/Package/FileKind.h"
#include "workbook/Package/PartError.h"
#include "workbook/Read/ArrayCells.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/MissingResultCalculator.h"
#include "workbook/Read/WorkbookReader.h"

namespace Zorv::Workbook {

Document loadWorkbook(std::filesystem::path const& file, LoadOptions const& options) {
  try {
    refuseForeignFile(file);
    Archive archive(file, options.limits);
    Document document(file);
    LoadState state{archive, options.limits, document};
    WorkbookReader(state).read();
    addArrayCells(state);
    MissingResultCalculator(state, options.localeName, options.timeZone).calculate();
    return document;
  } catch (PartError const& error) {
    throw LoadError(file.string(), error.getPart(), error.getPlace(), error.getProblem());
  }
}

}  // namespace Zorv::Workbook
