"""Workbook files that ask for absurd pictures."""

from package import (
    cell_rule, conditional, element, numbers, pack, parts_of, relationships, workbook,
    workbook_with)
from registry import add, case

EVERYWHERE = "A1:XFD1048576"


def sheet(rows="", before="", after=""):
    """A workbook of one sheet, with elements before and behind its cells."""
    return workbook(sheets=[("Sheet1", f"{before}<sheetData>{rows}</sheetData>{after}")])


def styled(styles, rows=None, **pieces):
    """A workbook whose first cells have the cell formats 0 to 9."""
    cells = "".join(f"<c r='{column}1' s='{number}'><v>{number}</v></c>"
                    for number, column in enumerate("ABCDEFGHIJ"))
    return workbook(rows=rows or f"<row r='1'>{cells}</row>", styles=styles, **pieces)


def text(content, attributes=""):
    """A row of one inline text."""
    return f"<row r='1'><c r='A1' t='inlineStr' {attributes}><is>{content}</is></c></row>"

# Sizes.


@case
def absurd_sizes_of_lines():
    widths = ["1e308", "-1", "0", "nan", "inf", "255.5", "1e-308", "", "99999999999999999999"]
    columns = "".join(f"<col min='{at}' max='{at}' width='{width}' customWidth='1'/>"
                      for at, width in enumerate(widths, 1))
    rows = "".join(f"<row r='{at}' ht='{height}' customHeight='1'><c r='A{at}'><v>1</v></c></row>"
                   for at, height in enumerate(widths, 1))
    return sheet(rows, f"<sheetFormatPr defaultColWidth='1e308' defaultRowHeight='-1e308'/>"
                 f"<cols>{columns}</cols>")


@case
def widest_lines_of_all():
    return sheet("<row r='1' ht='409.5'><c r='A1'><v>1</v></c></row>"
                 "<row r='1048576' ht='409.5'><c r='XFD1048576'><v>1</v></c></row>",
                 "<sheetFormatPr defaultColWidth='255' defaultRowHeight='409.5'/>"
                 "<cols><col min='1' max='16384' width='255' customWidth='1'/></cols>")


@case
def a_million_elements_of_columns():
    return sheet(numbers(3), "<cols>" + "".join(
        f"<col min='{at % 16_384 + 1}' max='{at % 16_384 + 1}' width='{at % 50}'/>"
        for at in range(400_000)) + "</cols>")


@case
def everything_hidden():
    return sheet("".join(f"<row r='{row}' hidden='1'><c r='A{row}'><v>1</v></c></row>"
                         for row in range(1, 100)),
                 "<sheetFormatPr zeroHeight='1' defaultRowHeight='0'/>"
                 "<cols><col min='1' max='16384' hidden='1'/></cols>",
                 conditional(EVERYWHERE, cell_rule("TRUE")))


@case
def all_sheets_hidden():
    parts = parts_of(sheets=[("A", f"<sheetData>{numbers(3)}</sheetData>")] * 2)
    parts["xl/workbook.xml"] = parts["xl/workbook.xml"].replace(
        "<sheet ", "<sheet state='veryHidden' ")
    return pack(parts)


@case
def frozen_beyond_the_sheet():
    return sheet(numbers(5), "<sheetViews><sheetView rightToLeft='1' showGridLines='no'>"
                 "<pane xSplit='1e308' ySplit='-5' topLeftCell='ZZZ9' state='frozen'/>"
                 "</sheetView></sheetViews>")

# Merged cells.


@case
def very_many_merged_cells():
    merged = "".join(f"<mergeCell ref='A{row}:B{row}'/>" for row in range(1, 100_001))
    return sheet(numbers(3), after=f"<mergeCells>{merged}</mergeCells>")


@case
def a_million_merged_cells():
    """Most of them are left out, since each covers those behind it."""
    merged = "".join(f"<mergeCell ref='A{row}:XFD1048576'/>" for row in range(1, 1_000_001))
    return sheet(numbers(3), after=f"<mergeCells>{merged}</mergeCells>")


@case
def merged_cells_over_each_other():
    merged = "".join(f"<mergeCell ref='A{row}:XFD1048576'/>" for row in range(1, 2_001))
    return sheet(numbers(3), after=f"<mergeCells><mergeCell ref='{EVERYWHERE}'/>{merged}"
                 "</mergeCells>")

# Tables.


