"""Cells and ranges, as callers name them."""

from __future__ import annotations

from typing import NamedTuple, Union

from . import _core
from ._errors import SelectionError

ROW_COUNT = 1_048_576
COLUMN_COUNT = 16_384


class Range(NamedTuple):
    """A half-open rectangle of positions, counted from 0: the end row and column lie outside."""

    first_row: int
    first_column: int
    end_row: int
    end_column: int

    @property
    def address(self) -> str:
        """The range in A1 notation, such as `B2:D9`."""
        return _core.address(self)

    @property
    def shape(self) -> tuple[int, int]:
        """The numbers of rows and columns."""
        return self.end_row - self.first_row, self.end_column - self.first_column


CellRef = Union[str, tuple[int, int]]
"""A cell: `"B3"`, or its row and column from 0."""

RangeRef = Union[str, Range, tuple[int, int, int, int]]
"""A range: `"B2:D9"`, `"B:B"`, or a Range."""


def read_range(reference: RangeRef) -> Range:
    """The range that a caller names. Raises SelectionError for what is no range of a sheet."""
    if isinstance(reference, str):
        corners = _core.parse_range(reference.encode(errors="replace").decode())
        if corners is None:
            raise SelectionError(f"{reference!r} is no range of a sheet; write one such as B2:D9")
        return Range(*corners)
    first_row, first_column, end_row, end_column = reference
    found = Range(first_row, first_column, end_row, end_column)
    if not (0 <= first_row < end_row <= ROW_COUNT and 0 <= first_column < end_column <= COLUMN_COUNT):
        raise SelectionError(f"{found!r} is no range of a sheet: it is empty, or lies outside")
    return found


def read_cell(reference: CellRef) -> Range:
    """The range of the one cell that a caller names. Raises SelectionError."""
    if not isinstance(reference, str):
        row, column = reference
        return read_range((row, column, row + 1, column + 1))
    found = read_range(reference)
    if found.shape != (1, 1):
        raise SelectionError(f"{reference!r} is no cell; write one such as B3")
    return found
