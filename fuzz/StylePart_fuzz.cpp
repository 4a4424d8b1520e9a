// Loads a workbook whose styles are any text: the inner XML of the `styleSheet` element, and after
// a NUL byte that of the theme.
#include <string>

#include "fuzz/Fuzzing.h"
#include "fuzz/StoredArchive.h"
#include "tests/workbook/WorkbookBuilder.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(data), size);
  auto const split = text.find('\0');
  Zorv::TestSupport::WorkbookBuilder builder;
  builder
      .setSheet("<row r='1'><c r='A1' s='1'><v>1</v></c><c r='B1' s='2'><v>2.5</v></c></row>",
                "<conditionalFormatting sqref='A1:B2'>"
                "<cfRule type='cellIs' operator='greater' priority='1' dxfId='0'>"
                "<formula>1</formula></cfRule><cfRule type='duplicateValues' priority='2' "
                "dxfId='1'/></conditionalFormatting>")
      .setStyles(text.substr(0, split));
  if (split != std::string::npos) {
    builder.addRelationship("theme", "theme.xml")
        .setPart("xl/theme.xml",
                 "<a:theme xmlns:a='http://schemas.openxmlformats.org/drawingml/2006/main'>" +
                     text.substr(split + 1) + "</a:theme>");
  }
  Zorv::Fuzzing::loadAndResolve(Zorv::Fuzzing::makeStoredArchive(builder.makeParts()));
  return 0;
}
