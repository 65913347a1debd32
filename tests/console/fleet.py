"""What tests of many displays at once share."""

import json
import os
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / "tour"))
import device_files  # noqa: E402  the project's files, written apart from the program

from ftp_displays import DEVICE_FILES, Displays  # noqa: E402
from program import PROGRAM, ProgramTest  # noqa: E402

NOBODY = "127.0.0.1:1"  # where nobody listens
STATE_FIELDS = ["name", "address", "state", "file", "files", "of", "reason", "seconds"]


class FleetTest(ProgramTest):
    """A project with two bitmaps, and as many displays as a test makes. What the program leaves in the folder for
    temporary files is seen."""

    def setUp(self):
        super().setUp()
        self.project = device_files.new_project()
        self.project["STDMSG"][3] = b'CLEAR\r\nTEXT 0 0 RED BLACK "Level"\r\nACT STILL 1000'
        device_files.write(self.folder / "plant", "LINE3", self.project)
        for name in ("b.bmp", "A.bmp"):
            (self.folder / "plant" / name).write_bytes(b"BM" + name.encode() * 1000)
        (self.folder / "tmp").mkdir()
        self.displays = Displays(self.folder / "displays")
        self.addCleanup(self.displays.close)

    def make(self, count):
        return [self.displays.make() for _ in range(count)]

    def sent(self):
        """What a display is to hold: the project as read, as saving writes it, and the bitmaps."""
        device_files.write(self.folder / "expected", "LINE3", device_files.reopened(self.project))
        files = {name: (self.folder / "expected" / name).read_bytes() for name in DEVICE_FILES}
        return files | {name: (self.folder / "plant" / name).read_bytes() for name in ("A.bmp", "b.bmp")}

    def start(self, *arguments, settings=None, **keywords):
        """`settings` are variables of its environment besides."""
        return subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                env=os.environ | {"TMPDIR": str(self.folder / "tmp")} | (settings or {}), **keywords)

    def outcome(self, status, *arguments):
        """Standard output and standard error, once the status is as expected and nothing is left behind."""
        process = self.start(*arguments)
        out, error = process.communicate(timeout=100)
        self.assertEqual(process.returncode, status, (arguments, out, error))
        self.assertEqual(list((self.folder / "tmp").iterdir()), [])
        return out.decode(), error.decode()

    def results(self, status, *arguments):
        """By name, from the last line of --json; every line before it is a state."""
        out, error = self.outcome(status, *arguments, "--json")
        self.assertEqual(error, "")
        lines = [json.loads(line) for line in out.splitlines()]
        for line in lines[:-1]:
            self.assertEqual(list(line), STATE_FIELDS)
        return {result["name"]: result for result in lines[-1]["results"]}, lines[:-1]

    def write_list(self, rows, head="name,address,port,project"):
        (self.folder / "list.csv").write_text("\n".join([head, *rows]) + "\n", "utf-8")
        return "list.csv"
