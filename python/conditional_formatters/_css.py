"""Styles as CSS."""

from __future__ import annotations

import re
from typing import Optional

from ._records import BorderLine, Style, Visuals

_LINES = {
    "thin": "1px solid", "hair": "1px dotted", "dotted": "1px dotted", "dashed": "1px dashed",
    "dashDot": "1px dashed", "dashDotDot": "1px dashed", "medium": "2px solid",
    "mediumDashed": "2px dashed", "mediumDashDot": "2px dashed", "mediumDashDotDot": "2px dashed",
    "slantDashDot": "2px dashed", "thick": "3px solid", "double": "3px double",
}
_HORIZONTAL = {"left": "left", "center": "center", "right": "right", "justify": "justify",
               "centerContinuous": "center", "distributed": "justify"}
_VERTICAL = {"top": "top", "center": "middle", "bottom": "bottom"}


def _line(line: BorderLine) -> Optional[str]:
    look = _LINES.get(line.style)
    return f"{look} {line.colour or 'currentcolor'}" if look else None


def _font_family(name: str) -> str:
    # A name of a hostile file must not end the text, or the declaration.
    return '"' + re.sub(r"[^\w .,+-]", "", name) + '"'


def _fill(style: Style) -> Optional[str]:
    if style.fill_gradient is not None and style.fill_pattern == "gradient":
        return style.fill_gradient.stops[0].colour if style.fill_gradient.stops else None
    if style.fill_pattern == "none":
        return None
    return style.fill_colour


def _decoration(style: Style) -> Optional[str]:
    lines = [word for word, is_set in
             [("underline", style.underline not in (None, "none")),
              ("line-through", style.strikethrough)] if is_set]
    return " ".join(lines) or None


def _bar(visuals: Optional[Visuals]) -> Optional[str]:
    bar = visuals.bar if visuals else None
    if bar is None or bar.fill is None:
        return None
    side = "left" if bar.direction == "rightToLeft" else "right"
    start, end = f"{bar.start:.2%}", f"{bar.end:.2%}"
    return (f"linear-gradient(to {side}, transparent {start}, {bar.fill} {start}, "
            f"{bar.fill} {end}, transparent {end})")


def style_to_css(style: Style, visuals: Optional[Visuals] = None) -> str:
    """The declarations of CSS that show a style, and the colour and the bar of the visuals.

    Patterns, gradients and diagonal lines have no counterpart: the fill's first colour stands for
    them. Icons are left out. Nothing of a hostile file becomes more than a value.
    """
    scale = visuals.scale if visuals else None
    fill = scale.colour if scale and not scale.behind_fill else _fill(style)
    borders = {f"border-{side}": getattr(style, f"border_{side}")
               for side in ("left", "right", "top", "bottom")}
    declarations = {
        "background-color": fill,
        "background-image": _bar(visuals),
        "color": style.font_colour,
        "font-family": _font_family(style.font_name) if style.font_name else None,
        "font-size": f"{style.font_size:g}pt" if style.font_size else None,
        "font-weight": "bold" if style.bold else None,
        "font-style": "italic" if style.italic else None,
        "text-decoration": _decoration(style),
        "text-align": _HORIZONTAL.get(style.horizontal_alignment or ""),
        "vertical-align": _VERTICAL.get(style.vertical_alignment or ""),
        **{name: _line(line) if line else None for name, line in borders.items()},
    }
    return "; ".join(f"{name}: {value}" for name, value in declarations.items() if value)
