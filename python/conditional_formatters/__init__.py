"""Which conditional formats of a spreadsheet workbook hold, what style they give, and why.

    import conditional_formatters as cf

    book = cf.open("invoices.xlsx")
    book["Invoices"]["E5"].style.fill_colour

Rows and columns count from 0 where they are numbers; texts such as "E5" and "A1:G15" are taken
wherever a cell or a range is asked for.
"""

try:
    from ._core import VERSION as __version__
except ModuleNotFoundError as problem:
    import pathlib
    import sys
    found = sorted(path.name for path in pathlib.Path(__file__).parent.glob("_core.*.so"))
    raise ImportError(f"conditional_formatters is built for another Python than {sys.executable}: "
                      f"it has {', '.join(found) or 'no extension'}") from problem

from ._codec import CellError, Value, to_json
from ._css import style_to_css
from ._errors import (BudgetExceeded, Error, LoadError, OptionError, RenderError, RenderWarning,
                      SelectionError)
from ._openpyxl import EffectiveStyles, effective_style
from ._ranges import CellRef, Range, RangeRef
from ._records import (Bar, BorderLine, CellDifference, CheckFinding, Diff, Explanation, Failure,
                       Formula, Gradient, GradientStop, Icon, LoadFinding, Look, NearbyRule,
                       OtherAnswer, Rule, RuleAccount, RuleDifference, Scale, SheetDifference, Step,
                       Style, Visuals)
from ._workbook import (DEFAULT_LIMITS, FAILED, NO_RULE, Budget, Cell, Run, Sheet, Workbook, open)

__all__ = [
    "Bar", "BorderLine", "Budget", "BudgetExceeded", "Cell", "CellDifference", "CellError",
    "CellRef", "CheckFinding", "DEFAULT_LIMITS", "Diff", "EffectiveStyles", "Error", "Explanation",
    "FAILED", "Failure", "Formula", "Gradient", "GradientStop", "Icon", "LoadError", "LoadFinding",
    "Look", "NO_RULE", "NearbyRule", "OptionError", "OtherAnswer", "Range", "RangeRef",
    "RenderError", "RenderWarning", "Rule", "RuleAccount", "RuleDifference", "Run", "Scale",
    "SelectionError", "Sheet", "SheetDifference", "Step", "Style", "Value", "Visuals", "Workbook",
    "__version__", "effective_style", "open", "style_to_css", "to_json",
]
