"""Effective styles of sheets that openpyxl holds."""

from __future__ import annotations

import io
from typing import Any, Protocol, Union

from ._records import Style
from ._workbook import Cell, open


class _Worksheet(Protocol):
    @property
    def title(self) -> str: ...
    @property
    def parent(self) -> Any: ...


class EffectiveStyles:
    """What the cells of an openpyxl workbook look like, as of the moment when this is made.

    The workbook is saved to memory and read from there, once: make a new object after a change. That
    costs what `Workbook.save()` costs and, at a tenth of it or less, the reading. Results of formulas
    that openpyxl does not keep are calculated.

    Args:
        workbook: An openpyxl Workbook that can be saved.
        options: Those of open(), such as `now`.
    """

    def __init__(self, workbook: Any, **options: Any) -> None:
        file = io.BytesIO()
        workbook.save(file)
        options.setdefault("name", "openpyxl workbook")
        self.workbook = open(file.getbuffer(), **options)

    def cell(self, worksheet: _Worksheet, cell: Union[str, Any]) -> Cell:
        """A cell of an openpyxl worksheet, by its address or as openpyxl's object."""
        return self.workbook[worksheet.title].cell(getattr(cell, "coordinate", cell))

    def style(self, worksheet: _Worksheet, cell: Union[str, Any]) -> Style:
        """The style that is seen: the conditional one over the cell's own."""
        return self.cell(worksheet, cell).style


def effective_style(worksheet: _Worksheet, cell: Union[str, Any], **options: Any) -> Style:
    """What a cell of an openpyxl worksheet looks like: the conditional style over its own.

    It saves the workbook each time; for several cells, make one EffectiveStyles.
    """
    return EffectiveStyles(worksheet.parent, **options).style(worksheet, cell)
