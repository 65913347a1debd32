"""masters_test.py PROGRAM SOURCE: one master, many displays."""

import json
import time

from displays import Display
from fleet import FleetTest, device_files
from ftp_displays import DEVICE_FILES
from program import main

TEXT = b'CLEAR\r\nTEXT 0 0 RED BLACK "{tank:8}|{LINE:3>}|{{"\r\nACT STILL 9000'
HEAD = "name,address,port,project,line,tank"


class MastersTest(FleetTest):
    def setUp(self):
        super().setUp()
        self.project["STDMSG"][3] = TEXT
        device_files.write(self.folder / "plant", "PLANT", self.project)
        (self.folder / "plant" / "LINE3.orx").unlink()

    def make_master(self, rows, head=HEAD):
        (self.folder / "plant" / "d.csv").write_text("\n".join([head, *rows]) + "\n", "utf-8")
        self.expect(0, "master", "plant/PLANT.orx", "--list", "plant/d.csv")

    def held(self, text):
        """What a display holds whose message shows that text, written apart from the program."""
        self.project["STDMSG"][3] = b'CLEAR\r\nTEXT 0 0 RED BLACK "' + text + b'"\r\nACT STILL 9000'
        device_files.write(self.folder / "expected", "X", device_files.reopened(self.project))
        return {name: (self.folder / "expected" / name).read_bytes() for name in DEVICE_FILES}

    def device_files_of(self, folder):
        return {name: (self.folder / folder / name).read_bytes() for name in DEVICE_FILES}


