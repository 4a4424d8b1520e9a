"""Builds workbook files from pieces of XML, whole and broken, each time the same bytes."""

import io
import struct
import zipfile
import zlib

DECLARATION = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>'
MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
RELATIONSHIPS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE_RELATIONSHIPS = "http://schemas.openxmlformats.org/package/2006/relationships"
RED = "<dxf><fill><patternFill><bgColor rgb='FFFF0000'/></patternFill></fill></dxf>"


def element(name, inner, attributes=""):
    """A part whose root is in the main namespace."""
    return (
        f"{DECLARATION}<{name} xmlns='{MAIN}' xmlns:r='{RELATIONSHIPS}' {attributes}>"
        f"{inner}</{name}>"
    )


def relationships(targets):
    """A part of relationships: (identity, kind, target) each."""
    rows = "".join(
        f"<Relationship Id='{identity}' Type='{RELATIONSHIPS}/{kind}' Target='{target}'/>"
        for identity, kind, target in targets
    )
    return f"{DECLARATION}<Relationships xmlns='{PACKAGE_RELATIONSHIPS}'>{rows}</Relationships>"


def cell_rule(formula, kind="expression", attributes=""):
    """A rule of a conditional format."""
    return (
        f"<cfRule type='{kind}' priority='1' dxfId='0' {attributes}>"
        f"<formula>{formula}</formula></cfRule>"
    )


def conditional(area, rules):
    """A conditional format over an area."""
    return f"<conditionalFormatting sqref='{area}'>{rules}</conditionalFormatting>"


def numbers(rows, columns="A"):
    """Rows of small numbers."""
    return "".join(
        f"<row r='{row}'>"
        + "".join(f"<c r='{column}{row}'><v>{row % 97}</v></c>" for column in columns)
        + "</row>"
        for row in range(1, rows + 1)
    )


def parts_of(rows="", after="", sheets=None, names="", styles=None, shared=None, theme=None):
    """The parts of a workbook: one sheet of `rows` with `after` behind them, or several `sheets`,
    each a pair of name and inner XML."""
    sheets = sheets or [("Sheet1", f"<sheetData>{rows}</sheetData>{after}")]
    targets = [
        (f"s{number}", "worksheet", f"worksheets/sheet{number}.xml")
        for number in range(1, len(sheets) + 1)
    ]
    parts = {
        "[Content_Types].xml": f"{DECLARATION}<Types xmlns='http://schemas.openxmlformats.org/"
        "package/2006/content-types'/>",
        "_rels/.rels": relationships([("r1", "officeDocument", "xl/workbook.xml")]),
    }
    listed = "".join(
        f"<sheet name='{name}' sheetId='{number}' r:id='s{number}'/>"
        for number, (name, _) in enumerate(sheets, 1)
    )
    defined = f"<definedNames>{names}</definedNames>" if names else ""
    parts["xl/workbook.xml"] = element("workbook", f"<sheets>{listed}</sheets>{defined}")
    for number, (_, inner) in enumerate(sheets, 1):
        parts[f"xl/worksheets/sheet{number}.xml"] = element("worksheet", inner)
    parts["xl/styles.xml"] = element("styleSheet", styles or f"<dxfs>{RED}</dxfs>")
    targets.append(("styles", "styles", "styles.xml"))
    if shared is not None:
        parts["xl/sharedStrings.xml"] = element("sst", shared)
        targets.append(("strings", "sharedStrings", "sharedStrings.xml"))
    if theme is not None:
        parts["xl/theme.xml"] = theme
        targets.append(("theme", "theme", "theme.xml"))
    parts["xl/_rels/workbook.xml.rels"] = relationships(targets)
    return parts


def pack(parts, compression=zipfile.ZIP_DEFLATED):
    """The bytes of an archive; the same for the same parts."""
    packed = io.BytesIO()
    with zipfile.ZipFile(packed, "w") as archive:
        for name, content in parts.items():
            entry = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
            entry.compress_type = compression
            content = content if isinstance(content, bytes) else content.encode()
            # The largest parts are of one byte, which the fastest level packs as well.
            archive.writestr(entry, content, compresslevel=1 if len(content) > 10_000_000 else 9)
    return packed.getvalue()


def workbook(**pieces):
    """The bytes of a workbook; see parts_of()."""
    return pack(parts_of(**pieces))


def workbook_with(name, content, **pieces):
    """A workbook with one part replaced or added."""
    return pack({**parts_of(**pieces), name: content})


def overlapping_entries(count, content):
    """An archive whose directory lists `count` sheets that are all the same packed bytes."""
    deflate = zlib.compressobj(9, zlib.DEFLATED, -15)
    data = deflate.compress(content) + deflate.flush()
    local = struct.pack(
        "<4s5H3I2H", b"PK\x03\x04", 20, 0, 8, 0, 33, zlib.crc32(content), len(data), len(content),
        8, 0
    ) + b"part.xml"
    directory = b""
    for number in range(count):
        name = f"xl/worksheets/sheet{number}.xml".encode()
        directory += struct.pack(
            "<4s6H3I5H2I", b"PK\x01\x02", 20, 20, 0, 8, 0, 33, zlib.crc32(content), len(data),
            len(content), len(name), 0, 0, 0, 0, 0, 0
        ) + name
    start = len(local) + len(data)
    end = struct.pack("<4s4H2IH", b"PK\x05\x06", 0, 0, count, count, len(directory), start, 0)
    return local + data + directory + end
