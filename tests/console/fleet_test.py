"""fleet_test.py PROGRAM SOURCE: many displays at once."""

import csv
import io
import json
import os
import random
import re
import signal
import socket
import subprocess
import time
from pathlib import Path

from displays import PORTS, Display
from fleet import NOBODY, FleetTest, device_files
from ftp_displays import DEVICE_FILES, Displays
from program import OTHER_COUNTERS, PROGRAM, main, no_file_grows


class Upload(FleetTest):
    def test_sends_the_files_of_a_save_and_the_bitmaps_in_order(self):
        display, = self.make(1)
        self.displays.serve()
        before = {path: path.read_bytes() for path in (self.folder / "plant").iterdir()}
        out, _ = self.outcome(0, "upload", "plant/LINE3.orx", "--to", display.address)
        self.assertRegex(out, rf"^{display.address}: done, 7 files, \d+\.\d\d s\n$")
        self.assertEqual(display.files(), self.sent())
        stored = [line for line in display.commands if line.startswith(("STOR", "SITE"))]
        self.assertEqual(stored, ["SITE UPLOAD BEGIN", *(f"STOR {name}" for name in (*DEVICE_FILES, "A.bmp", "b.bmp")),
                                  "SITE UPLOAD END"])
        self.assertEqual({path: path.read_bytes() for path in (self.folder / "plant").iterdir()}, before)

    def test_no_variable_of_the_environment_makes_a_worker_of_it(self):
        display, = self.make(1)
        self.displays.serve()
        name = self.write_list([f"a,127.0.0.1,{display.port},plant/LINE3.orx"])
        os.environ["ORVISTA_WORKER"] = "1"
        self.addCleanup(os.environ.pop, "ORVISTA_WORKER")
        self.assertIn("a: done, 7 files", self.outcome(0, "upload", "--list", name)[0])
        self.assertIn("a: done, 7 files", self.outcome(0, "download", "--list", name, "-o", "fetched")[0])
        self.assertEqual(display.files(), self.sent())

    def test_workers_are_not_for_people(self):
        self.assertNotIn("worker", self.outcome(0, "--help")[0])
        for arguments in (["upload-worker"], ["worker", "127.0.0.1"], ["worker", "--list", "a.csv"]):
            self.assertTrue(self.complaint(2, *arguments))

    def test_one_that_is_dead_or_refuses_holds_up_none(self):
        good = self.make(4)
        refusing = self.displays.make(read_only=True)
        self.displays.serve()
        results, states = self.results(1, "upload", "plant/LINE3.orx", "--jobs", "2", "--to", NOBODY, refusing.address,
                                       *(display.address for display in good))
        self.assertEqual(list(results), [NOBODY, refusing.address, *(display.address for display in good)])
        self.assertEqual((results[NOBODY]["result"], results[NOBODY]["reason"]), ("failed", "connection refused"))
        self.assertEqual(results[refusing.address]["reason"], "modbus.adr was not taken: 550 Not enough privileges.")
        for display in good:
            self.assertEqual((results[display.address]["result"], results[display.address]["files"]), ("done", 7))
            self.assertEqual(display.files(), self.sent())
            own = [state for state in states if state["name"] == display.address]
            self.assertEqual([(state["state"], state["file"], state["files"]) for state in own],
                             [("connecting", "", 0), ("sending", "", 0)]
                             + [("sending", name, i) for i, name in enumerate((*DEVICE_FILES, "A.bmp", "b.bmp"))]
                             + [("done", "", 7)])
            self.assertEqual({state["of"] for state in own[2:]}, {7})

    def test_hanging_up_at_each_step_is_failed_or_half_and_named(self):
        # Login takes 4 commands with the announcement, a file 2, the first file a third.
        count = 22
        displays = [self.displays.make(hangs_up_at=step) for step in range(1, count)]
        whole = self.displays.make()
        self.displays.serve()
        results, _ = self.results(1, "upload", "plant/LINE3.orx", "--to",
                                  *(display.address for display in displays), whole.address)
        names = [*DEVICE_FILES, "A.bmp", "b.bmp"]
        seen = set()
        for display in displays:
            result = results[display.address]
            there = [name for name in names if display.files().get(name) == self.sent()[name]]
            seen.add(result["result"])
            if result["result"] == "done":
                self.assertEqual(there, names)
                continue
            self.assertEqual(result["files"], len(there), result)
            self.assertEqual(result["result"], "half" if there else "failed")
            if there:
                self.assertEqual(result["reason"], f"{names[len(there)]} was not taken: hung up; arrived: {', '.join(there)}")
        self.assertLessEqual({"half", "failed"}, seen)
        self.assertEqual(results[whole.address]["result"], "done")

    def test_skip_equal_sends_nothing_to_those_that_have_it(self):
        equal, other, empty = self.make(3)
        self.displays.serve()
        self.results(0, "upload", "plant/LINE3.orx", "--to", equal.address, other.address)
        (other.root / "stdmsg.ilm").write_bytes(b"DEFMSG STDMSG1\r\nCLEAR\r\nENDMSG\r\n")
        # Never read by anybody: a play list of its own makes no difference.
        (equal.root / "default.pls").write_bytes(b"DISPMSG STDMSG7\r\n")
        equal.commands.clear()
        results, states = self.results(0, "upload", "plant/LINE3.orx", "--skip-equal", "--to", equal.address, other.address,
                                       empty.address)
        self.assertEqual([results[display.address]["result"] for display in (equal, other, empty)], ["equal", "done", "done"])
        self.assertNotIn("STOR", " ".join(equal.commands))
        self.assertIn("comparing", {state["state"] for state in states})
        self.assertEqual(other.files(), self.sent())
        # No message shows it.
        (self.folder / "plant" / "b.bmp").write_bytes(b"BM other")
        results, _ = self.results(0, "upload", "plant/LINE3.orx", "--skip-equal", "--to", equal.address)
        self.assertEqual(results[equal.address]["result"], "equal")

    def test_verify_compares_every_byte(self):
        good = self.displays.make()
        bad = self.displays.make(spoils="default.pls")
        self.displays.serve()
        results, states = self.results(1, "upload", "plant/LINE3.orx", "--verify", "--to", good.address, bad.address)
        self.assertEqual(results[good.address]["result"], "done")
        self.assertEqual((results[bad.address]["result"], results[bad.address]["reason"]),
                         ("failed", "sent, but not verified: default.pls came back with other bytes"))
        self.assertIn("verifying", {state["state"] for state in states})

    def test_check_refuses_at_errors(self):
        display, = self.make(1)
        self.displays.serve()
        self.project["STDMSG"][4] = b"CLEAR\r\nTEXT nonsense"
        device_files.write(self.folder / "plant", "BAD", self.project)
        out, error = self.outcome(1, "upload", "plant/BAD.orx", "--check", "--to", display.address)
        self.assertEqual(out, "")
        self.assertRegex(error, r"^orvista: plant/BAD.orx:STDMSG4:2:\d+: error: .*\[bad-argument\]\norvista: nothing was sent\n$")
        self.assertEqual(display.commands, [])
        self.outcome(0, "upload", "plant/BAD.orx", "--to", display.address)

    def test_notes_are_read_for_the_check_and_sent_to_no_display(self):
        display, = self.make(1)
        self.displays.serve()
        self.project["STDMSG"][3] = b'CLEAR\r\nTEXT 0 0 RED BLACK "Level of tank"\r\nACT STILL 1000'
        device_files.write(self.folder / "plant", "LINE3", self.project)
        notes = self.folder / "plant" / "LINE3.notes.json"
        upload = ("upload", "plant/LINE3.orx", "--check", "--to", display.address)
        notes.write_text('{"version":1,"display":{"columns":32}}')
        self.assertIn(b"32 x ", self.expect(0, "check", "plant/LINE3.orx"))  # a warning, which lets it pass
        self.assertEqual(self.outcome(0, *upload)[1], "")
        self.assertEqual(display.files(), self.sent())
        notes.write_text('{"version":2}')
        self.assertEqual(self.outcome(0, *upload)[1],
                         'orvista: plant/LINE3.notes.json is not taken: its "version" is not 1\n')
        self.assertEqual(display.files(), self.sent())

    def test_a_full_disk_for_the_output_stops_no_transfer(self):
        displays = self.make(3)
        self.displays.serve()
        for how in ([], ["--json"]):
            for display in displays:
                for path in display.root.iterdir():
                    path.unlink()
            (self.folder / "results.csv").unlink(missing_ok=True)
            with open("/dev/full", "wb") as full:
                self.assertEqual(self.complaint(1, "upload", "plant/LINE3.orx", "--report", "results.csv", *how, "--to",
                                                *(display.address for display in displays), stdout=full),
                                 "orvista: standard output: No space left on device")
            for display in displays:
                self.assertEqual(display.files(), self.sent())
            self.assertEqual((self.folder / "results.csv").read_text("utf-8-sig").count(",done,"), 3)

    def test_closed_streams_get_into_no_file(self):
        display, = self.make(1)
        self.displays.serve()
        for closed in ((1,), (0, 1), (0, 1, 2)):
            def close(streams=closed):
                for stream in streams:
                    os.close(stream)
            for command in (["upload", "plant/LINE3.orx", "--to", display.address, "--report", "results.csv"],
                            ["download", "--from", display.address, "-o", "fetched/LINE3.orx"]):
                result = self.run_program(*command, preexec=close)
                self.assertEqual((result.returncode, result.stdout), (1, b""), (closed, command))
                self.assertEqual(result.stderr, b"" if 2 in closed else b"orvista: standard output: Bad file descriptor\n")
            self.assertEqual(display.files(), self.sent())
            self.assertIn(",done,", (self.folder / "results.csv").read_text("utf-8-sig"))
            self.assertNotIn(b"done", b"".join(path.read_bytes() for path in (self.folder / "fetched").iterdir()))
            for name in ("modbus.adr", "ilmvar.def", "default.pls", "A.bmp", "b.bmp"):
                self.assertEqual((self.folder / "fetched" / name).read_bytes(), self.sent()[name])

    def test_what_is_said_of_a_file_stays_on_its_line(self):
        display, = self.make(1)
        self.displays.serve()
        (self.folder / "plant" / "z\n\x1b[2J.bmp").write_bytes(b"BM")
        out, _ = self.outcome(1, "upload", "plant/LINE3.orx", "--to", display.address)
        self.assertIn("half: z??[2J.bmp was not taken: the display has no such characters in names; arrived: ", out)
        self.assertEqual(out.count("\n"), 1)

    def test_a_project_that_cannot_be_read_is_status_2_and_nothing_is_sent(self):
        display, other = self.make(2)
        self.displays.serve()
        name = self.write_list([f"a,127.0.0.1,{display.port},plant/LINE3.orx", f"b,127.0.0.1,{other.port},none.orx"])
        for arguments in (["--list", name, "--all-or-none"], ["none.orx", "--to", display.address, other.address]):
            out, error = self.outcome(2, "upload", *arguments)
            self.assertEqual(error, "orvista: Unable to open none.orx\norvista: nothing was sent\n")
            self.assertEqual((out, display.commands, other.commands), ("", [], []))

    def test_a_project_that_is_not_whole_is_refused_and_the_others_are_sent(self):
        first, second = self.make(2)
        self.displays.serve()
        whole = (self.folder / "plant" / "LINE3.orx").read_bytes()
        (self.folder / "plant" / "CUT.orx").write_bytes(whole[:-8])
        name = self.write_list([f"one,127.0.0.1,{first.port},plant/CUT.orx", f"two,127.0.0.1,{second.port},plant/LINE3.orx"])
        results, _ = self.results(1, "upload", "--list", name)
        self.assertEqual((results["one"]["result"], results["two"]["result"]), ("refused", "done"))
        self.assertIn("plant/CUT.orx is not whole: 95 of 96 variables were read", results["one"]["reason"])
        self.assertEqual((first.files(), second.files()), ({}, self.sent()))
        results, _ = self.results(0, "upload", "--list", name, "--not-whole")
        self.assertEqual([result["result"] for result in results.values()], ["done", "done"])


