"""Workbook files that nobody makes by accident, by name."""

import zipfile

from package import (
    DECLARATION, MAIN, RED, cell_rule, conditional, element, numbers, overlapping_entries, pack,
    parts_of, relationships, workbook, workbook_with)
from registry import add, case, case_for


def with_rule(formula, rows=200, columns="A", area="A1:A200", **pieces):
    """A workbook with one rule."""
    return workbook(rows=numbers(rows, columns), after=conditional(area, cell_rule(formula)),
                    **pieces)


# Archives.

@case
def zip_bomb_in_sheet():
    rows = "<row r='1'>" + " " * 100_000_000 + "</row>"
    return workbook(rows=rows)


@case
def zip_bomb_in_shared_strings():
    return workbook(rows=numbers(3), shared="<si><t>" + "x" * 100_000_000 + "</t></si>")


@case
def zip_bomb_in_unused_part():
    return workbook_with("xl/media/image1.png", b"\0" * 100_000_000, rows=numbers(3))


@case
def overlapping_zip_entries():
    return overlapping_entries(2_000, b"<worksheet/>" + b" " * 300_000)


@case
def many_zip_entries():
    parts = parts_of(rows=numbers(3))
    return pack({**parts, **{f"x/{number}": b"" for number in range(5_000)}},
                zipfile.ZIP_STORED)


@case
def part_given_twice():
    import warnings
    import io
    packed = io.BytesIO(workbook(rows=numbers(3)))
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        with zipfile.ZipFile(packed, "a") as archive:
            archive.writestr(zipfile.ZipInfo("xl/worksheets/sheet1.xml"), "<worksheet/>")
    return packed.getvalue()


@case
def paths_out_of_the_archive():
    parts = parts_of(rows=numbers(3))
    parts["xl/_rels/workbook.xml.rels"] = relationships(
        [("s1", "worksheet", "../../../../../../etc/passwd")])
    return pack(parts)


@case
def crc_is_wrong():
    stored = bytearray(pack(parts_of(rows=numbers(3)), zipfile.ZIP_STORED))
    at = stored.index(b"<v>1</v>")
    stored[at + 3:at + 4] = b"7"
    return bytes(stored)


@case
def empty_file():
    return b""


@case
def archive_of_nothing():
    return pack({})


def truncated(at):
    """A workbook that ends early, at a part of its length."""
    whole = workbook(rows=numbers(50), after=conditional("A1:A50", cell_rule("A1&gt;1")))
    return whole[:int(len(whole) * at)]


for eighth in range(1, 8):
    add(f"truncated_after_{eighth}_eighths", lambda eighth=eighth: truncated(eighth / 8))


def with_flipped_bytes(first):
    """A workbook with every 97th byte changed."""
    damaged = bytearray(workbook(rows=numbers(50), after=conditional("A1:A50", cell_rule("A1"))))
    for at in range(first, len(damaged), 97):
        damaged[at] ^= 0x55
    return bytes(damaged)


for first in (0, 5, 31, 64):
    add(f"bytes_flipped_from_{first}", lambda first=first: with_flipped_bytes(first))

# XML.


@case
def deeply_nested_elements():
    return workbook(rows="<row>" * 100_000)


@case
def nested_inside_the_limit():
    return workbook(rows=numbers(3), after="<x>" * 250 + "</x>" * 250)


@case
def many_attributes():
    return workbook(rows="<row " + " ".join(f"a{i}='1'" for i in range(100_000)) + "/>")


@case
def many_namespaces():
    return workbook(rows="<row " + " ".join(f"xmlns:a{i}='u{i}'" for i in range(50_000)) + ">"
                    + "<a1:x/>" * 2_000 + "</row>")


@case
def attribute_given_twice():
    return workbook(rows="<row r='1' r='2'/>")


@case
def long_attribute():
    return workbook(rows=f"<row r='{'1' * 1_000_000}'/>")


