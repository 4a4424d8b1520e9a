"""Workbooks, their sheets, and their cells."""

from __future__ import annotations

import contextlib
import dataclasses
import datetime
import functools
import html
import json
import os
import pathlib
import tempfile
import warnings
from typing import TYPE_CHECKING, Any, Iterator, Mapping, Optional, Sequence, Union, overload

from . import _core
from ._codec import Value, from_json
from ._css import style_to_css
from ._errors import BudgetExceeded, Error, OptionError, RenderWarning, SelectionError
from ._ranges import COLUMN_COUNT, ROW_COUNT, CellRef, Range, RangeRef, read_cell, read_range
from ._records import (CheckFinding, Diff, Explanation, Failure, LoadFinding, Rule, Style, Visuals)

if TYPE_CHECKING:
    import numpy
    import pandas
    from pandas.io.formats.style import Styler

NO_RULE = -1
"""In an array of rules: no condition holds."""
FAILED = -2
"""In an array of rules: a condition could not be evaluated."""

DEFAULT_LIMITS: Mapping[str, int] = _core.default_limits()
"""What one file may hold, by name: a file that holds more is refused."""

_MOST_THREADS = 256
_WHOLE_SHEET = Range(0, 0, ROW_COUNT, COLUMN_COUNT)
_NO_STYLE = Style()
# Bytes that a position takes in a list of values, and in an array of rules.
_VALUE_BYTES = 64
_NUMBER_BYTES = 4


@dataclasses.dataclass(frozen=True)
class Budget:
    """What one call may cost; None: as much as it takes.

    Attributes:
        steps: Readings of cells, about; some nanoseconds each.
        memory: Bytes.
        seconds: From the beginning of the call.
    """

    steps: Optional[int] = None
    memory: Optional[int] = 4 << 30
    seconds: Optional[float] = None

    def __post_init__(self) -> None:
        for name in ("steps", "memory", "seconds"):
            value = getattr(self, name)
            if value is not None and not 0 < value < 2**63:
                raise OptionError(f"{name}: {value!r} is no amount above 0")

    @property
    def _allowance(self) -> tuple[Optional[int], Optional[int], Optional[float]]:
        return self.steps, self.memory, self.seconds


@functools.lru_cache(maxsize=4096)
def _read_style(record: str) -> Style:
    return from_json(Style, json.loads(record))


def _read_visuals(record: str) -> Visuals:
    return from_json(Visuals, json.loads(record))


@dataclasses.dataclass(frozen=True)
class Cell:
    """What a cell holds, and what it looks like. It keeps its workbook alive.

    Attributes:
        row, column: From 0.
        style: What is seen: the conditional style over the cell's own.
        own_style: The style without the rules.
        conditional_style: What the rules give; None if no rule gives a style.
        rules: The numbers of the rules that decide, by priority.
        visuals: What colour scales, data bars and icon sets give; None for nothing.
        failure: The rule that could not be evaluated, if one could not. Later rules are then not
            looked at.
    """

    sheet: Sheet = dataclasses.field(repr=False, compare=False)
    row: int
    column: int
    value: Value
    style: Style
    own_style: Style
    conditional_style: Optional[Style]
    rules: tuple[int, ...]
    visuals: Optional[Visuals]
    failure: Optional[Failure]

    @property
    def address(self) -> str:
        """The cell in A1 notation."""
        return _core.address((self.row, self.column, self.row + 1, self.column + 1))

    @property
    def shown(self) -> str:
        """The text that the cell shows: the value in its number format."""
        book = self.sheet.workbook._book
        return book.shown(self.sheet.index, self.row, self.column, self.style.number_format)

    def to_css(self) -> str:
        """The declarations of CSS that show the style, the colour of a scale, and a bar."""
        return style_to_css(self.style, self.visuals)


@dataclasses.dataclass(frozen=True)
class Run:
    """A rectangle of cells that share one conditional style."""

    range: Range
    style: Style


