#!/usr/bin/env python3
"""Prepares what Doxygen reads: the installed headers, and the Markdown pages.

    stage_docs.py headers DIRECTORY
    stage_docs.py pages DIRECTORY TAGFILE

Run from the root of the sources. The headers lie in DIRECTORY as they are installed; members that
the language itself defines get their comment here, since it says the same for every class. In the
pages, names of classes and members in backticks become links to the reference; TAGFILE is Doxygen's
index of it. A page that names a member which its class does not have is an error, and so is a page
that the README.md above it does not list.
"""

import collections
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

MAIN_PAGE = pathlib.Path("README.md")
PAGES = ["*.md", "docs/**/*.md", "examples/**/*.md"]
# Pages about another language: their names in backticks are not those of the reference.
PYTHON_PAGES = ["docs/python.md", "examples/fleet/README.md"]

# The comments of members that mean the same in every class, by their declarations.
COMMON_MEMBERS = [
    (r"operator==\(.*= default;", "Compares member by member."),
    (r"operator<=>\(.*= default;", "Orders member by member."),
    (r"operator(==|!=|<|>|<=|>=)\(", "Compares by content."),
    (r"\bhash_value\(", "Hash by content: that of equal objects is equal."),
    (r"(\(|operator=\()\w+&& .*(= default|noexcept);", "Moves. What was moved from may only be "
     "destroyed or assigned to."),
    (r"\(\w+ const&\) .*= default;", "Copies."),
    (r"\(\w+ const&\) = delete;", "Objects of the class are not copied."),
    (r" \w+\(\)( noexcept)? = default;", "The default value."),
    (r"explicit \w+\(std::string const& message\);", "what() gives the message."),
    (r"using (\w+)::\1;", "As the base class."),
    (r"static constexpr auto members\(\)", "The list of members, over which generic code iterates."),
    # The names of flags, and of the properties of a style, say everything.
    (r"std::optional<[\w:]+> (\w+) = std::nullopt;", "\\1"),
    (r"\bbool (\w+) = \w+;", "\\1"),
]


def list_headers():
    """Yields the installed headers, each with the folder below which it keeps its place."""
    text = pathlib.Path("cmake/PublicHeaders.cmake").read_text(encoding="utf-8")
    for base, files in re.findall(r"BASE_DIRS (\S+)\s+FILES ([^)]*)\)", text):
        for name in files.split():
            yield pathlib.Path(base), pathlib.Path(name)


def split_name(text):
    """Words for a name such as `fillColour`; any other text as it is."""
    if not re.fullmatch(r"\w+", text):
        return text
    return re.sub(r"(?<=[a-z])[A-Z]", lambda capital: f" {capital[0].lower()}", text).capitalize() + "."


def comment_common_members(lines):
    """Yields the lines of a header, with a comment before each common member that has none."""
    before = ""
    for line in lines:
        if not before.lstrip().startswith(("//", "template")) and not line.lstrip().startswith("//"):
            found = ((re.search(pattern, line), text) for pattern, text in COMMON_MEMBERS)
            comment = next((match.expand(text) for match, text in found if match), "")
            if comment and "///<" not in line:
                yield f"/// {split_name(comment)}"
        yield line
        before = line


def stage_headers(directory):
    for base, name in list_headers():
        target = directory / "zorv" / name.relative_to(base)
        target.parent.mkdir(parents=True, exist_ok=True)
        lines = name.read_text(encoding="utf-8").split("\n")
        target.write_text("\n".join(comment_common_members(lines)), encoding="utf-8")


class Reference:
    """The names that Doxygen's index has."""

    def __init__(self, tagfile):
        self.members = {}
        self.classes = set()
        for compound in ElementTree.parse(tagfile).getroot().iter("compound"):
            if compound.get("kind") in ("class", "struct", "namespace"):
                name = compound.findtext("name")
                self.members[name] = {member.findtext("name") for member in compound.iter("member")}
                if compound.get("kind") != "namespace":
                    self.classes.add(name)

    def find(self, text):
        """The qualified name for a text such as `Table`, `DOM::Table` or `Table::setValue()`, or
        None. Raises LookupError for a class without the member."""
        text = text.removesuffix("()")
        compound = self.find_compound(text)
        if compound or "::" not in text:
            return compound
        owner, member = text.rsplit("::", 1)
        compound = self.find_compound(owner)
        if compound and member in self.members[compound]:
            return f"{compound}::{member}"
        if compound in self.classes:
            raise LookupError(f"{compound} has no member {member}")
        return None

    def find_compound(self, text):
        found = [name for name in self.members if f"::{name}".endswith(f"::{text}")]
        return min(found, key=lambda name: (name.count("::"), name), default=None)


