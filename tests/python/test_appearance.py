"""Sheets as they look: pages, pictures, data frames, and sheets of openpyxl."""

import html
import os
import re
import stat

import openpyxl
import pytest
from conftest import DEMO, NOW, TOO_LARGE, make_book
from openpyxl.formatting.rule import CellIsRule, DataBarRule
from openpyxl.styles import Font, PatternFill

import conditional_formatters as cf

EVIL = '<script>alert(1)</script>"\' &'
YELLOW = PatternFill(bgColor="FFFFFF00")


@pytest.mark.parametrize("format, beginning", [
    ("html", b"<!doctype html>"), ("svg", b"<?xml"), ("png", b"\x89PNG"), ("pdf", b"%PDF")])
def test_each_format(demo, format, beginning, tmp_path):
    contents = demo["Invoices"].render(format=format)
    assert contents.lower().startswith(beginning.lower())
    target = tmp_path / f"picture.{format.upper()}"
    target.write_text("older")
    assert demo.render(target, sheets=["Invoices"]) == target.read_bytes() == contents
    assert os.listdir(tmp_path) == [target.name]
    mask = os.umask(0)
    os.umask(mask)
    assert stat.S_IMODE(target.stat().st_mode) == 0o666 & ~mask


def test_a_page_shows_the_sheets_that_are_asked_for(demo):
    page = demo.render(sheets=["Stock", demo["Sales"], 4]).decode()
    assert "Stock" in page and "Guests" not in page
    assert "demo.xlsx" in page and str(DEMO.parent) not in page
    small = demo["Sales"].render(format="png", range="A1:B3")
    assert len(small) < len(demo["Sales"].render(format="png"))


def test_what_is_wrong_about_a_picture(demo, tmp_path):
    with pytest.raises(cf.OptionError, match="format"):
        demo.render(tmp_path / "a.gif")
    with pytest.raises(cf.OptionError, match="theme"):
        demo.render(theme="pink")
    with pytest.raises(cf.RenderError, match="scale"):
        demo.render(format="png", scale=float("nan"))
    with pytest.raises(OSError):
        demo.render(tmp_path / "no" / "folder.html")
    assert list(tmp_path.iterdir()) == []
    (tmp_path / "taken.html").mkdir()
    with pytest.raises(OSError):
        demo.render(tmp_path / "taken.html")
    assert os.listdir(tmp_path) == ["taken.html"]


def test_what_is_not_drawn_is_a_warning():
    with pytest.warns(cf.RenderWarning, match="cannot be|values at once"):
        make_book([[1]], [("A1:A9", TOO_LARGE)]).render()


def test_a_notebook_shows_a_page_in_a_frame_of_its_own(demo):
    shown = make_book([[EVIL]])[0]._repr_html_()
    assert shown.startswith("<iframe ") and shown.count("<") == 2
    page = html.unescape(re.search('srcdoc="([^"]*)"', shown)[1])
    assert page.lower().startswith("<!doctype html>") and "<script>alert(1)" not in page
    assert 'sandbox="allow-scripts"' in shown
    assert "Budget" in demo._repr_html_()


def test_css_of_a_style():
    style = cf.Style(fill_pattern="solid", fill_colour="#FFC7CE", font_colour="#9C0006", bold=True,
                     underline="single", strikethrough=True, font_name="Calibri", font_size=11.0,
                     horizontal_alignment="center", vertical_alignment="center",
                     border_top=cf.BorderLine("thin", "#000000"), border_left=cf.BorderLine("none"))
    assert cf.style_to_css(style) == (
        'background-color: #FFC7CE; color: #9C0006; font-family: "Calibri"; font-size: 11pt; '
        "font-weight: bold; text-decoration: underline line-through; text-align: center; "
        "vertical-align: middle; border-top: 1px solid #000000")


def test_css_of_a_hostile_font():
    css = cf.style_to_css(cf.Style(font_name='a"; } </style><script> url(x) \\'))
    assert css == 'font-family: "a  stylescript urlx "'


def test_css_of_visuals():
    sheet = make_book([[1], [2]], [("A1:A2", DataBarRule("num", 0, "num", 2, color="FF0000FF"))])[0]
    assert "linear-gradient(to right, transparent 0.00%, #0000FF 0.00%, #0000FF" in sheet[
        "A1"].to_css()
    hidden = cf.Visuals(show_value=True, scale=cf.Scale(0, "#00FF00", behind_fill=True))
    seen = cf.Visuals(show_value=True, scale=cf.Scale(0, "#00FF00", behind_fill=False))
    filled = cf.Style(fill_pattern="solid", fill_colour="#FF0000")
    assert cf.style_to_css(filled, hidden) == "background-color: #FF0000"
    assert cf.style_to_css(filled, seen) == "background-color: #00FF00"


def test_a_frame_of_pandas_has_the_values_and_their_places():
    frame = make_book([["Name", "Sum", "Sum"], [EVIL, 3, "#N/A"]])[0].to_pandas()
    assert list(frame.columns) == ["A", "B", "C"] and list(frame.index) == [1, 2]
    assert frame.loc[2, "B"] == 3 and frame.loc[2, "C"] == "#N/A"
    named = make_book([["Name", "Sum", "Sum", None], [EVIL, 3, 4, 5]])[0].to_pandas(header=True)
    assert list(named.columns) == ["Name", "Sum", "Sum (C)", "D"] and list(named.index) == [2]
    assert named["Sum"].dtype == float
    assert make_book([])[0].to_pandas().empty and make_book([])[0].to_pandas(header=True).empty


def test_a_styler_of_pandas_shows_effective_styles_and_escapes_texts():
    rules = [("B2:B3", CellIsRule(operator="greaterThan", formula=["2"], fill=YELLOW))]
    sheet = make_book([[EVIL, "Sum"], [EVIL, 3], ["x", 1]], rules)[0]
    plain = sheet.to_pandas_style().to_html()
    assert ">3</td>" in plain and "3.0" not in plain
    assert "None" not in make_book([[1, None], [None, "x"]])[0].to_pandas_style().to_html()
    for header, style in ((False, "row1_col1"), (True, "row0_col1")):
        page = sheet.to_pandas_style(header=header).to_html()
        assert "<script>" not in page and page.count("&lt;script&gt;") == 2
        yellow = re.search(r"([^}]*){[^}]*background-color: #FFFF00", page)[1]
        assert style in yellow and len(re.findall("row._col.", yellow)) == 1


def test_the_effective_style_of_a_cell_that_openpyxl_holds():
    workbook = openpyxl.Workbook()
    sheet = workbook.create_sheet("Sums")
    sheet["B3"], sheet["B4"] = 10, "=B3-8"
    sheet["B3"].font = sheet["B4"].font = Font(italic=True)
    sheet.conditional_formatting.add(
        "B3:B4", CellIsRule(operator="greaterThan", formula=["5"], fill=YELLOW))
    style = cf.effective_style(sheet, "B3")
    assert (style.fill_colour, style.italic) == ("#FFFF00", True)
    styles = cf.EffectiveStyles(workbook, now=NOW)
    assert styles.style(sheet, sheet["B3"]) == style
    assert styles.style(sheet, "B4").fill_colour is None and styles.cell(sheet, "B4").value == 2
    sheet["B3"] = 1
    assert styles.style(sheet, "B3").fill_colour == "#FFFF00"  # as of when it was made
    assert cf.effective_style(sheet, "B3").fill_colour is None
    with pytest.raises(cf.SelectionError):
        styles.style(workbook.create_sheet("Later"), "A1")