class Sheet:
    """A sheet of a workbook, which it keeps alive.

    Ranges default to what the sheet uses. All operations may be called from several threads.
    """

    def __init__(self, workbook: Workbook, index: int, name: str, is_worksheet: bool, hidden: bool,
                 used: Optional[Range]) -> None:
        self.workbook = workbook
        self.index = index
        self.name = name
        self.is_worksheet = is_worksheet
        self.hidden = hidden
        self.used_range = used
        """The smallest range that contains every cell; None for a sheet without cells."""

    def __repr__(self) -> str:
        used = self.used_range.address if self.used_range else "empty"
        return f"<Sheet {self.name!r} {used}>"

    @functools.cached_property
    def rules(self) -> tuple[Rule, ...]:
        """The rules of the sheet, by priority."""
        records = json.loads(self.workbook._book.rules(self.index))
        return tuple(from_json(Rule, record) for record in records)

    # Values.

    def value(self, cell: CellRef) -> Value:
        """The value of a cell; None for an empty one. Raises SelectionError."""
        with self._telling(cell):
            position = read_cell(cell)
            return self.workbook._book.value(self.index, position.first_row, position.first_column)

    def values(self, range: Optional[RangeRef] = None) -> list[list[Value]]:
        """The values of a range, row by row. By default from A1 to the end of the used range."""
        with self._telling():
            chosen = self._dense_range(range, _VALUE_BYTES)
            return self.workbook._book.values(self.index, chosen) if chosen else []

    # Cells.

    def __getitem__(self, cell: CellRef) -> Cell:
        """A cell, as cell() gives it."""
        return self.cell(cell)

    def cell(self, cell: CellRef) -> Cell:
        """A position of the sheet, with or without a value. Raises SelectionError.

        The first call prepares what the rules need. For many cells, cells() is much faster.
        """
        with self._telling(cell):
            return next(self._visit(read_cell(cell), "all", False, 1))

    def cells(self, range: Optional[RangeRef] = None, *, threads: int = 1) -> Iterator[Cell]:
        """The existing cells, row by row. Raises BudgetExceeded.

        The cells are resolved before the first one is given: some 50 bytes for each.
        """
        with self._telling():
            chosen = _WHOLE_SHEET if range is None else read_range(range)
            return self._visit(chosen, "existing", False, _check_threads(threads))

    def resolve(self, range: Optional[RangeRef] = None, *, threads: int = 1) -> Iterator[Cell]:
        """The cells for which a rule decides, or fails, row by row. Raises BudgetExceeded.

        These may be empty cells, too. By default from A1 to the end of the used range.
        """
        with self._telling():
            chosen = self._range_from_corner(range)
            count = _check_threads(threads)
            return self._visit(chosen, "formatted", True, count) if chosen else iter(())

    def runs(self, range: Optional[RangeRef] = None, *, threads: int = 1) -> list[Run]:
        """The conditional styles as rectangles, by first row, then first column.

        By default from A1 to the end of the used range. Cells without a conditional style, and those
        that fail, are in none. Raises BudgetExceeded.
        """
        with self._telling():
            chosen = self._range_from_corner(range)
            if chosen is None:
                return []
            runs, styles = self.workbook._book.runs(self.index, chosen, _check_threads(threads),
                                                     self._allowance)
            read = [_read_style(style) for style in styles]
            return [Run(Range(*corners), read[style]) for *corners, style in runs]

    # Whole tables.

    def rule_array(self, range: Optional[RangeRef] = None, *,
                   threads: int = 1) -> numpy.ndarray[Any, numpy.dtype[numpy.int32]]:
        """For each position the number of the first condition that holds, as a 2-D array of int32.

        NO_RULE, -1, where none holds; FAILED, -2, where one could not be evaluated. By default the
        array begins at A1, so that `array[row, column]` is that cell, and ends with the used range.
        The numbers are those of Rule.number. Colour scales, data bars and icon sets do not count:
        they draw on every number.
        Raises BudgetExceeded, also for a range that would not fit the memory of the budget.
        """
        return self._fill_rules(range, False, threads)[0]

    def rule_sets(
        self, range: Optional[RangeRef] = None, *, threads: int = 1
    ) -> tuple[numpy.ndarray[Any, numpy.dtype[numpy.int32]], list[tuple[int, ...]]]:
        """All conditions that hold for each position: an array of indices into a list of sets.

        A set is the numbers of rules that hold together, by priority, up to one that stops. NO_RULE
        and FAILED are as in rule_array().
        """
        array, sets = self._fill_rules(range, True, threads)
        return array, [tuple(rules) for rules in sets or []]

    def _fill_rules(
        self, range: Optional[RangeRef], as_sets: bool, threads: int
    ) -> tuple[numpy.ndarray[Any, numpy.dtype[numpy.int32]], Optional[list[list[int]]]]:
        import numpy

        with self._telling():
            chosen = self._dense_range(range, _NUMBER_BYTES)
            array = numpy.empty(chosen.shape if chosen else (0, 0), dtype=numpy.int32)
            if chosen is None:
                return array, []
            sets = self.workbook._book.fill_rules(self.index, chosen, array, as_sets,
                                                  _check_threads(threads), self._allowance)
            return array, sets

    # Questions.

    def explain(self, cell: CellRef, *, rule: Optional[int] = None) -> Explanation:
        """Why a cell looks as it does: what became of each rule on it, and who sets what.

        With `rule`, the number of a rule of this sheet, that one alone is told about.
        """
        with self._telling(cell, rule):
            return self._explain(read_cell(cell), rule)[0]

    def explain_range(self, range: RangeRef, *, rule: Optional[int] = None) -> list[Explanation]:
        """The same for every position of a range; much faster than one after the other."""
        with self._telling(rule=rule):
            return self._explain(read_range(range), rule)

    def _explain(self, positions: Range, rule: Optional[int]) -> list[Explanation]:
        if rule is not None and all(known.number != rule for known in self.rules):
            raise SelectionError(f"there is no rule {rule} on the sheet {self.name!r}")
        records = self.workbook._book.explain(self.index, positions, rule, self._allowance)
        return [from_json(Explanation, record) for record in json.loads(records)]

    def check(self) -> list[CheckFinding]:
        """What an auditor of the sheet's rules should look at."""
        return self.workbook._check(self)

    # As it looks.

    def render(self, target: Optional[Union[str, os.PathLike[str]]] = None, *,
               range: Optional[RangeRef] = None, format: Optional[str] = None,
               theme: str = "auto", scale: float = 1.0, threads: int = 1) -> bytes:
        """The sheet as it looks; see Workbook.render()."""
        return self.workbook.render(target, sheets=[self], range=range, format=format, theme=theme,
                                    scale=scale, threads=threads)

    def _repr_html_(self) -> str:
        return _frame(self.render(format="html"), self.name)

    def to_pandas(self, range: Optional[RangeRef] = None, *, header: bool = False) -> pandas.DataFrame:
        """The values of a range as a pandas DataFrame; see to_pandas_style()."""
        from ._pandas import make_frame

        return make_frame(self, range, header)

    def to_pandas_style(self, range: Optional[RangeRef] = None, *, header: bool = False) -> Styler:
        """The values of a range as a pandas Styler that shows the effective styles.

        By default from A1 to the end of the used range. Rows are named by their numbers and columns
        by their letters; with `header`, columns by the texts of the first row. Colours, fonts,
        borders, alignment, colour scales and data bars are shown; number formats and icons are not.
        Texts of the workbook are escaped.
        """
        from ._pandas import make_styler

        return make_styler(self, range, header)

    # Helpers.

    @property
    def _allowance(self) -> tuple[Optional[int], Optional[int], Optional[float]]:
        return self.workbook.budget._allowance

    @contextlib.contextmanager
    def _telling(self, cell: Optional[CellRef] = None, rule: Optional[int] = None) -> Iterator[None]:
        """Adds to errors where they occurred."""
        with self.workbook._telling():
            try:
                yield
            except Error as error:
                error.sheet = self.name
                error.cell = cell if isinstance(cell, str) else None
                error.rule = rule
                raise

    def _range_from_corner(self, range: Optional[RangeRef]) -> Optional[Range]:
        """A range that a caller names, or that from A1 to the end of the used range."""
        if range is not None:
            return read_range(range)
        used = self.used_range
        return used and Range(0, 0, used.end_row, used.end_column)

    def _dense_range(self, range: Optional[RangeRef], bytes_each: int) -> Optional[Range]:
        """The same, for something that takes memory for each position."""
        chosen = self._range_from_corner(range)
        most = self.workbook.budget.memory
        if chosen and most is not None and chosen.shape[0] * chosen.shape[1] * bytes_each > most:
            raise BudgetExceeded(f"{chosen.address} has more positions than the memory of the budget "
                                 "allows; name a smaller range")
        return chosen

    def _visit(self, range: Range, positions: str, only_decided: bool,
               threads: int) -> Iterator[Cell]:
        found = self.workbook._book.cells(self.index, range, positions, only_decided, threads,
                                          self._allowance)
        return self._read_cells(found)

    def _read_cells(self, found: _core.CellList) -> Iterator[Cell]:
        styles = [_read_style(style) for style in found.styles()]
        rules = [tuple(numbers) for numbers in found.rules()]
        visuals = found.visuals()
        failures = [Failure(*failure) for failure in found.failures()]
        block = 4096
        for begin in range(0, len(found), block):
            for row, column, value, own, given, seen, deciding, drawn, failed in found.take(
                    begin, begin + block):
                yield Cell(self, row, column, value,
                           style=styles[seen] if seen >= 0 else _NO_STYLE,
                           own_style=styles[own] if own >= 0 else _NO_STYLE,
                           conditional_style=styles[given] if given >= 0 else None,
                           rules=rules[deciding] if deciding >= 0 else (),
                           visuals=_read_visuals(visuals[drawn]) if drawn >= 0 else None,
                           failure=failures[failed] if failed >= 0 else None)


