#!/usr/bin/python3
"""Writes the demonstration workbook, examples/demo.xlsx.

Needs the package python3-xlsxwriter, to regenerate the file only. The same input gives the same
bytes. Dates are written around one fixed day, so that date rules have something to say whenever
the tool is told that it is that day (--now 2026-11-21T12:00:00).
"""

import datetime
import pathlib
import sys

import xlsxwriter

TODAY = datetime.date(2026, 11, 21)
FIRST_ROW = 3  # of the data, counted from 0: a title, an empty row and the headings come first
DIVISION_BY_ZERO = "#DIV/0!"


def day(offset):
    return TODAY + datetime.timedelta(days=offset)


class Sheet:
    """A worksheet with a title, headings and rows of data, each column in a format of its own."""

    def __init__(self, book, name, title, columns):
        self.book = book
        self.sheet = book.add_worksheet(name)
        self.columns = columns
        self.sheet.hide_gridlines(0)
        self.sheet.freeze_panes(FIRST_ROW, 1)
        self.sheet.set_row(0, 24)
        self.sheet.write(0, 0, title, book.add_format({"bold": True, "font_size": 15}))
        heading = {"bold": True, "font_color": "#FFFFFF", "bg_color": "#44546A", "bottom": 1}
        for index, (text, width, form) in enumerate(columns):
            align = form.get("align", "right" if form.get("num_format") else "left")
            self.sheet.write(FIRST_ROW - 1, index, text, book.add_format({**heading, "align": align}))
            self.sheet.set_column(index, index, width)
        self.formats = [book.add_format({**form, "border": 7, "border_color": "#D0CECE"})
                        for _, _, form in columns]

    def write(self, rows):
        """Writes the rows; a pair is a formula and its result, None an empty cell with a style."""
        for number, row in enumerate(rows, FIRST_ROW):
            for column, value in enumerate(row):
                form = self.formats[column]
                if isinstance(value, tuple):
                    formula, result = value
                    self.sheet.write_formula(number, column, formula.format(row=number + 1), form, result)
                elif value is None:
                    self.sheet.write_blank(number, column, None, form)
                elif isinstance(value, datetime.date):
                    moment = datetime.datetime(value.year, value.month, value.day)
                    self.sheet.write_datetime(number, column, moment, form)
                else:
                    self.sheet.write(number, column, value, form)

    def rule(self, cells, style=None, **options):
        """Adds a conditional format; a sheet's priorities follow the order of the calls."""
        if style:
            options["format"] = self.book.add_format(style)
        if self.sheet.conditional_format(cells, options) != 0:
            sys.exit(f"make_demo: the rule for {cells} was refused: {options}")


GREEN = {"bg_color": "#C6EFCE", "font_color": "#006100"}
RED = {"bg_color": "#FFC7CE", "font_color": "#9C0006"}
AMBER = {"bg_color": "#FFEB9C", "font_color": "#7F6000"}
BLUE = {"bg_color": "#DDEBF7"}
GREY = {"font_color": "#A6A6A6"}


