// Loads and resolves a workbook whose sheet is any text: the inner XML of its `worksheet` element.
#include <string>

#include "fuzz/Fuzzing.h"
#include "tests/workbook/WorkbookBuilder.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const sheet(reinterpret_cast<char const*>(data), size);
  Zorv::Fuzzing::loadAndResolve(
      Zorv::TestSupport::WorkbookBuilder()
          .setWorkbook("",
                       "<definedNames><definedName name='Rate'>Sheet1!$A$1</definedName>"
                       "<definedName name='List'>Sheet1!$A$1,Sheet1!A1</definedName>"
                       "</definedNames>")
          .setSharedStrings("<si><t>one</t></si><si><r><t>t</t></r><r><t>wo</t></r></si>")
          .setStyles("<cellXfs><xf/><xf numFmtId='14'/></cellXfs><dxfs><dxf><fill><patternFill>"
                     "<bgColor rgb='FFFF0000'/></patternFill></fill></dxf><dxf/></dxfs>")
          .addSheet("Sheet1", sheet)
          .makeBytes());
  return 0;
}
