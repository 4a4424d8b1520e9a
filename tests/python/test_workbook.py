"""Workbooks, sheets, cells, and what is wrong about a request."""

import datetime
import gc
import os
import pathlib
import pickle
import shutil
import subprocess
import sys

import openpyxl
import pytest
from conftest import DEMO, NOW, TOO_LARGE, make_book, save
from openpyxl.formatting.rule import CellIsRule, ColorScaleRule, DataBarRule, FormulaRule, IconSetRule
from openpyxl.styles import Font, PatternFill

import conditional_formatters as cf

RED = PatternFill(bgColor="FFFF0000")
BOLD = Font(bold=True)


def test_values_keep_their_kind():
    sheet = make_book([[1, "text", True, None, "#N/A"]])[0]
    assert sheet.values() == [[1.0, "text", True, None, cf.CellError("#N/A")]]
    assert [sheet.value((0, column)) for column in range(6)] == [*sheet.values()[0], None]
    assert str(sheet.value("E1")) == "#N/A"
    assert sheet.values("B1:C2") == [["text", True], [None, None]]


def test_sheets_are_a_sequence_and_found_by_name(demo):
    assert [sheet.name for sheet in demo] == ["Sales", "Invoices", "Stock", "Guests", "Budget"]
    assert demo["invoices"] is demo[1] is demo.sheets[1]
    assert demo[-1].name == "Budget" and len(demo[1:]) == 4
    assert demo["Invoices"].used_range == (0, 0, 15, 7)
    assert demo["Invoices"].used_range.address == "A1:G15"
    assert make_book([])[0].used_range is None
    assert demo["Guests"].hidden is False and demo["Guests"].is_worksheet is True


def test_a_cell_has_its_style_and_those_that_it_is_made_of(demo):
    cell = demo["Invoices"]["E5"]
    assert cell.value == 6410.5 and cell.shown == "6,410.50" and cell.address == "E5"
    assert (cell.row, cell.column) == (4, 4)
    assert cell == demo["Invoices"][4, 4]
    assert cell.conditional_style == cf.Style(fill_pattern="solid", fill_colour="#FFC7CE",
                                              font_colour="#9C0006", bold=True)
    assert cell.own_style.font_colour == "#000000" and cell.own_style.bold is None
    assert cell.style.font_colour == "#9C0006" and cell.style.number_format == "#,##0.00"
    assert cell.rules == (9, 13) and cell.failure is None
    assert dict(cell.conditional_style.items())["bold"] is True


def test_positions_without_a_value_have_a_style():
    book = make_book([[1]], [("A1:A9", FormulaRule(formula=["ISBLANK(A1)"], fill=RED))])
    assert book[0]["A5"].conditional_style.fill_colour == "#FF0000"
    assert book[0]["A5"].value is None
    assert [cell.address for cell in book[0].resolve("A1:C4")] == ["A2", "A3", "A4"]
    assert [cell.address for cell in book[0].cells()] == ["A1"]


def test_visuals():
    rules = [("A1:A3", ColorScaleRule(start_type="min", start_color="FF0000",
                                      end_type="max", end_color="00FF00")),
             ("A1:A3", DataBarRule("min", None, "max", None, color="0000FF")),
             ("A1:A3", IconSetRule("3Arrows", "percent", [0, 33, 67]))]
    visuals = [cell.visuals for cell in make_book([[1], [2], [3]], rules)[0].cells()]
    assert [seen.scale.colour for seen in visuals] == ["#FF0000", "#808000", "#00FF00"]
    assert visuals[2].bar.end > visuals[1].bar.end > visuals[0].bar.end
    assert [seen.icon.index for seen in visuals] == [0, 1, 2]
    assert visuals[0].icon == cf.Icon(rule=2, set="3Arrows", index=0, count=3)
    assert visuals[0].show_value is True