class Lists(FleetTest):
    def test_list_and_report(self):
        displays = self.make(3)
        self.displays.serve()
        device_files.write(self.folder / "lists" / "other", "OTHER", device_files.new_project())
        (self.folder / "lists" / "all.csv").write_text(
            f"name;port;address;project\r\npump 1;{displays[0].port};127.0.0.1;\r\n"
            f"\u00d6l;{displays[1].port};localhost;other/OTHER.orx\r\n\r\nlast;;127.0.0.1:{displays[2].port};\r\n", "utf-8-sig")
        out, _ = self.outcome(0, "upload", "plant/LINE3.orx", "--list", "lists/all.csv", "--report", "results.csv")
        self.assertEqual(out.splitlines()[-1], "3 done")
        data = (self.folder / "results.csv").read_bytes()
        rows = list(csv.reader(io.StringIO(data.decode("utf-8-sig"), newline="")))
        self.assertEqual(rows[0], ["name", "address", "result", "reason", "files", "seconds"])
        self.assertEqual([row[:5] for row in rows[1:]],
                         [["pump 1", displays[0].address, "done", "", "7"],
                          ["\u00d6l", f"localhost:{displays[1].port}", "done", "", "5"],
                          ["last", displays[2].address, "done", "", "7"]])
        self.assertEqual(displays[0].files(), self.sent())
        self.assertNotIn("A.bmp", displays[1].files())

    def test_a_list_comes_from_standard_input_and_pipes_too(self):
        """Its projects are then relative to the working folder."""
        display, = self.make(1)
        self.displays.serve()
        (self.folder / "lists").mkdir()
        (self.folder / "lists" / "all.csv").write_text(f"name,address,port,project\na,127.0.0.1,{display.port},plant/LINE3.orx\n")
        os.mkfifo(self.folder / "lists" / "pipe.csv")
        for line in ("upload --list - < lists/all.csv", "cat lists/all.csv | PROGRAM upload --list -",
                     "upload --list <(cat lists/all.csv)", "cat lists/all.csv > lists/pipe.csv & PROGRAM upload --list lists/pipe.csv",
                     "download --list - -o backup < lists/all.csv"):
            for path in display.root.iterdir():
                if not line.startswith("download"):
                    path.unlink()
            line = (line if "PROGRAM" in line else "PROGRAM " + line).replace("PROGRAM", f'"{PROGRAM}"')
            result = subprocess.run(["bash", "-c", line], cwd=self.folder, capture_output=True, check=False, timeout=100)
            self.assertEqual((result.returncode, result.stderr), (0, b""), line)
            self.assertTrue(result.stdout.startswith(b"a: done, 7 files"), result.stdout)
            self.assertEqual(display.files(), self.sent())
        self.assertEqual((self.folder / "backup/a/A.bmp").read_bytes(), display.files()["A.bmp"])
        result = self.run_program("upload", "--list", "-", given=b"name,address\na,127.0.0.1\n")
        self.assertEqual((result.returncode, result.stderr.splitlines()),
                         (2, [b"orvista: standard input: row 2, project: there is no project for this display",
                              b"orvista: standard input: nothing was begun"]))
        self.assertIn("--until-input-ends", self.complaint(2, "upload", "--list", "-", "--until-input-ends", given=b""))

    def test_what_cannot_be_used_is_refused_with_both_rows_and_nothing_begins(self):
        display, = self.make(1)
        self.displays.serve()
        good = f"good,127.0.0.1,{display.port},plant/LINE3.orx"
        for rows, told in (
                (["a/b,127.0.0.2,,"], "row 3, name: a name holds none of"),
                (["a\\b,127.0.0.2,,"], "row 3, name: a name holds none of"),
                (["a:b,127.0.0.2,,"], "row 3, name: a name holds none of"),
                (["a..b,127.0.0.2,,"], 'row 3, name: a name holds no ".."'),
                (["..,127.0.0.2,,"], 'row 3, name: a name holds no ".."'),
                (["com1.x,127.0.0.2,,"], "row 3, name: the name is reserved on Windows"),
                ([",127.0.0.2,,"], "row 3, name: the name is missing"),
                (["GOOD,127.0.0.2,,"], "row 3, name: the same name stands in row 2 already"),
                ([f"other,127.0.0.1,{display.port},"], "row 3, address: the same address stands in row 2 already"),
                (["other,,,"], "row 3, address: an empty text"),
                (["other,127.0.0.2,32768,"], "row 3, port: 32768 is not a port from 1 to 32767"),
                (["other,127.0.0.2,x,"], "row 3, port: x is not a port"),
                (['"a\nb",127.0.0.2,,'], "row 3, name: a name holds none of"),
                (['open,"127'], "row 3, address: a quote is opened and never closed")):
            for command in (["upload", "plant/LINE3.orx"], ["download", "-o", "backup"]):
                out, error = self.outcome(2, *command, "--list", self.write_list([good, *rows]))
                self.assertIn("list.csv: " + told, error)
                self.assertEqual((out, display.commands), ("", []))
        for project in ("plant/LINE3", "README.md", ".orx.bak"):
            self.assertIn("list.csv: row 3, project: the project does not end in .orx",
                          self.outcome(2, "upload", "--list", self.write_list([good, f"other,127.0.0.2,,{project}"]))[1])
        out, error = self.outcome(2, "upload", "--list", self.write_list(["a,127.0.0.2,,"]))
        self.assertIn("row 2, project: there is no project for this display", error)
        for text, told in (("", "is empty"), ("name,address\n", "has no displays"), ("name\na\n", "address: missing column"),
                           ("name,address,no name\n", "\"no name\" is not a name of values")):
            (self.folder / "list.csv").write_text(text)
            self.assertIn(told, self.outcome(2, "upload", "plant/LINE3.orx", "--list", "list.csv")[1])
        self.assertFalse((self.folder / "backup").exists())

    def test_wrong_usage_is_status_2(self):
        self.displays.serve()
        for arguments in (["upload"], ["upload", "plant/LINE3.orx"], ["upload", "--to", NOBODY], ["upload", "x.csv", "--to", NOBODY],
                          ["upload", "plant/LINE3.orx", "--to", NOBODY, "--list", "list.csv"],
                          ["upload", "plant/LINE3.orx", "--to", NOBODY, NOBODY], ["upload", "plant/LINE3.orx", "--to", "a:b:c"],
                          ["upload", "plant/LINE3.orx", "--to", NOBODY, "--jobs", "0"],
                          ["upload", "plant/LINE3.orx", "--to", NOBODY, "--jobs", "61"],
                          ["upload", "plant/LINE3.orx", "--list", "missing.csv"], ["download"], ["download", "--from", NOBODY],
                          ["download", "--from", NOBODY, "-o", "x.y"], ["download", "--from", NOBODY, NOBODY, "-o", "x.orx"],
                          ["download", "--list", "list.csv", "--from", NOBODY, "-o", "x"],
                          ["download", "--from", NOBODY, "--dated", "-o", "x"],
                          ["download", "--list", self.write_list([f"a,{NOBODY},,"]), "-o", ""],
                          ["download", "--from", NOBODY, "-o", ".orx"], ["download", "--from", NOBODY, "-o", "plant/.ORX"],
                          ["download", "--from", "plant/LINE3.orx", "-o", "x.orx"],
                          ["upload", "plant/LINE3.orx", "--to", "other.orx"]):
            out, error = self.outcome(2, *arguments)
            self.assertEqual(out, "", arguments)
            self.assertEqual(len(error.splitlines()), 1, error)

    def test_the_project_may_stand_behind_the_displays(self):
        first, second = self.make(2)
        self.displays.serve()
        results, _ = self.results(0, "upload", "--to", first.address, second.address, "plant/LINE3.orx")
        self.assertEqual([result["files"] for result in results.values()], [7, 7])
        self.assertEqual((first.files(), second.files()), (self.sent(), self.sent()))

    def test_sixty_at_once_are_the_most(self):
        for jobs, status in (("60", 1), ("61", 2)):
            self.outcome(status, "upload", "plant/LINE3.orx", "--to", NOBODY, "--jobs", jobs)

    def test_what_waits_on_the_input_stays_there(self):
        """For the next line of a script that is read from it."""
        displays = self.make(3)
        self.displays.serve()
        reading, writing = os.pipe()
        os.write(writing, b"the next line\n")
        os.close(writing)
        process = self.start("upload", "plant/LINE3.orx", "--to", *(display.address for display in displays), stdin=reading)
        process.communicate(timeout=100)
        self.assertEqual(process.returncode, 0)
        self.assertEqual(os.read(reading, 100), b"the next line\n")
        os.close(reading)

    def test_ten_thousand_rows(self):
        self.displays.serve()
        rows = [f"d{i},127.0.0.1,{i + 1},plant/LINE3.orx" for i in range(9999)]
        name = self.write_list([*rows, "d9998,127.0.0.2,,"])
        began = time.monotonic()
        self.assertIn("row 10001, name: the same name stands in row 10000 already", self.outcome(2, "upload", "--list", name)[1])
        self.assertLess(time.monotonic() - began, 20)
        name = self.write_list([*rows, "last,127.0.0.2,,plant/LINE3.orx"])
        process = self.start("upload", "--list", name, "--json", "--jobs", "2")
        process.stdout.readline()
        process.send_signal(signal.SIGINT)
        out, _ = process.communicate(timeout=100)
        results = json.loads(out.splitlines()[-1])["results"]
        self.assertEqual((process.returncode, len(results)), (1, 10000))
        self.assertEqual(results[-1]["reason"], "not begun")