def sales(book):
    money = {"num_format": "#,##0.0"}
    sheet = Sheet(book, "Sales", "Sales by month (thousand euro)", [
        ("Month", 10, {"num_format": "mmm yy", "align": "left"}), ("North", 9, money),
        ("South", 9, money), ("East", 9, money), ("West", 9, money), ("Total", 10, money),
        ("Margin", 9, {"num_format": "0.0%"}), ("Orders", 9, {"num_format": "0"})])
    regions = [
        (48.2, 39.5, 27.1, 31.8), (55.0, 47.3, 29.4, 36.2), (33.9, 28.7, 19.6, 24.0),
        (36.4, 30.1, 22.8, 25.5), (41.7, 35.2, 24.3, 29.9), (43.8, 38.8, 26.0, 33.1),
        (46.1, 37.4, 28.2, 30.7), (52.6, 41.9, 31.5, 35.8), (38.0, 33.3, 21.7, 26.4),
        (35.2, 31.6, 20.9, 27.3), (47.5, 40.2, 27.7, 34.6), (51.3, 44.1, 30.8, 37.9)]
    margins = [.352, .381, .241, .298, .334, .347, .402, .418, .312, .237, .366, .389]
    orders = [212, 268, 149, 161, 188, 197, 205, 241, 170, 158, 219, 236]
    months = [datetime.date(2025 + (10 + i) // 12, (10 + i) % 12 + 1, 1) for i in range(12)]
    sheet.write([(month, *region, ("=SUM(B{row}:E{row})", round(sum(region), 1)), margin, count)
                 for month, region, margin, count in zip(months, regions, margins, orders)])
    sheet.rule("F4:F15", {**GREEN, "bold": True}, type="top", value=3)
    sheet.rule("F4:F15", RED, type="bottom", value=2)
    # Both rules hold for the best months of the best regions: the fill of one, the text of the other.
    sheet.rule("B4:E15", {"bg_color": "#FFE699"}, type="top", value=10, criteria="%")
    sheet.rule("B4:E15", {"font_color": "#00682F", "bold": True}, type="average", criteria="above")
    sheet.rule("G4:G15", BLUE, type="cell", criteria="between", minimum=0.3, maximum=0.39)
    sheet.rule("G4:G15", {"font_color": "#C00000", "italic": True}, type="cell", criteria="<",
               value=0.25)
    sheet.rule("A4:A15", {"bold": True, "underline": 1}, type="time_period", criteria="last month")
    sheet.rule("H4:H15", type="data_bar", bar_color="#5B9BD5")


def invoices(book):
    date = {"num_format": "yyyy-mm-dd", "align": "left"}
    sheet = Sheet(book, "Invoices", "Open invoices", [
        ("Invoice", 11, {}), ("Customer", 20, {}), ("Issued", 12, date), ("Due", 12, date),
        ("Amount", 11, {"num_format": "#,##0.00"}), ("Status", 11, {}),
        ("Days left", 10, {"num_format": "0"})])
    rows = [
        ("R-1041", "Alder & Sons", -74, -44, 1280.00, "paid"),
        ("R-1043", "Brook Bakery", -61, -31, 6410.50, "open"),
        ("R-1046", "Cedar Dental", -52, -22, 945.20, "paid"),
        ("R-1047", "Dune Logistics", -39, -9, 12890.00, "reminded"),
        ("R-1050", "Elm Street School", -33, -3, 2315.75, "open"),
        ("R-1052", "Fern & Moss", -30, 0, 780.00, "open"),
        ("R-1053", "Glen Cycles", -28, 2, 3499.90, "open"),
        ("R-1055", "Harbour Inn", -25, 5, 8120.00, "open"),
        ("R-1056", "Iris Optics", -24, 6, 560.40, "paid"),
        ("R-1058", "Juniper Print", -16, 14, 1975.00, "open"),
        ("R-1060", "Kestrel Travel", -9, 21, 5240.00, "open"),
        ("R-1061", "Linden Clinic", -3, 27, 1130.60, "open")]
    sheet.write([(number, customer, day(issued), day(due), amount, status,
                  ("=D{row}-TODAY()", due)) for number, customer, issued, due, amount, status in rows])
    sheet.rule("A4:G15", GREY, type="formula", criteria='=$F4="paid"', stop_if_true=True)
    sheet.rule("A4:G15", RED, type="formula", criteria="=$D4<TODAY()")
    sheet.rule("D4:D15", {**AMBER, "bold": True}, type="time_period", criteria="today")
    sheet.rule("D4:D15", AMBER, type="time_period", criteria="this week")
    sheet.rule("D4:D15", BLUE, type="time_period", criteria="next week")
    sheet.rule("E4:E15", {"bold": True}, type="cell", criteria=">=", value=5000)
    sheet.rule("G4:G15", type="3_color_scale")


def stock(book):
    number = {"num_format": "0"}
    sheet = Sheet(book, "Stock", "Stock list", [
        ("Item", 22, {}), ("Number", 11, {}), ("In stock", 10, number), ("Minimum", 10, number),
        ("Supplier", 16, {}), ("Status", 22, {}), ("Weekly use", 11, number),
        ("Weeks left", 11, {"num_format": "0.0"})])
    rows = [
        ("Hex bolt M6 x 30", "HB-0630", 4200, 1500, "Northway Steel", "ok", 350),
        ("Hex bolt M8 x 40", "HB-0840", 640, 1200, "Northway Steel", "on order, week 48", 210),
        ("Washer M6", "WA-06", 9800, 3000, "Northway Steel", "ok", 700),
        ("Threaded rod 1 m", "TR-1000", 0, 60, "Rill & Co", "back-order since 3 Nov", 15),
        ("Wall plug 8 mm", "WP-08", 2600, 2000, None, "ok, supplier to find", 400),
        ("Wood screw 4 x 50", "WS-0450", 1750, 1800, "Rill & Co", "on order, week 47", 290),
        ("Cable tie 200 mm", "CT-200", 5400, 1000, "Tanner Supply", "ok", 320),
        ("Work gloves L", "GL-L", 38, 40, "Tanner Supply", "back-order since 12 Nov", 6),
        ("Safety glasses", "SG-01", 75, 30, "Tanner Supply", "ok", 0),
        ("Marker, black", "MK-B", 22, 12, None, "ok", 2),
        ("Tape measure 5 m", "TM-05", 0, 10, "Rill & Co", "discontinued", 0)]
    sheet.write([(item, sku, count, minimum, supplier, status, weekly,
                  ("=C{row}/G{row}", count / weekly if weekly else DIVISION_BY_ZERO))
                 for item, sku, count, minimum, supplier, status, weekly in rows])
    sheet.rule("C4:C14", {"bg_color": "#C00000", "font_color": "#FFFFFF", "bold": True},
               type="cell", criteria="==", value=0)
    sheet.rule("A4:D14", {"bg_color": "#FCE4D6"}, type="formula", criteria="=$C4<$D4")
    sheet.rule("F4:F14", {"font_color": "#C00000", "bold": True}, type="text",
               criteria="containing", value="back-order")
    sheet.rule("F4:F14", {"font_color": "#00682F"}, type="text", criteria="begins with", value="ok")
    sheet.rule("E4:E14", {"bg_color": "#EDEDED", "border": 3, "border_color": "#7F7F7F"},
               type="blanks")
    sheet.rule("H4:H14", {**GREY, "italic": True}, type="errors")
    sheet.rule("H4:H14", type="icon_set", icon_style="3_traffic_lights")


def guests(book):
    sheet = Sheet(book, "Guests", "Guest list, summer party", [
        ("Name", 20, {}), ("E-mail", 28, {}), ("Seat", 8, {}), ("Answer", 12, {})])
    sheet.write([
        ("Ada Brandt", "ada.brandt@example.org", "A1", "yes"),
        ("Ben Costa", "ben@example.net", "A2", "yes"),
        ("Cleo Dahl", "cleo.dahl@example.org", "A3", "no"),
        ("Dario Engel", "dario(at)example.net", "A4", "yes"),
        ("Ada Brandt", "ada.brandt@example.org", "B1", "yes"),
        ("Elif Fischer", "elif.f@example.com", "B2", "perhaps"),
        ("Finn Gruber", "finn@example.net", "A2", "yes"),
        ("Gwen Holm", "gwen.holm@example.com", "B3", None),
        ("Hugo Iversen", "ben@example.net", "B4", "yes")])
    sheet.rule("B4:B12", RED, type="text", criteria="not containing", value="@")
    sheet.rule("B4:C12", {"bg_color": "#E4DFEC", "font_color": "#5F497A"}, type="duplicate")
    sheet.rule("D4:D12", {"italic": True, **GREY}, type="unique")


def budget(book):
    money = {"num_format": "#,##0.0"}
    sheet = Sheet(book, "Budget", "Budget of the year (thousand euro)", [
        ("Area", 16, {}), ("Planned", 10, money), ("Spent", 10, money), ("Left", 14, money),
        ("Last year", 14, {"num_format": "+0.0%;-0.0%;0.0%"})])
    rows = [("Staff", 412.0, 398.5, -.021), ("Rent", 96.0, 96.0, .04),
            ("Travel", 38.5, 52.3, .31), ("Machines", 120.0, 71.4, -.182),
            ("Training", 24.0, 9.8, -.4), ("Advertising", 60.0, 83.1, .125)]
    sheet.write([(area, planned, spent, ("=B{row}-C{row}", round(planned - spent, 1)), change)
                 for area, planned, spent, change in rows])
    # Bars on both sides of an axis: where zero lies among the numbers, and in the middle.
    sheet.rule("D4:D9", type="data_bar", data_bar_2010=True, bar_color="#63BE7B", bar_solid=True,
               bar_negative_color="#F8696B", bar_negative_border_color="#F8696B",
               bar_axis_color="#404040")
    sheet.rule("E4:E9", type="data_bar", data_bar_2010=True, bar_color="#FFB628",
               bar_negative_color="#5B9BD5", bar_negative_border_color="#5B9BD5",
               bar_axis_position="middle", min_type="num", min_value=-0.5, max_type="num",
               max_value=0.5)


def main():
    target = pathlib.Path(__file__).resolve().parent.parent / "examples" / "demo.xlsx"
    with xlsxwriter.Workbook(str(target)) as book:
        book.set_properties({"title": "Demonstration of conditional formats",
                             "created": datetime.datetime(2026, 11, 21, 12, 0, 0)})
        for add in (sales, invoices, stock, guests, budget):
            add(book)


if __name__ == "__main__":
    main()
