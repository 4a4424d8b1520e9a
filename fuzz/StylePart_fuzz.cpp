// Loads a workbook whose styles are any text: the inner XML of the `styleSheet` element, and after
// a NUL byte that of the theme.
#include <string_view>

#include "fuzz/Fuzzing.h"
#include "fuzz/WorkbookFrame.h"
#include "tests/workbook/WorkbookBuilder.h"

namespace {

using Zorv::Fuzzing::WorkbookFrame;
using Zorv::TestSupport::WorkbookBuilder;

WorkbookBuilder makeBuilder() {
  WorkbookBuilder builder;
  builder
      .setSheet("<row r='1'><c r='A1' s='1'><v>1</v></c><c r='B1' s='2'><v>2.5</v></c></row>",
                "<conditionalFormatting sqref='A1:B2'>"
                "<cfRule type='cellIs' operator='greater' priority='1' dxfId='0'>"
                "<formula>1</formula></cfRule><cfRule type='duplicateValues' priority='2' "
                "dxfId='1'/></conditionalFormatting>")
      .setStyles("");
  return builder;
}

WorkbookFrame makeThemed() {
  return {makeBuilder()
              .addRelationship("theme", "theme.xml")
              .setPart("xl/theme.xml",
                       "<a:theme xmlns:a='http://schemas.openxmlformats.org/drawingml/2006/main'>"
                       "</a:theme>")
              .makeParts(),
          {"xl/styles.xml", "xl/theme.xml"}};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static WorkbookFrame const plain(makeBuilder().makeParts(), {"xl/styles.xml"});
  static WorkbookFrame const themed = makeThemed();
  std::string_view const text(reinterpret_cast<char const*>(data), size);
  auto const split = text.find('\0');
  Zorv::Fuzzing::loadAndResolve(split == std::string_view::npos
                                    ? plain.fill({text})
                                    : themed.fill({text.substr(0, split), text.substr(split + 1)}));
  return 0;
}