@case
def entities_inside_entities():
    levels = "".join(f"<!ENTITY e{i + 1} '{f'&e{i};' * 10}'>" for i in range(9))
    return workbook_with(
        "xl/worksheets/sheet1.xml",
        f"{DECLARATION}<!DOCTYPE worksheet [<!ENTITY e0 'lol'>{levels}]><worksheet xmlns='{MAIN}'>"
        "<sheetData><row><c t='str'><v>&e9;</v></c></row></sheetData></worksheet>")


@case
def entity_of_a_file():
    return workbook_with(
        "xl/worksheets/sheet1.xml",
        f"{DECLARATION}<!DOCTYPE worksheet [<!ENTITY f SYSTEM 'file:///etc/passwd'>]>"
        f"<worksheet xmlns='{MAIN}'><sheetData><row><c t='str'><v>&f;</v></c></row></sheetData>"
        "</worksheet>")


@case
def broken_character_references():
    return workbook(rows="<row r='1'><c r='A1' t='str'><v>&#0;&#x110000;&#xD800;</v></c></row>")


@case
def bytes_that_are_not_utf_8():
    return workbook_with("xl/worksheets/sheet1.xml",
                         element("worksheet", "<sheetData/>").encode() + b"\xff\xfe\xc0\x80")


@case
def half_a_utf_16_part():
    return workbook_with("xl/worksheets/sheet1.xml",
                         element("worksheet", "<sheetData/>").encode("utf-16")[:-3])


@case
def unclosed_sheet():
    return workbook_with("xl/worksheets/sheet1.xml", f"<worksheet xmlns='{MAIN}'><sheetData>")


@case
def other_root_element():
    return workbook_with("xl/worksheets/sheet1.xml", "<html><body/></html>")


@case
def root_in_another_namespace():
    return workbook_with("xl/worksheets/sheet1.xml", "<worksheet xmlns='urn:other'/>")


@case
def endless_comment():
    return workbook_with("xl/worksheets/sheet1.xml", "<!--" + "-" * 3_000_000)


@case
def alternate_content_nested():
    space = "xmlns:mc='http://schemas.openxmlformats.org/markup-compatibility/2006'"
    return workbook(rows=numbers(3), after=f"<mc:AlternateContent {space}><mc:Fallback>" * 100
                    + "</mc:Fallback></mc:AlternateContent>" * 100)

# Parts.


@case
def broken_theme():
    return workbook(rows=numbers(3), theme="<a:theme")


@case
def theme_of_absurd_colours():
    space = "http://schemas.openxmlformats.org/drawingml/2006/main"
    return workbook(rows=numbers(3), theme=f"<a:theme xmlns:a='{space}'><a:themeElements>"
                    "<a:clrScheme><a:dk1><a:srgbClr val='NOTACOLOUR'/></a:dk1>"
                    "<a:lt1><a:sysClr lastClr=''/></a:lt1></a:clrScheme></a:themeElements></a:theme>")


@case
def broken_styles():
    return workbook_with("xl/styles.xml", "<styleSheet", rows=numbers(3))


@case
def broken_shared_strings():
    return workbook_with("xl/sharedStrings.xml", "<sst><si>", rows=numbers(3), shared="")


@case
def broken_table_part():
    parts = parts_of(rows=numbers(3), after="<tableParts count='1'><tablePart r:id='t'/></tableParts>")
    parts["xl/worksheets/_rels/sheet1.xml.rels"] = relationships(
        [("t", "table", "../tables/table1.xml")])
    parts["xl/tables/table1.xml"] = "<table ref='A1:"
    return pack(parts)


@case
def no_relationships():
    parts = parts_of(rows=numbers(3))
    del parts["xl/_rels/workbook.xml.rels"]
    return pack(parts)


@case
def relationships_in_a_circle():
    parts = parts_of(rows=numbers(3))
    parts["xl/_rels/workbook.xml.rels"] = relationships(
        [("s1", "worksheet", "workbook.xml"), ("styles", "styles", "workbook.xml")])
    return pack(parts)


@case
def many_relationships():
    parts = parts_of(rows=numbers(3))
    parts["xl/_rels/workbook.xml.rels"] = relationships(
        [(f"x{number}", "image", f"media/{number}.png") for number in range(50_000)]
        + [("s1", "worksheet", "worksheets/sheet1.xml")])
    return pack(parts)