def test_a_condition_that_fails_is_told():
    book = make_book([[1], [2], [3]], [("A2:A9", TOO_LARGE)])
    cell = book[0]["A2"]
    assert cell.failure.rule == 0 and "values at once" in cell.failure.reason
    assert cell.conditional_style is None and cell.rules == ()
    assert book[0].rule_array().tolist() == [[cf.NO_RULE], [cf.FAILED], [cf.FAILED]]
    assert book[0].rule_sets()[0].tolist() == [[cf.NO_RULE], [cf.FAILED], [cf.FAILED]]
    assert [found.address for found in book[0].resolve()] == ["A2", "A3"]


def test_the_moment_counts_for_stored_results_too():
    workbook = openpyxl.Workbook()
    workbook.active["A1"] = "=TODAY()"
    workbook.active.conditional_formatting.add(
        "A1", FormulaRule(formula=["A1=DATE(2020,1,2)"], fill=RED))
    contents = save(workbook)
    for now in ("2020-01-02", datetime.datetime(2020, 1, 2, 3),
                datetime.datetime(2020, 1, 2, tzinfo=datetime.timezone.utc)):
        book = cf.open(contents, now=now)
        assert book[0].value("A1") == 43832.0 and book[0]["A1"].rules == (0,)
        assert book.now.date() == datetime.date(2020, 1, 2)
    # A naive moment is one of the time zone.
    there = cf.open(contents, now="2020-01-02T23:30:00-05:00", time_zone="America/New_York")
    assert there[0].value("A1") == 43832.0
    assert cf.open(contents, now="2020-01-02T23:30:00-05:00")[0].value("A1") == 43833.0


def test_semantics():
    def holds(semantics):
        rule = CellIsRule(operator="greaterThan", formula=["5"], fill=RED)
        return make_book([["text"]], [("A1", rule)], semantics=semantics)[0]["A1"].rules

    assert holds("widespread") == (0,) and holds("own") == ()


def test_a_cell_and_a_sheet_keep_their_workbook_alive():
    sheet = make_book([[7]], [("A1", FormulaRule(formula=["TRUE"], font=BOLD))])[0]
    cells = sheet.cells()
    cell = sheet["A1"]
    gc.collect()
    assert cell.shown == "7" and cell.sheet.workbook[0].value("A1") == 7
    del sheet, cell
    gc.collect()
    assert next(cells).style.bold is True


def test_bytes_of_all_kinds_and_paths_of_all_kinds(tmp_path):
    contents = DEMO.read_bytes()
    for source in (contents, bytearray(contents), memoryview(contents), str(DEMO), DEMO):
        assert len(cf.open(source)) == 5
    odd = os.fsencode(tmp_path) + b"/\xff.xlsx"
    shutil.copy(DEMO, odd)
    assert len(cf.open(os.fsdecode(odd))) == 5
    with pytest.raises(cf.LoadError) as caught:
        cf.open(os.fsdecode(odd) + "x")
    assert caught.value.file == os.fsdecode(odd) + "x"
    with pytest.raises(TypeError):
        cf.open(7)


@pytest.mark.parametrize("contents, problem", [
    (b"", "is empty"),
    (b"name,value\n", "is no .xlsx workbook: it is no zip archive"),
    (DEMO.read_bytes()[:5000], "is no .xlsx workbook, or is damaged"),
])
def test_a_file_that_is_no_workbook(contents, problem):
    with pytest.raises(cf.LoadError, match="^upload 7: ") as caught:
        cf.open(contents, name="upload 7")
    assert caught.value.problem.startswith(problem)
    assert caught.value.file == "upload 7" and caught.value.part == ""


def test_a_limit_of_files():
    assert cf.DEFAULT_LIMITS["cells"] == 50_000_000
    with pytest.raises(cf.LoadError, match="limit"):
        cf.open(DEMO, limits={"cells": 10})


@pytest.mark.parametrize("options", [
    {"time_zone": "Nowhere"}, {"locale": "xx-Nowhere"}, {"now": "yesterday"},
    {"semantics": "mine"}, {"limits": {"apples": 1}}, {"limits": {"cells": -1}},
    {"time_zone": "\udcff"}, {"now": "\udcff"}, {"semantics": "\udcff"},
], ids=lambda options: repr(options).encode("ascii", "backslashreplace").decode())
def test_options_that_are_wrong(options):
    with pytest.raises(cf.OptionError, match=next(iter(options)) if "locale" not in options else ""):
        cf.open(DEMO, **options)