class Download(FleetTest):
    def give(self, display):
        device_files.write(display.root, "X", self.project)
        (display.root / "X.orx").unlink()
        (display.root / "pump.bmp").write_bytes(b"BM pump")

    def saved(self, name, address):
        """What is to be there: the display's project as saving writes it, with the display's address."""
        project = device_files.reopened(self.project) | {"IP": address}
        device_files.write(self.folder / "expected", name, project)
        return {path.name: path.read_bytes() for path in (self.folder / "expected").iterdir()} | {"pump.bmp": b"BM pump"}

    def files_of(self, folder):
        return {path.name: path.read_bytes() for path in (self.folder / folder).iterdir()}

    def test_saves_the_project_of_one_display(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        (self.folder / "here").mkdir()
        for target in ("here", "new/folder"):
            results, states = self.results(0, "download", "--from", display.address, "-o", f"{target}/P.orx")
            self.assertEqual((results[display.address]["result"], results[display.address]["files"]), ("done", 6))
            self.assertEqual(self.files_of(target), self.saved("P", b"127.0.0.1"))
            self.assertIn(("fetching", "stdmsg.ilm", 2), [(state["state"], state["file"], state["files"]) for state in states])
        (self.folder / "here" / "P.orx").write_bytes(b"old")
        self.results(0, "download", "--from", display.address, "-o", "here/P.orx")
        self.assertEqual(self.files_of("here"), self.saved("P", b"127.0.0.1"))

    def test_the_ending_of_the_project_may_be_left_out(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        self.results(0, "download", "--from", display.address, "-o", "here/P")
        self.assertEqual(self.files_of("here"), self.saved("P", b"127.0.0.1"))

    def test_what_is_in_the_way_is_named(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        (self.folder / "here" / "pump.bmp").mkdir(parents=True)
        results, _ = self.results(1, "download", "--from", display.address, "-o", "here/P.orx")
        self.assertEqual(results[display.address]["reason"], "here/pump.bmp: Is a directory")
        self.assertEqual([path.name for path in (self.folder / "here").iterdir()], ["pump.bmp"])

    def test_a_full_folder_for_temporary_files_is_named(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        for arguments in (["upload", "plant/LINE3.orx", "--to", display.address],
                          ["download", "--from", display.address, "-o", "here/P.orx"],
                          ["compare", "plant/LINE3.orx", display.address]):
            process = self.start(*arguments, preexec_fn=lambda: no_file_grows(100), settings=OTHER_COUNTERS)
            out, error = process.communicate(timeout=100)
            self.assertNotEqual(process.returncode, 0)
            self.assertRegex((out + error).decode(), re.escape(str(self.folder / "tmp" / "orvista-"))
                             + r"\S+ cannot be written to: File too large\n")
            self.assertEqual(list((self.folder / "tmp").iterdir()), [])
        self.assertFalse((self.folder / "here").exists())

    def test_a_list_gets_a_folder_for_each(self):
        displays = self.make(3)
        for display in displays[:2]:
            self.give(display)
        self.displays.serve()
        name = self.write_list([f"pump {i},localhost,{display.port},nonsense.orx" for i, display in enumerate(displays)])
        results, _ = self.results(1, "download", "--list", name, "-o", "backup")
        self.assertEqual([result["result"] for result in results.values()], ["done", "done", "failed"])
        for i in range(2):
            self.assertEqual(self.files_of(f"backup/pump {i}"), self.saved(f"pump {i}", b"localhost"))
            (self.folder / "expected" / f"pump {i}.orx").unlink()
        self.assertFalse((self.folder / "backup" / "pump 2").exists())

    @staticmethod
    def now(later=0):
        """The name of a folder of so many seconds later."""
        return time.strftime("%Y-%m-%dT%H%M%SZ", time.gmtime(time.time() + later))

    def dated(self, name):
        """The folders of one display."""
        return sorted((self.folder / "backup" / name).iterdir())

    def test_dated_folders_are_new_each_time(self):
        display, dead = self.make(2)
        self.give(display)
        self.displays.serve()
        name = self.write_list([f"pump,127.0.0.1,{display.port},", f"dead,127.0.0.1,{dead.port},"])
        before = self.now()
        results, _ = self.results(1, "download", "--list", name, "--dated", "-o", "backup")
        after = self.now()
        self.assertEqual([result["result"] for result in results.values()], ["done", "failed"])
        folder, = self.dated("pump")
        self.assertRegex(folder.name, r"^\d{4}-\d\d-\d\dT\d{6}Z$")
        self.assertTrue(before <= folder.name <= after, folder.name)
        self.assertEqual(self.files_of(folder), self.saved("pump", b"127.0.0.1"))
        self.assertFalse((self.folder / "backup" / "dead").exists())

    def test_remains_of_killed_downloads_go_from_dated_folders_too(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        former = self.folder / "backup" / "pump" / "2026-01-01T000000Z"
        (former / "download0.tmp").mkdir(parents=True)
        (former / "download0.tmp" / "0").write_bytes(b"half")
        (former / "pump.orx").write_bytes(b"of that day")
        name = self.write_list([f"pump,127.0.0.1,{display.port},"])
        self.results(0, "download", "--list", name, "--dated", "-o", "backup")
        self.assertEqual(self.files_of(former), {"pump.orx": b"of that day"})
        self.assertEqual(len(self.dated("pump")), 2)

    def test_a_dated_folder_that_is_there_is_an_error(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        for second in range(60):
            (self.folder / "backup/pump" / self.now(second)).mkdir(parents=True)
        name = self.write_list([f"pump,127.0.0.1,{display.port},"])
        out, error = self.outcome(2, "download", "--list", name, "--dated", "-o", "backup")
        self.assertRegex(error, r"^orvista: backup/pump/\S+Z is there already; nothing was begun\n$")
        self.assertEqual((out, display.commands, [path for folder in self.dated("pump") for path in folder.iterdir()]), ("", [], []))

    def test_what_the_display_no_longer_has_is_kept_and_named(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        here = self.folder / "backup" / "pump"
        (here / "download7.tmp").mkdir(parents=True)  # what a killed download left before any file had appeared
        (here / "download7.tmp" / "0").write_bytes(b"")
        kept = {"old.bmp": b"BM old", "Older.BMP": b"BM older", "notes.txt": b"mine"}
        for file, data in (kept | {"pump.bmp": b"BM pump yesterday"}).items():
            (here / file).write_bytes(data)
        name = self.write_list([f"pump,127.0.0.1,{display.port},"])
        out, _ = self.outcome(0, "download", "--list", name, "-o", "backup")
        self.assertRegex(out, r"^pump: done, 6 files, \d+\.\d\d s; kept: old.bmp, Older.BMP\n$")
        self.assertEqual(self.files_of(here), self.saved("pump", b"127.0.0.1") | kept)
        results, _ = self.results(0, "download", "--list", name, "-o", "backup")
        self.assertEqual((results["pump"]["result"], results["pump"]["reason"]), ("done", "kept: old.bmp, Older.BMP"))

    def test_a_file_that_the_display_holds_in_part_is_named(self):
        display, = self.make(1)
        self.give(display)
        held = display.root / "stdmsg.ilm"
        held.write_bytes(held.read_bytes()[:held.read_bytes().index(b"DEFMSG STDMSG13") + 20])
        self.displays.serve()
        name = self.write_list([f"pump,127.0.0.1,{display.port},"])
        lost = "stdmsg.ilm is not whole: 12 of 40 regular messages were read"
        out, _ = self.outcome(0, "download", "--list", name, "-o", "backup")
        self.assertRegex(out, rf"^pump: done, 6 files, \d+\.\d\d s; {lost}\n$")
        (self.folder / "backup" / "pump" / "old.bmp").write_bytes(b"BM")
        results, _ = self.results(0, "download", "--list", name, "-o", "backup")
        self.assertEqual(results["pump"]["reason"], lost + "; kept: old.bmp")

    def test_a_display_without_a_project_replaces_nothing(self):
        empty, strange, one = self.make(3)
        for display in (empty, strange, one):
            self.give(display)
        for file in DEVICE_FILES:
            (empty.root / file).write_bytes(b"")
            (strange.root / file).write_bytes(b"\0\xff<html>\r\nno project\r\n" * 20)
            (one.root / file).write_bytes(b"")
        (one.root / "stdmsg.ilm").write_bytes(b"DEFMSG STDMSG1\r\nCLEAR\r\nENDMSG\r\n")
        self.displays.serve()
        for name in ("empty", "strange"):
            (self.folder / "backup" / name).mkdir(parents=True)
            (self.folder / "backup" / name / "stdmsg.ilm").write_bytes(b"as it was")
        name = self.write_list([f"empty,127.0.0.1,{empty.port},", f"strange,127.0.0.1,{strange.port},", f"one,127.0.0.1,{one.port},"])
        results, _ = self.results(1, "download", "--list", name, "-o", "backup")
        self.assertEqual([(result["result"], result["reason"]) for result in results.values()],
                         [("failed", "holds no project"), ("failed", "holds no project"), ("done", "")])
        for name in ("empty", "strange"):
            self.assertEqual(self.files_of(f"backup/{name}"), {"stdmsg.ilm": b"as it was"})

    def test_lies_and_names_lead_nowhere(self):
        boaster, miser = self.displays.make(lies=7000000), self.displays.make(lies=5)
        names = b"".join(name.encode() + b"\r\n" for name in (*DEVICE_FILES, "pump.bmp"))
        climbing = self.displays.make(listing=names + b"../evil.bmp\r\n..\\evil.bmp\r\n/tmp/evil.bmp\r\n..bmp\r\n")
        good, = self.make(1)
        for display in (boaster, miser, climbing, good):
            self.give(display)
        (self.folder / "displays" / "evil.bmp").write_bytes(b"BM evil")
        self.displays.serve()
        rows = [f"{name},127.0.0.1,{display.port}," for name, display in
                {"boaster": boaster, "miser": miser, "climbing": climbing, "good": good}.items()]
        results, _ = self.results(1, "download", "--list", self.write_list(rows), "-o", "backup")
        self.assertEqual([result["result"] for result in results.values()], ["failed", "failed", "done", "done"])
        self.assertEqual(sorted(path.name for path in (self.folder / "backup").iterdir()), ["climbing", "good"])
        self.assertEqual(sorted(self.files_of("backup/climbing")), sorted(("climbing.orx", *DEVICE_FILES, "pump.bmp")))

    def test_a_target_that_cannot_be_written_is_left_as_it_was(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        (self.folder / "here" / "stdmsg.ilm").mkdir(parents=True)
        results, _ = self.results(1, "download", "--from", display.address, "-o", "here/P.orx")
        self.assertIn("here/stdmsg.ilm: ", results[display.address]["reason"])
        self.assertEqual([path.name for path in (self.folder / "here").iterdir()], ["stdmsg.ilm"])
        (self.folder / "file").write_bytes(b"")
        results, _ = self.results(1, "download", "--from", display.address, "-o", "file/P.orx")
        self.assertEqual(results[display.address]["result"], "failed")

    def test_a_download_that_fails_leaves_no_folder_that_it_made(self):
        display, = self.make(1)
        self.give(display)
        self.displays.serve()
        before = sorted(self.folder.rglob("*"))
        for target in ("new/P.orx", "new/and/newer/P.orx"):
            self.results(1, "download", "--from", NOBODY, "-o", target)
        # The folder is there by the time that the project's own name turns out to be too long for the disk.
        self.results(1, "download", "--from", display.address, "-o", f"new/and/newer/{'n' * 300}.orx")
        self.assertEqual(sorted(self.folder.rglob("*")), before)


class Interruption(FleetTest):
    """Whatever ends the program, no process of it stays, and nothing in the folder for temporary files."""

    def children(self, process):
        return Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()

    def wait_for_end_of(self, children):
        """Nobody is left but, for a moment, what init has not yet buried."""
        def lives(pid):
            try:
                return Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()[0] not in "ZX"
            except OSError:
                return False
        deadline = time.monotonic() + 20
        while any(lives(pid) for pid in children):
            self.assertLess(time.monotonic(), deadline, "a process stays")
            time.sleep(0.01)

    def interrupted(self, end, *more):
        """Three quick displays, one that drips and one whose turn never comes; ended once the quick ones are done."""
        quick = self.make(3)
        drip = self.displays.make(drips=True)
        late, = self.make(1)
        self.displays.serve()
        order = [drip, *quick, late]
        process = self.start("upload", "plant/LINE3.orx", "--jobs", "2", "--json", "--to",
                             *(display.address for display in order[:-1]), *more, stdin=subprocess.PIPE)
        lines = []
        while sum(line["state"] == "done" for line in lines) < 3 or not any(
                line["address"] == drip.address and line["file"] for line in lines):
            lines.append(json.loads(process.stdout.readline()))
        children = self.children(process)
        self.assertEqual(len(children), 1)
        end(process)
        rest = process.stdout.read()
        process.wait(timeout=20)
        for stream in (process.stdout, process.stderr, process.stdin):
            stream.close()
        self.wait_for_end_of(children)
        return process.returncode, rest.splitlines(), drip

    def test_ctrl_c_and_its_kin_end_all_and_name_what_is_half_done(self):
        ends = {"INT": lambda process: process.send_signal(signal.SIGINT),
                "TERM": lambda process: process.send_signal(signal.SIGTERM),
                "HUP": lambda process: process.send_signal(signal.SIGHUP)}
        for name, end in ends.items():
            with self.subTest(signal=name):
                self.displays.close()
                self.displays = Displays(self.folder / ("displays" + name))
                status, rest, drip = self.interrupted(end)
                results = {result["name"]: result for result in json.loads(rest[-1])["results"]}
                self.assertEqual(status, 1)
                self.assertEqual([result["result"] for result in results.values()].count("done"), 3)
                reason = results[drip.address]["reason"]
                self.assertRegex(reason, r"^interrupted while \S+ was sent(; arrived: .*)?$")
                self.assertEqual(results[drip.address]["result"], "half" if "arrived" in reason else "failed")
                self.assertEqual(list((self.folder / "tmp").iterdir()), [])

    def test_the_end_of_input_counts_where_it_is_asked_for(self):
        status, rest, drip = self.interrupted(lambda process: process.stdin.close(), "--until-input-ends")
        self.assertEqual(status, 1)
        self.assertIn("interrupted", rest[-1].decode())
        self.assertIn(drip.address, rest[-1].decode())

    def test_a_kill_takes_the_others_with_it(self):
        status, _, _ = self.interrupted(lambda process: process.kill())
        self.assertEqual(status, -signal.SIGKILL)

    def with_silent_display(self, **how):
        """The program in a session of its own, while its worker waits for a display that says nothing."""
        listener = socket.create_server(("127.0.0.1", random.choice(PORTS)))
        self.addCleanup(listener.close)
        address = "127.0.0.1:%d" % listener.getsockname()[1]
        process = self.start("upload", "plant/LINE3.orx", "--json", "--to", address, start_new_session=True, **how)
        connection, _ = listener.accept()
        self.addCleanup(connection.close)
        return process

    def test_a_kill_takes_a_worker_with_it_that_waits(self):
        """It would find out by itself once it has something to say, seconds later."""
        process = self.with_silent_display()
        children = self.children(process)
        self.assertEqual(len(children), 1)
        began = time.monotonic()
        process.kill()
        process.communicate(timeout=30)
        self.wait_for_end_of(children)
        self.assertLess(time.monotonic() - began, 5)

    def test_nobody_is_cut_in_on(self):
        """Where the user has chosen another way of sharing the processor, that stays."""
        for given, taken in (os.SCHED_OTHER, os.SCHED_BATCH), (os.SCHED_IDLE, os.SCHED_IDLE):
            with self.subTest(given=given):
                process = self.with_silent_display(
                    preexec_fn=lambda: os.sched_setscheduler(0, given, os.sched_param(0)))
                children = self.children(process)
                processes = [process.pid, *map(int, children)]
                self.assertEqual([os.sched_getscheduler(pid) for pid in processes], [taken, taken])
                process.kill()
                process.communicate(timeout=30)
                self.wait_for_end_of(children)

    def test_ctrl_c_of_a_terminal_reaches_the_workers_too(self):
        process = self.with_silent_display()
        os.killpg(process.pid, signal.SIGINT)
        out, _ = process.communicate(timeout=30)
        result, = json.loads(out.splitlines()[-1])["results"]
        self.assertEqual((result["result"], result["reason"]), ("failed", "interrupted"))

    def test_ctrl_c_at_any_moment(self):
        displays = self.make(4)
        self.displays.serve()
        for delay in range(12):
            process = self.start("upload", "plant/LINE3.orx", "--json", "--to", *(display.address for display in displays))
            deadline = time.monotonic() + delay * 0.04
            children = []
            while time.monotonic() < deadline:
                children += self.children(process)
            process.send_signal(signal.SIGINT)
            out, error = process.communicate(timeout=30)
            self.wait_for_end_of(children)
            self.assertEqual(list((self.folder / "tmp").iterdir()), [])
            # Before it watches for it, Ctrl+C ends it at once; then nothing has begun. So it does after the last line.
            if process.returncode == -signal.SIGINT and not out:
                continue
            self.assertIn(process.returncode, (0, 1, -signal.SIGINT), error)
            self.assertEqual(len(json.loads(out.splitlines()[-1])["results"]), 4)

    def test_a_reader_that_leaves_does_not_stop_the_transfers(self):
        displays = self.make(3)
        self.displays.serve()
        process = self.start("upload", "plant/LINE3.orx", "--json", "--to", *(display.address for display in displays))
        process.stdout.close()
        self.assertEqual(process.wait(timeout=60), 0)
        process.stderr.close()
        for display in displays:
            self.assertEqual(display.files(), self.sent())


class Simulators(FleetTest):
    """The program that shows a project without a display."""

    maxDiff = None
    # How a simulated display fails at its third file, and what is said of that when it is sent, and fetched.
    HOW = {"sim3": ("hang-up", "hung up", "it ended too early"),
           "sim7": ("refuse", "452 No space left on the device", "451 The file cannot be read"),
           "sim12": ("stall", "no answer within 10 s", "no answer within 10 s")}

    def faulty(self, name):
        return ["--fail-file", "3", "--fail-how", self.HOW[name][0]] if name in self.HOW else []

    def test_twenty_simulated_displays(self):
        self.displays.serve()
        simulators = []
        for i in range(20):
            (self.folder / f"sim{i}").mkdir()
            simulators.append(Display(self.folder / f"sim{i}", *self.faulty(f"sim{i}")))
            self.addCleanup(simulators[-1].close)
        rows = [f"sim{i},127.0.0.1,{simulator.port},plant/LINE3.orx" for i, simulator in enumerate(simulators)]
        results, _ = self.results(1, "upload", "--verify", "--list", self.write_list(rows))
        for name, result in results.items():
            files = {path.name: path.read_bytes() for path in (self.folder / name).iterdir()}
            if name in self.HOW:
                self.assertEqual((result["result"], result["reason"]), (
                    "half", f"stdmsg.ilm was not taken: {self.HOW[name][1]}; arrived: modbus.adr, ilmvar.def"))
            else:
                self.assertEqual((result["result"], files), ("done", self.sent()))
        for name in self.HOW:  # as if another had sent the rest
            for file, content in self.sent().items():
                (self.folder / name / file).write_bytes(content)
        results, _ = self.results(1, "compare", "--list", self.write_list(rows))
        self.assertEqual({name: (result["result"], result["reason"]) for name, result in results.items()},
                         {name: ("failed", f"stdmsg.ilm could not be fetched: {self.HOW[name][2]}") if name in self.HOW
                          else ("equal", "") for name in results})
        rows = [row for row in rows if row.split(",")[0] not in self.HOW]
        results, _ = self.results(0, "download", "--list", self.write_list(rows), "-o", "backup")
        self.assertEqual({result["result"] for result in results.values()}, {"done"})
        self.assertEqual(len(list((self.folder / "backup").iterdir())), 17)
        results, _ = self.results(0, "upload", "--skip-equal", "--list", self.write_list(rows))
        self.assertEqual({result["result"] for result in results.values()}, {"equal"})


main()
