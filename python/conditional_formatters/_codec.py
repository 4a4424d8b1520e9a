"""Records of JSON as dataclasses, and back.

The names of fields are those of JSON in snake case. A field with a default is left out of the JSON
where it is None; any other is always there.
"""

from __future__ import annotations

import dataclasses
import functools
import re
import typing
from typing import Any, Callable, Mapping, TypeVar, Union

Record = TypeVar("Record")
_Convert = Callable[[Any], Any]


@dataclasses.dataclass(frozen=True)
class CellError:
    """The value of a cell that holds an error, such as `#DIV/0!`."""

    code: str

    def __str__(self) -> str:
        return self.code


Value = Union[None, float, str, bool, CellError]
"""The value of a cell; None for an empty one. Dates are their serial numbers."""


def json_name(name: str) -> str:
    """The name of a field in JSON."""
    return re.sub("_([a-z])", lambda match: match[1].upper(), name)


@dataclasses.dataclass(frozen=True)
class _Field:
    name: str
    key: str
    decode: _Convert
    encode: _Convert
    is_optional: bool
    unless: tuple[str, ...]  # an optional field without a value is there unless these have one


def _decode_value(value: Any) -> Any:
    if isinstance(value, dict):
        return CellError(value["error"])
    return float(value) if type(value) is int else value


def _encode_value(value: Any) -> Any:
    return {"error": value.code} if isinstance(value, CellError) else value


def _keep(value: Any) -> Any:
    return value


def _converters(hint: Any) -> tuple[_Convert, _Convert]:
    """The functions that decode and encode a value of a type."""
    if hint == Value:
        return _decode_value, _encode_value
    origin, arguments = typing.get_origin(hint), typing.get_args(hint)
    if origin is Union:
        (inner,) = (argument for argument in arguments if argument is not type(None))
        decode, encode = _converters(inner)
        return (lambda value: None if value is None else decode(value),
                lambda value: None if value is None else encode(value))
    if origin is tuple:
        decode, encode = _converters(arguments[0])
        return (lambda values: tuple(decode(value) for value in values),
                lambda values: [encode(value) for value in values])
    if dataclasses.is_dataclass(hint):
        return functools.partial(from_json, typing.cast(type, hint)), to_json
    return _keep, _keep


_fields_of: dict[Any, tuple[_Field, ...]] = {}


def _fields(kind: Any) -> tuple[_Field, ...]:
    """The fields of a dataclass, found once."""
    if kind not in _fields_of:
        _fields_of[kind] = _find_fields(kind)
    return _fields_of[kind]


def _find_fields(kind: Any) -> tuple[_Field, ...]:
    hints = typing.get_type_hints(kind)
    fields = []
    for field in dataclasses.fields(kind):
        decode, encode = field.metadata.get("codec") or _converters(hints[field.name])
        fields.append(_Field(field.name, field.metadata.get("key", json_name(field.name)), decode,
                             encode, field.default is not dataclasses.MISSING,
                             field.metadata.get("unless", ())))
    return tuple(fields)


def from_json(kind: type[Record], record: Mapping[str, Any]) -> Record:
    """The dataclass of a record."""
    return kind(**{field.name: field.decode(record[field.key]) for field in _fields(kind)
                   if field.key in record or not field.is_optional})


def to_json(record: Any) -> dict[str, Any]:
    """The record of a dataclass, as the tool prints it."""
    def is_there(field: _Field) -> bool:
        if not field.is_optional or getattr(record, field.name) is not None:
            return True
        return bool(field.unless) and all(getattr(record, name) is None for name in field.unless)

    return {field.key: field.encode(getattr(record, field.name))
            for field in _fields(type(record)) if is_there(field)}