def _frame(page: bytes, title: str) -> str:
    """A page in a frame of its own, which cannot reach the page around it."""
    source = html.escape(page.decode(errors="replace"))
    return (f'<iframe title="{html.escape(title)}" sandbox="allow-scripts" srcdoc="{source}" '
            'style="width: 100%; height: 32em; border: 1px solid #ccc"></iframe>')


class Workbook(Sequence[Sheet]):
    """A workbook that was read; open() makes it. A sequence of its sheets.

    It is never changed, and keeps nothing of its file open. All operations may be called from
    several threads.
    """

    def __init__(self, book: _core.Book, file: str, budget: Budget) -> None:
        self._book = book
        self.file = file
        """The name in messages."""
        self.budget = budget
        """What one call may cost."""
        self.sheets: tuple[Sheet, ...] = tuple(
            Sheet(self, index, name, is_worksheet, hidden,
                  Range(*used) if used[0] < used[2] else None)
            for index, (name, is_worksheet, hidden, used) in enumerate(book.sheets()))

    def __repr__(self) -> str:
        return f"<Workbook {self.file!r} {[sheet.name for sheet in self.sheets]}>"

    def __len__(self) -> int:
        return len(self.sheets)

    @overload
    def __getitem__(self, key: Union[int, str]) -> Sheet: ...

    @overload
    def __getitem__(self, key: slice) -> tuple[Sheet, ...]: ...

    def __getitem__(self, key: Union[int, str, slice]) -> Union[Sheet, tuple[Sheet, ...]]:
        """A sheet by its name, in any letter case, or its index; several by a slice."""
        if not isinstance(key, str):
            return self.sheets[key]
        index = self._book.find_sheet(_plain(key))
        if index is None:
            names = ", ".join(repr(sheet.name) for sheet in self.sheets[:10])
            raise SelectionError(f"{self.file}: there is no sheet {key!r}; there is {names}",
                                 file=self.file, sheet=key)
        return self.sheets[index]

    @property
    def now(self) -> datetime.datetime:
        """The moment for which conditions are evaluated, in the time zone of the workbook."""
        return datetime.datetime.fromisoformat(self._book.now())

    @functools.cached_property
    def findings(self) -> tuple[LoadFinding, ...]:
        """What was read in another way than the file means it, or not at all."""
        return tuple(from_json(LoadFinding, record) for record in json.loads(self._book.findings()))

    @property
    def rules(self) -> tuple[Rule, ...]:
        """The rules of all sheets, each sheet's by priority."""
        return tuple(rule for sheet in self.sheets for rule in sheet.rules)

    def within(self, budget: Budget) -> Workbook:
        """The same workbook, whose calls have another budget."""
        return Workbook(self._book, self.file, budget)

    def check(self) -> list[CheckFinding]:
        """What an auditor of the rules should look at, by sheet, then by rule."""
        return self._check(None)

    def _check(self, sheet: Optional[Sheet]) -> list[CheckFinding]:
        with self._telling():
            records = self._book.check(sheet.index if sheet else None, self.budget._allowance)
            return [from_json(CheckFinding, record) for record in json.loads(records)]

    def diff(self, other: Workbook, *, threads: int = 1) -> Diff:
        """The sheets, rules and cells that differ in another workbook, or at another moment."""
        with self._telling():
            records = self._book.diff(other._book, _check_threads(threads), self.budget._allowance)
            return from_json(Diff, json.loads(records))

    def render(self, target: Optional[Union[str, os.PathLike[str]]] = None, *,
               sheets: Optional[Sequence[Union[Sheet, str, int]]] = None,
               range: Optional[RangeRef] = None, format: Optional[str] = None,
               theme: str = "auto", scale: float = 1.0, threads: int = 1) -> bytes:
        """The sheets as they look: the bytes of a file, which is also written to `target`.

        Args:
            sheets: By default those that can be seen. A PNG or SVG shows the first alone.
            range: Of each sheet; by default all that is seen of it.
            format: `html`, `svg`, `png` or `pdf`; by default that of the target's name.
            theme: Of an HTML page: `auto`, `light` or `dark`.
            scale: Of a picture: pixels for each CSS pixel.

        Raises OptionError, RenderError, BudgetExceeded and OSError. Warns with RenderWarning about
        what is not drawn as the workbook means it. A file that exists is replaced as a whole.
        """
        with self._telling():
            chosen = [self._find(sheet).index for sheet in sheets or []]
            corners = None if range is None else read_range(range)
            name = os.fsencode(os.path.basename(self.file))
            contents, findings = self._book.render(
                chosen, corners, _plain(_find_format(format, target)), _plain(theme), scale, name,
                _drawing_module(), _check_threads(threads), self.budget._allowance)
        for finding in findings:
            warnings.warn(finding, RenderWarning, stacklevel=2)
        if target is not None:
            _replace_file(pathlib.Path(target), contents)
        return contents

    def _repr_html_(self) -> str:
        return _frame(self.render(format="html"), self.file)

    def _find(self, sheet: Union[Sheet, str, int]) -> Sheet:
        return self.sheets[sheet.index] if isinstance(sheet, Sheet) else self[sheet]

    @contextlib.contextmanager
    def _telling(self) -> Iterator[None]:
        """Adds to errors where they occurred."""
        try:
            yield
        except Error as error:
            error.file = self.file
            raise