@case
def empty_relationship():
    return workbook_with(
        "xl/workbook.xml",
        element("workbook", "<sheets><sheet name='M' sheetId='1' r:id=''/>"
                "<sheet name='S' sheetId='2' r:id='s1'/></sheets>"), rows=numbers(3))


@case
def many_sheets():
    return workbook(sheets=[(f"S{number}", "<sheetData/>") for number in range(3_000)])


@case
def one_part_for_many_sheets():
    count = 4_000
    parts = parts_of(rows=numbers(1_000), after=conditional("A1:A1000", cell_rule("A1&gt;3")))
    parts["xl/workbook.xml"] = element("workbook", "<sheets>" + "".join(
        f"<sheet name='S{number}' sheetId='{number}' r:id='s1'/>" for number in range(count))
        + "</sheets>")
    return pack(parts)


@case
def sheets_of_one_name():
    return workbook(sheets=[("Same", "<sheetData/>"), ("SAME", "<sheetData/>"), ("", "")])


@case
def many_styles():
    formats = "".join(f"<xf fontId='{i}'/>" for i in range(60_000))
    fonts = "".join(f"<font><sz val='{i}'/></font>" for i in range(60_000))
    return workbook(rows=numbers(3), styles=f"<fonts>{fonts}</fonts><cellXfs>{formats}</cellXfs>")


@case
def many_differential_styles():
    return workbook(rows=numbers(3), styles=f"<dxfs>{RED * 60_000}</dxfs>")


@case
def absurd_styles():
    return workbook(rows=numbers(3), after=conditional("A1:A3", cell_rule("TRUE")),
                    styles="<dxfs count='4294967295'><dxf><font><sz val='1e308'/><color tint='NaN' "
                    "theme='99'/><name val='&#x202E;&#x1F;'/></font><numFmt numFmtId='-1' "
                    "formatCode='[&gt;1e999][$-FFFFFFFF]yyyy\\'/><fill><gradientFill degree='nan'>"
                    "<stop position='-1'/></gradientFill></fill></dxf></dxfs>")

# Cells.


@case
def cells_outside_the_sheet():
    return workbook(rows="<row r='1048577'><c r='XFE1048577'><v>1</v></c></row>"
                    "<row r='99999999999999999999'/><row r='-1'/><row r=''><c r=''/></row>")


@case
def cells_without_positions():
    return workbook(rows="<row><c><v>1</v></c><c><v>2</v></c></row>" * 20_000)


@case
def cells_given_twice():
    return workbook(rows="<row r='1'><c r='A1'><v>1</v></c><c r='A1'><v>2</v></c></row>" * 1_000)


@case
def cells_far_apart():
    return workbook(rows="".join(f"<row r='{row}'><c r='A{row}'><v>1</v></c><c r='XFD{row}'>"
                                 "<v>2</v></c></row>" for row in range(1, 1_048_576, 2_000)),
                    after=conditional("A1:XFD1048576", cell_rule("A1=1")))


@case
def cells_of_wrong_types():
    types = ["n", "b", "e", "s", "d", "str", "inlineStr", "zzz", ""]
    values = ["", "x", "-1", "99999999999", "1e999", "NaN", "#NOPE!", "2026-13-45", "TRUE"]
    cells = "".join(f"<c t='{kind}'><v>{value}</v></c>" for kind in types for value in values)
    return workbook(rows=f"<row r='1'>{cells}</row>", shared="<si><t>one</t></si>",
                    after=conditional("A1:CZ1", cell_rule("A1&lt;&gt;0")))


@case
def absurd_numbers():
    values = ["1e308", "-1e308", "5e-324", "0x10", "1" * 4_000, "1e-9999", "--1", "Infinity", "-0"]
    cells = "".join(f"<c><v>{value}</v></c>" for value in values)
    return workbook(rows=f"<row r='1'>{cells}</row>",
                    after=conditional("A1:Z1", cell_rule("A1*1E300&gt;0")))


