#!/usr/bin/env python3
"""Writes the workbooks that the tests of pages need besides real ones: make_workbooks.py FOLDER.

hostile.xlsx: texts that would be markup or script wherever a page does not escape them.
tall.xlsx: more rows than any window shows, with frozen panes.
"""

import html
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "hostile"))

from package import conditional, numbers, workbook  # noqa: E402

ATTACKS = [
    "<script>window.attacked = 1; alert(1)</script>",
    "</td></table></script><script>window.attacked = 1</script>",
    "<img src=x onerror='window.attacked = 1'>",
    "\"><svg onload=alert(1)>",
    "' onfocus='window.attacked = 1' autofocus='",
    "javascript:alert(1)",
    "{{constructor.constructor('alert(1)')()}}",
    "</style><style>*{display:none}</style>",
    "<!--",
    "]]>",
    "&lt;b&gt; &amp;amp;",
    "\u202Eright to left\u202C",
]


def text_cell(column, row, text):
    return (
        f"<c r='{column}{row}' t='inlineStr'><is><t xml:space='preserve'>{html.escape(text)}</t></is>"
        "</c>"
    )


def hostile():
    rows = "".join(
        f"<row r='{row}'>{text_cell('A', row, attack)}</row>" for row, attack in enumerate(ATTACKS, 1)
    )
    rules = "".join(
        f"<cfRule type='expression' priority='{priority}' dxfId='0'>"
        f"<formula>$A1=&quot;{escape_formula(attack)}&quot;</formula></cfRule>"
        for priority, attack in enumerate(ATTACKS, 1)
    )
    sheet = f"<sheetData>{rows}</sheetData>{conditional('A1:B20', rules)}"
    return workbook(sheets=[("&lt;img src=x&gt;", sheet), ("O&apos;Neil &amp;amp; Co", sheet)])


def escape_formula(text):
    return html.escape(text.replace('"', '""'))


def tall():
    rule = (
        "<cfRule type='cellIs' operator='greaterThan' priority='1' dxfId='0'>"
        "<formula>90</formula></cfRule>"
    )
    panes = (
        "<sheetViews><sheetView workbookViewId='0'><pane xSplit='1' ySplit='2' topLeftCell='B3' "
        "state='frozen'/></sheetView></sheetViews>"
    )
    data = f"<sheetData>{numbers(3000, 'ABCDEF')}</sheetData>"
    return workbook(sheets=[("Tall", panes + data + conditional("A1:F3000", rule))])


def main():
    folder = pathlib.Path(sys.argv[1])
    for make in (hostile, tall):
        (folder / f"{make.__name__}.xlsx").write_bytes(make())


main()
