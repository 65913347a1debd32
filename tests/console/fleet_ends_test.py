"""fleet_ends_test.py PROGRAM SOURCE: what commands on many displays say and write of them, however they end."""

import csv
import io
import json
import os
import signal
import subprocess
import time
from pathlib import Path

from fleet import NOBODY, FleetTest, device_files
from ftp_displays import DEVICE_FILES
from program import PROGRAM, main

JOURNAL_FIELDS = ["time", "name", "address", "port", "project", "fingerprint", "result", "reason", "files", "seconds", "version"]


class EndsTest(FleetTest):
    def setUp(self):
        super().setUp()
        bad = self.project | {"STDMSG": self.project["STDMSG"].copy()}
        bad["STDMSG"][4] = b"CLEAR\r\nTEXT nonsense"
        bad["STDMSG"][5] = b"CLEAR\r\nTEXT nonsense"
        device_files.write(self.folder / "bad", "BAD", bad)
        (self.folder / "plant" / "CUT.orx").write_bytes((self.folder / "plant" / "LINE3.orx").read_bytes()[:-8])

    def list_of(self, projects):
        """A list of the displays made, named by number, with these projects."""
        return self.write_list([f"{i},127.0.0.1,{display.port},{project}"
                                for i, (display, project) in enumerate(zip(self.displays.all, projects))])

    def report(self, name="results.csv"):
        rows = csv.reader(io.StringIO((self.folder / name).read_bytes().decode("utf-8-sig"), newline=""))
        self.assertEqual(next(rows), ["name", "address", "result", "reason", "files", "seconds"])
        return [(row[0], row[2], row[3]) for row in rows]

    def journal(self, name="j.jsonl"):
        text = (self.folder / name).read_text("utf-8")
        self.assertTrue(text.endswith("\n"))
        lines = [json.loads(line) for line in text.splitlines()]
        for line in lines:
            self.assertEqual(list(line), JOURNAL_FIELDS)
        return lines

    def fingerprint(self, path):
        return self.expect(0, "fingerprint", path).split()[0].decode()


class Refused(EndsTest):
    def test_a_faulty_project_costs_only_its_own_displays(self):
        displays = self.make(4)
        self.displays.serve()
        name = self.list_of(["bad/BAD.orx", "none.orx", "plant/CUT.orx", "plant/LINE3.orx"])
        results, _ = self.results(1, "upload", "--list", name, "--check", "--report", "results.csv", "--journal", "j.jsonl")
        self.assertEqual([result["result"] for result in results.values()], ["refused"] * 3 + ["done"])
        self.assertRegex(results["0"]["reason"], r"^2 errors, the first: bad/BAD\.orx:STDMSG4:2:\d+: error: .* \[bad-argument\]$")
        self.assertEqual(results["1"]["reason"], "Unable to open none.orx")
        self.assertRegex(results["2"]["reason"], r"^plant/CUT\.orx is not whole: ")
        self.assertEqual([display.commands for display in displays[:3]], [[], [], []])
        self.assertEqual(displays[3].files(), self.sent())
        self.assertEqual(self.report(), [(n, r["result"], r["reason"]) for n, r in results.items()])
        self.assertEqual({line["name"]: (line["result"], line["reason"]) for line in self.journal()},
                         {n: (r["result"], r["reason"]) for n, r in results.items()})

    def test_all_or_none_sends_nothing_and_tells_of_all(self):
        displays = self.make(2)
        self.displays.serve()
        name = self.list_of(["plant/LINE3.orx", "bad/BAD.orx"])
        out, error = self.outcome(1, "upload", "--list", name, "--check", "--all-or-none", "--report", "results.csv", "--json")
        self.assertRegex(error, r"(?s)^orvista: bad/BAD\.orx:STDMSG4:2:.*\norvista: bad/BAD\.orx:STDMSG5:2:.*\norvista: nothing was sent\n$")
        results = json.loads(out)["results"]
        self.assertEqual([(result["result"], result["reason"][:9]) for result in results],
                         [("failed", "not begun"), ("refused", "2 errors,")])
        self.assertEqual(self.report(), [(r["name"], r["result"], r["reason"]) for r in results])
        self.assertEqual([display.commands for display in displays], [[], []])


