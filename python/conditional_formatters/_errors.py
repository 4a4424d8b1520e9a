"""The exceptions of the package."""

from __future__ import annotations

from typing import Optional


class Error(Exception):
    """Base of the exceptions of this package. The text says what is wrong and where.

    Attributes are None where they do not apply.

    Attributes:
        file: The name of the workbook, as messages have it.
        sheet: The name of the sheet.
        cell: The cell in A1 notation.
        rule: The number of the rule.
    """

    def __init__(self, message: str, *, file: Optional[str] = None, sheet: Optional[str] = None,
                 cell: Optional[str] = None, rule: Optional[int] = None) -> None:
        super().__init__(message)
        self.file = file
        self.sheet = sheet
        self.cell = cell
        self.rule = rule


class LoadError(Error):
    """The file cannot be read: it is damaged, encrypted, no workbook, or beyond the limits.

    Attributes:
        part: The part inside the file, such as `xl/worksheets/sheet1.xml`; empty for all of it.
        place: A cell, an element or a position in the part; may be empty.
        problem: What is wrong, and what can be done about it.
    """

    def __init__(self, message: str, *, part: str = "", place: str = "", problem: str = "",
                 file: Optional[str] = None) -> None:
        super().__init__(message, file=file)
        self.part = part
        self.place = place
        self.problem = problem


class BudgetExceeded(Error):
    """A call takes more steps, memory or time than its budget allows."""


class SelectionError(Error, LookupError):
    """The workbook has no such sheet, cell or rule."""


class OptionError(Error, ValueError):
    """An option has a value that it cannot have."""


class RenderError(Error):
    """Sheets cannot be drawn."""


class RenderWarning(UserWarning):
    """Something is not drawn as the workbook means it."""
