"""Sheets as data frames of pandas."""

from __future__ import annotations

from typing import TYPE_CHECKING, Optional

import pandas

from . import _core
from ._codec import CellError
from ._ranges import Range, RangeRef

if TYPE_CHECKING:
    from pandas.io.formats.style import Styler

    from ._workbook import Sheet

# Bytes that a position takes in a frame with its styles.
_BYTES_EACH = 500


def _column_letters(column: int) -> str:
    return _core.address((0, column, 1, column + 1))[:-1]


def _choose(sheet: Sheet, range_: Optional[RangeRef]) -> Range:
    return sheet._dense_range(range_, _BYTES_EACH) or Range(0, 0, 0, 0)


def _read_frame(sheet: Sheet, chosen: Range) -> pandas.DataFrame:
    rows = sheet.values(chosen) if chosen.shape != (0, 0) else []
    texts = [[value.code if isinstance(value, CellError) else value for value in row] for row in rows]
    return pandas.DataFrame(texts, index=range(chosen.first_row + 1, chosen.end_row + 1),
                            columns=[_column_letters(column)
                                     for column in range(chosen.first_column, chosen.end_column)])


def _take_header(frame: pandas.DataFrame) -> pandas.DataFrame:
    """The first row as the names of columns; each stays unique."""
    if frame.empty:
        return frame
    body = frame.iloc[1:].copy()
    names: list[str] = []
    for letters, name in zip(frame.columns, frame.iloc[0]):
        text = letters if name is None or name != name else str(name)
        names.append(text if text not in names else f"{text} ({letters})")
    body.columns = pandas.Index(names)
    return body.infer_objects()


def _show(value: object) -> object:
    """A number as a sheet shows it in general format; anything else as it is."""
    return f"{value:.15g}" if isinstance(value, float) else value


def make_frame(sheet: Sheet, range_: Optional[RangeRef], header: bool) -> pandas.DataFrame:
    """The values of a range."""
    with sheet._telling():
        frame = _read_frame(sheet, _choose(sheet, range_))
    return _take_header(frame) if header else frame


def make_styler(sheet: Sheet, range_: Optional[RangeRef], header: bool) -> Styler:
    """The values of a range with the styles that are seen."""
    with sheet._telling():
        chosen = _choose(sheet, range_)
        frame = make_frame(sheet, range_, header)
        css = [[""] * chosen.shape[1] for _ in range(chosen.shape[0])]
        if chosen.shape != (0, 0):
            for cell in sheet._visit(chosen, "all", False, 1):
                css[cell.row - chosen.first_row][cell.column - chosen.first_column] = cell.to_css()
    styles = pandas.DataFrame(css[1:] if header else css, index=frame.index, columns=frame.columns)
    styler = frame.style.apply(lambda _: styles, axis=None)
    return styler.format(_show, escape="html", na_rep="").format_index(escape="html", axis=1)