class Ends(EndsTest):
    def test_errors_of_the_list_leave_a_row_for_each_readable_row(self):
        display, = self.make(1)
        self.displays.serve()
        (self.folder / "results.csv").write_text("of yesterday")
        name = self.write_list([f"good,127.0.0.1,{display.port},plant/LINE3.orx", "a/b,127.0.0.2,,plant/LINE3.orx"])
        for command in (["upload", "--report", "results.csv"], ["compare", "--report", "results.csv"], ["download", "-o", "backup"]):
            out, error = self.outcome(2, *command, "--list", name, "--json")
            self.assertIn("row 3, name: a name holds none of", error)
            self.assertEqual([(result["name"], result["result"], result["reason"]) for result in json.loads(out)["results"]],
                             [("good", "failed", "not begun")])
            self.assertEqual(self.report(), [("good", "failed", "not begun")])
            self.assertEqual(display.commands, [])

    def test_a_list_that_cannot_be_read_leaves_no_table_of_yesterday(self):
        self.displays.serve()
        (self.folder / "results.csv").write_text("of yesterday")
        out, error = self.outcome(2, "upload", "--list", "none.csv", "--report", "results.csv", "--json")
        self.assertEqual((json.loads(out)["results"], self.report()), ([], []))
        self.assertEqual(error, "orvista: none.csv: No such file or directory\n")

    def test_ctrl_c_leaves_report_journal_and_results(self):
        drip = self.displays.make(drips=True)
        others = self.make(3)
        self.displays.serve()
        name = self.list_of(["plant/LINE3.orx"] * 4)
        process = self.start("upload", "--list", name, "--jobs", "1", "--json", "--report", "results.csv", "--journal", "j.jsonl")
        while json.loads(process.stdout.readline())["state"] != "sending":
            pass
        process.send_signal(signal.SIGINT)
        out, _ = process.communicate(timeout=60)
        self.assertEqual(process.returncode, 1)
        results = json.loads(out.splitlines()[-1])["results"]
        self.assertRegex(results[0]["reason"], "^interrupted")
        self.assertEqual([(result["result"], result["reason"]) for result in results[1:]], [("failed", "not begun")] * 3)
        rows = [(r["name"], r["result"], r["reason"]) for r in results]
        self.assertEqual(self.report(), rows)
        self.assertEqual([(line["name"], line["result"], line["reason"]) for line in self.journal()], rows)
        self.assertEqual([display.commands for display in others], [[], [], []])
        self.assertTrue(drip.commands)

    def test_a_process_that_dies_costs_only_its_own_display(self):
        drip = self.displays.make(drips=True)
        others = self.make(5)
        self.displays.serve()
        name = self.list_of(["plant/LINE3.orx"] * 6)
        process = self.start("upload", "--list", name, "--jobs", "1", "--json")
        while json.loads(process.stdout.readline())["file"] != DEVICE_FILES[0]:
            pass
        child, = Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()
        os.kill(int(child), signal.SIGKILL)
        out, _ = process.communicate(timeout=60)
        results = json.loads(out.splitlines()[-1])["results"]
        self.assertEqual(results[0]["reason"], "its process ended while modbus.adr was sent")
        self.assertEqual([result["result"] for result in results], ["failed"] + ["done"] * 5)
        for display in others:
            self.assertEqual(display.files(), self.sent())
        self.assertTrue(drip.commands)

    def test_what_is_read_is_never_written_to(self):
        display, = self.make(1)
        self.displays.serve()
        name = self.list_of(["plant/LINE3.orx"])
        (self.folder / "link.csv").symlink_to("plant/LINE3.orx")
        os.link(self.folder / "plant" / "b.bmp", self.folder / "hard.csv")
        before = self.files()
        for output, told in (("plant/LINE3.orx", "plant/LINE3.orx is read by this command; name another file to write"),
                             (name, "list.csv is read by this command; name another file to write"),
                             ("./list.csv", "./list.csv is list.csv, which is read by this command; name another file to write"),
                             ("link.csv", "link.csv is plant/LINE3.orx, which is read by this command; name another file to write"),
                             ("hard.csv", "hard.csv is plant/b.bmp, which is read by this command; name another file to write"),
                             ("plant/stdmsg.ilm", "plant/stdmsg.ilm is read by this command; name another file to write")):
            for option in ("--report", "--journal"):
                for command in ("upload", "compare"):
                    out, error = self.outcome(2, command, "--list", name, option, output, "--json")
                    self.assertEqual((out, error), ("", f"orvista: {told}\n"))
        out, error = self.outcome(2, "download", "--list", name, "-o", "backup", "--journal", name)
        self.assertEqual(error, "orvista: list.csv is read by this command; name another file to write\n")
        out, error = self.outcome(2, "upload", "--list", name, "--report", "a", "--journal", "a")
        self.assertEqual(error, "orvista: a cannot be both report and journal\n")
        self.assertEqual((self.files(), display.commands), (before, []))


