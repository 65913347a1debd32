"""What lies noted beside a project: names export and import, and where commands read the notes."""

import json

from program import PROJECT, ProgramTest, main

NOTES = "PUMPSTATION.notes.json"
SOME = {"version": 1, "display": {"name": "Gate", "columns": 64},
        "items": {"RegVar1": {"label": "TankLevel", "unit": "m", "comment": "Level, tank 1"}, "STDMSG3": {"label": "TankFull"}}}


class NotesTest(ProgramTest):
    def note(self, notes):
        (self.folder / NOTES).write_text(notes if isinstance(notes, str) else json.dumps(notes), "utf-8")

    def noted(self, folder="."):
        return json.loads((self.folder / folder / NOTES).read_text("utf-8"))

    def setUp(self):
        super().setUp()
        self.note(SOME)


class Names(NotesTest):
    def test_out_and_in_again(self):
        self.expect(0, "names", "export", PROJECT, "names.csv")
        lines = (self.folder / "names.csv").read_text("utf-8-sig").split("\n")
        self.assertEqual(lines[:3], ["name,label,unit,comment", 'RegVar1,TankLevel,m,"Level, tank 1"', "RegVar2,,,"])
        self.assertEqual(len(lines), 158)
        self.assertEqual(self.expect(0, "names", "export", PROJECT), (self.folder / "names.csv").read_bytes())
        before = self.files()
        self.assertEqual(self.expect(0, "names", "import", PROJECT, "names.csv", "--exit-changed"), b"Nothing changed\n")
        self.assertEqual(self.files(), before)

    def test_import_changes_the_notes_alone(self):
        before = self.files()
        table = b"name;label;unit\nregvar1;Level;m\nALTMSG1;Stop;\n"
        self.assertEqual(self.expect(0, "names", "import", PROJECT, "-", "--dry-run", given=table),
                         b"RegVar1 label\n- TankLevel\n+ Level\nALTMSG1 label\n- \n+ Stop\n2 texts would change\n")
        self.assertEqual(self.files(), before)
        self.assertEqual(self.expect(1, "names", "import", PROJECT, "-", "--exit-changed", given=table), b"2 texts changed\n")
        self.assertEqual(self.noted()["items"], {"RegVar1": {"label": "Level", "unit": "m", "comment": "Level, tank 1"},
                                                 "STDMSG3": {"label": "TankFull"}, "ALTMSG1": {"label": "Stop"}})
        self.assertEqual({name for name in before if self.files()[name] != before[name]}, {NOTES})

    def test_all_errors_at_once(self):
        before = self.files()
        result = self.run_program("names", "import", PROJECT, "-", given=b"name,label\nRegVar2,tankfull\nRegVar3,REAL\nX,\n")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr.decode().splitlines(), [
            'orvista: standard input: row 2, label: "tankfull" is the label of STDMSG3 already',
            'orvista: standard input: row 3, label: "REAL" is a word that IEC 61131-3 keeps for itself',
            'orvista: standard input: row 4, name: "X" is not a variable or message'])
        self.assertEqual(self.files(), before)

    def test_what_is_no_notes_is_not_touched(self):
        for notes, fault in (("x", "line 1, column 1 is not JSON"), ('{"version": 2}', 'its "version" is not 1')):
            self.note(notes)
            for arguments in (("export", PROJECT), ("import", PROJECT, "-")):
                self.assertEqual(self.complaint(2, "names", *arguments, given=b"name\n"),
                                 f"orvista: {NOTES} is not taken: {fault}")
            self.assertEqual((self.folder / NOTES).read_text("utf-8"), notes)

    def test_a_table_is_no_project(self):
        self.assertIn("is a project's name", self.complaint(2, "names", "export", PROJECT, "OTHER.orx"))
        self.assertIn("is", self.complaint(2, "names", "export", PROJECT, NOTES))


