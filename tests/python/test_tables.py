"""Whole tables: what they hold is what single cells say."""

import numpy
import pytest
from conftest import WORKBOOKS, make_book, open_workbook
from openpyxl.formatting.rule import FormulaRule
from openpyxl.styles import Font, PatternFill

import conditional_formatters as cf

each_workbook = pytest.mark.parametrize("path", WORKBOOKS, ids=lambda path: path.name)


def first_conditions(sheet, area):
    """The first condition of each cell of an area, asked one by one."""
    drawn = {rule.number for rule in sheet.rules if rule.visual}

    def first(cell):
        conditions = [rule for rule in cell.rules if rule not in drawn]
        return cf.FAILED if cell.failure else conditions[0] if conditions else cf.NO_RULE

    return [[first(sheet[row, column]) for column in range(area.first_column, area.end_column)]
            for row in range(area.first_row, area.end_row)]


@each_workbook
def test_an_array_is_as_its_cells(path):
    for sheet in open_workbook(path):
        if sheet.used_range is None:
            continue
        used = sheet.used_range
        area = cf.Range(0, 0, min(used.end_row, 25), min(used.end_column, 12))
        array = sheet.rule_array(area)
        assert array.dtype == numpy.int32 and array.shape == area.shape
        assert array.tolist() == first_conditions(sheet, area)
        indices, sets = sheet.rule_sets(area)
        firsts = [sets[index][0] if index >= 0 else index for index in indices.flat]
        assert firsts == array.flatten().tolist()


@each_workbook
def test_runs_are_as_the_cells(path):
    for sheet in open_workbook(path):
        in_runs = {}
        for run in sheet.runs():
            for row in range(run.range.first_row, run.range.end_row):
                for column in range(run.range.first_column, run.range.end_column):
                    assert (row, column) not in in_runs
                    in_runs[row, column] = run.style
        cells = {(cell.row, cell.column): cell.conditional_style for cell in sheet.resolve()
                 if cell.conditional_style}
        assert in_runs == cells


@pytest.fixture(scope="module")
def table():
    rules = [("A1:J2000", FormulaRule(formula=["MOD(A1,3)=0"], font=Font(bold=True))),
             ("B1:B1048576", FormulaRule(formula=["$A1>9000"], fill=PatternFill(bgColor="FFFF0000")))]
    return make_book([[10 * row + column for column in range(10)] for row in range(2000)], rules)[0]


def test_arrays_are_those_of_numpys_own_arithmetic(table):
    values = numpy.array(table.values(), dtype=float)
    by_three = values % 3 == 0
    above = numpy.zeros_like(by_three)
    above[:, 1] = values[:, 0] > 9000
    expected = numpy.select([by_three, above], [0, 1], cf.NO_RULE)
    assert (table.rule_array() == expected).all()
    indices, sets = table.rule_sets()
    assert sets == [(0,), (0, 1), (1,)] or sorted(sets) == [(0,), (0, 1), (1,)]
    both = numpy.full_like(expected, cf.NO_RULE)
    for index, rules in enumerate(sets):
        both[(by_three == (0 in rules)) & (above == (1 in rules))] = index
    assert (indices == both).all()


@pytest.mark.parametrize("threads", [1, 2, 3])
def test_threads_change_nothing(table, threads):
    assert (table.rule_array(threads=threads) == table.rule_array()).all()
    assert list(table.resolve(threads=threads)) == list(table.resolve())
    assert table.runs(threads=threads) == table.runs()


def test_an_array_begins_where_its_range_does(table):
    assert (table.rule_array("C5:E9") == table.rule_array()[4:9, 2:5]).all()
    assert (table.rule_array(cf.Range(4, 2, 9, 5)) == table.rule_array("C5:E9")).all()
    assert table.rule_array("Z1:AA2").tolist() == [[-1, -1], [-1, -1]]


def test_a_sheet_without_cells_has_an_empty_array():
    empty = make_book([])[0]
    assert empty.rule_array().shape == (0, 0)
    assert empty.rule_sets()[1] == [] and empty.runs() == [] and list(empty.resolve()) == []
    assert empty.values() == []


@pytest.mark.parametrize("array", [
    numpy.zeros(3, numpy.int32), numpy.zeros((2, 2), numpy.int64), numpy.zeros((2, 2), numpy.float32)])
def test_an_array_of_another_shape_or_type_is_not_written(demo, array):
    with pytest.raises(ValueError, match="32-bit"):
        demo._book.fill_rules(0, (0, 0, 2, 2), array, False, 1, (None, None, None))