class Journal(EndsTest):
    def test_a_line_for_each_display_of_every_command(self):
        display, other = self.make(2)
        self.displays.serve()
        name = self.list_of(["plant/LINE3.orx", "plant/LINE3.orx"])
        self.results(0, "upload", "--list", name, "--journal", "j.jsonl")
        (other.root / "stdmsg.ilm").write_bytes(b"DEFMSG STDMSG1\r\nCLEAR\r\nENDMSG\r\n")
        self.results(1, "compare", "--list", name, "--journal", "j.jsonl")
        self.results(0, "download", "--list", name, "-o", "backup", "--journal", "j.jsonl")
        lines = self.journal()
        self.assertEqual(sorted((line["name"], line["result"]) for line in lines[:2]), [("0", "done"), ("1", "done")])
        self.assertEqual(sorted((line["name"], line["result"]) for line in lines[2:4]), [("0", "equal"), ("1", "different")])
        self.assertEqual(sorted((line["name"], line["project"]) for line in lines[4:]),
                         [("0", "backup/0/0.orx"), ("1", "backup/1/1.orx")])
        ours = self.fingerprint("plant/LINE3.orx")
        self.assertEqual({line["fingerprint"] for line in lines[:4]}, {ours})
        self.assertEqual({line["name"]: line["fingerprint"] for line in lines[4:]},
                         {"0": ours, "1": self.fingerprint("backup/1/1.orx")})
        for line in lines:
            self.assertRegex(line["time"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$")
            self.assertEqual((line["address"], line["version"]), ("127.0.0.1", self.version()))
            self.assertIn(line["port"], (display.port, other.port))
        self.assertEqual([line["files"] for line in lines[:2]], [7, 7])

    def test_no_fingerprint_where_there_is_none(self):
        self.displays.serve()
        name = self.write_list(["a,127.0.0.1,1,none.orx", "b,127.0.0.2,1,bad/BAD.orx"])
        self.results(1, "upload", "--list", name, "--check", "--journal", "j.jsonl")
        self.results(1, "download", "--list", name, "-o", "backup", "--journal", "j.jsonl")
        self.assertEqual({(line["name"], line["fingerprint"]) for line in self.journal()},
                         {("a", ""), ("b", self.fingerprint("bad/BAD.orx")), ("b", "")})

    def test_what_cannot_be_appended_is_said_at_the_end(self):
        display, = self.make(1)
        self.displays.serve()
        name = self.list_of(["plant/LINE3.orx"])
        (self.folder / "folder").mkdir()
        for path, told in (("folder", "Is a directory"), ("none/j.jsonl", "No such file or directory"),
                           ("/dev/full", "No space left on device")):
            (display.root / "modbus.adr").unlink(missing_ok=True)
            out, error = self.outcome(1, "upload", "--list", name, "--journal", path)
            self.assertIn("0: done, 7 files", out)
            self.assertEqual(error, f"orvista: {path}: {told}\n")
            self.assertEqual(display.files(), self.sent())

    def test_two_at_once_killed_at_any_moment_leave_whole_lines(self):
        self.displays.serve()
        rows = [f"{i},127.0.0.1,{i + 1},plant/LINE3.orx" for i in range(400)]
        name = self.write_list(rows)
        environment = os.environ | {"TMPDIR": str(self.folder / "tmp")}  # they tidy nothing up
        for moment in range(12):
            (self.folder / "j.jsonl").unlink(missing_ok=True)
            both = [subprocess.Popen([PROGRAM, "download", "--list", name, "-o", f"backup{i}", "--journal", "j.jsonl"],
                                     cwd=self.folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=environment)
                    for i in range(2)]
            deadline = time.monotonic() + 60
            while not (self.folder / "j.jsonl").exists() or (self.folder / "j.jsonl").stat().st_size < 250 * (1 + moment * 10):
                self.assertLess(time.monotonic(), deadline)
            for process in both:
                process.kill()
                process.wait()
            self.assertGreater(len(self.journal()), moment * 5)


class CompareList(EndsTest):
    def test_every_result_and_its_reason(self):
        equal, different, other, dead = self.make(4)
        self.displays.serve()
        self.results(0, "upload", "plant/LINE3.orx", "--to", equal.address, different.address, other.address)
        changed = self.project | {"STDMSG": self.project["STDMSG"].copy()}
        for i in (2, 3, 7, 8, 9, 11):
            changed["STDMSG"][i] = b'CLEAR\r\nTEXT 0 0 RED BLACK "Other"\r\nACT STILL 1000'
        device_files.write(different.root, "X", changed)
        changed = self.project | {"STDMSG": self.project["STDMSG"].copy()}
        changed["STDMSG"][3] = b"CLEAR"
        device_files.write(other.root, "X", changed)
        for display in self.displays.all:
            display.commands.clear()
        name = self.write_list([f"equal,127.0.0.1,{equal.port},", f"different,127.0.0.1,{different.port},",
                                f"other,127.0.0.1,{other.port},plant/LINE3.orx", f"cut,127.0.0.1,{dead.port},plant/CUT.orx",
                                "dead,127.0.0.1,1,"])
        results, states = self.results(1, "compare", "plant/LINE3.orx", "--list", name, "--report", "results.csv")
        told = {n: (r["result"], r["reason"]) for n, r in results.items()}
        self.assertEqual(told["equal"], ("equal", ""))
        self.assertEqual(told["different"], ("different", "STDMSG2, STDMSG3 and 4 more"))
        self.assertEqual(told["other"], ("different", "STDMSG3"))
        self.assertEqual(told["cut"][0], "refused")
        self.assertEqual(told["dead"][0], "failed")
        self.assertEqual(self.report(), [(n, *rest) for n, rest in told.items()])
        self.assertIn("comparing", {state["state"] for state in states})
        for display in (equal, different, other):
            self.assertNotRegex(" ".join(display.commands), "STOR|SITE|DELE")
        self.assertEqual(dead.commands, [])
        out, _ = self.outcome(1, "compare", "plant/LINE3.orx", "--list", name, "--only-changes", "--report", "results.csv")
        self.assertEqual(out.splitlines()[-1], "1 equal, 2 different, 1 failed, 1 refused")
        self.assertNotIn("equal:", out)
        self.assertEqual([row[0] for row in self.report()], ["different", "other", "cut", "dead"])
        out, _ = self.outcome(0, "compare", "plant/LINE3.orx", "--list", self.write_list([f"equal,127.0.0.1,{equal.port},"]))
        self.assertEqual(out, "equal: equal\n")

    def test_wrong_usage(self):
        self.displays.serve()
        name = self.write_list([f"a,{NOBODY},,plant/LINE3.orx"])
        for arguments in (["plant/LINE3.orx"], [], ["plant/LINE3.orx", NOBODY, "--list", name], [NOBODY, "--list", name],
                          ["plant/LINE3.orx", NOBODY, "--only-changes"], ["plant/LINE3.orx", NOBODY, "--report", "a.csv"],
                          ["plant/LINE3.orx", NOBODY, "--journal", "a"]):
            self.assertTrue(self.complaint(2, "compare", *arguments))


main()