def _check_threads(threads: int) -> int:
    if not 1 <= threads <= _MOST_THREADS:
        raise OptionError(f"threads: {threads!r} is none of 1 to {_MOST_THREADS}")
    return threads


def _plain(text: str) -> str:
    """A text without lone surrogates, which have no UTF-8."""
    return text.encode(errors="replace").decode()


def _read_limits(limits: Optional[Mapping[str, int]]) -> dict[str, int]:
    for name, value in (limits or {}).items():
        if name not in DEFAULT_LIMITS or not 0 <= value < 2**63:
            raise OptionError(f"limits: {name!r} with {value!r}; DEFAULT_LIMITS has the names")
    return dict(limits or {})


def _read_now(now: Union[None, str, datetime.datetime]) -> Optional[str]:
    if isinstance(now, datetime.datetime):
        return now.isoformat(timespec="seconds")
    return None if now is None else _plain(now)


def _find_format(format: Optional[str], target: Optional[Union[str, os.PathLike[str]]]) -> str:
    if format is None and target is not None:
        return pathlib.Path(target).suffix[1:].lower()
    return format or "html"


def _drawing_module() -> bytes:
    assert _core.__file__ is not None
    return os.fsencode(os.path.join(os.path.dirname(_core.__file__), _core.DRAWING_MODULE))


