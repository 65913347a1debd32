"""check_help.py HELP SOURCE: reads the help as a whole. Every link leads somewhere, every picture is there and
is shown, every page stands in the contents and the project, and every message and menu entry of the program is explained."""

import re
import sys
from html.parser import HTMLParser
from pathlib import Path

HELP = Path(sys.argv[1])
SOURCE = Path(sys.argv[2])
# Whatever the windows show comes from these; the command line has its own help.
ROOMS = ("model", "script", "link", "display", "check", "items", "compare", "sheets", "widgets", "dialogs", "mainwindow")
ELEMENTS_WITHOUT_END = {"br", "img", "link", "meta", "param", "li"}
failures = []


def fail(where, what):
    failures.append(f"{where}: {what}")


class Page(HTMLParser):
    """What a page refers to, and what may be referred to."""

    def __init__(self, path):
        super().__init__()
        self.name = path.name
        self.links, self.pictures, self.anchors, self.targets = [], [], set(), []
        self.text, self.open_elements = [], []
        source = path.read_bytes()
        if not source.isascii():
            fail(self.name, "is not plain ASCII, which every viewer reads alike")
        self.feed(source.decode("latin-1"))
        self.close()
        if self.open_elements:
            fail(self.name, f"does not close {self.open_elements}")

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag == "script":
            fail(self.name, "holds a program")
        if tag not in ELEMENTS_WITHOUT_END:
            self.open_elements.append(tag)
        for key in ("name", "id"):
            if tag not in ("meta", "param") and key in attributes:
                self.anchors.add(attributes[key])
        if tag in ("a", "link") and "href" in attributes:
            self.links.append(attributes["href"])
        if tag == "br":
            self.text.append(" ")
        if tag == "img":
            self.pictures.append(attributes["src"])
            if not attributes.get("alt"):
                fail(self.name, f"{attributes['src']} has no text in its place")
        if tag == "param" and attributes.get("name") == "Local":
            self.targets.append(attributes["value"])

    def handle_endtag(self, tag):
        if tag == "li":
            return
        if not self.open_elements or self.open_elements.pop() != tag:
            fail(self.name, f"</{tag}> at line {self.getpos()[0]} closes something else")

    def handle_data(self, data):
        self.text.append(data)


def check_target(where, target, pages):
    if re.match(r"[a-z]+:", target):
        fail(where, f"{target} is not part of the help")
        return
    name, _, anchor = target.partition("#")
    name = name or where
    if name in pages:
        if anchor and anchor not in pages[name].anchors:
            fail(where, f"{target} leads nowhere")
    elif not (HELP / name).is_file():
        fail(where, f"{target} is missing")


def check_pictures(pages):
    shown = {picture for page in pages.values() for picture in page.pictures}
    there = {f"pictures/{path.name}" for path in (HELP / "pictures").iterdir()}
    for picture in shown ^ there:
        fail(picture, "is missing" if picture in shown else "is shown by no page")


def check_project(pages):
    project = (HELP / "OR102.hhp").read_text("ascii")
    listed = set(project.partition("[FILES]")[2].split())
    expected = set(pages) | {"style.css"} | {p for page in pages.values() for p in page.pictures}
    for name in listed ^ expected:
        fail("OR102.hhp", f"{name} is " + ("not there" if name in listed else "not listed"))


def check_messages(page):
    """The texts in the calls that show them; what follows a text is a path or an address, and what the program
    fills in is there as an example. Of texts that are chosen between, only sentences are messages."""
    explained = re.sub(r"\s+", " ", "".join(page.text))
    call = re.compile(
        r'(?:messages_?\.show\([^;"]*?|fail\(|SectionFailure\(|askYesNo\w*\(|saveModifiedProject\('
        r'|range_error\(|showActivity\(|lblNote->setText\(|\bshowNotice_?\(|emit notice\(|\.offer\(\{[^;"]*?|(?<!:):\s*tr\((?="[^"]*\.")|, path \+ )\s*(?:tr\()?"((?:[^"\\]|\\.)+)"', re.S)
    count = 0
    for folder in ROOMS:
        for path in sorted((SOURCE / folder).rglob("*")):
            if path.suffix not in (".cpp", ".h"):
                continue
            for text in call.findall(path.read_text("utf-8")):
                count += 1
                text = re.sub(r"\s+", " ", text.replace("\\n", " ").replace('\\"', '"')).strip()
                if not re.search(re.sub(r"%\d", ".{1,60}", re.escape(text)), explained):
                    fail("messages.html", f"does not explain {text!r} of {path.relative_to(SOURCE)}")
    # Fewer means that the calls look different now and this check has to be told.
    if count < 20:
        fail("messages.html", f"only {count} messages were found in the source")


def check_menus(page):
    """Every menu and entry is a cell of the table of menus."""
    entry = re.compile(r'(?:"mi[A-Z]\w*",\s*|\.caption = )(?:(?:QObject::)?tr\()?"([^"]+)"')
    captions = {caption for path in sorted((SOURCE / "mainwindow").glob("*.cpp"))
                for caption in entry.findall(path.read_text("utf-8"))}
    cells = {cell.strip() for cell in page.text}
    for caption in captions:
        shown = caption.replace("&", "").replace("\\u2026", "...").replace("\u2026", "...")
        if shown not in cells:
            fail("main-window.html", f"has no entry {shown!r}")
    # Fewer means that the rows look different now and this check has to be told.
    if len(captions) < 30:
        fail("main-window.html", f"only {len(captions)} menu entries were found in the source")


def main():
    pages = {path.name: Page(path) for path in sorted(HELP.glob("*.html"))}
    for name, page in pages.items():
        for link in page.links + page.pictures:
            check_target(name, link, pages)
    for name in ("OR102.hhc", "OR102.hhk"):
        tree = Page(HELP / name)
        for target in tree.targets:
            check_target(name, target, pages)
        if name == "OR102.hhc":
            for page in pages.keys() - {target.partition("#")[0] for target in tree.targets}:
                fail(name, f"{page} is not in the contents")
    check_pictures(pages)
    check_project(pages)
    check_messages(pages["messages.html"])
    check_menus(pages["main-window.html"])
    print(f"{len(pages)} pages")
    for failure in failures:
        print(failure, file=sys.stderr)
    sys.exit(1 if failures else 0)


main()