def make_id(page, heading=""):
    """Doxygen's name of a page, or of one of its headings."""
    if page == MAIN_PAGE and not heading:
        return "index"
    return "_".join(filter(None, ["page", *page.with_suffix("").parts, heading])).replace("-", "_")


def read_title(page):
    """The first heading of a page, without its markup."""
    return page.read_text(encoding="utf-8").split("\n", 1)[0].lstrip("# ").replace("`", "")


def find_index(page, pages):
    """The nearest README.md above a page, which lists it; None for the first of all."""
    folder = page.parent.parent if page.name == "README.md" else page.parent
    indexes = (above / "README.md" for above in (folder, *folder.parents))
    return next((index for index in indexes if index in pages and index != page), None)


class Page:
    """A page of the repository, as Doxygen is to read it."""

    def __init__(self, path, pages, reference):
        self.path, self.pages, self.reference = path, pages, reference
        self.errors = []
        self.children = set()
        self.slugs = collections.Counter()

    def make_slug(self, heading):
        """The anchor that the next heading has where the repository is read."""
        slug = re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")
        self.slugs[slug] += 1
        return slug if self.slugs[slug] == 1 else f"{slug}-{self.slugs[slug] - 1}"

    def convert(self):
        lines, in_code = [], False
        for line in self.path.read_text(encoding="utf-8").split("\n"):
            if line.startswith("```"):
                in_code = not in_code
            lines.append(line if in_code or line.startswith("```") else self.convert_line(line))
        return "\n".join(lines)

    def convert_line(self, line):
        if line.startswith("# "):
            title = f"# {read_title(self.path)}"
            return title if self.path == MAIN_PAGE else f"{title} {{#{make_id(self.path)}}}"
        if line.startswith("##"):
            return f"{line} {{#{make_id(self.path, self.make_slug(line.lstrip('#')))}}}"
        parts = re.split(r"(`[^`]*`)", line)
        parts[::2] = [re.sub(r"#(?=[A-Z])", r"\\#", part) for part in parts[::2]]
        parts[1::2] = [self.convert_code(part) for part in parts[1::2]]
        return re.sub(r"(?<!!)\[([^]]*)\]\(([^)]*)\)", self.convert_link, "".join(parts))

    def convert_code(self, code):
        if str(self.path) in PYTHON_PAGES:
            return code
        try:
            name = self.reference.find(code.strip("`"))
        except LookupError as error:
            self.errors.append(f"{self.path}: {error}")
            name = None
        return f'<code>@ref {name} "{code.strip("`")}"</code>' if name else code

    def convert_link(self, link):
        text, (target, _, anchor) = link[1], link[2].partition("#")
        if target.startswith("http"):
            return link[0]
        page = self.path
        if target:
            page = (self.path.parent / target).resolve().relative_to(pathlib.Path.cwd())
        if page not in self.pages:
            return text  # a file that is not among the pages
        if text.endswith(".md"):
            text = read_title(page)
        return f'{self.choose_command(page, anchor)} {make_id(page, anchor)} "{text}"'

    def choose_command(self, page, anchor):
        """An index has its pages below it in the tree of pages, in the order of its links."""
        if anchor or find_index(page, self.pages) != self.path or page in self.children:
            return "@ref"
        self.children.add(page)
        return "@subpage"


def stage_pages(directory, tagfile):
    pages = sorted({page for pattern in PAGES for page in pathlib.Path().glob(pattern)})
    reference = Reference(tagfile)
    errors = []
    listed = {MAIN_PAGE}
    for path in pages:
        page = Page(path, pages, reference)
        target = directory / path
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(page.convert(), encoding="utf-8")
        errors += page.errors
        listed |= page.children
    errors += [f"{path}: {find_index(path, pages)} does not list it" for path in pages
               if path not in listed]
    if errors:
        sys.exit("\n".join(errors))


def main():
    what, directory = sys.argv[1], pathlib.Path(sys.argv[2])
    if what == "headers":
        stage_headers(directory)
    else:
        stage_pages(directory, sys.argv[3])


if __name__ == "__main__":
    main()