@case
def tables_of_absurd_styles():
    names = ["TableStyleMedium2", "Own", "TableStyleMedium99999999999999999999", "x" * 30_000]
    ranges = [EVERYWHERE, "A1:A1", "XFD1048576", "A2:B1048576"]
    parts = parts_of(
        numbers(30), "<tableParts>" + "".join(
            f"<tablePart r:id='t{number}'/>" for number in range(1_200)) + "</tableParts>",
        styles="<tableStyles><tableStyle name='Own'>" + "".join(
            f"<tableStyleElement type='firstRowStripe' size='{size}' dxfId='0'/>"
            for size in (-1, 0, 99999999999)) + "</tableStyle></tableStyles>")
    parts["xl/worksheets/_rels/sheet1.xml.rels"] = relationships(
        [(f"t{number}", "table", f"../tables/t{number}.xml") for number in range(1_200)])
    for number in range(1_200):
        parts[f"xl/tables/t{number}.xml"] = element(
            "table",
            f"<tableStyleInfo name='{names[number % 4]}' showRowStripes='1' "
            "showColumnStripes='1' showFirstColumn='1' showLastColumn='1'/>",
            f"displayName='T{number}' ref='{ranges[number // 4 % 4]}' totalsRowCount='1'")
    return pack(parts)

# Paper.


@case
def headers_and_footers_of_nothing_but_codes():
    codes = ["&amp;", "&amp;&amp;&amp;", "&amp;\"", "&amp;K", "&amp;P+99999999999999999999",
             "&amp;P-", "&amp;L" * 500, "&amp;1" * 500, "_x000A_" * 200, "&#x202E;&amp;A"]
    texts = "".join(f"<oddHeader>{code}</oddHeader><firstFooter>{code}</firstFooter>"
                    for code in codes)
    return sheet(numbers(3), after="<printOptions headings='1' gridLines='1'/>"
                 "<pageMargins left='0' right='0' top='0' bottom='0' header='1e308' footer='-1'/>"
                 "<pageSetup useFirstPageNumber='1' firstPageNumber='99999999999999999999'/>"
                 f"<headerFooter differentFirst='1' differentOddEven='1'>{texts}</headerFooter>")

# Fonts and styles.


@case
def absurd_fonts():
    fonts = "".join(
        f"<font><sz val='{size}'/><name val='{name}'/></font>" for size, name in [
            ("0", "Calibri"), ("10000", "Calibri"), ("-1", ""), ("nan", "&#x1F600;"),
            ("1e308", "x" * 30_000), ("1e-308", "../../etc/passwd"), ("11", "a\"b;}&lt;/style>"),
            ("11", "serif;color:red"), ("409", "&#x202E;Arial"), ("11", "Calibri, sans-serif")])
    return styled(f"<fonts>{fonts}</fonts><cellXfs>" + "".join(
        f"<xf fontId='{number}'/>" for number in range(10)) + "</cellXfs>")


@case
def absurd_alignments():
    values = [("textRotation", "99999"), ("textRotation", "-1"), ("indent", "4294967295"),
              ("indent", "-9"), ("horizontal", "sideways"), ("readingOrder", "77"),
              ("relativeIndent", "1e9"), ("textRotation", "255"), ("textRotation", "180"),
              ("horizontal", "fill")]
    return styled("<cellXfs>" + "".join(
        f"<xf><alignment wrapText='1' {name}='{value}'/></xf>" for name, value in values)
        + "</cellXfs>")


@case
def cyclic_cell_styles():
    formats = "".join(f"<xf xfId='{(number + 1) % 10}' fontId='{number}'/>"
                      for number in range(10))
    return styled(f"<cellStyleXfs>{formats}</cellStyleXfs><cellXfs>{formats}</cellXfs>"
                  "<cellStyles><cellStyle name='a' xfId='99' builtinId='-1'/></cellStyles>")


@case
def absurd_gradients():
    stops = "".join(f"<stop position='{at}'><color rgb='FF00{at % 90 + 10}FF'/></stop>"
                    for at in range(3_000))
    fills = "".join(f"<fill><gradientFill {attributes}>{stops}</gradientFill></fill>"
                    for attributes in [
                        "degree='1e308'", "degree='nan'", "type='path' left='9' right='-9'",
                        "type='path' top='nan' bottom='inf'", "type='spiral'"] * 2)
    return styled(f"<fills>{fills}</fills><cellXfs>" + "".join(
        f"<xf fillId='{number}'/>" for number in range(10)) + "</cellXfs>")


@case
def every_cell_another_style():
    colours = "".join(f"<fill><patternFill patternType='solid'><fgColor rgb='FF{number:06X}'/>"
                      "</patternFill></fill>" for number in range(20_000))
    formats = "".join(f"<xf fillId='{number}'/>" for number in range(20_000))
    rows = "".join(f"<row r='{row}'>" + "".join(
        f"<c s='{(row - 1) * 100 + column}'><v>1</v></c>" for column in range(100)) + "</row>"
        for row in range(1, 201))
    return styled(f"<fills>{colours}</fills><cellXfs>{formats}</cellXfs>", rows)


