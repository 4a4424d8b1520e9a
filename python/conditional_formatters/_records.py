"""What the package tells about styles, rules and cells, as plain immutable objects.

`to_json()` gives any of them as the tool `cndfrmt` prints it.
"""

from __future__ import annotations

import dataclasses
from dataclasses import dataclass, field
from typing import Any, Mapping, Optional

from ._codec import Value, json_name


def _key(name: str) -> Mapping[str, Any]:
    """The metadata of a field whose name in JSON is another one."""
    return {"key": name}


def _repr_set(record: Any) -> str:
    """A record as a call with the fields that are not None."""
    names = (member.name for member in dataclasses.fields(record))
    arguments = (f"{name}={getattr(record, name)!r}" for name in names
                 if getattr(record, name) is not None)
    return f"{type(record).__name__}({', '.join(arguments)})"


@dataclass(frozen=True)
class BorderLine:
    """A line of a cell's border."""

    style: str
    colour: Optional[str] = None


@dataclass(frozen=True)
class GradientStop:
    """The colour at one place of a gradient, from 0 to 1."""

    position: float
    colour: str


@dataclass(frozen=True)
class Gradient:
    """A fill whose colour changes over the cell.

    A linear one has an angle, clockwise from left to right; a path has the edges of its inner
    rectangle, as parts of the cell's width or height.
    """

    type: str
    stops: tuple[GradientStop, ...]
    degree: Optional[float] = None
    left: Optional[float] = None
    right: Optional[float] = None
    top: Optional[float] = None
    bottom: Optional[float] = None


@dataclass(frozen=True)
class Style:
    """Properties of a cell. None: not set.

    Colours are texts such as `#FFC7CE`, with two more digits where they are not opaque. Other texts
    are the names of the file format (ISO/IEC 29500-1, 18.18), such as `centerContinuous`.
    """

    fill_pattern: Optional[str] = None
    fill_colour: Optional[str] = None
    fill_pattern_colour: Optional[str] = None
    fill_gradient: Optional[Gradient] = None
    border_left: Optional[BorderLine] = None
    border_right: Optional[BorderLine] = None
    border_top: Optional[BorderLine] = None
    border_bottom: Optional[BorderLine] = None
    border_diagonal_up: Optional[BorderLine] = None
    border_diagonal_down: Optional[BorderLine] = None
    vertical_alignment: Optional[str] = None
    locked: Optional[bool] = None
    hidden: Optional[bool] = None
    font_name: Optional[str] = None
    font_size: Optional[float] = None
    font_colour: Optional[str] = field(default=None, metadata=_key("colour"))
    bold: Optional[bool] = None
    italic: Optional[bool] = None
    underline: Optional[str] = None
    strikethrough: Optional[bool] = None
    vertical_run: Optional[str] = None
    horizontal_alignment: Optional[str] = None
    indent: Optional[int] = None
    wrap_text: Optional[bool] = None
    shrink_to_fit: Optional[bool] = None
    text_rotation: Optional[int] = None
    reading_order: Optional[int] = None
    number_format: Optional[str] = None

    __repr__ = _repr_set

    def items(self) -> list[tuple[str, object]]:
        """The properties that are set, with their names."""
        names = (member.name for member in dataclasses.fields(self))
        pairs = ((name, getattr(self, name)) for name in names)
        return [(name, value) for name, value in pairs if value is not None]


_NAMES = {member.metadata.get("key", json_name(member.name)): member.name
          for member in dataclasses.fields(Style)}
_KEYS = {name: key for key, name in _NAMES.items()}


# The metadata of fields that list the names of a style's properties, or map them to something.
_NAME_LIST = {"codec": (lambda keys: tuple(_NAMES[key] for key in keys),
                        lambda names: [_KEYS[name] for name in names])}
_NAME_MAP = {"codec": (lambda values: {_NAMES[key]: value for key, value in values.items()},
                       lambda values: {_KEYS[name]: value for name, value in values.items()})}


@dataclass(frozen=True)
class Scale:
    """The colour that a colour scale gives a cell. It is not seen where it lies behind a fill."""

    rule: int
    colour: str
    behind_fill: bool


@dataclass(frozen=True)
class Bar:
    """The bar that a rule draws in a cell, in parts of the cell's width from 0 to 1."""

    rule: int
    start: float = field(metadata=_key("from"))
    end: float = field(metadata=_key("to"))
    axis: Optional[float]
    negative: bool
    fill: Optional[str]
    gradient: bool
    border: Optional[str]
    axis_colour: Optional[str]
    direction: str


@dataclass(frozen=True)
class Icon:
    """The icon that a rule draws in a cell: one of a set of `count` icons, from 0."""

    rule: int
    set: str
    index: int
    count: int


@dataclass(frozen=True)
class Visuals:
    """What colour scales, data bars and icon sets give a cell."""

    show_value: bool
    scale: Optional[Scale] = None
    bar: Optional[Bar] = None
    icon: Optional[Icon] = None


@dataclass(frozen=True)
class Failure:
    """The rule that could not be evaluated for a cell, and why."""

    rule: int
    reason: str


