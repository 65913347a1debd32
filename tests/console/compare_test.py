"""compare_test.py PROGRAM SOURCE: projects and simulated displays side by side."""

import contextlib
import json
import os
import random
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).parents[1] / "tour"))
import device_files  # noqa: E402  the project's files, written apart from the program

from displays import PORTS, Display
from program import PROGRAM, PROJECT, ProgramTest, main


DEVICE_FILES = ["modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"]


def listener():
    """On a port that a transfer can take."""
    for port in random.sample(PORTS, 100):
        with contextlib.suppress(OSError):
            return socket.create_server(("127.0.0.1", port))
    raise RuntimeError("no free port")


def replaced(name, part, by):
    def change(folder):
        content = (folder / name).read_bytes()
        assert part in content, part
        (folder / name).write_bytes(content.replace(part, by, 1))
    return change


def written(name, content):
    return lambda folder: (folder / name).write_bytes(content)


def renamed(name, other):
    return lambda folder: (folder / name).rename(folder / other)


def in_turn(*changes):
    def change(folder):
        for each in changes:
            each(folder)
    return change


def held_cases():
    """What differs on the display: the file that tells, the change, its state, and whether nothing that counts differs."""
    yield "stdmsg.ilm", lambda folder: None, "same", True
    for field, value in (("AnalogInput    ", "100"), ("DigitalInput   ", "100"), ("AlertMessage   ", "300")):
        yield "modbus.adr", replaced("modbus.adr", f"{field}{value}".encode(), f"{field}{value[0]}50".encode()), "different", False
    yield "modbus.adr", replaced("modbus.adr", b"AnalogInput    ", b"analoginput="), "equal", True
    yield "modbus.adr", replaced("modbus.adr", b"AnalogInput", b"Speed 1\r\nAnalogInput"), "different", False
    for old, new in ((b"default   0", b"default   1"), (b"width     5", b"width     6"), (b"precision 1", b"precision 0"),
                     (b'ON        "ON"', b'ON        "OPEN"'), (b'OFF       "OFF"', b'OFF       "SHUT"')):
        yield "ilmvar.def", replaced("ilmvar.def", b"    " + old, b"    " + new), "different", False
    yield "ilmvar.def", replaced("ilmvar.def", b"    type      float", b"TYPE FLOAT"), "equal", True
    yield "ilmvar.def", replaced("ilmvar.def", b"    address   100", b"    address   101"), "different", False
    yield "ilmvar.def", in_turn(replaced("ilmvar.def", b"RegVar2\r", b"RegVar0\r"), replaced("ilmvar.def", b"RegVar3\r", b"RegVar2\r"),
                                replaced("ilmvar.def", b"RegVar0\r", b"RegVar3\r")), "different", False
    for name in ("stdmsg.ilm", "altmsg.ilm"):
        word = name[:6].upper().encode()
        yield name, replaced(name, b"CLEAR\r\n", b"\r\n  CLEAR  \r\n"), "equal", True
        yield name, replaced(name, b"CLEAR\r\n", b"clear\r\n"), "different", False
        yield name, replaced(name, b"CLEAR\r\n", b"CLEAR\r\nACT STILL 7\r\n"), "different", False
        yield name, replaced(name, b"DEFMSG " + word + b"2\r", b"defmsg " + word.lower() + b"2\r"), "equal", True
        yield name, replaced(name, b"DEFMSG " + word + b"2\r", b"DEFMSG " + word + b"3\r"), "different", False
        yield name, replaced(name, b"DEFMSG " + word + b"2\r", b"stray\r\nDEFMSG " + word + b"2\r"), "different", False
    yield "default.pls", replaced("default.pls", b"STDMSG1\r", b"STDMSG2\r"), "different", True
    yield "pump.bmp", written("pump.bmp", b"BM"), "different", False
    yield "pump.bmp", lambda folder: (folder / "pump.bmp").unlink(), "missing", False
    yield "pump.bmp", renamed("pump.bmp", "PUMP.BMP"), "same", True
    yield "old.bmp", written("old.bmp", b"BM"), "extra", True


