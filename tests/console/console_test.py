"""console_test.py PROGRAM SOURCE: the commands as their users know them."""

import calendar
import csv
import io
import json
import os
import re
import select
import struct
import subprocess
import sys
import time
import tty
import zlib
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).parents[1] / "tour"))
import device_files  # noqa: E402  the project's files, written apart from the program

from program import EXAMPLE, COMMANDS, GOLDEN, OTHER_COUNTERS, PROGRAM, PROJECT, SOURCE, ProgramTest, as_ordinary_user, main, no_file_grows


def golden(name):
    return (GOLDEN / name).read_bytes()


def table(data):
    return list(csv.DictReader(io.StringIO(data.decode("utf-8-sig"), newline="")))


class Usage(ProgramTest):
    def test_help_has_examples_everywhere(self):
        for command in ([], ["messages"], ["variables"], *COMMANDS):
            text = self.expect(0, *command, "--help").decode()
            self.assertEqual(self.expect(0, "help", *command).decode(), text)
            self.assertIn("Usage: orvista" + "".join(" " + word for word in command), text)
            self.assertIn("Examples:\n  orvista " + " ".join(command), text)
            self.assertNotIn("\n\n\n", text)
        self.assertRegex(self.expect(0, "--version").decode(), r"^orvista \d+\.\d+-\d+\n$")

    def test_wrong_usage_is_status_2(self):
        for arguments in (["nonsense"], ["addresses"], ["addresses", "a", "b"], ["addresses", PROJECT, "--nonsense"],
                          ["addresses", PROJECT, "-o", "a.txt"], ["addresses", PROJECT, "-o", "a.csv", "--json"],
                          ["addresses", PROJECT, "--separator", "x"], ["messages", "nonsense"],
                          ["messages", "import", PROJECT], ["messages", "import", PROJECT, "a.csv", "-o", "a.txt"],
                          ["messages", "export", PROJECT, "-o", PROJECT], ["variables", "export", PROJECT, "-o", "a.ORX"],
                          ["variables", "export", PROJECT, "--pages"], ["new"], ["new", "A", "--ip", "1.2.3"],
                          ["new", "A", "--ip", "1.2.3.256"], ["new", "A", "--ip", "1.2.3.04"],
                          ["new", "A", "--ip", "1.2.3.4.5"], ["compare"], ["compare", PROJECT],
                          ["compare", PROJECT, PROJECT, PROJECT]):
            before = self.files()
            self.complaint(2, *arguments)
            self.assertEqual(self.files(), before)

    def test_without_a_command_the_help_is_printed(self):
        self.assertEqual(self.expect(2), self.expect(0, "--help"))
        self.assertEqual(self.expect(2, "messages"), self.expect(0, "messages", "--help"))

    def test_what_was_probably_meant_is_named(self):
        for line, complaint in (
                ("nonsense", "nonsense is not a command; see orvista --help"),
                ("chekc", "chekc is not a command; did you mean check?"),
                ("chekc --strict A.orx", "chekc is not a command; did you mean check?"),
                ("messages exprt", "exprt is not a command; did you mean export?"),
                ("messages nonsense", "nonsense is not a command; see orvista messages --help"),
                ("upload-worke", "upload-worke is not a command; see orvista --help"),
                ("A.orx", "A.orx is not a command; see orvista --help"),
                ("--hlep", "--hlep is not an option; did you mean --help?"),
                ("-v", "-v is not an option; see orvista --help"),
                ("check --jsn", "--jsn is not an option; did you mean --json?"),
                ("check A.orx --colums=7", "--colums is not an option; did you mean --columns?"),
                ("check A.orx -x", "-x is not an option; see orvista check --help"),
                ("read gate other", "--project is required; see orvista read --help"),
                ("help chekc", "chekc is neither a command nor a code; did you mean check?"),
                ("help text-kut", "text-kut is neither a command nor a code; did you mean text-cut?"),
                ("help upload-worker", "upload-worker is neither a command nor a code; see orvista help"),
                ("help check codes", "check codes is neither a command nor a code; see orvista help")):
            self.assertEqual(self.complaint(2, *line.split()), "orvista: " + complaint)

    def test_help_explains_every_code(self):
        codes = self.expect(0, "help", "codes").decode()
        rows = re.findall(r"^([a-z-]+) +(error|warning|note) +(.*)$", codes, re.M)
        self.assertGreaterEqual(len(rows), 21)
        for code, severity, title in rows:
            lines = self.expect(0, "help", code).decode().splitlines()
            self.assertEqual(lines[0], f"{code} ({severity}): {title}")
            self.assertLessEqual(max(map(len, lines)), 80)
            self.assertIn("It is found here:", lines)
        self.assertIn("text-cut           warning  A text does not fit on the panel\n", codes)
        self.assertEqual(self.expect(0, "version"), self.expect(0, "--version"))

    def test_the_example_of_a_code_has_it(self):
        example = self.expect(0, "help", "text-cut").decode().split("It is found here:\n")[1].split("\n\n")[0].splitlines()
        self.assertEqual(example[0], "  STDMSG1:")
        script = "\n".join(line[4:] for line in example[1:]).replace('"', '""')
        (self.folder / "a.csv").write_text(f'message,script\nSTDMSG1,"{script}"\n')
        self.expect(0, "messages", "import", PROJECT, "a.csv")
        self.assertIn(b"STDMSG1:2:37: warning: 3 characters do not fit", self.expect(0, "check", PROJECT))

    def test_what_is_taken_for_an_empty_variable_is_said_of_its_row(self):
        (self.folder / "a.csv").write_text("message,page,content,var1\nSTDMSG1,1,Level %5v,\nSTDMSG2,1,%v,RegVar2\n")
        self.assertEqual(self.complaint(0, "messages", "import", PROJECT, "a.csv"),
                         "orvista: a.csv: row 2: var1 is empty: CoilVar1 is taken")
        self.assertIn(b" CoilVar1", self.expect(0, "messages", "export", PROJECT))

    def test_what_is_wrong_is_said_in_plain_words(self):
        show = ["show", PROJECT, "STDMSG1", "-o", "a.png"]
        for arguments, said in (
                ([*show, "--at", "-5"], '--at: "-5" is not a whole number, 0 or more; see orvista show --help'),
                ([*show, "--at", "1s"], '--at: "1s" is not a whole number, 0 or more; see orvista show --help'),
                ([*show, "--scale", "65"], '--scale: "65" is not a whole number from 1 to 64; see orvista show --help'),
                ([*show, "--columns"], "--columns needs N; see orvista show --help"),
                (["check", PROJECT, "--columns", "0"], '--columns: "0" is not a whole number from 1 to 4096; see orvista check --help'),
                (["upload", PROJECT, "--to"], "--to needs DISPLAY; see orvista upload --help"),
                (["upload", PROJECT, "--to", "gate", "--jobs", "61"],
                 '--jobs: "61" is not a whole number from 1 to 60; see orvista upload --help'),
                (["read", "gate", "--project", PROJECT, "--watch", "nan"],
                 '--watch: "nan" is not a number from 0.5 to 3600; see orvista read --help'),
                (["upload", PROJECT, "--to", "http://gate"],
                 "http://gate is the address of a page, not of a display: NAME, NAME:PORT or [IPv6]:PORT"),
                (["read", PROJECT, "gate"],
                 f"DISPLAY: {PROJECT} is a project; the display comes first; see orvista read --help"),
                (["write", PROJECT, "gate", "RegVar1=1"],
                 f"DISPLAY: {PROJECT} is a project; the display comes first; see orvista write --help"),
                (["switch", "--project", PROJECT, "--only"], "DISPLAY is required; see orvista switch --help"),
                (["messages", "import", "a.csv", PROJECT], f"{PROJECT} is a project, which comes first; a.csv is the table"),
                (["download", "--list", "a.csv", "-o", ""], "a.csv: No such file or directory"),
                (["download", "--from", "gate", "-o", "a.txt"], "a.txt does not end in .orx"),
                (["download", "--from", "gate", "-o", "folder/"], "folder/ does not end in .orx")):
            self.assertEqual(self.complaint(2, *arguments), "orvista: " + said)

    def test_unreadable_input_is_status_2(self):
        (self.folder / "folder.orx").mkdir()
        for project in ("missing.orx", "folder.orx", "no folder/A.orx"):
            for command in (["check", project], ["addresses", project], ["messages", "export", project], ["variables", "export", project],
                            ["messages", "import", project, "a.csv"]):
                self.assertIn("Unable to open " + project, self.complaint(2, *command))
        self.assertIn("a.csv: No such file", self.complaint(2, "messages", "import", PROJECT, "a.csv"))
        self.assertIn("folder.orx: Is a directory", self.complaint(2, "variables", "import", PROJECT, "folder.orx"))

    def test_reading_writes_nothing(self):
        (self.folder / "modbus.adr").write_bytes(b"AnalogInput 7\r\n")
        (self.folder / "history.cache").write_bytes(b"kept\r\n")
        before = self.files()
        for command in (["check", PROJECT], ["addresses", PROJECT], ["messages", "export", PROJECT],
                        ["variables", "export", PROJECT], ["messages", "import", PROJECT, "messages.csv", "--dry-run"]):
            (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
            before["messages.csv"] = b"message,script\nSTDMSG1,new\n"
            self.expect(0, *command)
            self.assertEqual(self.files(), before)

    def test_projects_are_found_in_any_case(self):
        for name in ("pumpstation.orx", "./pumpstation.ORX"):
            self.assertEqual(self.expect(0, "addresses", name), golden("addresses.csv"))

    def test_device_files_count_where_a_section_is_missing(self):
        text = (self.folder / PROJECT).read_bytes()
        start, end = text.index(b"[MODBUS.ADR]"), text.index(b"[STDMSG.ILM]")
        (self.folder / PROJECT).write_bytes(text[:start] + text[end:])
        (self.folder / "modbus.adr").write_bytes(b"AnalogInput    1000\r\n")
        self.assertEqual(table(self.expect(0, "addresses", PROJECT, "--not-whole"))[0]["address"], "1000")
        (self.folder / "modbus.adr").unlink()
        self.assertIn("modbus.adr", self.complaint(2, "addresses", PROJECT).lower())


class Addresses(ProgramTest):
    def test_csv(self):
        self.assertEqual(self.expect(0, "addresses", PROJECT), golden("addresses.csv"))
        self.assertEqual(self.expect(0, "addresses", "--used", PROJECT), golden("addresses-used.csv"))
        self.assertEqual(self.expect(0, "addresses", PROJECT, "--separator", ";"), golden("addresses-semicolon.csv"))
        tabs = self.expect(0, "addresses", PROJECT, "--separator", "tab")
        self.assertEqual(tabs.count(b"\t"), 18 * 157)
        self.assertEqual(self.expect(0, "addresses", PROJECT, "-o", "list.CSV"), b"")
        self.assertEqual((self.folder / "list.CSV").read_bytes(), golden("addresses.csv"))

    def test_json_says_the_same(self):
        rows = json.loads(self.expect(0, "addresses", PROJECT, "--json"))["addresses"]
        as_text = [{column: str(value) for column, value in row.items()} for row in rows]
        orders = [row.pop("byte_order") for row in as_text]
        self.assertEqual(orders, ["CDAB"] * 64 + [""] * 92)
        self.assertEqual(as_text, table(golden("addresses.csv")))
        self.assertIsInstance(rows[0]["address"], int)
        self.expect(0, "addresses", PROJECT, "-o", "list.json")
        self.assertEqual(json.loads((self.folder / "list.json").read_bytes())["addresses"], rows)

    def test_json_is_as_written_from_the_description(self):
        with mock.patch.dict(os.environ, SOURCE_DATE_EPOCH="1795317307"):
            listed = self.expect(0, "addresses", PROJECT, "--json")
        fingerprint = self.expect(0, "fingerprint", PROJECT).split()[0]
        self.assertEqual(listed.replace(fingerprint, b"0123456789ab"), golden("addresses.json"))

    def test_the_head_has_the_fingerprint_and_the_time(self):
        fingerprint = self.expect(0, "fingerprint", PROJECT).decode().split()[0]
        before = int(time.time())
        listed = json.loads(self.expect(0, "addresses", PROJECT, "--json"))
        self.assertEqual(listed["fingerprint"], fingerprint)
        self.assertTrue(before <= calendar.timegm(time.strptime(listed["time"], "%Y-%m-%dT%H:%M:%SZ")) <= time.time())
        self.expect(0, "addresses", PROJECT, "-o", "list.html")
        self.assertRegex((self.folder / "list.html").read_text("utf-8"),
                         rf"<p>Fingerprint of the project: {fingerprint}<br>\nAs of \d{{4}}-\d\d-\d\d \d\d:\d\d:\d\d UTC</p>")

    def test_lists_for_the_plc(self):
        (self.folder / "PUMPSTATION.notes.json").write_text(json.dumps(
            {"version": 1, "display": {"name": "Line 3, gate"},
             "items": {"RegVar1": {"label": "TankLevel", "unit": "m", "comment": "H\u00f6he"}, "ALTMSG1": {"label": "BITS"}, "STDMSG2": {"label": "Registers"}}}))
        self.assertEqual(json.loads(self.expect(0, "addresses", PROJECT, "--json"))["display"], "Line 3, gate")
        result = self.run_program("addresses", PROJECT, "--prefix", "LINE3_", "-o", "a.st")
        self.assertEqual(result.returncode, 2)
        self.assertEqual(result.stderr.decode().splitlines(), [
            'orvista: ALTMSG1: "LINE3_BITS" is a name of the program itself already',
            'orvista: STDMSG2: "LINE3_Registers" is a name of the program itself already',
            "orvista: 2 names cannot be used; nothing is written"])
        self.assertFalse((self.folder / "a.st").exists())
        (self.folder / "PUMPSTATION.notes.json").write_text(json.dumps(
            {"version": 1, "items": {"RegVar1": {"label": "TankLevel", "unit": "m", "comment": "H\u00f6he"}}}))
        for options, comment in (([], "Hohe"), (["--utf8"], "H\u00f6he")):
            with mock.patch.dict(os.environ, SOURCE_DATE_EPOCH="1795317300"):
                self.expect(0, "addresses", PROJECT, *options, "-o", "a.st")
            text = (self.folder / "a.st").read_text("utf-8")
            self.expect(0, "addresses", PROJECT, "--prefix", "LINE3_", "--used", "-o", "a.XML")
            self.assertIn(b'<variable name="LINE3_TankLevel">', (self.folder / "a.XML").read_bytes())
            self.assertIn("(* As of 2026-11-22T03:15:00Z *)", text)
            self.assertIn("    TankLevel : REAL := 1.85; (* m; holding register 40101, address 100, low word first (CDAB); "
                          f"STDMSG3 ALTMSG1: {comment} *)", text)

    def test_templates(self):
        (self.folder / "PUMPSTATION.notes.json").write_text(json.dumps(
            {"version": 1, "items": {"RegVar1": {"label": "TankLevel", "unit": "\"m", "comment": "H\u00f6he"}}}))
        templates = SOURCE / "share" / "templates"
        listed = json.loads(self.expect(0, "addresses", PROJECT, "--template", str(templates / "modbusscope.json")))
        self.assertEqual(len(listed["registers"]), 64)
        self.assertEqual(listed["registers"][0], {"text": "TankLevel", "expression": "${40101: f32b}", "unit": "\"m", "comment": "H\u00f6he"})
        self.expect(0, "addresses", PROJECT, "--used", "--template", str(templates / "home-assistant.yaml"), "-o", "modbus.yaml")
        text = (self.folder / "modbus.yaml").read_text("utf-8")
        self.assertTrue(text.startswith("# Addresses of PUMPSTATION.orx\n# Fingerprint of the project: "), text)
        self.assertIn('    sensors:\n      - name: "TankLevel"\n        # H\u00f6he\n        address: 100\n        input_type: holding\n'
                      '        data_type: float32\n        swap: word\n        unit_of_measurement: "\\"m"\n', text)
        self.assertEqual((text.count("    sensors:\n"), text.count("    switches:\n")), (1, 1))
        (self.folder / "bad").write_text("\n{{nonsense}}")
        self.assertEqual(self.complaint(2, "addresses", PROJECT, "--template", "bad", "-o", "a.txt"),
                         'orvista: bad: line 2: "nonsense" is not a name known here')
        self.assertEqual(self.complaint(2, "addresses", PROJECT, "--template", "none"), "orvista: none: No such file or directory")
        self.assertIn("is read by this command", self.complaint(2, "addresses", PROJECT, "--template", "bad", "-o", "bad"))
        self.assertFalse((self.folder / "a.txt").exists())

    def test_options_of_other_lists_are_refused(self):
        for arguments, said in (
                (["--prefix", "A_"], "--prefix goes with a file .st or .xml, or --template"),
                (["--utf8", "-o", "a.xml"], "--utf8 goes with a file .st"),
                (["--prefix", "3", "-o", "a.st"], '--prefix: "3" begins with no letter or _'),
                (["--json", "--template", "a"], "--template and --json exclude each other"),
                (["--json", "-o", "a.st"], "a.st does not end in .json"),
                (["-o", "a.txt"], "a.txt does not end in .csv, .html, .json, .st or .xml")):
            self.assertEqual(self.complaint(2, "addresses", PROJECT, *arguments), "orvista: " + said)
        self.assertEqual(set(self.files()), {path.name for path in EXAMPLE.iterdir()})

    def test_a_given_time_makes_the_same_bytes_every_time(self):
        with mock.patch.dict(os.environ, SOURCE_DATE_EPOCH="1795317300"):
            listed = json.loads(self.expect(0, "addresses", PROJECT, "--json"))
            self.assertEqual(listed["time"], "2026-11-22T03:15:00Z")
            pages = [self.expect(0, "addresses", PROJECT, "-o", f"{name}.html") or (self.folder / f"{name}.html").read_bytes()
                     for name in ("one", "two")]
        self.assertEqual(pages[0], pages[1])
        self.assertIn(b"As of 2026-11-22 03:15:00 UTC", pages[0])
        for nonsense in ("", "yesterday", "-1"):
            with mock.patch.dict(os.environ, SOURCE_DATE_EPOCH=nonsense):
                listed = json.loads(self.expect(0, "addresses", PROJECT, "--json"))
                self.assertGreater(calendar.timegm(time.strptime(listed["time"], "%Y-%m-%dT%H:%M:%SZ")), time.time() - 60)

    def test_html(self):
        self.expect(0, "addresses", PROJECT, "-o", "list.html")
        html = (self.folder / "list.html").read_text("utf-8")
        for row in table(golden("addresses.csv")):
            self.assertIn(f"<td>{row['name']}</td>", html)
        self.assertEqual(html.count("<thead>"), 4)

    def test_utf8_in_and_out(self):
        project = device_files.new_project()
        project["STDMSG"][1] = 'CLEAR\r\nTEXT 0 0 RED BLACK "Größe €"\r\nACT STILL 1000'.encode("cp1252")
        device_files.write(self.folder / "Größe", "ΓΔ", project)
        row = table(self.expect(0, "addresses", "Größe/ΓΔ.orx"))[116]
        self.assertEqual((row["name"], row["text"]), ("STDMSG1", "Größe €"))
        self.expect(0, "addresses", "Größe/ΓΔ.orx", "-o", "Größe/ΓΔ.html")
        self.assertIn("Addresses of ΓΔ", (self.folder / "Größe" / "ΓΔ.html").read_text("utf-8"))

    def test_replaces_a_file_whole_and_keeps_its_permissions_and_links(self):
        (self.folder / "list.csv").write_bytes(b"old")
        (self.folder / "list.csv").chmod(0o640)
        os.symlink("list.csv", self.folder / "link.csv")
        self.expect(0, "addresses", PROJECT, "-o", "link.csv")
        self.assertTrue((self.folder / "link.csv").is_symlink())
        self.assertEqual((self.folder / "list.csv").read_bytes(), golden("addresses.csv"))
        self.assertEqual((self.folder / "list.csv").stat().st_mode & 0o777, 0o640)


class Check(ProgramTest):
    """A text of 20 characters on a panel for 16 (blanks always fit), and a bitmap that is not there."""

    def setUp(self):
        super().setUp()
        project = device_files.new_project()
        project["STDMSG"][12] = b'CLEAR\r\nTEXT 0 0 RED BLACK "twenty characters xx"\r\nACT STILL 1000'
        device_files.write(self.folder, "CUT", project)
        project["ALTMSG"][2] = b"CLEAR\r\nIMG 0 0 RED BLACK none.bmp\r\nACT STILL 1000"
        device_files.write(self.folder, "BAD", project)

    def test_nothing_is_said_where_all_is_well(self):
        self.assertEqual(self.expect(0, "check", PROJECT, "--strict", "--notes"), b"")

    def test_a_line_for_each_finding(self):
        lines = self.expect(1, "check", "CUT.orx", "BAD.orx").decode().splitlines()
        self.assertRegex(lines[0], r"^CUT\.orx:STDMSG12:2:37: warning: 3 characters do not fit .*\. \[text-cut\]$")
        self.assertRegex(lines[2], r"^BAD\.orx:ALTMSG2:2:19: error: .*none\.bmp.*\. \[missing-bitmap\]$")
        self.assertEqual(len(lines), 3)

    def test_status(self):
        self.assertEqual(self.run_program("check", "CUT.orx").returncode, 0)
        self.assertEqual(self.run_program("check", "CUT.orx", "--strict").returncode, 1)
        self.assertEqual(self.run_program("check", "CUT.orx", "--strict", "--columns", "160").returncode, 0)
        self.assertEqual(self.run_program("check", "BAD.orx", "--columns", "160").returncode, 1)
        self.complaint(2, "check", PROJECT, "--columns", "0")
        self.complaint(2, "check", PROJECT, "--columns", "4097")
        result = self.run_program("check", "none.orx", "BAD.orx")
        self.assertEqual((result.returncode, result.stderr), (2, b"orvista: Unable to open none.orx\n"))
        self.assertIn(b"[missing-bitmap]", result.stdout, "the others are checked all the same")

    def test_a_finding_about_no_line_has_none(self):
        text = (self.folder / PROJECT).read_bytes()
        (self.folder / PROJECT).write_bytes(text.replace(b"DigitalInput   100", b"DigitalInput   310"))
        lines = self.expect(1, "check", PROJECT).decode().splitlines()
        lines = [line for line in lines if ":project file:" not in line]
        self.assertRegex(lines[0], r"^PUMPSTATION\.orx:address map: error: .*\[address-overlap\]$")

    def test_json(self):
        report = json.loads(self.expect(1, "check", "--json", "CUT.orx", "BAD.orx"))
        self.assertEqual((report["errors"], report["warnings"], report["columns"]), (1, 2, 128))
        first = report["findings"][0]
        self.assertEqual({**first, "text": ""}, {"project": "CUT.orx", "item": "STDMSG12", "line": 2, "column": 37,
                                                 "severity": "warning", "code": "text-cut", "text": "",
                                                 "fixes": first["fixes"]})
        self.assertEqual(json.loads(self.expect(0, "check", "--json", PROJECT)),
                         {"version": self.version(), "findings": [], "errors": 0, "warnings": 0, "unreadable": [],
                          "columns": 128})

    def test_json_names_what_could_not_be_read(self):
        result = self.run_program("check", "--json", "none.orx", "CUT.orx", "no folder/A.orx")
        report = json.loads(result.stdout)
        self.assertEqual(result.returncode, 2)
        self.assertEqual(report["unreadable"], [{"project": "none.orx", "text": "Unable to open none.orx"},
                                                {"project": "no folder/A.orx", "text": "Unable to open no folder/A.orx"}])
        self.assertEqual([finding["project"] for finding in report["findings"]], ["CUT.orx"])

    def test_notes_only_when_asked_for(self):
        project = device_files.new_project()
        project["RegVar"][7] = (b"5", b"5", b"1")
        device_files.write(self.folder, "NOTE", project)
        self.assertEqual(self.expect(0, "check", "NOTE.orx", "--strict"), b"")
        self.assertIn(b"NOTE.orx:RegVar7: note: ", self.expect(0, "check", "NOTE.orx", "--strict", "--notes"))


def pixels(path):
    """Width, height and rows of red, green and blue of a PNG without filters, its sums checked."""
    data, at, packed = path.read_bytes(), 8, b""
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("not a PNG")
    while at < len(data):
        size, = struct.unpack(">I", data[at:at + 4])
        kind, body = data[at + 4:at + 8], data[at + 8:at + 8 + size]
        if zlib.crc32(kind + body) != struct.unpack(">I", data[at + 8 + size:at + 12 + size])[0]:
            raise ValueError("a wrong sum")
        if kind == b"IHDR":
            width, height = struct.unpack(">II", body[:8])
        elif kind == b"IDAT":
            packed += body
        at += 12 + size
    rows = zlib.decompress(packed)
    if len(packed) > len(zlib.compress(rows, 9)):
        raise ValueError("larger than it need be")
    stride = 1 + 3 * width
    if len(rows) != stride * height or any(rows[y * stride] for y in range(height)):
        raise ValueError("rows of another form")
    return width, height, [rows[y * stride + 1:(y + 1) * stride] for y in range(height)]


class Whole(ProgramTest):
    """A project file of which something is lost or moved when it is read."""

    def setUp(self):
        super().setUp()
        self.whole = (self.folder / PROJECT).read_bytes()
        # Behind the twelfth message; the device files beside it stay.
        self.cut = self.whole[:self.whole.index(b"DEFMSG STDMSG13")]
        (self.folder / PROJECT).write_bytes(self.cut)

    def codes(self, *arguments):
        report = json.loads(self.run_program("check", PROJECT, "--json", *arguments).stdout)
        return [(row["item"], row["line"], row["column"], row["severity"], row["code"]) for row in report["findings"]
                if row["item"] == "project file"]

    def test_check_lists_it_first(self):
        last = self.cut.count(b"\n")
        self.assertEqual(self.codes(), [("project file", 0, 0, "error", "missing-section")] * 2
                         + [("project file", last, 0, "error", "cut-off")])
        lines = self.expect(1, "check", PROJECT).decode().splitlines()
        self.assertTrue(lines[0].startswith(f"{PROJECT}:project file: error: [ILMVAR.DEF] is missing, so the folder's "
                                            "ilmvar.def was read"), lines[0])
        self.assertEqual(lines[2], f"{PROJECT}:project file:{last}: error: The file ends inside [STDMSG.ILM]: 12 of 40 regular "
                         "messages were read. Take it from a copy, or the section from a device file (orvista mend). [cut-off]")

    def test_a_file_of_0_bytes_is_no_project(self):
        (self.folder / PROJECT).write_bytes(b"")
        self.assertEqual([row[4] for row in self.codes()], ["not-a-project"] + ["missing-section"] * 4 + ["missing-items"])
        (self.folder / "stdmsg.ilm").unlink()
        self.assertEqual(self.complaint(2, "check", PROJECT), f"orvista: {PROJECT}: Unable to open ./stdmsg.ilm")

    def test_a_conflict_and_a_second_end_are_found(self):
        start = self.whole.index(b"ENDMSG")
        (self.folder / PROJECT).write_bytes(self.whole[:start] + b"ENDMSG\r\n" + self.whole[start:])
        self.assertEqual([row[3:] for row in self.codes()],
                         [("error", "double-item"), ("error", "moved-item"), ("error", "extra-items")])
        (self.folder / PROJECT).write_bytes(self.whole.replace(
            b"IP ", b"<<<<<<< HEAD\r\nIP 127.0.0.1\r\n=======\r\nIP 127.0.0.2\r\n>>>>>>> theirs\r\nIP ", 1))
        self.assertEqual(self.codes("--strict"), [("project file", 3, 0, "error", "conflict-mark"),
                                                  ("project file", 3, 0, "warning", "stray-line")])

    def test_what_hands_it_over_or_saves_it_refuses_it(self):
        whole = f"orvista: {PROJECT} is not whole: 12 of 40 regular messages were read"
        (self.folder / "whole").mkdir()
        (self.folder / "whole" / PROJECT).write_bytes(self.whole)
        (self.folder / "a.csv").write_text("message,script\nSTDMSG1,CLEAR\n")
        (self.folder / "v.csv").write_text("variable,default\nRegVar1,1.5\n")
        display = "127.0.0.1:1"
        for command in (["addresses", PROJECT], ["messages", "export", PROJECT], ["variables", "export", PROJECT],
                        ["messages", "import", PROJECT, "a.csv"], ["variables", "import", PROJECT, "v.csv", "--dry-run"],
                        ["compare", PROJECT, f"whole/{PROJECT}"], ["compare", f"whole/{PROJECT}", PROJECT],
                        ["switch", display, "--project", PROJECT, "--on", "STDMSG1"],
                        ["write", display, "--project", PROJECT, "RegVar1=1"]):
            before = self.files()
            self.assertEqual(self.complaint(2, *command), whole, command)
            self.assertEqual(self.files(), before)
        result = self.run_program("upload", PROJECT, "--to", display)
        self.assertEqual((result.returncode, result.stderr.decode().splitlines()), (2, [whole, "orvista: nothing was sent"]))
        self.assertIn(b"STDMSG1", self.expect(0, "addresses", PROJECT, "--not-whole"))
        self.assertIn(b"STDMSG13", self.expect(1, "compare", PROJECT, f"whole/{PROJECT}", "--not-whole"))
        self.expect(0, "show", PROJECT, "STDMSG3", "-o", "a.png")
        self.expect(0, "messages", "import", PROJECT, "a.csv", "--not-whole")
        self.assertEqual(self.codes(), [])

    def test_extra_and_moved_items_alone_are_taken(self):
        start = self.whole.index(b"[ALTMSG.ILM]")
        extra = self.whole[:start] + b"DEFMSG STDMSG41\r\nCLEAR\r\nENDMSG\r\n" + self.whole[start:]
        (self.folder / PROJECT).write_bytes(extra.replace(b"DEFMSG STDMSG2\r", b"DEFMSG STDMSG3\r"))
        self.assertEqual([row[4] for row in self.codes()], ["moved-item", "extra-items"])
        self.expect(0, "addresses", PROJECT)

    def test_a_project_is_known_by_its_ending(self):
        (self.folder / "copy.txt").write_bytes(self.whole)
        (self.folder / "COPY.ORX").write_bytes(self.whole)
        for command in (["check", "copy.txt"], ["show", "copy.txt", "STDMSG1", "-o", "a.png"], ["addresses", "copy.txt"],
                        ["messages", "export", "copy.txt"], ["upload", "copy.txt", "--to", "127.0.0.1:1"],
                        ["read", "127.0.0.1:1", "--project", "copy.txt"], ["mend", "copy.txt", "-o", "new/A.orx"], ["fix", "copy.txt"]):
            self.assertEqual(self.complaint(2, *command), "orvista: copy.txt is not a project (.orx)", command)
        self.expect(0, "addresses", "COPY.ORX")

    def test_mend_takes_sections_from_whole_device_files(self):
        said = self.expect(0, "mend", PROJECT, "-o", "new/mended").decode()
        self.assertEqual(said, "".join(f"[{name.upper()}] was taken from ./{name}\n"
                                       for name in ("ilmvar.def", "stdmsg.ilm", "altmsg.ilm")))
        (self.folder / PROJECT).write_bytes(self.whole)
        compared = json.loads(self.run_program("compare", PROJECT, "new/mended.orx", "--json").stdout)
        self.assertEqual(compared["differences"], [])
        (self.folder / "again").mkdir()
        self.assertEqual(self.expect(0, "mend", PROJECT, "-o", f"again/{PROJECT}").decode(),
                         f"Nothing was taken: {PROJECT} is whole\n")
        compared = json.loads(self.run_program("compare", PROJECT, f"again/{PROJECT}", "--json").stdout)
        self.assertEqual(compared["differences"], [])

    def test_mend_takes_no_address_that_may_be_cut_off(self):
        end = self.whole.index(b"AlertMessage   300") + len(b"AlertMessage   30")
        (self.folder / PROJECT).write_bytes(self.whole[:end])
        said = self.expect(0, "mend", PROJECT, "-o", "new/A.orx").decode()
        self.assertTrue(said.startswith("[MODBUS.ADR] was taken from ./modbus.adr\n"), said)
        self.assertIn(b"AlertMessage   300\r\n", (self.folder / "new" / "A.orx").read_bytes())

    def test_mend_says_which_ip_may_be_cut_off(self):
        for end, ip in ((b"IP   ", ""), (b"IP   1", "1"), (b"SerialPort", "192.168.1.100")):
            (self.folder / PROJECT).write_bytes(self.whole[:self.whole.index(end) + len(end)])
            said = self.expect(0, "mend", PROJECT, "-o", f"new{ip}/A.orx").decode().splitlines()
            self.assertEqual(said[4:], [f"The display's IP is \"{ip}\" now: the project file does not say it, or not whole"], end)

    def test_mend_writes_nothing_where_a_device_file_is_not_whole(self):
        messages = (self.folder / "stdmsg.ilm").read_bytes()
        for bytes_ in (messages[:messages.index(b"DEFMSG STDMSG13")], messages[:-8], None):
            (self.folder / "stdmsg.ilm").unlink() if bytes_ is None else (self.folder / "stdmsg.ilm").write_bytes(bytes_)
            before = self.files()
            reason = "cannot be read" if bytes_ is None else "is not whole either"
            self.assertEqual(self.complaint(1, "mend", PROJECT, "-o", "new/A.orx"),
                             f"orvista: {PROJECT}: [STDMSG.ILM] is not whole, and ./stdmsg.ilm {reason}")
            self.assertEqual(self.files(), before)
        (self.folder / "from").mkdir()
        (self.folder / "from" / "stdmsg.ilm").write_bytes(messages)
        for name in ("altmsg.ilm", "ilmvar.def"):
            (self.folder / name).rename(self.folder / "from" / name)
        self.expect(0, "mend", PROJECT, "--from", "from", "-o", "new/A.orx")

    def test_mend_writes_beside_no_other_project(self):
        (self.folder / "new").mkdir()
        (self.folder / "new" / "Other.ORX").write_bytes(self.whole)
        before = self.files()
        self.assertEqual(self.complaint(2, "mend", PROJECT, "-o", "new/A.orx"),
                         "orvista: new holds another project, Other.ORX; name another folder")
        self.assertEqual(self.complaint(2, "mend", PROJECT, "-o", PROJECT),
                         f"orvista: {PROJECT} is the project itself; name another folder")
        self.assertEqual(self.files(), before)


class Fix(ProgramTest):
    """A message in which a value has too few blanks, a text is cut and a word is mistyped."""

    SCRIPT = (b'CLEAR\r\nTEXT 0 0 RED BLACK "Level   m"\r\nDISPVAR 48 0 RED BLACK RegVar1\r\nACT STILL 3000\r\nCLEAR\r\n'
              b'TEXT 0 0 RDE BLACK "Pump"\r\nTEXT 0 0 RED BLACK "Emergency stop pump"\r\nACT STILL 3000')

    def setUp(self):
        super().setUp()
        project = device_files.new_project()
        project["STDMSG"][3] = self.SCRIPT
        device_files.write(self.folder, "A", project)
        self.old = (self.folder / "A.orx").read_bytes()

    def test_prints_old_and_new_and_saves_once(self):
        said = self.expect(0, "fix", "A.orx").decode()
        self.assertEqual(said, 'STDMSG3:3:24: Leave 7 blanks [field-gap]\n- TEXT 0 0 RED BLACK "Level   m"\n'
                               '+ TEXT 0 0 RED BLACK "Level        m"\n'
                               'STDMSG3:7:37: Let the page leave with OUT GO-LEFT [text-cut]\n+ OUT GO-LEFT 1 50\n'
                               '2 findings mended, 0 left\n')
        mended = self.SCRIPT.replace(b"Level   m", b"Level        m") + b"\r\nOUT GO-LEFT 1 50"
        self.assertIn(b"DEFMSG STDMSG3\r\n" + mended, (self.folder / "A.orx").read_bytes())
        before = self.files()
        self.assertEqual(self.expect(0, "fix", "A.orx").decode(), "Nothing mended, 0 left\n")
        self.assertEqual(self.files(), before)

    def test_only_mends_the_codes_and_items_that_are_named(self):
        self.assertIn("+ TEXT 0 0 RED BLACK", self.expect(0, "fix", "A.orx", "--only", "bad-argument", "--dry-run").decode())
        self.assertEqual((self.folder / "A.orx").read_bytes(), self.old)
        self.assertEqual(self.expect(0, "fix", "A.orx", "--item", "STDMSG4,RegVar1").decode(), "Nothing mended, 0 left\n")
        (self.folder / "A.orx").write_bytes(self.old.replace(b"RDE", b"PINK"))
        self.assertEqual(self.expect(1, "fix", "A.orx", "--only", "bad-argument,field-gap", "--item", "STDMSG3").decode().splitlines()[-1],
                         "1 finding mended, 1 left")

    def test_writes_into_a_folder_of_its_own_with_bitmaps(self):
        self.expect(0, "fix", "A.orx", "-o", "new/B")
        self.assertEqual((self.folder / "A.orx").read_bytes(), self.old)
        self.assertEqual({path.name for path in (self.folder / "new").iterdir()},
                         {"B.orx", "altmsg.ilm", "default.pls", "ilmvar.def", "modbus.adr", "stdmsg.ilm"} |
                         {path.name for path in self.folder.glob("*.bmp")})
        self.assertEqual(self.complaint(2, "fix", "A.orx", "-o", "new/C.orx"),
                         "orvista: new holds another project, B.orx; name another folder")
        self.expect(0, "fix", "new/B.orx", "-o", "other/B.orx")
        self.assertFalse((self.folder / "other").exists(), "there was nothing to mend")

    def test_onto_the_project_itself_it_is_as_without_a_target(self):
        said = self.expect(0, "fix", "A.orx", "--dry-run")
        self.assertEqual(self.expect(0, "fix", "A.orx", "-o", "./A").replace(b" mended", b" would be mended"), said)
        self.assertIn(b"\r\nOUT GO-LEFT 1 50", (self.folder / "A.orx").read_bytes())

    def test_wrong_codes_and_items(self):
        for arguments, text in ((["--only", "text-cuts"], "--only: text-cuts is not a code; did you mean text-cut?"),
                                (["--only", "invisible"], "--only: invisible is for people to mend; see orvista help invisible"),
                                (["--item", "STDMSG99"], '--item: "STDMSG99" is neither a message nor a variable, such as STDMSG3 or '
                                                         "RegVar12")):
            self.assertEqual(self.complaint(2, "fix", "A.orx", *arguments), "orvista: " + text)

    def test_json_has_the_same_edits_as_the_check(self):
        fixed = json.loads(self.expect(0, "fix", "A.orx", "--json", "--dry-run"))
        found = json.loads(self.expect(1, "check", "A.orx", "--json"))["findings"]
        self.assertEqual(found[0]["fixes"], [{"caption": "Leave 7 blanks",
                                              "edits": [{"line": 2, "column": 29, "length": 0, "new": "     "}]}])
        self.assertEqual((fixed["mended"][0]["caption"], fixed["mended"][0]["edits"]),
                         (found[0]["fixes"][0]["caption"], found[0]["fixes"][0]["edits"]))
        self.assertEqual([finding["code"] for finding in found], ["field-gap", "bad-argument", "text-cut"])
        self.assertEqual(found[1]["fixes"][0]["edits"], [{"line": 6, "column": 10, "length": 3, "new": "RED"}])

    def test_edits_of_a_variable_name_it(self):
        project = device_files.new_project()
        project["RegVar"][9] = (b"0.0", b"9", b"3")
        device_files.write(self.folder, "A", project)
        found = json.loads(self.expect(0, "check", "A.orx", "--json"))["findings"]
        self.assertEqual(found[0]["fixes"], [{"caption": "Set the width to 8",
                                              "edits": [{"variable": "RegVar9", "field": "width", "new": "8"}]}])
        self.assertEqual(self.expect(0, "fix", "A.orx").decode(),
                         "RegVar9: Set the width to 8 [bad-format]\n- RegVar9 width 9\n+ RegVar9 width 8\n1 finding mended, 0 left\n")


class Show(ProgramTest):
    def setUp(self):
        super().setUp()
        project = device_files.new_project()
        # A bar of one character in each colour, and one message that comes in from the right.
        project["STDMSG"][1] = (b'TEXTS 0 0 RED BLACK "-"\r\nTEXTS 6 0 GREEN BLACK "-"\r\nTEXTS 12 0 ORANGE BLACK "-"\r\n'
                                b"ACT STILL 1000")
        project["STDMSG"][2] = b'CLEAR\r\nTEXTS 0 0 RED BLACK "-"\r\nIN GO-LEFT 1 10\r\nACT STILL 1000'
        project["ALTMSG"][3] = b'TEXTS 18 0 RED BLACK "-"\r\nACT BLINK 4 75\r\nACT STILL 500'
        device_files.write(self.folder, "BARS", project)

    def lit(self, *arguments, scale=8):
        """Columns and colours of the lit dots in the row of the bars; the picture's rim is one and a half dots."""
        self.assertEqual(self.expect(0, "show", "BARS.orx", *arguments, "-o", "out.png"), b"")
        width, height, rows = pixels(self.folder / "out.png")
        columns = (width - 2 * (scale + scale // 2)) // scale
        self.assertEqual(height, 16 * scale + 2 * (scale + scale // 2))
        y = scale + scale // 2 + 3 * scale + scale // 2
        found = {}
        for column in range(columns):
            x = scale + scale // 2 + column * scale + scale // 2
            dot = rows[y][3 * x:3 * x + 3]
            found[column] = min(self.looks, key=lambda look: sum((a - b) ** 2 for a, b in zip(self.looks[look], dot)))
        found = {column: colour for column, colour in found.items() if colour != "off"}
        return columns, found

    bar = range(0, 5)
    # Near the middle of a lens, between its glowing core and its own colour.
    looks = {"off": (48, 44, 41), "R": (255, 110, 85), "G": (160, 248, 127), "O": (255, 199, 98)}

    def test_the_dots_of_a_message(self):
        columns, found = self.lit("stdmsg1")
        self.assertEqual(columns, 128)
        self.assertEqual(found, {**{x: "R" for x in self.bar}, **{x + 6: "G" for x in self.bar},
                                 **{x + 12: "O" for x in self.bar}})
        columns, found = self.lit("STDMSG1", "--columns", "40", "--scale", "5", scale=5)
        self.assertEqual((columns, len(found)), (40, 15))
        self.assertEqual(self.lit("STDMSG1", "--columns", "1", "--scale", "64", scale=64), (1, {0: "R"}))

    def test_the_same_picture_is_the_same_file(self):
        for name in ("one.png", "other.png"):
            self.expect(0, "show", PROJECT, "STDMSG3", "-o", name)
        self.assertEqual((self.folder / "one.png").read_bytes(), (self.folder / "other.png").read_bytes())
        pixels(self.folder / "one.png")

    def test_without_a_moment_the_page_has_come_in(self):
        self.assertEqual(set(self.lit("STDMSG2")[1]), set(self.bar))
        self.assertEqual(set(self.lit("STDMSG2", "--at", "0")[1]), set())
        self.assertEqual(set(self.lit("STDMSG2", "--at", "30")[1]), {125, 126, 127})
        self.assertEqual(set(self.lit("ALTMSG3")[1]), {x + 18 for x in self.bar}, "lit, though it blinks")
        self.assertEqual(self.lit("STDMSG40")[1], {})

    def test_several_messages_are_played_as_the_display_plays_them(self):
        self.assertEqual(len(self.lit("STDMSG2", "STDMSG1", "--at", "999")[1]), 15, "the first comes first")
        self.assertEqual(len(self.lit("STDMSG2", "STDMSG1", "--at", "2290")[1]), 5)
        self.assertEqual(set(self.lit("STDMSG1", "ALTMSG3", "--at", "700")[1]), {x + 18 for x in self.bar})

    def test_wrong_usage(self):
        for arguments in (["BARS.orx", "STDMSG41", "-o", "a.png"], ["BARS.orx", "RegVar1", "-o", "a.png"],
                          ["BARS.orx", "STDMSG1"], ["BARS.orx", "-o", "a.png"], ["BARS.orx", "STDMSG1", "-o", "a.bmp"],
                          ["BARS.orx", "STDMSG1", "-o", "a.png", "--at", "-1"],
                          ["BARS.orx", "STDMSG1", "-o", "a.png", "--scale", "0"],
                          ["BARS.orx", "STDMSG1", "-o", "a.png", "--columns", "1", "--scale", "65"],
                          ["none.orx", "STDMSG1", "-o", "a.png"]):
            self.complaint(2, "show", *arguments)
            self.assertFalse((self.folder / "a.png").exists())


    fields = (b"CLEAR\r\nDISPVARS 0 0 RED BLACK RegVar1\r\nDISPVARS 48 0 GREEN BLACK CoilVar1\r\nTIMES 0 8 RED BLACK \r\n"
              b"ACT STILL 1000")

    def picture(self, script, *arguments):
        """What show draws of a script, as bytes."""
        project = device_files.new_project()
        project["STDMSG"][1] = script
        device_files.write(self.folder, "VALUES", project)
        self.expect(0, "show", "VALUES.orx", "STDMSG1", *arguments, "-o", "out.png")
        return (self.folder / "out.png").read_bytes()

    def texts(self, number, boolean, time=b"00:00:00"):
        return self.picture(b'CLEAR\r\nTEXTS 0 0 RED BLACK "%s"\r\nTEXTS 48 0 GREEN BLACK "%s"\r\nTEXTS 0 8 RED BLACK "%s"\r\n'
                            b"ACT STILL 1000" % (number, boolean, time))

    def test_fields_show_the_values_that_are_named(self):
        self.assertEqual(self.picture(self.fields, "--values", "widest"), self.texts(b"-99.999", b"OFF"))
        self.assertEqual(self.picture(self.fields, "--values", "STARS"), self.texts(b"*******", b"OFF"))
        without_time = self.fields.replace(b"TIMES 0 8 RED BLACK \r\n", b"")
        for values, number, boolean in (("default", b"  0.000", b"OFF"), ("smallest", b"  0.000", b"ON"),
                                        ("RegVar1=-99.9,CoilVar1=on", b"-99.900", b"ON")):
            self.assertEqual(self.picture(without_time, "--values", values), self.texts(number, boolean, b" "), values)

    def test_values_come_from_a_reading_of_a_display(self):
        without_time = self.fields.replace(b"TIMES 0 8 RED BLACK \r\n", b"")
        for value, raw, shown in ((1.5, [0, 0x3FC0], b"  1.500"), (None, [0, 0x7FC0], b"-------"), (None, [], b"  0.000")):
            (self.folder / "reading.json").write_text(json.dumps({"values": [
                {"name": "RegVar1", "value": value, "raw": raw}, {"name": "CoilVar1", "value": None, "raw": []}]}))
            self.assertEqual(self.picture(without_time, "--values", "reading.json"), self.texts(shown, b"OFF", b" "))

    def test_values_that_are_none(self):
        self.picture(self.fields)
        (self.folder / "out.png").unlink()
        for text, why in (('{"values": [\n  {"name": "RegVar1",\n   "value": 1,}]}', ": line 3, column 15 is not JSON"),
                          ("[" * 17, ": it is nested deeper than 16"),
                          ('{"values": [{"name": "RegVar1", "value": 1, "value": 2}]}', ': "value" stands there twice'),
                          ("[1]", ""), ('{"values": [{"name": 1}]}', ""),
                          ('{"values": [{"name": "CoilVar1", "value": "on"}]}', "")):
            (self.folder / "bad.json").write_text(text)
            self.assertEqual(self.complaint(2, "show", "VALUES.orx", "STDMSG1", "-o", "out.png", "--values", "bad.json"),
                             "orvista: bad.json is not what orvista read --json prints" + why)
        (self.folder / "large.json").write_text('{"values": [{"name": "RegVar1", "value": 1e39}]}')
        (self.folder / "long.json").write_text('{"values": []}' + " " * (1 << 20))
        for values, said in (("widst", '--values: "widst" is neither default, widest, smallest, stars, a value such as RegVar1=-99.9 or '
                                       "CoilVar2=on, nor a .json file"),
                             ("RegVar65=1", 'RegVar65=1: "RegVar65" is none of RegVar1 to RegVar64 and CoilVar1 to CoilVar32'),
                             ("RegVar1=1,RegVar2=x", 'RegVar2=x: "x" is not a number'),
                             ("CoilVar1=2", "CoilVar1=2: a Boolean variable is on or off"),
                             ("none.json", "none.json: No such file or directory"),
                             ("long.json", "long.json is longer than 1 MB"),
                             ("large.json", "large.json holds a number that is larger than a float variable can hold")):
            self.assertEqual(self.complaint(2, "show", "VALUES.orx", "STDMSG1", "-o", "out.png", "--values", values), "orvista: " + said)
        self.assertFalse((self.folder / "out.png").exists())

    def test_bitmaps_that_cannot_be_shown_are_named_beside_the_picture(self):
        project = device_files.new_project()
        project["STDMSG"][1] = b"CLEAR\r\nIMG 0 0 RED BLACK later.bmp\r\nIMG 0 0 RED BLACK cut.bmp\r\nACT STILL 1000"
        device_files.write(self.folder, "VALUES", project)
        (self.folder / "cut.bmp").write_bytes(b"BM")
        ended = self.run_program("show", "VALUES.orx", "STDMSG1", "-o", "out.png")
        self.assertEqual((ended.returncode, ended.stderr),
                         (1, b"orvista: later.bmp is missing\norvista: cut.bmp is cut short\n"))
        pixels(self.folder / "out.png")

    def test_a_picture_that_would_be_too_large_is_refused(self):
        self.assertEqual(self.complaint(2, "show", "BARS.orx", "STDMSG1", "--columns", "4096", "--scale", "64", "-o", "out.png"),
                         "orvista: the picture would be 262336 x 1216 pixels, and 64 million are the most: give a smaller --scale or "
                         "fewer --columns")
        self.assertFalse((self.folder / "out.png").exists())


class Outputs(ProgramTest):
    """Full disk and read-only folder at each output: one line, status 1, no half file."""

    def setUp(self):
        super().setUp()
        (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
        (self.folder / "variables.csv").write_bytes(b"name,default\nRegVar1,77\n")

    commands = (["show", PROJECT, "STDMSG3", "-o", "out.png"], ["addresses", PROJECT, "-o", "out.csv"], ["addresses", PROJECT, "-o", "out.html"],
                ["addresses", PROJECT, "-o", "out.json"], ["book", PROJECT, "-o", "out.html"], ["messages", "export", PROJECT, "-o", "out.csv"],
                ["variables", "export", PROJECT, "-o", "out.csv"],
                ["messages", "import", PROJECT, "messages.csv"], ["variables", "import", PROJECT, "variables.csv"],
                ["messages", "import", PROJECT, "messages.csv", "-o", "out.orx"], ["new", "out.orx"])

    def test_full_disk(self):
        before = self.files()
        for command in self.commands:
            self.complaint(1, *command, preexec=no_file_grows, settings=OTHER_COUNTERS)
            after = self.files()
            for name in ("out.png", "out.csv", "out.html", "out.json"):
                self.assertNotIn(name, after, command)
            self.assertTrue(before[PROJECT] in after.values(), command)
            for name in set(after) - set(before):
                (self.folder / name).unlink()
            for name, data in before.items():
                (self.folder / name).write_bytes(data)

    def test_read_only_folder(self):
        for path in self.folder.iterdir():
            path.chmod(0o444)
        self.folder.chmod(0o555)
        before = self.files()
        try:
            for command in self.commands:
                self.complaint(1, *command, preexec=as_ordinary_user)
                self.assertEqual(self.files(), before, command)
        finally:
            self.folder.chmod(0o755)

    def test_standard_output_on_a_full_disk(self):
        with open("/dev/full", "wb") as full:
            for command in (["addresses", PROJECT], ["messages", "export", PROJECT], ["--help"]):
                self.assertEqual(self.complaint(1, *command, stdout=full),
                                 "orvista: standard output: No space left on device")

    def test_a_reader_that_leaves_early_hears_nothing(self):
        project = device_files.new_project()
        project["STDMSG"] = {n: b"x" * 50_000 for n in range(1, 41)}
        device_files.write(self.folder, "LONG", project)
        with subprocess.Popen([PROGRAM, "messages", "export", "LONG.orx"], cwd=self.folder, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as process:
            process.stdout.read(100)
            process.stdout.close()
            self.assertEqual(process.stderr.read(), b"")
            self.assertEqual(process.wait(60), 0)


class ControlCharacters(ProgramTest):
    """Names and texts with escape sequences, as somebody else may have given them."""

    evil = "\x1b]0;title\x07\x9b31m\x7f"
    seen = "?]0;title??31m?"

    def setUp(self):
        super().setUp()
        project = device_files.new_project()
        project["STDMSG"][1] = b'CLEAR\r\nTEXT 0 0 RED BLACK "\x1b[2J\x9d twenty characters"\r\nACT STILL 1000'
        device_files.write(self.folder / self.evil, "A", project)

    def on_terminal(self, *arguments):
        """What a terminal gets of standard output."""
        master, slave = os.openpty()
        tty.setraw(slave)
        with subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, stdout=slave, stderr=subprocess.PIPE) as process:
            os.close(slave)
            got = b""
            while select.select([master], [], [], 60)[0]:
                try:
                    got += os.read(master, 65536)
                except OSError:  # the last writer is gone
                    break
            self.assertEqual(process.stderr.read(), b"")
        os.close(master)
        return got

    def assert_harmless(self, text):
        controls = {c for c in text if (ord(c) < 0x20 or 0x7F <= ord(c) < 0xA0) and c not in "\n\t"}
        self.assertEqual(controls, set())

    def test_texts_for_people_have_none_wherever_they_go(self):
        path = self.evil + "/A.orx"
        found = self.expect(0, "check", path).decode()
        self.assertTrue(found.startswith(self.seen + "/A.orx:STDMSG1:2:"), found)
        self.assert_harmless(found)
        (self.folder / "messages.csv").write_text('message,script\nSTDMSG1,"CLEAR\n\x1b[31mX\x90"\n', "utf-8")
        changes = self.expect(0, "messages", "import", path, "messages.csv", "--dry-run").decode()
        self.assertIn('- TEXT 0 0 RED BLACK "?[2J? twenty characters"\n', changes)
        self.assertIn("+ ?[31mX?\n", changes)
        self.assert_harmless(changes)
        compared = self.expect(1, "compare", path, PROJECT).decode()
        self.assertTrue(compared.startswith(f"--- {self.seen}/A.orx\n+++ {PROJECT}\n"), compared)
        self.assert_harmless(compared)
        self.assert_harmless(self.complaint(2, "check", self.evil + "/B\n.orx"))

    def test_a_line_end_in_a_name_begins_no_line(self):
        os.rename(self.folder / self.evil, self.folder / "x\nPUMP.orx")
        lines = self.expect(0, "check", "x\nPUMP.orx/A.orx").decode().splitlines()
        self.assertEqual(len(lines), 1)
        self.assertTrue(lines[0].startswith("x?PUMP.orx/A.orx:STDMSG1:"), lines)

    def test_what_is_for_programs_is_whole_in_a_pipe_and_harmless_on_a_terminal(self):
        path = self.evil + "/A.orx"
        for command in (["addresses", path], ["messages", "export", path], ["compare", path, PROJECT, "--json"]):
            self.assertTrue({"\x1b", "\x9b", "\x9d", "\\u001b"} & set(re.findall(r"\\u001b|.", self.run_program(*command).stdout.decode())))
            shown = self.on_terminal(*command).decode()
            self.assertIn("twenty characters", shown)
            self.assert_harmless(shown.replace("\r\n", "\n"))
        self.assertIn(self.seen, self.on_terminal("check", path).decode())


class Sheets(ProgramTest):
    def test_exports(self):
        self.assertEqual(self.expect(0, "messages", "export", PROJECT), golden("messages.csv"))
        self.assertEqual(self.expect(0, "messages", "export", PROJECT, "--pages"), golden("pages.csv"))
        self.assertEqual(self.expect(0, "variables", "export", PROJECT), golden("variables.csv"))

    def test_nothing_changes_where_nothing_differs(self):
        before = self.files()
        for kind, name in (("messages", "messages.csv"), ("messages", "pages.csv"), ("variables", "variables.csv")):
            self.assertEqual(self.expect(0, kind, "import", PROJECT, str(GOLDEN / name)), b"Nothing changed\n")
            self.assertEqual(self.files(), before)

    def test_import_saves_as_the_editor_saves(self):
        (self.folder / "plant").mkdir()
        self.expect(0, "new", "plant/LINE3.orx", "--ip", "10.0.0.7")
        project = device_files.new_project()
        project["IP"] = b"10.0.0.7"
        device_files.write(self.folder / "expected", "LINE3", project)
        self.assertEqual(self.written("plant"), self.written("expected"))

        (self.folder / "pages.csv").write_text("message;page;content;var1;entering;leaving\r\n"
                                               "ALTMSG2;1;Größe %5v;RegVar3;NONE;NONE\r\n", "cp1252")
        self.assertEqual(self.expect(0, "messages", "import", "plant/LINE3.orx", "pages.csv"), b"1 text changed\n")
        (self.folder / "variables.csv").write_text("name\ton\toff\nCoilVar2\tZU\tAUF\n", "utf-8")
        self.assertEqual(self.expect(0, "variables", "import", "plant/LINE3.orx", "variables.csv"), b"2 texts changed\n")
        # What was read back ends in a line end, and gets an empty line when it is written.
        again = device_files.reopened(project)
        again["ALTMSG"][2] = ('CLEAR\r\nTEXT 0 0 RED BLACK "Größe      "\r\nDISPVAR 48 0 RED BLACK RegVar3\r\n'
                              'ACT STILL 1000\r\n').encode("cp1252")
        again["CoilVar"][2] = (b"0", b"ZU", b"AUF")
        device_files.write(self.folder / "expected", "LINE3", again)
        self.assertEqual(self.written("plant"), self.written("expected"))

    def written(self, folder):
        return {path.name: path.read_bytes() for path in (self.folder / folder).iterdir()}

    def test_new_keeps_a_project_that_is_there(self):
        before = self.files()
        for name in (PROJECT, "PUMPSTATION", "pumpstation", "pumpstation.ORX", "./Pumpstation.orx"):
            self.assertIn(name, self.complaint(1, "new", name))
            self.assertIn(": project file already exist", self.complaint(1, "new", name))
        self.assertEqual(self.files(), before)

    def test_a_thousand_errors_are_told_and_the_others_counted(self):
        (self.folder / "wrong.csv").write_text("message,script\n" + "STDMSG41,x\n" * 1003)
        result = self.run_program("messages", "import", PROJECT, "wrong.csv")
        lines = result.stderr.decode().splitlines()
        self.assertEqual((result.returncode, len(lines)), (1, 1001))
        self.assertIn("wrong.csv: row 1001,", lines[999])
        self.assertEqual(lines[1000], "orvista: wrong.csv: and 3 more")
        (self.folder / "wrong.csv").write_text("message,script\n" + "STDMSG41,x\n" * 1000)
        self.assertNotIn(b"more\n", self.run_program("messages", "import", PROJECT, "wrong.csv").stderr)

    def test_what_a_file_holds_alike_is_kept(self):
        before = self.files()
        (self.folder / "messages.csv").write_text('message,script\nSTDMSG2,"CLEAR\n\n  TEXT 0 0 RED BLACK ""a"" "\n', "utf-8")
        (self.folder / "other").mkdir()
        self.expect(0, "messages", "import", PROJECT, "messages.csv", "-o", "other/OTHER")
        other = (self.folder / "other" / "OTHER.orx").read_bytes()
        (self.folder / "messages.csv").write_text('message,script\nSTDMSG2,"CLEAR\nTEXT 0 0 RED BLACK ""a"""\n', "utf-8")
        self.assertEqual(self.expect(0, "messages", "import", "other/OTHER.orx", "messages.csv", "--exit-changed"),
                         b"Nothing changed\n")
        self.assertEqual((self.folder / "other" / "OTHER.orx").read_bytes(), other)
        self.assertEqual({name: self.files()[name] for name in before}, before)

    def test_exit_changed_tells_by_the_status(self):
        (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
        (self.folder / "variables.csv").write_bytes(b"name,on\nCoilVar2,ZU\n")
        for kind in ("messages", "variables"):
            before = self.files()
            for _ in range(2):
                out = self.expect(1, kind, "import", PROJECT, f"{kind}.csv", "--dry-run", "--exit-changed")
                self.assertTrue(out.endswith(b"1 text would change\n"), out)
            self.assertEqual(self.files(), before)
            self.assertEqual(self.expect(1, kind, "import", PROJECT, f"{kind}.csv", "--exit-changed"), b"1 text changed\n")
            self.assertEqual(self.expect(0, kind, "import", PROJECT, f"{kind}.csv", "--exit-changed"), b"Nothing changed\n")
            self.expect(0, kind, "import", PROJECT, f"{kind}.csv", "--dry-run", "--exit-changed")

    def test_tables_come_from_standard_input_too(self):
        for kind, table_ in (("messages", b"message,script\nSTDMSG1,new\n"), ("variables", b"name,on\nCoilVar2,ZU\n")):
            self.assertEqual(self.expect(0, kind, "import", PROJECT, "-", given=table_), b"1 text changed\n")
        self.assertTrue(b"DEFMSG STDMSG1\r\nnew\r\n" in (self.folder / PROJECT).read_bytes())
        result = self.run_program("messages", "import", PROJECT, "-", given=b"message,script\nSTDMSG41,x\n")
        self.assertEqual(result.returncode, 1)
        self.assertTrue(result.stderr.startswith(b"orvista: standard input: row 2, message: "), result.stderr)
        self.assertEqual(self.run_program("messages", "import", PROJECT, "-", given=b"").stderr, b"orvista: standard input is empty\n")
        self.assertEqual(self.complaint(2, "messages", "import", PROJECT, "-", preexec=lambda: os.close(0)),
                         "orvista: standard input: Bad file descriptor")

    def test_tables_come_through_pipes_too(self):
        os.mkfifo(self.folder / "table.csv")
        (self.folder / "new.csv").write_bytes(b"message,script\nSTDMSG1,new\n" + b"STDMSG2,\"" + b"x\n" * 100000 + b"\"\n")
        for line in (f'cat new.csv > table.csv & "{PROGRAM}" messages import {PROJECT} table.csv --dry-run',
                     f'"{PROGRAM}" messages import {PROJECT} <(cat new.csv) --dry-run',
                     f'cat new.csv | "{PROGRAM}" messages import {PROJECT} /dev/stdin --dry-run'):
            result = subprocess.run(["bash", "-c", line], cwd=self.folder, capture_output=True, check=False, timeout=100)
            self.assertEqual((result.returncode, result.stderr), (0, b""), line)
            self.assertTrue(result.stdout.endswith(b"\n2 texts would change\n"), line)

    def test_import_to_another_project(self):
        (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
        before = self.files()
        self.expect(0, "messages", "import", PROJECT, "messages.csv", "-o", "OTHER")
        after = self.files()
        self.assertEqual(after[PROJECT], before[PROJECT])
        self.assertIn(b"DEFMSG STDMSG1\r\nnew\r\nENDMSG", after["OTHER.orx"])

    def test_import_onto_the_project_itself_is_as_without_output(self):
        (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
        (self.folder / "none.csv").write_bytes(b"message,script\n")
        (self.folder / "LINK.orx").symlink_to(PROJECT)
        before = self.files()
        self.assertEqual(self.expect(0, "messages", "import", PROJECT, "none.csv", "-o", "LINK"), b"Nothing changed\n")
        self.assertEqual(self.files(), before)
        self.assertEqual(self.expect(0, "messages", "import", PROJECT, "messages.csv", "-o", "./LINK.orx"), b"1 text changed\n")
        self.assertTrue((self.folder / "LINK.orx").is_symlink())
        self.assertIn(b"DEFMSG STDMSG1\r\nnew\r\nENDMSG", (self.folder / PROJECT).read_bytes())

    def test_import_beside_another_project_says_that_its_device_files_are_replaced(self):
        (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
        self.assertEqual(self.expect(0, "messages", "import", PROJECT, "messages.csv", "-o", "OTHER").decode(),
                         f"The device files of {PROJECT} in the same folder were replaced\n1 text changed\n")
        (self.folder / "new").mkdir()
        self.assertEqual(self.expect(0, "messages", "import", PROJECT, "messages.csv", "-o", "new/OTHER"), b"1 text changed\n")

    def test_no_output_is_a_file_that_is_read(self):
        self.expect(0, "messages", "export", PROJECT, "-o", "messages.csv")
        for name, target in (("a.csv", PROJECT), ("b.csv", "stdmsg.ilm"), ("c.png", "pump.bmp"), ("d.html", PROJECT),
                             ("E.orx", "messages.csv"), ("F.orx", "ilmvar.def")):
            (self.folder / name).symlink_to(target)
        (self.folder / "new").mkdir()
        os.link(self.folder / "modbus.adr", self.folder / "new" / "G.orx")
        before = self.files()
        for arguments, output, target in (
                (["messages", "export", PROJECT], "a.csv", PROJECT), (["variables", "export", PROJECT], "b.csv", "stdmsg.ilm"),
                (["show", PROJECT, "STDMSG1"], "c.png", "pump.bmp"), (["addresses", PROJECT], "d.html", PROJECT),
                (["messages", "import", PROJECT, "messages.csv"], "E.orx", "messages.csv"),
                (["messages", "import", PROJECT, "messages.csv"], "F.orx", "ilmvar.def"),
                (["mend", PROJECT], "new/G.orx", "modbus.adr"), (["fix", PROJECT], "new/G.orx", "modbus.adr")):
            self.assertIn(f"orvista: {output} is {target if '/' in target or target.endswith(('.orx', '.csv')) else ''}",
                          self.complaint(2, *arguments, "-o", output))
        self.assertEqual(self.files(), before)

    def test_dry_run_prints_old_and_new(self):
        (self.folder / "messages.csv").write_text('message,script\nSTDMSG3,"CLEAR\nTEXT 0 0 RED BLACK ""é"""\nALTMSG9,x\n',
                                                  "utf-8")
        self.assertEqual(self.expect(0, "messages", "import", PROJECT, "messages.csv", "--dry-run").decode("utf-8"),
                         'STDMSG3 script\n- CLEAR\n- TEXT 0 0 GREEN BLACK "Level       m"\n'
                         "- DISPVAR 48 0 ORANGE BLACK RegVar1\n- IN GO-LEFT 1 50\n- ACT STILL 4000\n- OUT GO-LEFT 1 50\n"
                         '+ CLEAR\n+ TEXT 0 0 RED BLACK "é"\n'
                         "ALTMSG9 script\n- CLEAR\n+ x\n2 texts would change\n")

    def test_errors_are_told_all_at_once(self):
        (self.folder / "bad.csv").write_bytes(b"message,script\r\nSTDMSG41,a\r\nSTDMSG1,\xce\x93\r\nSTDMSG2,\"open\r\n")
        before = self.files()
        result = self.run_program("messages", "import", PROJECT, "bad.csv")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr.decode("utf-8").splitlines(),
                         ['orvista: bad.csv: row 2, message: "STDMSG41" is not a message; there are STDMSG1 to STDMSG40 '
                          'and ALTMSG1 to ALTMSG20',
                          'orvista: bad.csv: row 3, script: "Γ" is not a character of the display',
                          'orvista: bad.csv: row 4, script: a quote is opened and never closed'])
        self.assertEqual(self.files(), before)
        (self.folder / "bad.csv").write_bytes(b"message,script\r\n" + b"x" * 64 * 1024 * 1024)
        self.assertEqual(self.complaint(1, "messages", "import", PROJECT, "bad.csv"),
                         "orvista: bad.csv is longer than 64 MB")

    def test_what_import_would_refuse_is_not_exported(self):
        project = device_files.new_project()
        project["STDMSG"] = {n: b'"' * 140_000 for n in range(1, 41)}
        device_files.write(self.folder, "LONG", project)
        self.expect(0, "messages", "export", "LONG.orx", "-o", "long.csv")
        self.assertGreater((self.folder / "long.csv").stat().st_size, 40 * 2 * 140_000)
        self.assertEqual(self.expect(0, "messages", "import", "LONG.orx", "long.csv"), b"Nothing changed\n")
        project["STDMSG"] = {1: b'"' * 34_000_000}
        device_files.write(self.folder, "LONG", project)
        self.assertEqual(self.complaint(1, "messages", "export", "LONG.orx", "-o", "longer.csv"),
                         "orvista: the table would be longer than the 64 MB that an import takes")
        self.assertFalse((self.folder / "longer.csv").exists())

    def test_what_comes_from_empty_cells_is_told(self):
        self.expect(0, "new", "E.orx")
        (self.folder / "full.csv").write_text("name,default,width,on\nRegVar1,7,3,\nCoilVar2,1,,ZU\n")
        self.assertEqual(self.expect(0, "variables", "import", "E.orx", "full.csv"), b"4 texts changed\n")
        (self.folder / "empty.csv").write_text("name,default,width,on\nRegVar1,, ,\nCoilVar2,1,,\n")
        self.assertEqual(self.expect(0, "variables", "import", "E.orx", "empty.csv", "--dry-run").decode(),
                         "RegVar1 default\n- 7\n+ 0.0\nRegVar1 width\n- 3\n+ 7\nCoilVar2 on\n- ZU\n+ \n3 texts would change\n"
                         "3 of them for an empty cell: the default of a number, an empty text\n")
        self.assertEqual(self.expect(0, "variables", "import", "E.orx", "empty.csv").decode().splitlines()[1],
                         "3 of them for an empty cell: the default of a number, an empty text")

    def test_nul_bytes_and_utf_16_are_refused(self):
        before = self.files()
        for data, said in ((b'message,script\nSTDMSG1,"CLEAR\0"\n', ": row 2, script: a NUL byte is not a character of the display"),
                           ("message,script\nSTDMSG1,x\n".encode("utf-16-le"), ' is UTF-16; save it as "CSV UTF-8"'),
                           ("message,script\nSTDMSG1,x\n".encode("utf-16-be"), ' is UTF-16; save it as "CSV UTF-8"')):
            (self.folder / "bad.csv").write_bytes(data)
            self.assertEqual(self.complaint(1, "messages", "import", PROJECT, "bad.csv"), "orvista: bad.csv" + said)
            (self.folder / "bad.csv").unlink()
            self.assertEqual(self.files(), before)


main()
