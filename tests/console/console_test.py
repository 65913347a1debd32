"""console_test.py PROGRAM SOURCE: the commands as their users know them."""

import csv
import io
import json
import os
import resource
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / "tour"))
import device_files  # noqa: E402  the project's files, written apart from the program

from program import GOLDEN, PROGRAM, PROJECT, ProgramTest, as_ordinary_user, main


def golden(name):
    return (GOLDEN / name).read_bytes()


def table(data):
    return list(csv.DictReader(io.StringIO(data.decode("utf-8-sig"), newline="")))


def no_file_grows():
    resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))


class Usage(ProgramTest):
    def test_help_has_examples_everywhere(self):
        for command in ([], ["addresses"], ["new"], ["messages"], ["messages", "export"], ["messages", "import"],
                        ["variables"], ["variables", "export"], ["variables", "import"]):
            text = self.expect(0, *command, "--help").decode()
            self.assertIn("Usage: orvista" + "".join(" " + word for word in command), text)
            self.assertIn("Examples:\n  orvista " + " ".join(command), text)
        self.assertRegex(self.expect(0, "--version").decode(), r"^orvista \d+\.\d+\n$")

    def test_wrong_usage_is_status_2(self):
        for arguments in ([], ["nonsense"], ["addresses"], ["addresses", "a", "b"], ["addresses", PROJECT, "--nonsense"],
                          ["addresses", PROJECT, "-o", "a.txt"], ["addresses", PROJECT, "-o", "a.csv", "--json"],
                          ["addresses", PROJECT, "--separator", "x"], ["messages"], ["messages", "nonsense"],
                          ["messages", "import", PROJECT], ["messages", "import", PROJECT, "a.csv", "-o", "a.txt"],
                          ["variables", "export", PROJECT, "--pages"], ["new"], ["new", "A", "--ip", "1.2.3"],
                          ["new", "A", "--ip", "1.2.3.256"], ["new", "A", "--ip", "1.2.3.04"],
                          ["new", "A", "--ip", "1.2.3.4.5"]):
            before = self.files()
            self.complaint(2, *arguments)
            self.assertEqual(self.files(), before)
        self.assertIn("nonsense is not a command; see orvista --help", self.complaint(2, "nonsense"))

    def test_unreadable_input_is_status_2(self):
        (self.folder / "folder.orx").mkdir()
        for project in ("missing.orx", "folder.orx", "no folder/A.orx"):
            for command in (["addresses", project], ["messages", "export", project], ["variables", "export", project],
                            ["messages", "import", project, "a.csv"]):
                self.assertIn("Unable to open " + project, self.complaint(2, *command))
        self.assertIn("a.csv: No such file", self.complaint(2, "messages", "import", PROJECT, "a.csv"))
        self.assertIn("folder.orx: Is a directory", self.complaint(2, "variables", "import", PROJECT, "folder.orx"))

    def test_reading_writes_nothing(self):
        (self.folder / "modbus.adr").write_bytes(b"AnalogInput 7\r\n")
        (self.folder / "history.cache").write_bytes(b"kept\r\n")
        before = self.files()
        for command in (["addresses", PROJECT], ["messages", "export", PROJECT], ["variables", "export", PROJECT],
                        ["messages", "import", PROJECT, "messages.csv", "--dry-run"]):
            (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
            before["messages.csv"] = b"message,script\nSTDMSG1,new\n"
            self.expect(0, *command)
            self.assertEqual(self.files(), before)

    def test_device_files_count_where_a_section_is_missing(self):
        text = (self.folder / PROJECT).read_bytes()
        start, end = text.index(b"[MODBUS.ADR]"), text.index(b"[STDMSG.ILM]")
        (self.folder / PROJECT).write_bytes(text[:start] + text[end:])
        (self.folder / "modbus.adr").write_bytes(b"AnalogInput    1000\r\n")
        self.assertEqual(table(self.expect(0, "addresses", PROJECT))[0]["address"], "1000")
        (self.folder / "modbus.adr").unlink()
        self.assertIn("modbus.adr", self.complaint(2, "addresses", PROJECT).lower())


class Addresses(ProgramTest):
    def test_csv(self):
        self.assertEqual(self.expect(0, "addresses", PROJECT), golden("addresses.csv"))
        self.assertEqual(self.expect(0, "addresses", "--used", PROJECT), golden("addresses-used.csv"))
        self.assertEqual(self.expect(0, "addresses", PROJECT, "--separator", ";"), golden("addresses-semicolon.csv"))
        tabs = self.expect(0, "addresses", PROJECT, "--separator", "tab")
        self.assertEqual(tabs.count(b"\t"), 15 * 157)
        self.assertEqual(self.expect(0, "addresses", PROJECT, "-o", "list.CSV"), b"")
        self.assertEqual((self.folder / "list.CSV").read_bytes(), golden("addresses.csv"))

    def test_json_says_the_same(self):
        rows = json.loads(self.expect(0, "addresses", PROJECT, "--json"))["addresses"]
        as_text = [{column: str(value) for column, value in row.items()} for row in rows]
        self.assertEqual(as_text, table(golden("addresses.csv")))
        self.assertIsInstance(rows[0]["address"], int)
        self.expect(0, "addresses", PROJECT, "-o", "list.json")
        self.assertEqual(json.loads((self.folder / "list.json").read_bytes())["addresses"], rows)

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


class Outputs(ProgramTest):
    """Full disk and read-only folder at each output: one line, status 1, no half file."""

    def setUp(self):
        super().setUp()
        (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
        (self.folder / "variables.csv").write_bytes(b"name,default\nRegVar1,77\n")

    commands = (["addresses", PROJECT, "-o", "out.csv"], ["addresses", PROJECT, "-o", "out.html"],
                ["addresses", PROJECT, "-o", "out.json"], ["messages", "export", PROJECT, "-o", "out.csv"],
                ["variables", "export", PROJECT, "-o", "out.csv"],
                ["messages", "import", PROJECT, "messages.csv"], ["variables", "import", PROJECT, "variables.csv"],
                ["messages", "import", PROJECT, "messages.csv", "-o", "out.orx"], ["new", "out.orx"])

    def test_full_disk(self):
        before = self.files()
        for command in self.commands:
            self.complaint(1, *command, preexec=no_file_grows)
            after = self.files()
            for name in ("out.csv", "out.html", "out.json"):
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
        for name in (PROJECT, "PUMPSTATION", "pumpstation.ORX" if sys.platform == "win32" else PROJECT):
            self.assertIn("project file already exist", self.complaint(1, "new", name))
        self.assertEqual(self.files(), before)

    def test_import_to_another_project(self):
        (self.folder / "messages.csv").write_bytes(b"message,script\nSTDMSG1,new\n")
        before = self.files()
        self.expect(0, "messages", "import", PROJECT, "messages.csv", "-o", "OTHER.orx")
        after = self.files()
        self.assertEqual(after[PROJECT], before[PROJECT])
        self.assertIn(b"DEFMSG STDMSG1\r\nnew\r\nENDMSG", after["OTHER.orx"])

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
                          'orvista: bad.csv: row 4: a quote is opened and never closed'])
        self.assertEqual(self.files(), before)
        (self.folder / "bad.csv").write_bytes(b"message,script\r\n" + b"x" * 10 * 1024 * 1024)
        self.assertEqual(self.complaint(1, "messages", "import", PROJECT, "bad.csv"),
                         "orvista: bad.csv is longer than 10 MB")


main()
