"""The message book: orvista book, its pictures held against orvista show, its page against tidy and a browser."""

import base64
import csv
import json
import re
import shutil
import struct
import subprocess
import unittest
import zlib

from program import PROGRAM, PROJECT, ProgramTest, as_ordinary_user, main

BOOK = "book.html"


def pixels(png):
    """Width, height and the pixels of a PNG file of 8 bits, with a palette or without, whose rows are not filtered."""
    at, data, palette, head = 8, b"", None, None
    while at < len(png):
        size, kind = struct.unpack(">I4s", png[at:at + 8])
        content = png[at + 8:at + 8 + size]
        at += 12 + size
        if kind == b"IHDR":
            head = struct.unpack(">IIBB", content[:10])
        elif kind == b"PLTE":
            palette = [content[i:i + 3] for i in range(0, size, 3)]
        elif kind == b"IDAT":
            data += content
    width, height, depth, colours = head
    assert depth == 8 and colours == (3 if palette else 2), head
    rows = zlib.decompress(data)
    row_size = 1 + width * (1 if palette else 3)
    read = b""
    for start in range(0, len(rows), row_size):
        assert rows[start] == 0
        row = rows[start + 1:start + row_size]
        read += b"".join(palette[number] for number in row) if palette else row
    return width, height, read