@dataclass(frozen=True)
class Rule:
    """A conditional-formatting rule of a workbook.

    Attributes:
        number: Its number in the workbook, from 0.
        kind: As the file has it, such as `cellIs`.
        condition: In words, such as `cell > 5000`.
        ranges: The cells that it is on, such as `A1:A9 C3`.
        priority: The smallest number comes first.
        stop: Rules after it do not count for cells for which it holds.
        resolved: It counts; `reason` says why not.
        style: What it sets, if it is a condition.
        visual: What it draws, if it is a colour scale, a data bar or an icon set.
        doubts: What it refers to and the workbook lacks.
    """

    number: int = field(metadata=_key("rule"))
    kind: str
    condition: str
    ranges: str
    priority: Optional[int]
    stop: bool
    formulas: tuple[str, ...]
    resolved: bool
    reason: Optional[str] = None
    visual: Optional[Mapping[str, Any]] = None
    style: Optional[Style] = None
    doubts: Optional[tuple[str, ...]] = None


@dataclass(frozen=True)
class Step:
    """A part of a formula, and its value; or the size and the first values of several."""

    text: str
    depth: int
    value: Value = field(default=None, metadata={"unless": ("rows", "ranges", "function")})
    date: Optional[bool] = None
    rows: Optional[int] = None
    columns: Optional[int] = None
    first_values: Optional[tuple[Value, ...]] = None
    ranges: Optional[int] = None
    function: Optional[bool] = None

    __repr__ = _repr_set


@dataclass(frozen=True)
class Formula:
    """A formula of a rule: as the file has it, at the cell, and part by part."""

    written: str
    here: str
    steps: tuple[Step, ...]
    cut: bool


@dataclass(frozen=True)
class OtherAnswer:
    """What spreadsheet programs at large answer, where they answer otherwise."""

    holds: bool
    reason: str
    formula: str


@dataclass(frozen=True)
class RuleAccount:
    """What became of one rule for a cell.

    Attributes:
        outcome: `holds`, `doesNotHold`, `draws`, `noNumber`, `failed`, `notReached`,
            `notOnThisCell` or `notResolved`.
        operands: What the condition tests the value against.
        sets: The properties that the rule decides.
        taken: Those that an earlier rule decides, with its number.
        ended_by: The rule for which this one was not reached.
    """

    rule: int
    kind: str
    condition: str
    ranges: str
    priority: Optional[int]
    stop: bool
    outcome: str
    operands: Optional[Mapping[str, Any]]
    formulas: tuple[Formula, ...]
    sets: tuple[str, ...] = field(metadata=_NAME_LIST)
    taken: Mapping[str, int] = field(metadata=_NAME_MAP)
    reason: Optional[str] = None
    ended_by: Optional[int] = None
    holds_by_itself: Optional[bool] = None
    failure: Optional[str] = None
    elsewhere: Optional[OtherAnswer] = None


@dataclass(frozen=True)
class NearbyRule:
    """A rule near a cell that no rule is on."""

    rule: int
    range: str
    rows: int
    columns: int


@dataclass(frozen=True)
class Explanation:
    """Why a cell looks as it does.

    Attributes:
        shown: The text that the cell shows.
        own_style: The style without the rules.
        style: The style with them.
        set_by: For each property of the style the rule that sets it; None for the cell itself.
        rules: The rules on the cell, by priority.
        nearest: Where no rule is on the cell, the nearest ones.
    """

    sheet: str
    cell: str
    value: Value
    shown: str
    own_style: Style
    style: Style
    rules: tuple[RuleAccount, ...]
    rules_elsewhere: int
    nearest: tuple[NearbyRule, ...]
    set_by: Mapping[str, Optional[int]] = field(metadata=_NAME_MAP)
    visuals: Optional[Visuals] = None


@dataclass(frozen=True)
class LoadFinding:
    """Part of a file that was read in another way than the file means it, or not at all.

    It is for information alone where `note` is true.
    """

    part: str
    sheet: str
    range: str
    message: str
    note: bool


@dataclass(frozen=True)
class CheckFinding:
    """Something that an auditor of the rules should look at.

    Attributes:
        sheet: None for the workbook as a whole.
        code: What it is about, such as `never-holds`.
        severity: `error`, `warning` or `note`.
        rules: Numbers, the rule in question first.
    """

    sheet: Optional[str]
    code: str
    severity: str
    ranges: str
    rules: tuple[int, ...]
    message: str
    advice: str


@dataclass(frozen=True)
class SheetDifference:
    """A sheet that only the `first` or the `second` workbook has."""

    sheet: str
    only_in: str


@dataclass(frozen=True)
class RuleDifference:
    """A rule that is not the same in two workbooks. `change` says what differs."""

    sheet: str
    change: str
    first: Optional[Rule]
    second: Optional[Rule]


@dataclass(frozen=True)
class Look:
    """What the rules give a cell. `visuals` is in words."""

    style: Optional[Style] = None
    visuals: Optional[str] = None
    failed: Optional[bool] = None


@dataclass(frozen=True)
class CellDifference:
    """A cell that looks different in two workbooks."""

    sheet: str
    cell: str
    first: Look
    second: Look


@dataclass(frozen=True)
class Diff:
    """What differs between two workbooks. True if anything does."""

    sheets: tuple[SheetDifference, ...]
    rules: tuple[RuleDifference, ...]
    cells: tuple[CellDifference, ...]

    def __bool__(self) -> bool:
        return bool(self.sheets or self.rules or self.cells)