class Reading(NotesTest):
    def test_columns(self):
        def columns(*arguments):
            return json.loads(self.run_program("check", "--json", PROJECT, *arguments).stdout)["columns"]
        self.assertEqual(columns(), 64)
        self.assertEqual(columns("--columns", "200"), 200)
        (self.folder / NOTES).unlink()
        self.assertEqual(columns(), 128)

    def test_columns_of_several_projects(self):
        self.expect(0, "new", "OTHER.orx")
        self.assertIsNone(json.loads(self.run_program("check", "--json", PROJECT, "OTHER.orx").stdout)["columns"])

    def test_nothing_is_written_in_their_place(self):
        (self.folder / "link.json").symlink_to(NOTES)
        before = self.files()
        for output, told in ((NOTES, NOTES), ("./" + NOTES, f"./{NOTES} is {NOTES}, which"), ("link.json", f"link.json is {NOTES}, which")):
            for command in (("addresses", PROJECT, "-o"), ("addresses", PROJECT, "--template", "PUMPSTATION.orx", "-o"),
                            ("names", "export", PROJECT), ("upload", PROJECT, "--to", "127.0.0.1:1", "--journal")):
                self.assertEqual(self.complaint(2, *command, output),
                                 f"orvista: {told} is read by this command; name another file to write")
        self.assertEqual(self.files(), before)

    def test_items_go_by_their_labels(self):
        self.expect(0, "show", PROJECT, "STDMSG3", "-o", "name.png")
        for word in ("tankfull", "Regular3"):
            self.expect(0, "show", PROJECT, word, "-o", "label.png")
            self.assertEqual((self.folder / "label.png").read_bytes(), (self.folder / "name.png").read_bytes())
        for word in ("RegVar1", "TankLevel"):
            self.expect(0, "show", PROJECT, "TankFull", "--values", f"CoilVar2=on, {word} = 9.87", "-o", word + ".png")
        self.assertEqual((self.folder / "RegVar1.png").read_bytes(), (self.folder / "TankLevel.png").read_bytes())
        self.assertNotEqual((self.folder / "RegVar1.png").read_bytes(), (self.folder / "name.png").read_bytes())
        self.assertIn("TankLevel is not a message", self.complaint(2, "show", PROJECT, "TankLevel", "-o", "x.png"))

    def test_addresses_end_in_what_is_noted(self):
        lines = self.expect(0, "addresses", PROJECT).decode("utf-8-sig").split("\r\n")
        self.assertTrue(lines[0].endswith(",note,label,unit,comment"))
        self.assertTrue(lines[1].endswith(',TankLevel,m,"Level, tank 1"'))
        rows = json.loads(self.expect(0, "addresses", PROJECT, "--json"))["addresses"]
        self.assertEqual(list(rows[0])[-3:], ["label", "unit", "comment"])
        self.assertEqual([rows[0]["label"], rows[0]["unit"], rows[0]["comment"]], ["TankLevel", "m", "Level, tank 1"])
        self.expect(0, "addresses", PROJECT, "-o", "list.html")
        html = (self.folder / "list.html").read_text("utf-8")
        self.assertEqual((html.count("<th>label</th>"), html.count("<th>unit</th>")), (2, 1))

    def test_what_is_bad_is_told_and_the_rest_goes_on(self):
        self.note({"version": 1, "items": {"RegVar1": {"label": "two words"}, "RegVar2": {"label": "B"}}})
        result = self.run_program("addresses", PROJECT)
        self.assertEqual(result.returncode, 0)
        self.assertEqual(result.stderr.decode(), f'orvista: {NOTES}: RegVar1, label: "two words" holds something else than '
                                                 "letters A to Z, digits and _\n")
        self.assertIn(b",B,,\r\n", result.stdout)
        self.note("[]")
        self.assertEqual(self.complaint(0, "addresses", PROJECT), f"orvista: {NOTES} is not taken: it is not a JSON object")

    def test_copies_of_a_project_bring_them_along(self):
        (self.folder / "variables.csv").write_text("name,default\nRegVar1,2\n")
        self.expect(0, "variables", "import", PROJECT, "variables.csv", "-o", "COPY.orx")
        self.expect(0, "mend", PROJECT, "-o", "mended/PUMPSTATION.orx")
        self.expect(0, "fix", PROJECT, "-o", "fixed/PUMPSTATION.orx", "--item", "TankFull")
        for copy in ("COPY.notes.json", "mended/" + NOTES):
            self.assertEqual((self.folder / copy).read_bytes(), (self.folder / NOTES).read_bytes())

    def test_a_fixed_copy_brings_them_along(self):
        (self.folder / "messages.csv").write_text('message,script\nSTDMSG3,"TEXT 0 0 RED BLACK ""Emergency stop pump"""\n')
        self.expect(0, "messages", "import", PROJECT, "messages.csv")
        said = self.run_program("fix", PROJECT, "-o", "fixed/PUMPSTATION.orx", "--item", "TankFull").stdout.decode()
        self.assertIn(" mended", said)
        self.assertNotIn("Nothing", said)
        self.assertEqual((self.folder / "fixed" / NOTES).read_bytes(), (self.folder / NOTES).read_bytes())

    def test_they_are_no_part_of_the_fingerprint(self):
        fingerprint = self.expect(0, "fingerprint", PROJECT)
        (self.folder / NOTES).unlink()
        self.assertEqual(self.expect(0, "fingerprint", PROJECT), fingerprint)


if __name__ == "__main__":
    main()