class Book(ProgramTest):
    def book(self, *options):
        self.expect(0, "book", PROJECT, "-o", BOOK, *options)
        return (self.folder / BOOK).read_text("utf-8")

    def test_pictures_are_those_of_show(self):
        for options in ([], ["--columns", "96"]):
            book = self.book(*options)
            shown = re.findall(r'alt="(\w+), page (\d+)[:"][^>]*base64,([^"]*)"', book)
            self.assertGreater(len(shown), 15)
            for message, page, letters in shown:
                # Its first page is what show draws; a clock goes on meanwhile.
                if page != "1" or message == "STDMSG2":
                    continue
                self.run_program("show", PROJECT, message, "--scale", "4", *options, "-o", "one.png")
                self.assertEqual(pixels(base64.b64decode(letters)), pixels((self.folder / "one.png").read_bytes()), message)

    def test_the_same_bytes_at_the_same_moment(self):
        books = []
        for moment in ("1700000000", "1700000000", "1700000001"):
            subprocess.run(["env", f"SOURCE_DATE_EPOCH={moment}", PROGRAM, "book", PROJECT, "--widest", "-o", BOOK],
                           cwd=self.folder, check=True)
            books.append((self.folder / BOOK).read_text("utf-8"))
        self.assertEqual(books[0], books[1])
        self.assertIn("As of 2023-11-14 22:13:20 UTC", books[0])
        self.assertNotEqual(books[0], books[2])

    def test_options(self):
        whole, used = self.book(), self.book("--used")
        self.assertLess(used.count("<tr>"), whole.count("<tr>"))
        self.assertEqual(used.count("<img"), whole.count("<img"))
        self.assertGreater(self.book("--widest").count("<img"), whole.count("<img"))
        self.assertIn("<p>Panel: 96 x 16 dots</p>", self.book("--columns", "96"))

    def test_what_was_seen_at_a_display(self):
        held = self.expect(0, "fingerprint", PROJECT).decode().split()[0]
        seen = {"version": 1, "fingerprint": held, "address": "192.168.1.103", "time": "2026-11-22T03:15:00Z", "name": "A. <Meyer>",
                "messages": {"STDMSG3": {"result": "wrong", "remark": "left & right", "time": "2026-11-22T03:16:10Z"},
                             "STDMSG40": {"result": "skipped", "time": "2026-11-22T03:16:20Z"}}}
        (self.folder / "seen.json").write_text(json.dumps(seen))
        book = self.book("--accepted", "seen.json")
        self.assertIn("<th>Findings</th><th>Result</th><th>Remark</th></tr>", book)
        self.assertRegex(book, r">STDMSG3</a></td>.*<td>wrong</td><td>left &amp; right</td></tr>\n")
        self.assertRegex(book, r">STDMSG4</a></td>.*<td>not seen</td><td></td></tr>\n")
        self.assertRegex(book, r"<td>STDMSG40</td>.*<td>skipped</td><td></td></tr>\n")
        self.assertIn("<p>Seen by A. &lt;Meyer&gt; at the display 192.168.1.103, begun 2026-11-22 03:15:00 UTC</p>\n"
                      '<p class="signature">Date and signature: ___', book)
        (self.folder / "seen.json").write_text(json.dumps({**seen, "fingerprint": "0123456789ab"}))
        self.assertEqual(self.complaint(1, "book", PROJECT, "-o", BOOK, "--accepted", "seen.json"),
                         "orvista: seen.json is of another project: the display held 0123456789ab")
        self.assertIn('<p class="warning">Warning: the display held 0123456789ab, another project than this one.</p>',
                      (self.folder / BOOK).read_text("utf-8"))
        (self.folder / "seen.json").write_text("{}")
        self.assertIn("seen.json is not taken: ", self.complaint(2, "book", PROJECT, "-o", BOOK, "--accepted", "seen.json"))
        (self.folder / "seen.json").rename(self.folder / "seen.html")
        self.assertIn("read by this command", self.complaint(2, "book", PROJECT, "-o", "seen.html", "--accepted", "seen.html"))

    def test_what_cannot_be_written(self):
        before = self.files()
        self.assertEqual(self.complaint(2, "book", PROJECT, "-o", "book.pdf"), "orvista: book.pdf does not end in .html")
        (self.folder / "link.html").symlink_to(PROJECT)
        self.assertIn("read by this command", self.complaint(2, "book", PROJECT, "-o", "link.html"))
        (self.folder / "link.html").unlink()
        self.folder.chmod(0o555)
        try:
            self.complaint(1, "book", PROJECT, "-o", BOOK, preexec=as_ordinary_user)
        finally:
            self.folder.chmod(0o755)
        self.assertEqual(self.files(), before)

    def test_sixty_long_messages(self):
        """Of 64 KB each: of the two with the most pages a hundred are shown, the rest is counted."""
        line = 'TEXT 0 0 RED BLACK "x"\n'
        page = "CLEAR\n" + line + "ACT STILL 10\n"
        pages = 65536 // len(page)
        one_page, many_pages = ("CLEAR\n" + line * (65536 // len(line)), page * pages)
        scripts = {f"STDMSG{number}": one_page for number in range(1, 41)}
        scripts.update({f"ALTMSG{number}": many_pages if number < 3 else one_page for number in range(1, 21)})
        with open(self.folder / "long.csv", "w", encoding="utf-8", newline="") as table:
            csv.writer(table).writerows([("message", "script"), *scripts.items()])
        self.expect(0, "messages", "import", PROJECT, "long.csv")
        book = self.book("--columns", "32")
        self.assertEqual(book.count(f"<p>\u2026 and {pages - 100} more pages</p>"), 2)
        self.assertEqual(book.count("<img"), 58 + 2 * 100)

    @unittest.skipUnless(shutil.which("tidy"), "tidy is not installed")
    def test_the_page_is_well_formed(self):
        (self.folder / "PUMPSTATION.notes.json").write_text(
            '{"version":1,"items":{"RegVar1":{"label":"Level","comment":"<b>&\\""}}}', "utf-8")
        for options in ([], ["--widest", "--used", "--columns", "64"]):
            self.book(*options)
            checked = subprocess.run(["tidy", "-q", "-e", "-utf8", BOOK], cwd=self.folder, stdout=subprocess.PIPE,
                                     stderr=subprocess.STDOUT, check=False)
            self.assertEqual((checked.returncode, checked.stdout), (0, b""))

    @unittest.skipUnless(shutil.which("chromium") and shutil.which("pdftotext"), "no browser without a window")
    def test_printed_by_a_browser(self):
        self.book()
        subprocess.run(["chromium", "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={self.folder}/browser",
                        "--no-pdf-header-footer", "--print-to-pdf=book.pdf", BOOK], cwd=self.folder, check=True, timeout=100,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        text = subprocess.run(["pdftotext", "-layout", "book.pdf", "-"], cwd=self.folder, stdout=subprocess.PIPE, check=True)
        sheets = text.stdout.decode().split("\f")
        self.assertGreater(len(sheets), 5)
        self.assertIn("Page of STDMSG13", text.stdout.decode())
        # The long table of floats begins on each of its sheets with its head.
        floats = [sheet for sheet in sheets if re.search(r"^ *\d+ +RegVar\d+ ", sheet, re.M)]
        self.assertGreater(len(floats), 1)
        for sheet in floats:
            self.assertRegex(sheet, r"number +name +table")


if __name__ == "__main__":
    main()