@case
def one_shared_text_in_every_cell():
    rows = "".join(f"<row r='{row}'>" + "<c t='s'><v>0</v></c>" * 200 + "</row>"
                   for row in range(1, 201))
    return workbook(rows=rows, shared=f"<si><t>{'x' * 32_000}</t></si>")


@case
def one_long_text_in_every_cell_that_matches():
    rows = "".join(f"<row r='{row}'>" + "<c t='s'><v>0</v></c>" * 50 + "</row>"
                   for row in range(1, 101))
    return workbook(rows=rows, shared=f"<si><t>{'ab' * 16_000}</t></si>",
                    after=conditional("A1:AX100", cell_rule("LEN(A1)&gt;3")))


@case
def shared_text_of_many_runs():
    return workbook(rows="<row><c t='s'><v>0</v></c></row>",
                    shared="<si>" + "<r><t>x</t></r>" * 100_000 + "</si>")


@case
def many_merged_ranges():
    merged = "".join(f"<mergeCell ref='A{row}:XFD{row}'/>" for row in range(1, 20_001))
    return workbook(rows=numbers(3), after=f"<mergeCells>{merged}</mergeCells>")


@case
def columns_of_absurd_width():
    return workbook(rows=numbers(3), after="<cols><col min='0' max='99999999' width='1e308'/>"
                    "<col min='5' max='2' width='nan'/></cols>")

# Rules and their ranges.


@case
def long_list_of_ranges():
    area = " ".join(f"{'ABCDEFGH'[i % 8]}{1 + i * 3}" for i in range(40_000))
    return workbook(rows=numbers(100), after=conditional(area, cell_rule("A1&gt;1")))


@case
def one_column_4000_times():
    return workbook(rows=numbers(1_000), after=conditional(" ".join(["A:A"] * 4_000),
                                                           cell_rule("A1&gt;1")))


@case
def whole_column_rules_4000_times():
    return workbook(rows=numbers(200), after="".join(
        conditional("A:A", cell_rule("A1&gt;1")) for _ in range(4_000)))


@case
def nested_ranges():
    return workbook(rows=numbers(20), after="".join(
        conditional(f"A1:XFD{row}", cell_rule("A1&gt;1")) for row in range(1, 20_001)))


@case
def one_long_range_list_for_many_rules():
    area = " ".join(f"A{row}" for row in range(1, 5_001))
    return workbook(rows=numbers(20), after=conditional(area, cell_rule("A1&gt;1") * 500))


@case
def duplicates_in_overlapping_columns():
    rule = "<cfRule type='duplicateValues' priority='1' dxfId='0'/>"
    return workbook(rows=numbers(3_000, "ABCD"), after="".join(
        conditional("A:D A:C B:D " * 20, rule) for _ in range(50)))


@case
def rules_of_every_kind_on_everything():
    kinds = ["top10", "aboveAverage", "duplicateValues", "uniqueValues", "containsBlanks",
             "notContainsErrors", "timePeriod", "containsText", "beginsWith", "colorScale",
             "dataBar", "iconSet", "nonsense", ""]
    rules = "".join(f"<cfRule type='{kind}' priority='{i}' dxfId='0' rank='4294967295' "
                    f"stdDev='-1' text='x' timePeriod='lastWeek' operator='none'/>"
                    for i, kind in enumerate(kinds))
    return workbook(rows=numbers(300, "ABC"), after=conditional("A1:XFD1048576", rules))


@case
def wrong_rule_attributes():
    rules = "".join(f"<cfRule type='cellIs' operator='between' priority='{priority}' dxfId='{style}'"
                    "><formula>1</formula></cfRule>"
                    for priority, style in [("NaN", "x"), ("-1", "-1"), ("1.5", "99"),
                                            ("99999999999", "1e3"), ("", "")])
    return workbook(rows=numbers(5), after=conditional("A1:A5", rules))


@case
def wrong_ranges():
    return workbook(rows=numbers(5), after="".join(
        conditional(area, cell_rule("A1"))
        for area in ["", " ", "A0", "A1:", "ZZZ1", "A1048577", "B2:A1", "A1:A5,A2", "1:1048576",
                     "A" * 100_000, "Sheet1!A1", "#REF!"]))


