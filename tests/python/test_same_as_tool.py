"""The module gives the answers of the tool, for real workbooks."""

import pytest
from conftest import DEMO, NOW, WORKBOOKS, open_workbook, run_tool

import conditional_formatters as cf

each_workbook = pytest.mark.parametrize("path", WORKBOOKS, ids=lambda path: path.name)


def describe(cell):
    """A cell as the tool's record of it."""
    value = {"error": cell.value.code} if isinstance(cell.value, cf.CellError) else cell.value
    record = {"cell": cell.address, "value": value, "shown": cell.shown,
              "style": cf.to_json(cell.conditional_style or cf.Style()), "rules": list(cell.rules)}
    return {**record, "visuals": cf.to_json(cell.visuals)} if cell.visuals else record


@each_workbook
def test_resolved_cells(path):
    book = open_workbook(path)
    for record in run_tool("resolve", path)["sheets"]:
        sheet = book[record["name"]]
        expected = [{**cell, "rules": [rule["rule"] for rule in cell["rules"]]}
                    for cell in record["cells"]]
        found = {cell.address: describe(cell) for cell in sheet.resolve() if not cell.failure}
        inside = [cell for cell in expected if cell["cell"] in found]
        assert [found[cell["cell"]] for cell in inside] == inside
        assert len(found) == len(inside)
        # What lies outside of the used range is resolved cell by cell.
        for cell in [cell for cell in expected if cell["cell"] not in found][:50]:
            assert describe(sheet[cell["cell"]]) == cell


@each_workbook
def test_rules(path):
    book = open_workbook(path)
    for record in run_tool("rules", path)["sheets"]:
        assert [cf.to_json(rule) for rule in book[record["name"]].rules] == record["rules"]


@each_workbook
def test_explanations(path):
    book = open_workbook(path)
    sheet = next(sheet for sheet in book if sheet.is_worksheet)
    expected = run_tool("explain", path, "A1:G12", "--sheet", sheet.name)["cells"]
    assert [cf.to_json(account) for account in sheet.explain_range("A1:G12")] == expected
    assert expected


@each_workbook
def test_findings_of_check(path):
    book = open_workbook(path)
    assert [cf.to_json(finding) for finding in book.check()] == run_tool("check", path)["findings"]


def test_differences():
    expected = run_tool("diff", DEMO, "--now", NOW, "--now", "2026-12-21")
    first, second = open_workbook(DEMO), cf.open(DEMO, now="2026-12-21")
    found = cf.to_json(first.diff(second))
    assert found == {name: expected[name] for name in ("sheets", "rules", "cells")}
    assert found["cells"]
    assert not first.diff(first)


def test_differences_of_rules_and_sheets():
    other = WORKBOOKS[1]
    expected = run_tool("diff", DEMO, other)
    found = cf.to_json(open_workbook(DEMO).diff(open_workbook(other)))
    assert found == {name: expected[name] for name in ("sheets", "rules", "cells")}
    assert found["sheets"]