@case
def every_cell_framed():
    borders = "<borders><border/><border diagonalUp='1' diagonalDown='1'>" + "".join(
        f"<{side} style='slantDashDot'><color rgb='FF123456'/></{side}>"
        for side in ["left", "right", "top", "bottom", "diagonal"]) + "</border></borders>"
    rows = "".join(f"<row r='{row}'>" + "<c s='1'><v>1</v></c>" * 50 + "</row>"
                   for row in range(1, 401))
    return styled(f"{borders}<cellXfs><xf/><xf borderId='1'/></cellXfs>", rows)


@case
def a_style_on_every_line():
    return styled("<fills><fill/><fill/><fill><patternFill patternType='solid'>"
                  "<fgColor rgb='FFFF0000'/></patternFill></fill></fills>"
                  "<cellXfs><xf/><xf fillId='2'/></cellXfs>",
                  "".join(f"<row r='{row}' s='1' customFormat='1'/>"
                          for row in range(1, 1_048_577, 3)))

# Texts.


@case
def rich_text_of_very_many_runs():
    runs = "".join(f"<r><rPr><sz val='{at % 400}'/><b/><color rgb='FF{at % 90 + 10}0000'/></rPr>"
                   f"<t>{at % 10}</t></r>" for at in range(4_000))
    return sheet(text(runs))


@case
def rich_text_in_every_cell():
    shared = "<si>" + "<r><rPr><i/></rPr><t>ab</t></r>" * 300 + "</si>"
    rows = "".join(f"<row r='{row}'>" + "<c t='s'><v>0</v></c>" * 100 + "</row>"
                   for row in range(1, 301))
    return workbook(rows=rows, shared=shared)


@case
def texts_that_turn_and_hide():
    texts = ["&#x202E;evil&#x202C;", "&#x200F;&#x2067;abc", "a&#x0301;" * 3_000, "&#x200B;" * 30_000,
             "&#x1F468;&#x200D;" * 3_000, "&#xFEFF;&#xFFFE;", "&#xE0001;&#xE0041;", "&#x0600;1",
             "&#xFDFD;" * 3_000, "&#x1242B;" * 3_000]
    rows = "".join(f"<row r='{row}'><c r='A{row}' t='inlineStr'><is><t>{content}</t></is></c></row>"
                   for row, content in enumerate(texts, 1))
    return sheet(rows)


@case
def markup_and_escapes_in_texts():
    attacks = ["&lt;script>alert(1)&lt;/script>", "&lt;/style>&lt;img src=x onerror=alert(1)>",
               "]]&gt;&lt;!--", "_x001B_]0;title_x0007_", "_x009B_31m", "=cmd|&apos;/c calc&apos;!A1",
               "&quot; onmouseover=&quot;alert(1)", "\\u003cscript>", "&#x2028;&#x2029;", "%s%n{}"]
    rows = "".join(f"<row r='{row}'><c r='A{row}' t='inlineStr'><is><t>{attack}</t></is></c></row>"
                   for row, attack in enumerate(attacks, 1))
    return workbook(sheets=[(attack.replace("'", "")[:31] or "x", f"<sheetData>{rows}</sheetData>")
                            for attack in attacks if "<" not in attack])


@case
def a_text_that_wraps_without_end():
    return styled("<cellXfs><xf><alignment wrapText='1'/></xf></cellXfs>",
                  text(f"<t>{'a_x000A_' * 4_000}</t>", "s='0'"))


@case
def one_letter_upright():
    return styled("<cellXfs><xf><alignment textRotation='255'/></xf></cellXfs>",
                  text(f"<t>{'x' * 32_000}</t>", "s='0'"))

# Links.


@case
def links_that_lead_astray():
    targets = ["javascript:alert(1)", "data:text/html,&lt;script>alert(1)&lt;/script>",
               "file:///etc/passwd", "https://example.com/&quot;>&lt;script>", "vbscript:x",
               "http://" + "a" * 100_000, " javascript:alert(1)", "JaVaScRiPt:alert(1)"]
    links = "".join(f"<hyperlink ref='A{row}' r:id='l{row}'/>"
                    for row in range(1, len(targets) + 1))
    related = relationships([(f"l{row}", "hyperlink", target)
                             for row, target in enumerate(targets, 1)])
    inside = "<hyperlink ref='A9' location='javascript:alert(1)'/>"
    return workbook_with("xl/worksheets/_rels/sheet1.xml.rels",
                         related.replace("Target=", "TargetMode='External' Target="),
                         rows=numbers(9), after=f"<hyperlinks>{links}{inside}</hyperlinks>")


@case
def very_many_links():
    links = "".join(f"<hyperlink ref='{EVERYWHERE}' location='Sheet1!A{row}'/>"
                    for row in range(1, 50_001))
    return workbook(rows=numbers(9), after=f"<hyperlinks>{links}</hyperlinks>")

