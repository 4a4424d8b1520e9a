#include "workbook/Read/NumberFormats.h"

#include <algorithm>
#include <array>
#include <utility>

#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

struct BuiltInFormat {
  long identifier;
  char const* code;
};

constexpr std::array builtInFormats{
    BuiltInFormat{0, "General"},
    BuiltInFormat{1, "0"},
    BuiltInFormat{2, "0.00"},
    BuiltInFormat{3, "#,##0"},
    BuiltInFormat{4, "#,##0.00"},
    BuiltInFormat{5, R"("$"#,##0_);\("$"#,##0\))"},
    BuiltInFormat{6, R"("$"#,##0_);[Red]\("$"#,##0\))"},
    BuiltInFormat{7, R"("$"#,##0.00_);\("$"#,##0.00\))"},
    BuiltInFormat{8, R"("$"#,##0.00_);[Red]\("$"#,##0.00\))"},
    BuiltInFormat{9, "0%"},
    BuiltInFormat{10, "0.00%"},
    BuiltInFormat{11, "0.00E+00"},
    BuiltInFormat{12, "# ?/?"},
    BuiltInFormat{13, "# ?\?/?\?"},
    BuiltInFormat{14, "mm-dd-yy"},
    BuiltInFormat{15, "d-mmm-yy"},
    BuiltInFormat{16, "d-mmm"},
    BuiltInFormat{17, "mmm-yy"},
    BuiltInFormat{18, "h:mm AM/PM"},
    BuiltInFormat{19, "h:mm:ss AM/PM"},
    BuiltInFormat{20, "h:mm"},
    BuiltInFormat{21, "h:mm:ss"},
    BuiltInFormat{22, "m/d/yy h:mm"},
    BuiltInFormat{37, "#,##0 ;(#,##0)"},
    BuiltInFormat{38, "#,##0 ;[Red](#,##0)"},
    BuiltInFormat{39, "#,##0.00;(#,##0.00)"},
    BuiltInFormat{40, "#,##0.00;[Red](#,##0.00)"},
    BuiltInFormat{41, R"(_(* #,##0_);_(* \(#,##0\);_(* "-"_);_(@_))"},
    BuiltInFormat{42, R"(_("$"* #,##0_);_("$"* \(#,##0\);_("$"* "-"_);_(@_))"},
    BuiltInFormat{43, R"(_(* #,##0.00_);_(* \(#,##0.00\);_(* "-"??_);_(@_))"},
    BuiltInFormat{44, R"(_("$"* #,##0.00_);_("$"* \(#,##0.00\);_("$"* "-"??_);_(@_))"},
    BuiltInFormat{45, "mm:ss"},
    BuiltInFormat{46, "[h]:mm:ss"},
    BuiltInFormat{47, "mmss.0"},
    BuiltInFormat{48, "##0.0E+0"},
    BuiltInFormat{49, "@"},
};

}  // namespace

void NumberFormats::add(pugi::xml_node numFmts) {
  for (pugi::xml_node const format : numFmts.children("numFmt")) {
    if (auto const identifier = parseInteger(format.attribute("numFmtId").value())) {
      _formats[*identifier] = shareFormat(unescapeXstring(format.attribute("formatCode").value()));
    }
  }
}

std::shared_ptr<DOM::CellFormat const> NumberFormats::find(long identifier) const {
  if (auto const own = _formats.find(identifier); own != _formats.end()) {
    return own->second;
  }
  auto const* const builtIn = std::find_if(
      builtInFormats.begin(), builtInFormats.end(),
      [identifier](BuiltInFormat const& format) { return format.identifier == identifier; });
  return builtIn == builtInFormats.end() ? nullptr : shareFormat(builtIn->code);
}

std::shared_ptr<DOM::CellFormat const> shareFormat(std::string code) {
  return code.empty() ? nullptr
                      : std::make_shared<DOM::CellFormat const>(DOM::CellFormat{std::move(code)});
}

}  // namespace Zorv::Workbook