@pytest.mark.parametrize("options", [
    {"time_zone": 3}, {"locale": None}, {"now": 5}, {"semantics": 1}, {"name": 4}])
def test_options_of_another_type(options):
    with pytest.raises((TypeError, AttributeError)):
        cf.open(DEMO, **options)


@pytest.mark.parametrize("amounts", [
    {"steps": 0}, {"memory": -1}, {"seconds": 0}, {"seconds": float("nan")}, {"steps": 2**64}])
def test_budgets_that_are_wrong(amounts):
    with pytest.raises(cf.OptionError, match=next(iter(amounts))):
        cf.Budget(**amounts)


@pytest.mark.parametrize("threads", [0, -1, 257, 10**30])
def test_numbers_of_threads_that_are_wrong(demo, threads):
    sheet = demo["Invoices"]
    for ask in (sheet.rule_array, sheet.rule_sets, sheet.runs, sheet.cells, sheet.resolve,
                sheet.render, lambda threads: demo.diff(demo, threads=threads)):
        with pytest.raises(cf.OptionError, match="threads"):
            ask(threads=threads)


@pytest.mark.parametrize("ask", [
    lambda book: book["Nothing"],
    lambda book: book["\udcff"],
    lambda book: book[0]["A0"],
    lambda book: book[0]["A1:B2"],
    lambda book: book[0]["XFE1"],
    lambda book: book[0]["\udcff"],
    lambda book: book[0][-1, 0],
    lambda book: book[0][0, 16384],
    lambda book: book[0].values((3, 3, 3, 4)),
    lambda book: book[0].explain("A1", rule=999),
], ids=str)
def test_selections_that_are_wrong(demo, ask):
    with pytest.raises(cf.SelectionError) as caught:
        ask(demo)
    assert isinstance(caught.value, LookupError)
    assert caught.value.file == str(DEMO)


def test_an_index_that_is_not_there_ends_a_loop_as_for_any_sequence(demo):
    with pytest.raises(IndexError):
        demo[5]


def test_errors_say_where(demo):
    with pytest.raises(cf.BudgetExceeded, match="steps") as caught:
        demo.within(cf.Budget(steps=2))["Invoices"].cell("E5")
    error = caught.value
    assert (error.file, error.sheet, error.cell) == (str(DEMO), "Invoices", "E5")
    assert isinstance(error, cf.Error)
    copy = pickle.loads(pickle.dumps(error))
    assert (str(copy), copy.sheet, type(copy)) == (str(error), "Invoices", cf.BudgetExceeded)


def test_memory_of_the_budget_bounds_dense_results(demo):
    small = demo.within(cf.Budget(memory=100))["Invoices"]
    for ask in (small.values, small.rule_array, small.rule_sets, small.to_pandas):
        with pytest.raises(cf.BudgetExceeded, match="smaller range"):
            ask()


def test_explain_one_rule(demo):
    account = demo["Invoices"].explain("E5", rule=13)
    assert [rule.rule for rule in account.rules] == [13]
    assert account.rules[0].outcome == "holds" and account.rules[0].sets == ("bold",)
    assert account.set_by["bold"] == 13 and account.set_by["font_name"] is None


def test_another_python_is_told_which_one_the_module_is_for(tmp_path):
    package = shutil.copytree(pathlib.Path(cf.__file__).parent, tmp_path / "conditional_formatters",
                              ignore=shutil.ignore_patterns("_core*.so", "__pycache__"))
    (package / "_core.cpython-30-x86_64-linux-gnu.so").touch()
    run = subprocess.run([sys.executable, "-c", "import conditional_formatters"],
                         env={"PYTHONPATH": str(tmp_path)}, capture_output=True, text=True)
    assert f"built for another Python than {sys.executable}: it has _core.cpython-30-" in run.stderr


def test_findings_of_loading(demo):
    assert demo.findings[0].note is True
    assert "depend on the current date" in demo.findings[0].message


def test_now_is_told_in_the_time_zone(demo):
    assert demo.now.isoformat() == NOW