class Master(MastersTest):
    def test_notes_say_which_list_and_nothing_else_changes(self):
        (self.folder / "plant" / "PLANT.notes.json").write_text('{"version": 1, "x": 5}')
        before = self.files()
        self.make_master(["a,10.0.0.1,,,1,x"])
        notes = json.loads((self.folder / "plant" / "PLANT.notes.json").read_text())
        self.assertEqual(notes, {"version": 1, "x": 5, "master": {"list": "d.csv"}})
        self.expect(0, "master", "plant/PLANT.orx", "--off")
        self.assertEqual(json.loads((self.folder / "plant" / "PLANT.notes.json").read_text()), {"version": 1, "x": 5})
        after = self.files()
        changed = {name for name in before.keys() | after.keys() if before.get(name) != after.get(name)}
        self.assertEqual(changed, {"plant/PLANT.notes.json", "plant/d.csv"})

    def test_nothing_is_written_in_the_place_of_its_list(self):
        self.make_master(["a,127.0.0.1,20001,,1,x"])
        before = self.files()
        for command in (("addresses", "plant/PLANT.orx", "--display", "a", "-o"), ("names", "export", "plant/PLANT.orx")):
            self.assertEqual(self.complaint(2, *command, "plant/d.csv"),
                             "orvista: plant/d.csv is read by this command; name another file to write")
        self.assertEqual(self.files(), before)

    def test_refuses_what_is_no_list(self):
        (self.folder / "bad.csv").write_text("name,address,line no\na,10.0.0.1,\n")
        result = self.run_program("master", "plant/PLANT.orx", "--list", "bad.csv")
        self.assertEqual(result.returncode, 2)
        self.assertIn(b'bad.csv: row 1: "line no" is not a name of values', result.stderr)
        self.assertEqual(self.complaint(2, "master", "plant/PLANT.orx"), "orvista: master takes either --list or --off")
        self.assertFalse((self.folder / "plant" / "PLANT.notes.json").exists())

    def test_a_list_that_disappears_is_told(self):
        self.make_master(["a,10.0.0.1,,,1,x"])
        (self.folder / "plant" / "d.csv").unlink()
        for command in (["check"], ["fingerprint"], ["upload"]):
            self.assertIn("d.csv", self.complaint(2, *command, "plant/PLANT.orx", "--display", "all"))

    def test_places_are_left_as_they_are_where_the_rest_is_mended(self):
        gap = b'CLEAR\r\nTEXT 0 0 RED BLACK "%s   m"\r\nDISPVAR 48 0 RED BLACK RegVar1'
        self.project["STDMSG"].update({3: gap % b"{tank:5}", 4: gap % b"Level"})
        device_files.write(self.folder / "plant", "PLANT", self.project)
        self.make_master(["a,10.0.0.1,,,1,x"])
        found = json.loads(self.expect(0, "check", "plant/PLANT.orx", "--json"))["findings"]
        self.assertEqual([(one["item"], [fix["caption"] for fix in one["fixes"]]) for one in found],
                         [("STDMSG3", []), ("STDMSG4", ["Leave 7 blanks"])])
        self.assertEqual(self.expect(1, "fix", "plant/PLANT.orx").decode(),
                         'STDMSG4:3:24: Leave 7 blanks [field-gap]\n- TEXT 0 0 RED BLACK "Level   m"\n'
                         '+ TEXT 0 0 RED BLACK "Level        m"\n1 finding mended, 1 left\n')
        saved = (self.folder / "plant" / "PLANT.orx").read_bytes()
        self.assertIn(gap % b"{tank:5}", saved)
        self.assertIn(gap.replace(b"   ", b"        ") % b"Level", saved)
        self.assertEqual(self.complaint(2, "fix", "plant/PLANT.orx", "--item", "STDMSG3"),
                         "orvista: --item: places of a master are for people to mend")

    def test_check_names_display_message_line_and_column(self):
        self.make_master(["Line 17,10.0.0.17,,,17,R\u00fchrwerk Nord", "Line 18,10.0.0.18,,,18,x", 'Line 19,10.0.0.19,,,,"a""b"'])
        out = self.expect(1, "check", "plant/PLANT.orx", "--display", "all").decode()
        title = "plant/PLANT.orx (Line 1"
        self.assertEqual(out.splitlines(), [
            title + "7):STDMSG3:2:21: error: 'R\u00fchrwerk Nord' is 13 wide, its place 8 [place-width]",
            title + "9):STDMSG3:2:21: error: 'a\"b' holds a quote [place-value]",
            title + "9):STDMSG3:2:30: error: the value of 'line' is empty [place-width]"])
        self.assertEqual(self.expect(0, "check", "plant/PLANT.orx", "--display", "line 18"), b"")
        self.assertEqual(self.expect(0, "check", "plant/PLANT.orx"), b"")
        report = json.loads(self.expect(1, "check", "plant/PLANT.orx", "--display", "Line 17,Line 18", "--json"))
        self.assertEqual([(one["display"], one["code"], one["fixes"]) for one in report["findings"]], [("Line 17", "place-width", [])])
        self.assertEqual(self.complaint(2, "check", "plant/PLANT.orx", "--display", "Line 16"),
                         "orvista: the list has no display Line 16; did you mean Line 17?")

    def test_what_is_found_on_displays_is_at_its_place_in_the_master(self):
        self.project["STDMSG"][3] = b'CLEAR\r\nTEXT 0 0 RED BLACK "{{{tank:4}|too long to be read"\r\nACT STILL 9000'
        device_files.write(self.folder / "plant", "PLANT", self.project)
        self.make_master(["a,10.0.0.1,,,1,x"])
        # On the panel are 16 characters: "{", 4 for the tank, "|", and "too long t"; "o" comes next.
        out = self.expect(0, "check", "plant/PLANT.orx", "--display", "a").decode()
        self.assertTrue(out.startswith("plant/PLANT.orx (a):STDMSG3:2:42: warning: "), out)

    def test_expand_writes_whole_projects_or_nothing_of_a_display(self):
        self.make_master(["Line 17,10.0.0.17,,,17,Nord", "Line 18,10.0.0.18,,,18,much too wide"])
        before = self.files()
        result = self.run_program("expand", "plant/PLANT.orx", "-o", "out", "--dry-run")
        self.assertEqual((result.returncode, result.stdout), (1, b"out/Line 17/Line 17.orx\n"))
        self.assertEqual(self.files(), before)
        result = self.run_program("expand", "plant/PLANT.orx", "-o", "out")
        self.assertEqual((result.returncode, result.stdout), (1, b"out/Line 17/Line 17.orx\n"))
        self.assertIn(b"PLANT.orx (Line 18):STDMSG3:2:21: error: 'much too wide' is 13 wide, its place 8 [place-width]", result.stderr)
        written = {name.split("/")[-1] for name in self.files().keys() - before.keys()}
        self.assertEqual(written, {*DEVICE_FILES, "Line 17.orx", "Line 17.notes.json", "A.bmp", "b.bmp"})
        self.assertEqual(self.device_files_of("out/Line 17"), self.held(b"Nord    | 17|{"))
        self.assertEqual(json.loads((self.folder / "out/Line 17/Line 17.notes.json").read_text()),
                         {"version": 1, "display": {"name": "Line 17"}})
        self.assertEqual(self.expect(0, "fingerprint", "out/Line 17/Line 17.orx").split()[0],
                         self.expect(0, "fingerprint", "plant/PLANT.orx", "--display", "Line 17").split()[0])

    def test_what_has_places_is_not_mended(self):
        wide = b'CLEAR\r\nTEXT 0 0 RED BLACK "%s"\r\nACT STILL 9000'
        self.project["STDMSG"][3] = wide % b"{tank:8} is far too full"
        self.project["STDMSG"][4] = wide % b"Emergency stop pump"
        # Typed it would be cut; shown it is 13 wide.
        self.project["STDMSG"][5] = wide % b"{longname:4} level of"
        device_files.write(self.folder / "plant", "PLANT", self.project)
        self.make_master(["a,10.0.0.1,,,17,Nord"])
        out = self.expect(1, "fix", "plant/PLANT.orx", "--item", "STDMSG3,STDMSG4,STDMSG5").decode()
        self.assertEqual(out.splitlines()[0], "STDMSG4:2:37: Let the page leave with OUT GO-LEFT [text-cut]")
        self.assertEqual(out.splitlines()[-1], "1 finding mended, 1 left")
        self.project["STDMSG"][4] = wide % b"Emergency stop pump" + b"\r\nOUT GO-LEFT 1 50"
        device_files.write(self.folder / "expected", "X", device_files.reopened(self.project))
        self.assertEqual(self.device_files_of("plant"), self.device_files_of("expected"))

    def test_an_expanded_project_made_a_master_expands_to_itself(self):
        self.project["STDMSG"][3] = TEXT.replace(b"|{{", b"")
        device_files.write(self.folder / "plant", "PLANT", self.project)
        self.make_master(["a,10.0.0.1,,,17,Nord"])
        self.expect(0, "expand", "plant/PLANT.orx", "-o", "once")
        self.expect(0, "master", "once/a/a.orx", "--list", "plant/d.csv")
        self.expect(0, "expand", "once/a/a.orx", "-o", "twice")
        for name in (*DEVICE_FILES, "a.orx", "a.notes.json", "A.bmp"):
            once = self.folder / "once" / "a" / name
            if name == "a.notes.json":
                self.expect(0, "master", "once/a/a.orx", "--off")
            self.assertEqual((self.folder / "twice" / "a" / name).read_bytes(), once.read_bytes(), name)

    def test_files_of_several_displays_have_their_names(self):
        self.make_master(["a,10.0.0.1,,,17,Nord", "b,10.0.0.2,,,18,S\u00fcd"])
        self.expect(0, "show", "plant/PLANT.orx", "STDMSG3", "--display", "all", "-o", "p.png")
        self.expect(0, "show", "plant/PLANT.orx", "STDMSG3", "--display", "b", "-o", "q.png")
        self.expect(0, "show", "plant/PLANT.orx", "STDMSG3", "-o", "r.png")
        pictures = [(self.folder / name).read_bytes() for name in ("p-a.png", "p-b.png", "q.png", "r.png")]
        self.assertEqual(pictures[1], pictures[2])
        self.assertEqual(len(set(pictures)), 3)
        self.expect(0, "addresses", "plant/PLANT.orx", "--display", "a,b", "-o", "l.csv")
        self.assertTrue((self.folder / "l-a.csv").exists() and (self.folder / "l-b.csv").exists())