@case
def many_rules():
    return workbook(rows=numbers(20), after=conditional("A1:A20", cell_rule("A1&gt;1") * 30_000))


@case_for("tidy FILE -o OUT.xlsx")
def a_rule_for_each_cell():
    return workbook(rows=numbers(20), after="".join(
        conditional(f"{'ABCDEFGHIJ'[i % 10]}{1 + i // 10}", cell_rule("A1&gt;1"))
        for i in range(80_000)))


@case
def long_patterns_in_long_texts():
    rules = "".join(f"<cfRule type='containsText' operator='containsText' dxfId='0' priority='1' "
                    f"text='{'a' * 16_000}b{i}'/>" for i in range(60))
    rows = "".join(f"<row r='{row}'><c t='s'><v>0</v></c></row>" for row in range(1, 501))
    return workbook(rows=rows, shared=f"<si><t>{'a' * 32_000}</t></si>",
                    after=conditional("A1:A500", rules))


@case
def many_unresolved_rules():
    return workbook(rows=numbers(5), after=conditional("A1:A5", cell_rule("1+(") * 20_000))


@case
def long_formula_that_is_none():
    return workbook(rows=numbers(5), after=conditional("A1:A5", cell_rule("(" * 2_000_000)))


@case
def every_position_styled():
    return workbook(rows="<row r='1'><c r='A1'><v>1</v></c></row><row r='3000'><c r='CV3000'>"
                    "<v>1</v></c></row>", after=conditional("A1:CV3000", cell_rule("TRUE")))

# Text that reaches the terminal.

CONTROLS = "_x001B_[31m_x0007__x000D__x0008_&#x9B;31m&#x85;&#x202E;&#x2066;&#xFEFF;&#x200B;"


@case
def control_characters_in_names():
    return workbook(
        sheets=[(f"Sheet{CONTROLS}",
                 f"<sheetData>{numbers(3)}</sheetData>"
                 + conditional("A1:A3", cell_rule(f"&quot;{CONTROLS}&quot;=A1"))
                 + conditional("A1:A3", cell_rule(f"{CONTROLS}+("))
                 + conditional(CONTROLS, cell_rule("A1")))],
        names=f"<definedName name='N{CONTROLS}'>Sheet1!$A$1(</definedName>")


@case
def control_characters_in_texts():
    return workbook(rows=f"<row r='1'><c r='A1' t='s'><v>0</v></c><c t='inlineStr'><is><t>"
                    f"{CONTROLS}</t></is></c></row>", shared=f"<si><t>{CONTROLS}</t></si>",
                    after=conditional("A1:B1", cell_rule("LEN(A1)&gt;1")))


@case
def control_characters_in_part_names():
    parts = parts_of(rows=numbers(3))
    parts["xl/_rels/workbook.xml.rels"] = relationships(
        [("s1", "worksheet", f"worksheets/{CONTROLS}.xml"), ("styles", "styles", CONTROLS)])
    return pack(parts)


@case
def control_characters_in_types():
    return workbook(rows=numbers(3), after=conditional("A1", cell_rule("1", kind=CONTROLS)))


@case
def name_of_a_megabyte():
    return workbook(sheets=[("x" * 1_000_000, f"<sheetData>{numbers(2)}</sheetData>"
                             + conditional("A1", cell_rule("1+(")))])


@case
def combining_marks():
    return workbook(rows="<row r='1'><c r='A1' t='str'><v>a" + "&#x301;" * 30_000
                    + "</v></c></row>", after=conditional("A1", cell_rule("TRUE")))

# Names and formulas.


def defined(name, formula):
    """A defined name."""
    return f"<definedName name='{name}'>{formula}</definedName>"


@case
def names_that_double():
    doubled = defined("n0", "1") + "".join(defined(f"n{i}", f"n{i - 1}+n{i - 1}")
                                           for i in range(1, 60))
    return with_rule("n59&gt;0", names=doubled)