# Pages.


@case
def absurd_page_setup():
    return sheet(numbers(50, "ABC"),
                 after="<pageMargins left='1e308' right='-5' top='nan' bottom='99999' header='x'/>"
                 "<pageSetup paperSize='4294967295' scale='0' fitToWidth='99999999' "
                 "fitToHeight='-1' orientation='diagonal' paperWidth='0mm' paperHeight='1e9mm'/>")


@case
def smallest_pages():
    return sheet(numbers(3_000, "ABCDEFGHIJ"), "<sheetPr><pageSetUpPr fitToPage='0'/></sheetPr>",
                 "<pageMargins left='4' right='4.2' top='5.4' bottom='5.5' header='0' footer='0'/>"
                 "<pageSetup paperSize='9' scale='400'/>")


@case
def ten_thousand_page_breaks():
    rows = "".join(f"<brk id='{row}' man='1' max='16383'/>" for row in range(1, 10_001))
    columns = "".join(f"<brk id='{column}' man='1'/>" for column in range(1, 10_001))
    return sheet(numbers(12_000, "ABC"),
                 after=f"<rowBreaks>{rows}</rowBreaks><colBreaks>{columns}</colBreaks>")


@case
def print_titles_outside_the_sheet():
    names = ("<definedName name='_xlnm.Print_Titles' localSheetId='0'>Sheet1!$ZZZ:$ZZZZ,"
             "Sheet1!$2000000:$3000000</definedName><definedName name='_xlnm.Print_Area' "
             "localSheetId='0'>Gone!$A$1:$B$2,#REF!,Sheet1!$A$1:$XFD$1048576</definedName>")
    return workbook(rows=numbers(5), names=names)


@case
def print_titles_larger_than_a_page():
    names = ("<definedName name='_xlnm.Print_Titles' localSheetId='0'>Sheet1!$A:$XFD,"
             "Sheet1!$1:$1048576</definedName>")
    return workbook(rows=numbers(2_000, "ABC"), names=names)

# Conditional formats and visuals.


def visual_rule(inner, kind):
    return f"<cfRule type='{kind}' priority='1'>{inner}</cfRule>"


@case
def a_rule_over_every_position():
    return workbook(rows=numbers(3), after=conditional(EVERYWHERE, cell_rule("TRUE")))


@case
def a_rule_over_empty_stripes():
    ranges = " ".join(f"A{row}:XFD{row}" for row in range(1, 1_048_577, 1_000))
    return workbook(rows=numbers(3), after=conditional(ranges, cell_rule("TRUE")))


@case
def absurd_visuals():
    scale = ("<colorScale><cfvo type='num' val='1e308'/><cfvo type='num' val='-1e308'/>"
             "<color rgb='00000000'/><color theme='99' tint='nan'/></colorScale>")
    bar = ("<dataBar minLength='4294967295' maxLength='-1'><cfvo type='num' val='nan'/>"
           "<cfvo type='formula' val='1/0'/><color/></dataBar>")
    icons = ("<iconSet iconSet='5Quarters' reverse='maybe'>"
             + "<cfvo type='percent' val='1e999'/>" * 5 + "</iconSet>")
    return workbook(rows=numbers(50), after=conditional("A1:A50", visual_rule(scale, "colorScale"))
                    + conditional("A1:A50", visual_rule(bar, "dataBar"))
                    + conditional("A1:A50", visual_rule(icons, "iconSet")))


@case
def a_bar_in_every_cell():
    bar = ("<dataBar><cfvo type='min'/><cfvo type='max'/><color rgb='FF638EC6'/></dataBar>")
    return workbook(rows=numbers(1_000, "ABCDEFGHIJKLMNOPQRSTUVWXYZ"),
                    after=conditional("A1:Z1000", visual_rule(bar, "dataBar")))


@case
def absurd_number_formats():
    codes = ["0" * 30_000, "[Red]" * 1_000, "*" * 3_000, "_" * 3_000, "[Color99]0;[Color-1]0",
             "#,##0." + "0" * 500, "[&gt;1e999]0", "\\" * 999, "[$" + "x" * 9_999 + "]0", "@" * 500]
    formats = "".join(f"<numFmt numFmtId='{200 + at}' formatCode=\"{code}\"/>"
                      for at, code in enumerate(codes))
    return styled(f"<numFmts>{formats}</numFmts><cellXfs>" + "".join(
        f"<xf numFmtId='{200 + at}'/>" for at in range(10)) + "</cellXfs>")


for name, inner in {"nothing_to_draw": "", "one_far_cell": "<row r='1048576'><c r='XFD1048576'>"
                    "<v>1</v></c></row>"}.items():
    add(name, lambda inner=inner: sheet(inner))