class Transfers(MastersTest):
    def rows(self, displays):
        return [f"Line {i},127.0.0.1,{display.port},,{i},T{i}" for i, display in enumerate(displays)]

    def test_each_display_gets_its_own(self):
        displays = self.make(3)
        self.displays.serve()
        self.make_master(self.rows(displays))
        self.outcome(0, "upload", "plant/PLANT.orx", "--display", "all", "--check", "--verify")
        held = [self.held(b"T%d      |  %d|{" % (i, i)) for i in range(3)]
        bitmaps = {name: (self.folder / "plant" / name).read_bytes() for name in ("A.bmp", "b.bmp")}
        for display, files in zip(displays, held):
            self.assertEqual(display.files(), files | bitmaps)
        self.assertIn("3 equal", self.outcome(0, "compare", "plant/PLANT.orx", "--display", "all")[0])
        self.assertEqual(self.outcome(0, "compare", "plant/PLANT.orx", "--display", "Line 1")[0], "No differences\n")
        self.assertIn("3 equal", self.outcome(0, "download", "--list", "plant/d.csv", "--against", "plant/PLANT.orx")[0])
        self.outcome(0, "upload", "plant/PLANT.orx", "--to", displays[1].address, "--display", "Line 2")
        self.assertEqual(displays[1].files(), held[2] | bitmaps)
        results, _ = self.results(1, "download", "--list", "plant/d.csv", "--against", "plant/PLANT.orx")
        self.assertEqual([(one["result"], one["reason"]) for one in results.values()],
                         [("equal", ""), ("different", "STDMSG3"), ("equal", "")])
        self.outcome(0, "upload", "plant/PLANT.orx", "--to", displays[1].address)
        self.assertEqual(displays[1].files(), held[1] | bitmaps)

    def test_what_expand_writes_is_what_is_sent(self):
        displays = self.make(4)
        self.displays.serve()
        self.make_master(self.rows(displays))
        self.expect(0, "expand", "plant/PLANT.orx", "-o", "out")
        self.outcome(0, "upload", "plant/PLANT.orx", "--display", "Line 0,Line 1")
        for i in (0, 1):
            self.outcome(0, "upload", f"out/Line {i}/Line {i}.orx", "--to", displays[2 + i].address)
            self.assertEqual(displays[i].files(), displays[2 + i].files())

    def test_a_list_may_have_masters_and_others(self):
        displays = self.make(3)
        self.displays.serve()
        device_files.write(self.folder / "other", "OTHER", self.project)
        rows = self.rows(displays)
        rows[1] = rows[1].replace(",,1,", ",../other/OTHER.orx,1,")
        rows[2] = rows[2].replace("T2", "much too wide")
        self.make_master(rows)
        results, _ = self.results(1, "upload", "plant/PLANT.orx", "--list", "plant/d.csv")
        self.assertEqual([one["result"] for one in results.values()], ["done", "done", "refused"])
        self.assertEqual(results["Line 2"]["reason"], "1 error: plant/PLANT.orx (Line 2):STDMSG3:2:21: error: 'much too wide' is "
                         "13 wide, its place 8 [place-width]")
        # In a project that is not a master braces mean nothing.
        self.assertEqual(displays[1].files(), self.held(b"{tank:8}|{LINE:3>}|{{"))
        self.assertEqual({name: displays[0].files()[name] for name in DEVICE_FILES}, self.held(b"T0      |  0|{"))
        self.assertEqual(displays[2].files(), {})

    def test_the_master_itself_is_never_sent(self):
        self.make_master(["a,127.0.0.1,20001,,1,x", "b,127.0.0.1,20002,,1,x", "c,127.0.0.2,20003,,1,x"])
        for arguments, complaint in (
                ([], "plant/PLANT.orx is a master: say for which displays, with --display, --to or --list"),
                (["--to", "127.0.0.3"], "plant/d.csv has no display at 127.0.0.3"),
                (["--to", "127.0.0.1:20003"], "plant/d.csv has no display at 127.0.0.1:20003"),
                (["--to", "127.0.0.1"], "plant/d.csv has more than one display at 127.0.0.1"),
                (["--display", "a,b", "--to", "127.0.0.1:1"], "--to and --display together take one of each")):
            self.assertEqual(self.complaint(2, "upload", "plant/PLANT.orx", *arguments), "orvista: " + complaint)
        self.assertEqual(self.complaint(2, "upload", "PUMPSTATION.orx", "--display", "a"),
                         "orvista: PUMPSTATION.orx is not a master: --display takes one")
        # A port may be left out where one display is there.
        result = self.run_program("upload", "plant/PLANT.orx", "--to", "127.0.0.2")
        self.assertEqual((result.returncode, result.stdout.startswith(b"c: failed: ")), (1, True), result)

    def test_a_master_whose_notes_cannot_be_read_is_not_sent_as_it_is_typed(self):
        display, = self.make(1)
        self.displays.serve()
        rows = self.rows([display])
        self.make_master(rows)
        notes = self.folder / "plant" / "PLANT.notes.json"
        for text in ('{"version": 1, "master": {"list": "d.csv"}', '{"version": 1, "master": {"list": 5}}'):
            notes.write_text(text)
            for arguments in (["--to", display.address], ["--list", "plant/d.csv"]):
                result = self.run_program("upload", "plant/PLANT.orx", *arguments)
                said = result.stdout.decode() + result.stderr.decode()
                self.assertIn("plant/PLANT.orx may be a master: its messages have places such as {tank}, and its notes cannot be "
                              "read; mend them first", said)
                self.assertEqual(result.returncode, 2 if arguments[0] == "--to" else 1, said)
        self.assertEqual(display.files(), {})
        # Notes that say nothing of a list make no master, whatever else is wrong with them.
        notes.write_text('{"version": 1, "items": 7}')
        self.assertEqual(self.run_program("upload", "plant/PLANT.orx", "--to", display.address).returncode, 0)
        self.assertEqual({name: display.files()[name] for name in DEVICE_FILES}, self.held(b"{tank:8}|{LINE:3>}|{{"))

    def test_twenty_simulators_show_their_own_text(self):
        simulators = []
        for i in range(20):
            (self.folder / f"held{i}").mkdir()
            simulators.append(Display(str(self.folder / f"held{i}"), "--snapshot", str(self.folder / f"{i}.png"), "--at", "0"))
            self.addCleanup(simulators[-1].close)
        self.make_master(self.rows(simulators)[:19] + [f"Line 19,127.0.0.1,{simulators[19].port},,0,T0"])
        self.outcome(0, "upload", "plant/PLANT.orx", "--display", "all", "--jobs", "10")
        empty = (self.folder / "0.png").read_bytes()
        for simulator in simulators:
            self.expect(0, "switch", simulator.modbus, "--project", "plant/PLANT.orx", "--on", "STDMSG3")
        for i in range(20):
            until = time.monotonic() + 20
            while (self.folder / f"{i}.png").read_bytes() == empty:
                self.assertLess(time.monotonic(), until)
                time.sleep(0.01)
        self.assertEqual(self.device_files_of("held7"), self.held(b"T7      |  7|{"))
        pictures = [(self.folder / f"{i}.png").read_bytes() for i in range(20)]
        self.assertEqual(len(set(pictures)), 19)
        self.assertEqual(pictures[0], pictures[19])


main()