def _replace_file(target: pathlib.Path, contents: bytes) -> None:
    """Writes a file beside its place, and puts it there as a whole."""
    descriptor, temporary = tempfile.mkstemp(dir=target.parent, prefix=f".{target.name}.")
    try:
        with os.fdopen(descriptor, "wb") as file:
            file.write(contents)
        mask = os.umask(0)
        os.umask(mask)
        os.chmod(temporary, 0o666 & ~mask)
        os.replace(temporary, target)
    except BaseException:
        os.unlink(temporary)
        raise


def open(source: Union[str, os.PathLike[str], bytes, bytearray, memoryview], *,
         name: Optional[str] = None, now: Union[None, str, datetime.datetime] = None,
         time_zone: str = "UTC", locale: str = "en-US", semantics: str = "own",
         limits: Optional[Mapping[str, int]] = None, budget: Budget = Budget()) -> Workbook:
    """Reads an .xlsx or .xlsm workbook.

    Args:
        source: A path, or the bytes of a file.
        name: What messages call it; by default the path.
        now: The moment for which conditions are evaluated, such as `2026-11-21T12:00:00`; one
            without an offset is a time of the time zone. By default the current moment.
        time_zone: A name of the IANA database.
        locale: A BCP 47 tag, in which numbers are read and shown.
        semantics: `own`, or `widespread` for conditions as spreadsheet programs at large understand
            them.
        limits: What the file may hold, where it differs from DEFAULT_LIMITS.
        budget: What this call, and each later one, may cost.

    Raises LoadError, OptionError and BudgetExceeded.
    """
    is_path = isinstance(source, (str, os.PathLike))
    contents = os.fsencode(source) if isinstance(source, (str, os.PathLike)) else bytes(
        memoryview(source))
    file = name or (os.fsdecode(contents) if is_path else "workbook in memory")
    settings = {
        "name": file.encode(errors="surrogateescape"),
        "now": _read_now(now),
        "time_zone": _plain(time_zone),
        "locale": _plain(locale),
        "semantics": _plain(semantics),
        "limits": _read_limits(limits),
    }
    try:
        return Workbook(_core.open(contents, is_path, settings, budget._allowance), file, budget)
    except Error as error:
        error.file = file
        raise