@case
def names_in_a_circle():
    return with_rule("a&gt;0", names=defined("a", "b+1") + defined("b", "c+1") + defined("c", "a"))


@case
def name_of_itself():
    return with_rule("a&gt;0", names=defined("a", "a"))


@case
def many_names():
    return with_rule("n1&gt;0", names="".join(defined(f"n{i}", "Sheet1!$A$1")
                                              for i in range(30_000)))


@case
def cells_in_a_circle():
    rows = "".join(f"<row r='{row}'><c r='A{row}'><f>A{row % 3_000 + 1}+1</f></c></row>"
                   for row in range(1, 3_001))
    return workbook(rows=rows, after=conditional("A1:A3000", cell_rule("A1&gt;1")))


@case
def cells_in_a_long_chain():
    rows = "<row r='1'><c r='A1'><v>1</v></c></row>" + "".join(
        f"<row r='{row}'><c r='A{row}'><f>A{row - 1}+1</f></c></row>" for row in range(2, 60_001))
    return workbook(rows=rows, after=conditional("A1:A5", cell_rule("A1&gt;1")))


@case
def cells_in_a_chain_backwards():
    rows = "".join(f"<row r='{row}'><c r='A{row}'><f>A{row + 1}+1</f></c></row>"
                   for row in range(1, 30_001))
    return workbook(rows=rows, after=conditional("A1:A5", cell_rule("A1&gt;1")))


@case
def cells_that_sum_all_above():
    rows = "".join(f"<row r='{row}'><c r='A{row}'><f>SUM(A$1:A{row - 1})+1</f></c></row>"
                   for row in range(2, 5_001))
    return workbook(rows=rows)


@case
def shared_formula_of_a_bomb():
    rows = "<row r='1'><c r='A1'><f t='shared' ref='A1:A2000' si='0'>LEN(REPT(\"x\",32767))</f></c></row>"
    rows += "".join(f"<row r='{row}'><c r='A{row}'><f t='shared' si='0'/></c></row>"
                    for row in range(2, 2_001))
    return workbook(rows=rows)


@case
def missing_results_of_long_texts():
    rows = "".join(f"<row r='{row}'>" + f"<c><f>REPT(\"x\",32000)&amp;{row}</f></c>" * 10 + "</row>"
                   for row in range(1, 3_001))
    return workbook(rows=rows)


@case
def array_formulas_over_each_other():
    rows = "".join(f"<row r='{row}'><c r='A{row}'><f t='array' ref='A{row}:Z{row + 1_000}'>1</f></c>"
                   "</row>" for row in range(1, 1_501))
    return workbook(rows=rows)


@case
def array_formula_over_the_sheet():
    return workbook(rows="<row r='1'><c r='A1'><f t='array' ref='A1:XFD1048576'>1</f></c></row>")