class Compare(ProgramTest):
    def setUp(self):
        super().setUp()
        self.scratch = Path(tempfile.mkdtemp(prefix="orvista-scratch-"))
        self.addCleanup(shutil.rmtree, self.scratch)
        former = os.environ.get("TMPDIR")
        os.environ["TMPDIR"] = str(self.scratch)
        self.addCleanup(os.environ.pop, "TMPDIR")
        if former:
            self.addCleanup(os.environ.__setitem__, "TMPDIR", former)

    def tearDown(self):
        self.assertEqual(list(self.scratch.iterdir()), [])  # what was fetched is gone

    def display(self, *options):
        """One that holds the files of the example, from a folder of its own."""
        held = self.folder / "held"
        held.mkdir()
        for path in self.folder.iterdir():
            if path.is_file() and path.suffix != ".orx":
                shutil.copy(path, held)
        display = Display(held, *options)
        self.addCleanup(display.close)
        return display

    def other_project(self):
        """The example, changed in each way that there is."""
        other = self.folder / "other"
        other.mkdir()
        project = (self.folder / PROJECT).read_bytes()
        self.assertIn(b"TEXT 0 0 GREEN BLACK \"Level       m\"\r\nDISPVAR", project)
        project = project.replace(b"AnalogInput    100", b"AnalogInput    200").replace(
            b"TEXT 0 0 GREEN BLACK \"Level       m\"", b"TEXT 0 0 GREEN BLACK \"L\xe4vel\x1b       m\"")
        lines = project.split(b"\r\n")
        at = lines.index(b"DEFVAR RegVar3")
        self.assertEqual(lines[at + 3].split()[0], b"default")
        lines[at + 3] = b"    default   12.5"
        # Floats are placed by their addresses.
        for index, line in enumerate(lines):
            if line == b"    type      float":
                lines[index + 1] = b"    address   %d" % (int(lines[index + 1].split()[1]) + 100)
        (other / PROJECT).write_bytes(b"\r\n".join(lines))
        shutil.copy(self.folder / "alarm.bmp", other / "ALARM.BMP")
        shutil.copy(self.folder / "alarm.bmp", other / "new.bmp")
        (other / "pump.bmp").write_bytes((self.folder / "pump.bmp").read_bytes()[:-1] + b"??")
        return f"other/{PROJECT}"

    def test_a_display_holds_what_its_project_has(self):
        display = self.display()
        before = self.files()
        self.assertEqual(self.expect(0, "compare", PROJECT, display.address), b"No differences\n")
        self.assertEqual(self.expect(0, "compare", display.address, PROJECT), b"No differences\n")
        self.assertEqual(self.expect(0, "compare", PROJECT, PROJECT), b"No differences\n")
        self.assertEqual(self.expect(0, "compare", display.address, display.address), b"No differences\n")
        told = json.loads(self.expect(0, "compare", "--json", PROJECT, display.address))
        self.assertEqual([(file["name"], file["state"]) for file in told.pop("files")],
                         [(name, "same") for name in DEVICE_FILES])
        self.assertEqual(told,
                         {"version": self.version(), "old": PROJECT, "new": display.address, "equal": True, "differences": [], "bitmaps": []})
        self.assertEqual(self.files(), before)

    def test_differences_are_told_line_by_line(self):
        display = self.display()
        other = self.other_project()
        before = self.files()
        size = len((self.folder / "pump.bmp").read_bytes())
        text = self.expect(1, "compare", display.address, other).decode()
        self.assertEqual(text, f"""--- {display.address}
+++ {other}
address map
- AnalogInput 100
+ AnalogInput 200
RegVar3
- default 0
+ default 12.5
STDMSG3
  CLEAR
- TEXT 0 0 GREEN BLACK "Level       m"
+ TEXT 0 0 GREEN BLACK "Lävel?       m"
  DISPVAR 48 0 ORANGE BLACK RegVar1
  IN GO-LEFT 1 50
  ...
pump.bmp
- {size} bytes
+ {size + 1} bytes, differs from byte {size} onwards
only on {other}: new.bmp
""")
        mirrored = self.expect(1, "compare", other, display.address).decode()
        self.assertIn("- AnalogInput 200\n+ AnalogInput 100\n", mirrored)
        self.assertTrue(mirrored.endswith(f"\nonly on {other}: new.bmp\n"), mirrored)
        self.assertEqual(self.files(), before)

    def test_json_says_the_same(self):
        other = self.other_project()
        size = len((self.folder / "pump.bmp").read_bytes())
        told = json.loads(self.expect(1, "compare", PROJECT, other, "--json"))
        self.assertEqual([(file["name"], file["state"], file["counts"]) for file in told.pop("files")],
                         [("modbus.adr", "different", True), ("ilmvar.def", "different", True),
                          ("stdmsg.ilm", "different", True), ("altmsg.ilm", "same", True),
                          ("default.pls", "same", False)])
        self.assertEqual(told, {
            "version": self.version(), "old": PROJECT, "new": other, "equal": False,
            "differences": [
                {"item": "address map", "field": "AnalogInput", "old_line": 0, "new_line": 0, "old": "100", "new": "200"},
                {"item": "RegVar3", "field": "default", "old_line": 0, "new_line": 0, "old": "0", "new": "12.5"},
                {"item": "STDMSG3", "field": "script", "old_line": 2, "new_line": 0,
                 "old": 'TEXT 0 0 GREEN BLACK "Level       m"', "new": None},
                {"item": "STDMSG3", "field": "script", "old_line": 0, "new_line": 2,
                 "old": None, "new": 'TEXT 0 0 GREEN BLACK "Lävel\x1b       m"'}],
            "bitmaps": [
                {"name": "new.bmp", "state": "extra", "counts": False, "old_size": None, "new_size": 126, "first_difference": None},
                {"name": "pump.bmp", "state": "different", "counts": True, "old_size": size, "new_size": size + 1, "first_difference": size - 1}]})

    def test_fingerprints_are_the_same_where_nothing_that_counts_differs(self):
        display = self.display()
        shutil.copytree(self.folder, self.folder / "copy", ignore=lambda *_: ["held", "other"])
        (self.folder / "copy" / "old.bmp").write_bytes(b"BM")
        other = self.other_project()
        lines = self.expect(0, "fingerprint", PROJECT, display.address, f"copy/{PROJECT}", other).decode().splitlines()
        digits = [line.split("  ")[0] for line in lines]
        self.assertEqual([line.split("  ")[1] for line in lines], [PROJECT, display.address, f"copy/{PROJECT}", other])
        self.assertRegex(digits[0], "^[0-9a-f]{12}$")
        self.assertEqual(digits[:3], [digits[0]] * 3)
        self.assertNotEqual(digits[3], digits[0])
        self.assertEqual(self.expect(0, "compare", PROJECT, f"copy/{PROJECT}").decode(),
                         f"No differences\nonly on copy/{PROJECT}: old.bmp\n")
        self.assertEqual(self.complaint(2, "fingerprint", "missing.orx"), "orvista: Unable to open missing.orx")

    def test_each_kind_of_difference_is_answered_alike_by_all(self):
        """The window's answers are held against the same kinds in tests/compare."""
        display = self.display()
        held = self.folder / "held"
        ours = {path.name: path.read_bytes() for path in held.iterdir()}
        status = {True: 0, False: 1}
        sent = {True: "equal", False: "done"}
        for name, change, state, equal in held_cases():
            for path in held.iterdir():
                path.unlink()
            for path, content in ours.items():
                (held / path).write_bytes(content)
            change(held)
            for sides in ((PROJECT, display.address), (display.address, PROJECT)):
                self.assertEqual(self.run_program("compare", *sides).returncode, status[equal], (name, state))
            told = json.loads(self.run_program("compare", PROJECT, display.address, "--json").stdout)
            self.assertEqual(told["equal"], equal, (name, state))
            states = {file["name"]: file["state"] for file in told["files"] + told["bitmaps"]}
            self.assertEqual(states.get(name, "same"), state, name)
            digits = [line.split()[0] for line in self.expect(0, "fingerprint", PROJECT, display.address).splitlines()]
            self.assertEqual(digits[0] == digits[1], equal, (name, state))
            lines = self.expect(0, "upload", PROJECT, "--to", display.address, "--skip-equal", "--json").splitlines()
            [result] = json.loads(lines[-1])["results"]
            self.assertEqual(result["result"], sent[equal or state == "extra"], (name, state))

    def test_a_file_is_named_where_no_item_of_its_own_differs(self):
        other = self.other_project()
        display = self.display()
        altmsg = self.folder / "held" / "altmsg.ilm"
        altmsg.write_bytes(b"stray\r\n" + altmsg.read_bytes())
        self.assertIn(f"\naltmsg.ilm\n- {altmsg.stat().st_size - 7} bytes\n+ {altmsg.stat().st_size} bytes, differs from byte 1 onwards\n",
                      self.expect(1, "compare", other, display.address).decode())

    def test_a_project_is_as_its_display_had_it_after_each_upload(self):
        """Each save and each reading adds or takes empty lines."""
        project = device_files.new_project()
        project["STDMSG"][2] = b"CLEAR\r\n\r\n TEXT 0 0 RED BLACK \"A\" \r\nACT STILL 1000\r\n"
        device_files.write(self.folder, "A", project)
        project["STDMSG"][2] = b"CLEAR\r\nTEXT 0 0 RED BLACK \"A\"\r\n\r\n\r\nACT STILL 1000"
        project["STDMSG"][3] = b"CLEAR\r\n"
        device_files.write(self.folder, "B", project)
        self.assertEqual(self.expect(0, "compare", "A.orx", "B.orx"), b"No differences\n")

    def test_what_cannot_be_read_is_status_2(self):
        display = self.display("--fail-file", "3", "--fail-how", "hang-up")
        before = self.files()
        for side, reason in (("missing.orx", "Unable to open missing.orx"), ("127.0.0.1:0", "0 is not a port"),
                             ("127.0.0.1:99999", "not a port"), ("127.0.0.1:1", "127.0.0.1:1: connection refused"),
                             ("[::1", "[::1"), (display.address, "stdmsg.ilm could not be fetched: it ended too early")):
            self.assertIn(reason, self.complaint(2, "compare", PROJECT, side))
            self.assertIn(reason, self.complaint(2, "compare", side, PROJECT))
            self.assertEqual(self.run_program("compare", side, PROJECT).stdout, b"")
        self.assertEqual(self.files(), before)

    def test_a_display_without_a_file_cannot_be_read(self):
        display = self.display()
        (self.folder / "held" / "altmsg.ilm").unlink()
        self.assertIn(f"{display.address}: altmsg.ilm could not be fetched: 550 ",
                      self.complaint(2, "compare", PROJECT, display.address))

    def test_an_address_beyond_32_bits_cannot_be_read(self):
        display = self.display()
        (self.folder / "held" / "modbus.adr").write_bytes(b"AnalogInput    99999999999\r\n")
        self.assertIn(display.address + ": ", self.complaint(2, "compare", PROJECT, display.address))

    def test_without_a_folder_for_temporary_files_nothing_is_begun(self):
        display = self.display()
        os.environ["TMPDIR"] = str(self.scratch / "gone")
        line = "orvista: the folder for temporary files: No such file or directory"
        self.assertEqual(self.complaint(2, "compare", PROJECT, display.address), line)
        self.assertEqual(self.complaint(2, "upload", PROJECT, "--to", display.address), line)
        self.assertEqual(self.complaint(2, "download", "--from", display.address, "-o", "new.orx"), line)

    def test_an_interrupted_fetch_leaves_nothing(self):
        display = self.display()
        for number in range(400):
            (self.folder / "held" / f"{number}.bmp").write_bytes(b"BM")
        program = self.start(display.address)
        while not any(self.scratch.glob("*/*/*")):
            self.assertIsNone(program.poll())
        self.interrupt(program, display.address)

    def test_an_interruption_waits_for_no_silent_display(self):
        """Left alone, each of them is given ten seconds."""
        display = self.display("--fail-file", "3", "--fail-how", "stall")
        program = self.start(display.address)
        while not any(self.scratch.glob("*/*/2")):
            self.assertIsNone(program.poll())
        self.interrupt(program, display.address)
        with listener() as silent:
            address = "127.0.0.1:%d" % silent.getsockname()[1]
            program = self.start(address)
            connection, _ = silent.accept()
            with connection:
                self.interrupt(program, address)

    def start(self, display):
        return subprocess.Popen([PROGRAM, "compare", PROJECT, display], cwd=self.folder, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE)

    def interrupt(self, program, display):
        begun = time.monotonic()
        program.send_signal(signal.SIGINT)
        output, complaint = program.communicate(timeout=60)
        self.assertEqual((program.returncode, output), (2, b""))
        self.assertEqual(complaint.decode(), f"orvista: {display}: interrupted\n")
        self.assertLess(time.monotonic() - begun, 8)

    def test_names_with_control_characters_leave_the_lines_as_they_are(self):
        (self.folder / "other").mkdir()
        shutil.copy(self.folder / PROJECT, self.folder / "other" / "a\nb.orx")
        for name in ("alarm.bmp", "pump.bmp", "x\x1b\n.bmp"):
            shutil.copy(self.folder / "pump.bmp", self.folder / "other" / name)
        text = self.expect(1, "compare", PROJECT, "other/a\nb.orx").decode()
        self.assertTrue(text.startswith(f"--- {PROJECT}\n+++ other/a?b.orx\nalarm.bmp\n"), text)
        self.assertTrue(text.endswith(": x??.bmp\n"), text)
        self.assertEqual(self.complaint(2, "compare", "no\nfile.orx", PROJECT), "orvista: Unable to open no?file.orx")

    @unittest.skipUnless(sys.platform == "linux", "finds its libraries by another way")
    def test_a_missing_library_is_named(self):
        display = self.display()
        broken = self.folder / "libraries"
        broken.mkdir()
        (broken / "libcurl.so.4").touch()
        reason = f"{display.address}: transfers need the library libcurl, which is missing"
        with mock.patch.dict(os.environ, LD_LIBRARY_PATH=str(broken)):
            self.assertEqual(self.complaint(2, "compare", PROJECT, display.address), "orvista: " + reason)
            result = self.run_program("upload", PROJECT, "--to", display.address)
        self.assertEqual((result.returncode, result.stdout.decode()),
                         (1, reason.replace(": ", ": failed: ", 1) + "\n"))

    def test_device_files_beside_a_project_stay_as_they_are(self):
        (self.folder / "stdmsg.ilm").write_bytes(b"mine\r\n")
        (self.folder / "default.pls").unlink()
        before = self.files()
        self.expect(0, "compare", PROJECT, PROJECT)
        self.assertEqual(self.files(), before)


main()