BOMBS = {
    "rept": "LEN(REPT(REPT(\"x\",32767),32767))",
    "rept_of_array": "SUM(LEN(REPT(\"x\",SEQUENCE(30000))))",
    "sequence": "MEDIAN(SEQUENCE(5000000))",
    "sequence_of_all": "SUM(SEQUENCE(1048576,16384))",
    "sort": "SUM(SORT(SEQUENCE(1000000,1,1000000,-1)))",
    "sort_many": "SUM(SORT(UNIQUE(SORT(RANDARRAY(300000)))))",
    "sumproduct_all": "SUMPRODUCT(($A$1:$XFD$1048576=1)*($A$1:$XFD$1048576=2))",
    "sumproduct_columns": "SUMPRODUCT((A:A=1)*(B:B=2)*(C:C=3))",
    "match_wildcard": "MATCH(\"" + "*a" * 40 + "b\",$A$1:$A$200,0)",
    "match_array": "SUM(MATCH(SEQUENCE(20000),SEQUENCE(20000,1,20000,-1),0))",
    "search_wildcard": "SEARCH(\"" + "*a" * 30 + "b\",REPT(\"a\",30000))",
    "substitute": "LEN(SUBSTITUTE(REPT(\"a\",32767),\"a\",REPT(\"b\",32767)))",
    "substitute_chain": "SUBSTITUTE(" * 12 + "\"aa\"" + ",\"a\",\"aaaa\")" * 12,
    "textjoin": "LEN(TEXTJOIN(REPT(\"x\",1000),FALSE,SEQUENCE(100000)))",
    "concatenation": "LEN(" + "&amp;".join(["REPT(\"x\",32767)"] * 200) + ")",
    "countif_each": "SUM(COUNTIF($A$1:$A$200,SEQUENCE(100000)))",
    "countifs_wildcard": "SUM(COUNTIF($A$1:$A$200,REPT(\"*a\",100)&amp;SEQUENCE(5000)))",
    "mmult": "SUM(MMULT(SEQUENCE(1000,1000),SEQUENCE(1000,1000)))",
    "minverse": "SUM(MINVERSE(SEQUENCE(500,500)))",
    "mdeterm": "MDETERM(SEQUENCE(700,700))",
    "offset_all": "SUM(OFFSET($A$1,0,0,1048576,16384))",
    "indirect_all": "SUM(INDIRECT(\"A1:XFD1048576\"))",
    "indirect_many": "SUM(N(INDIRECT(\"A\"&amp;SEQUENCE(20000))))",
    "let_doubles": "LET(" + ",".join(f"x{i},{f'x{i - 1}+x{i - 1}' if i else 'SEQUENCE(1000)'}"
                                     for i in range(100)) + ",SUM(x99))",
    "union": "COUNT((" + ",".join(["$A:$XFD"] * 500) + "))",
    "intersection": "COUNT(" + " ".join(["$A:$XFD"] * 500) + ")",
    "fact": "FACT(170)*FACT(1E300)+COMBIN(1E300,1E299)",
    "huge_power": "(9^9^9)^9^9",
    "networkdays": "SUM(NETWORKDAYS(SEQUENCE(3000),2958465))",
    "workday": "SUM(WORKDAY(SEQUENCE(3000),2000000))",
    "edate": "EDATE(1,1E300)+DATE(1E300,1E300,-1E300)",
    "dec2bin": "SUM(LEN(BASE(SEQUENCE(100000),2,255)))",
    "text_format": "LEN(TEXT(1E300,REPT(\"0\",30000)))",
    "text_dates": "LEN(TEXT(1,REPT(\"yyyymmdd\",4000)))",
    "transpose": "SUM(TRANSPOSE(TRANSPOSE(SEQUENCE(1000,1000))))",
    "percentile_each": "SUM(PERCENTILE(SEQUENCE(100000),SEQUENCE(1000)/1000))",
    "rank_each": "SUM(RANK($A$1:$A$200,$A:$A))",
    "frequency": "SUM(FREQUENCY(SEQUENCE(100000),SEQUENCE(100000)))",
    "nested_if": "IF(A1," * 60 + "1" + ")" * 60,
    "parentheses": "(" * 250 + "1" + ")" * 250,
    "too_many_parentheses": "(" * 4_000 + "1" + ")" * 4_000,
    "unary_minuses": "-" * 8_000 + "1",
    "long_sum": "+".join(["1"] * 4_000),
    "percent_signs": "1" + "%" * 8_000,
    "array_constant": "SUM({" + ",".join(["1"] * 4_000) + "})",
}
for bomb, formula in BOMBS.items():
    add(f"formula_{bomb}", lambda formula=formula: with_rule(f"A1&gt;{formula}", columns="ABC"))
    add(f"missing_result_{bomb}", lambda formula=formula: workbook(
        rows=numbers(200) + f"<row r='201'><c r='A201'><f>{formula}</f></c></row>"))


@case
def unknown_things_in_formulas():
    rules = "".join(cell_rule(formula) for formula in [
        "NOSUCHFUNCTION(A1)", "NoSuchName", "Gone!A1", "[1]Sheet1!A1", "List[Column]", "#REF!",
        "{1,2;3}", "A1:B", "1E999", "&quot;open", "'Sheet1'!#REF!", "_xlfn.FUTURE(1)", ""])
    return workbook(rows=numbers(10), after=conditional("A1:A10", rules))
