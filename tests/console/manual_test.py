"""manual_test.py PROGRAM SOURCE: the manual page, the completion and the help know what the program knows."""

import html
import json
import os
import re
import shutil
import subprocess
import tempfile
import textwrap
import unittest
from pathlib import Path

from displays import Display
from program import COMMANDS, EXAMPLE, PROGRAM, PROJECT, SOURCE, ProgramTest, main

PAGE = (SOURCE / "packaging" / "linux" / "man" / "orvista.1").read_text("ascii")
COMPLETIONS = SOURCE / "packaging" / "linux" / "completion"


def manual_fields(command):
    """The fields that the page's JSON section has for a command: those of the object, and those of each list's rows."""
    section = PAGE.split(f".SS orvista {command} \\-\\-json\n")[1]
    section = re.split(r"\n\.S[SH] ", section)[0]
    rows = re.findall(r"\n\.RS\n(.*?)\n\.RE", section, re.S)
    outer = re.sub(r"\n\.RS\n.*?\n\.RE", "", section, flags=re.S)

    def fields(text):
        return re.findall(r"^\.B (\w+)$", text, re.M)
    return fields(outer), *map(fields, rows)


class Manual(ProgramTest):
    def options(self, *command):
        """The long options that the help tells of."""
        return set(re.findall(r"^  (?:-\w,)?(--[a-z0-9-]+)", self.expect(0, *command, "--help").decode(), re.M))

    def completions(self, *words):
        script = 'source "$1"; shift; compopt() { :; }; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _orvista; printf "%s\\n" "${COMPREPLY[@]}"'
        result = subprocess.run(["bash", "-c", script, "bash", COMPLETIONS / "bash" / "orvista", "orvista", *words], cwd=self.folder,
                                stdout=subprocess.PIPE, check=True)
        return set(result.stdout.decode().split())

    def test_json_fields_are_those_of_the_manual(self):
        (self.folder / PROJECT).write_bytes((self.folder / PROJECT).read_bytes().replace(b"pump.bmp", b"none.bmp"))
        findings = json.loads(self.run_program("check", PROJECT, "none.orx", "--json").stdout)
        self.assertEqual((list(findings), list(findings["findings"][0]), list(findings["unreadable"][0])), manual_fields("check"))
        fixed = self.run_program("fix", PROJECT, "--only", "missing-bitmap,text-cut", "--columns", "64", "--json", "--dry-run")
        fixed = json.loads(fixed.stdout)
        self.assertEqual((list(fixed), list(fixed["mended"][0])), manual_fields("fix"))
        addresses = json.loads(self.expect(0, "addresses", PROJECT, "--json"))
        self.assertEqual((list(addresses), list(addresses["addresses"][0])), manual_fields("addresses"))
        self.run_program("new", "EMPTY.orx")
        (self.folder / "empty").mkdir()
        (self.folder / "EMPTY.orx").rename(self.folder / "empty" / "EMPTY.orx")
        compared = json.loads(self.run_program("compare", PROJECT, "empty/EMPTY.orx", "--json").stdout)
        self.assertEqual((list(compared), list(compared["differences"][0]), list(compared["bitmaps"][0])),
                         manual_fields("compare"))

    def test_states_and_results_of_transfers_are_those_of_the_manual(self):
        nobody = "127.0.0.1:1"
        section = re.split(r"\n\.S[SH] ", PAGE.split(".SS Lines before the results\n")[1])[0]
        for command in (["upload", PROJECT, "--to", nobody], ["download", "--from", nobody, "-o", "a.orx"]):
            lines = [json.loads(line) for line in self.run_program(*command, "--json").stdout.splitlines()]
            self.assertEqual(list(lines[0]), re.findall(r"^\.B (\w+)$", section, re.M))
            self.assertEqual((list(lines[-1]), list(lines[-1]["results"][0])), manual_fields("upload"))

    def test_fields_of_a_journal_are_those_of_the_manual(self):
        self.run_program("upload", PROJECT, "--to", "127.0.0.1:1", "--journal", "j.jsonl")
        section = re.split(r"\n\.S[SH] ", PAGE.split(".SS Lines of a journal\n")[1])[0]
        self.assertEqual(list(json.loads((self.folder / "j.jsonl").read_text())), re.findall(r"^\.B (\w+)$", section, re.M))

    def test_manual_has_every_option_and_command(self):
        told = {"--help", "--version"}.union(*(self.options(*command) for command in COMMANDS))
        section = PAGE.split(".SH OPTIONS\n")[1].split("\n.SH ")[0].replace("\\-", "-")
        heads = "\n".join(re.findall(r"^\.TP\n(.*)$", section, re.M))
        self.assertEqual(set(re.findall(r"--[a-z0-9-]+", heads)), told)
        for command in COMMANDS:
            self.assertIn("\\fBorvista " + " ".join(command), PAGE)
        self.assertEqual(re.search(r'"(\d+\.\d+-\d+)"', PAGE)[1], self.expect(0, "--version").decode().split()[1])

    def test_manual_has_the_options_of_each_command_in_its_synopsis(self):
        synopsis = re.sub(r"\\f[BIR]", "", PAGE.split(".nf\n")[1].split(".fi\n")[0]).replace("\\-", "-").replace("\n    ", " ")
        for command in COMMANDS:
            line, = [line for line in synopsis.splitlines() if (line + " ").startswith("orvista " + " ".join(command) + " ")]
            told = self.options(*command) - {"--help"}
            if "--output" in told:  # by its letter
                told = told - {"--output"} | {"-o"}
            self.assertEqual(set(re.findall(r"(?<![\w-])-(?:-[a-z0-9-]+|o)\b", line)), told, command)

    def test_completions_are_made_from_the_help(self):
        (self.folder / "programs").mkdir()
        (self.folder / "programs" / "orvista").symlink_to(PROGRAM)
        subprocess.run([COMPLETIONS / "make", self.folder / "programs", self.folder / "made"], stderr=subprocess.DEVNULL, check=True)
        made = {path.relative_to(self.folder / "made") for path in (self.folder / "made").rglob("*") if path.is_file()}
        self.assertEqual({str(path) for path in made}, {"bash/orvista", "zsh/_orvista", "fish/orvista.fish"})
        for path in made:
            self.assertEqual((self.folder / "made" / path).read_text(), (COMPLETIONS / path).read_text(),
                             f"run packaging/linux/completion/make with the folder of the programs: {path}")

    @unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
    def test_zsh_reads_its_completions(self):
        for path in (COMPLETIONS / "zsh").iterdir():
            subprocess.run(["zsh", "-n", path], check=True)
        # What zsh's own functions would find on the line is given.
        script = ("_arguments() { print -rl -- $@; state=$found line=($words) }; _describe() { print -rl -- $commands }; "
                  "found=$1 words=(${@:2}); source $0")
        for state, words, expected in (("command", [], "check:Tell what will go wrong on the display"),
                                       ("argument", ["upload"], "--skip-equal[")):
            out = subprocess.run(["zsh", "-f", "-c", script, COMPLETIONS / "zsh" / "_orvista", state, *words],
                                 stdout=subprocess.PIPE, check=True).stdout.decode()
            self.assertIn(expected, out)

    @unittest.skipUnless(shutil.which("fish"), "fish is not installed")
    def test_fish_completes_commands_options_and_messages(self):
        def completed(line):
            result = subprocess.run(["fish", "--no-config", "-c", f"source {COMPLETIONS}/fish/orvista.fish; complete -C '{line}'"],
                                    cwd=self.folder, stdout=subprocess.PIPE, check=True, env=os.environ | {"HOME": str(self.folder)})
            return {row.split("\t")[0] for row in result.stdout.decode().splitlines()}
        self.assertEqual(completed("orvista "), {command[0] for command in COMMANDS})
        for command in COMMANDS:
            self.assertEqual(completed("orvista " + " ".join(command) + " --"), self.options(*command), command)
        self.assertEqual(completed("orvista switch gate --on STDMSG4"), {"STDMSG4", "STDMSG40"})

    def test_completion_has_every_option_and_command(self):
        self.assertEqual(self.completions(""), {command[0] for command in COMMANDS} | {"--help", "--version"})
        self.assertEqual(self.completions("messages", ""), {"export", "import", "--help"})
        for command in COMMANDS:
            self.assertEqual(self.completions(*command, "--"), self.options(*command), command)

    def test_completion_offers_files_and_messages(self):
        (self.folder / "a.csv").touch()
        self.assertEqual(self.completions("check", ""), {PROJECT})
        self.assertEqual(self.completions("show", PROJECT, "stdmsg4"), {"STDMSG4", "STDMSG40"})
        self.assertEqual(self.completions("switch", "gate", "--on", "stdmsg4"), {"STDMSG4", "STDMSG40"})
        self.assertEqual(self.completions("switch", "gate", "--off", "STDMSG1,altmsg9"), {"STDMSG1,ALTMSG9"})
        self.assertEqual(self.completions("read", "gate", "--project", ""), {PROJECT})
        self.assertEqual(self.completions("write", ""), set())
        self.assertEqual(self.completions("messages", "import", PROJECT, ""), {"a.csv"})
        self.assertEqual(self.completions("addresses", PROJECT, "-o", ""), {"a.csv", "PUMPSTATION.notes.json"})

    def test_completion_offers_what_help_explains(self):
        codes = set(re.findall(r"^([a-z-]+) +(?:error|warning|note) ", self.expect(0, "help", "codes").decode(), re.M))
        self.assertEqual(self.completions("help", ""), codes | {command[0] for command in COMMANDS} | {"codes"})
        self.assertEqual(self.completions("help", "text-"), {"text-cut"})
        self.assertEqual(self.completions("help", "messages", ""), {"export", "import"})

    def environment(self):
        """Where orvista is on the path."""
        path = Path(tempfile.mkdtemp(prefix="orvista-path-"))
        self.addCleanup(shutil.rmtree, path)
        (path / "orvista").symlink_to(PROGRAM)
        return os.environ | {"PATH": f"{path}:{os.environ['PATH']}"}

    def shell(self, script):
        result = subprocess.run(["bash", "-c", script], cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                env=self.environment(), check=False, timeout=100)
        return result.returncode, result.stderr

    def display(self):
        """A simulated display with the example's files."""
        held = Path(tempfile.mkdtemp(dir=self.folder, prefix="held"))
        for path in EXAMPLE.iterdir():
            if path.suffix != ".orx":
                shutil.copy(path, held)
        display = Display(held)
        self.addCleanup(display.close)
        return display

    def on_displays(self, line, displays):
        """Any command that could talk to displays, made to talk to these: by the last number of their addresses."""
        if line.startswith("orvista new"):  # writes the address into a file
            return line
        speaks_modbus = line.startswith(("orvista read", "orvista switch", "orvista write"))

        def address(match):
            display = displays[match[1]]
            return display.modbus if speaks_modbus else display.address
        return re.sub(r"192\.168\.1\.(\d+)(?::\d+)?", address, line)

    def write_master(self, displays):
        """The example with a place, and a list with its values; rows are called by the last number of their addresses."""
        master = re.sub(rb'(TEXT[^"\r\n]*)"[^"\r\n]*"', rb'\1"{tank:8}"', (self.folder / PROJECT).read_bytes(), count=1)
        (self.folder / "PLANT.orx").write_bytes(master)
        rows = [f"Line {number[1:]},127.0.0.1,{display.port},,{number},Tank{number}" for number, display in displays.items()]
        for name in ("displays.csv", "test.csv"):
            (self.folder / name).write_text("\n".join(["name,address,port,project,line,tank", *rows]))

    def write_list(self, displays, project=""):
        rows = [f"line {number},127.0.0.1,{display.port},{project}" for number, display in displays.items()]
        (self.folder / "displays.csv").write_text("\n".join(["name,address,port,project", *rows]))

    def test_every_command_of_the_help_and_the_readme_runs(self):
        displays = {"103": self.display(), "104": self.display()}
        self.write_list(displays)
        read = json.loads(self.expect(0, "read", displays["103"].modbus, "--project", PROJECT, "--json"))
        self.assertEqual((list(read), list(read["values"][0])), manual_fields("read"))
        pages = r"<pre>(.*?)</pre>"
        for name, pattern, least in (("docs/help/command-line.html", pages, 7), ("docs/help/several-displays.html", pages, 5),
                                     ("README.md", r"^    (orvista .*?)$", 10)):
            found = re.findall(pattern, (SOURCE / name).read_text("utf-8"), re.S | re.M)
            lines = [self.on_displays(html.unescape(line), displays) for block in found for line in block.splitlines()]
            self.assertGreaterEqual(len(lines), least, name)
            for line in (line for line in lines if "PLANT.orx" not in line):
                with self.subTest(name=name, line=line):
                    self.assertEqual(self.shell(line), (0, b""))
            (self.folder / "LINE3.orx").unlink(missing_ok=True)

    def test_every_command_about_masters_runs(self):
        displays = {"117": self.display(), "118": self.display()}
        self.write_master(displays)
        for name, pattern, least in (("docs/help/master.html", r"<pre>(.*?)</pre>", 11), ("docs/help/command-line.html", r"<pre>(.*?)</pre>", 3),
                                     ("README.md", r"^    (orvista .*?)$", 3)):
            found = re.findall(pattern, (SOURCE / name).read_text("utf-8"), re.S | re.M)
            lines = [html.unescape(line) for block in found for line in block.splitlines()]
            lines = [self.on_displays(line, displays) for line in lines if line.startswith("orvista ") and ("PLANT.orx" in line)]
            self.assertGreaterEqual(len(lines), least, name)
            for line in lines:
                with self.subTest(name=name, line=line):
                    self.assertEqual(self.shell(line), (0, b""))
        self.assertTrue((self.folder / "lines" / "Line 17" / "Line 17.orx").is_file())

    def test_the_whole_way_of_a_master_runs(self):
        displays = {"117": self.display(), "118": self.display()}
        self.write_master(displays)
        (self.folder / "log").mkdir()
        text = (SOURCE / "docs" / "fleet.md").read_text("utf-8").split("## One master, many displays")[1]
        lines = [line for line in re.findall(r"^    (.*)$", text, re.M) if "orvista " in line]
        self.assertEqual(len(lines), 5)
        lines = [re.sub(r"^(?:[\d*]+ ){5}", "", line).replace("/srv/master", str(self.folder)).replace("/var/log/orvista", str(self.folder / "log"))
                 for line in lines]
        for line in lines:
            self.assertEqual(self.shell(line), (0, b""), line)
        logs = self.folder / "log"
        self.assertEqual(logs.joinpath("plant.log").read_text().count("done"), 3)  # a line each, and the sum
        self.assertEqual(logs.joinpath("against.log").read_text().splitlines()[-1], "2 equal")
        table = (self.folder / "displays.csv").read_text().replace("Tank118", "Tank118 is too wide")
        (self.folder / "displays.csv").write_text(table)
        for line, status in zip(lines[1:], (1, 1, 1, 1)):
            self.assertEqual(self.shell(line)[0], status, line)
        self.assertIn("Line 18: refused", logs.joinpath("plant.log").read_text())

    def test_the_build_servers_step_checks_and_publishes(self):
        text = (SOURCE / "docs" / "fleet.md").read_text("utf-8")
        step = textwrap.dedent(re.search(r"^    #!/bin/sh\n(?:    .*\n)*", text, re.M)[0])
        self.assertEqual(self.shell(step), (0, b""))
        (self.folder / "other").mkdir()
        (self.folder / "other" / "BAD.orx").write_bytes(
            (self.folder / PROJECT).read_bytes().replace(b"pump.bmp", b"none.bmp"))
        self.assertEqual(self.shell(step), (1, b""))
        (self.folder / "a").mkdir()
        (self.folder / "a" / "CUT.orx").write_bytes((self.folder / PROJECT).read_bytes()[:9000])
        names = ("PUMPSTATION-addresses.html", "PUMPSTATION-addresses.csv", "other/BAD-addresses.csv")
        for name in names:
            (self.folder / name).unlink(missing_ok=True)
        status, error = self.shell(step)
        self.assertEqual((status, error.count(b"orvista: ./a/CUT.orx is not whole: ")), (1, 2), error)
        for name in names:
            self.assertTrue((self.folder / name).is_file(), name)

    def fleet_page(self, first):
        """The indented block of docs/fleet.md that begins so."""
        text = (SOURCE / "docs" / "fleet.md").read_text("utf-8")
        return textwrap.dedent(re.search(r"^    " + re.escape(first) + r".*\n(?:(?:    .*)?\n)*", text, re.M)[0]).strip() + "\n"

    def test_the_lines_for_cron_run(self):
        displays = {"103": self.display(), "104": self.display()}
        self.write_list(displays, PROJECT)
        (self.folder / "log").mkdir()
        text = (SOURCE / "docs" / "fleet.md").read_text("utf-8")
        lines = re.findall(r"^    (?:[\d*]+ ){5}((?:cd /srv/plant|orvista) .*)$", text, re.M)
        self.assertEqual(len(lines), 3)
        lines = [line.replace("/srv/plant", str(self.folder)).replace("/srv/backup", str(self.folder / "backup"))
                 .replace("/var/log/orvista", str(self.folder / "log")) for line in lines]
        for line in lines:
            self.assertNotIn("/srv", line)
            self.assertEqual(self.shell(line), (0, b""), [path.read_text() for path in (self.folder / "log").iterdir()])
        self.assertIn("2 equal", (self.folder / "log" / "upload.log").read_text())
        self.assertEqual(len(list((self.folder / "backup" / "line 104").glob("????-??-??T??????Z/line 104.orx"))), 1)
        self.assertIn("line 103,", (self.folder / "log" / "displays.csv").read_text("utf-8"))
        self.assertEqual((self.folder / "log" / "compare.log").read_text(), "2 equal\n")
        self.cron_lines_with_trouble(lines, displays)

    def cron_lines_with_trouble(self, lines, displays):
        """A display that is off, and a project that is cut off: the others get theirs, and are told of."""
        (self.folder / "cut").mkdir()
        (self.folder / "cut" / "CUT.orx").write_bytes((self.folder / PROJECT).read_bytes()[:9000])
        with open(self.folder / "displays.csv", "a", encoding="utf-8") as rows:
            rows.write(f"\ndead,127.0.0.1,1,{PROJECT}\ncut,127.0.0.2,1,cut/CUT.orx\n")
        (self.folder / "pump.bmp").write_bytes((self.folder / "pump.bmp").read_bytes() + b" ")
        for copy in (self.folder / "backup").glob("*/*"):
            copy.rename(copy.with_name("former"))  # this moment's folder may be wanted in the same second
        for line in lines:
            self.assertEqual(self.shell(line), (1, b""))
        for name, result in (("displays.csv", "done"), ("differing.csv", None)):
            table = (self.folder / "log" / name).read_text("utf-8-sig")
            self.assertRegex(table, r'(?m)^dead,127\.0\.0\.1:1,failed,connection refused,0,')
            self.assertRegex(table, r'(?m)^cut,127\.0\.0\.2:1,refused,"?cut/CUT\.orx is not whole: ')
            self.assertEqual(table.count(f",{result},"), 2 if result else 0)
            self.assertEqual(len(table.splitlines()), 5 if result else 3)
        results = [json.loads(line)["result"] for line in (self.folder / "log" / "displays.jsonl").read_text().splitlines()]
        self.assertEqual(sorted(results), ["done", "done", "equal", "equal", "failed", "refused"])
        self.assertEqual(len(list((self.folder / "backup").iterdir())), len(displays))

    @unittest.skipUnless(shutil.which("ansible-playbook"), "Ansible is not installed")
    def test_the_play_sends_and_then_changes_nothing(self):
        displays = {"103": self.display(), "104": self.display()}
        for number in (3, 4):
            shutil.copy(self.folder / PROJECT, self.folder / f"LINE{number}.orx")
        inventory = self.fleet_page("[displays]")
        for number, display in displays.items():
            inventory = inventory.replace(f"192.168.1.{number}", display.address)
        (self.folder / "displays.ini").write_text(inventory)
        (self.folder / "upload.yml").write_text(self.fleet_page("- hosts: displays"))
        (self.folder / "pump.bmp").write_bytes((self.folder / "pump.bmp").read_bytes() + b" ")
        script = "ansible-playbook -i displays.ini upload.yml"
        for changed in (1, 0):
            status, error = self.shell(f"HOME={self.folder} ANSIBLE_NOCOLOR=1 {script} >play.log 2>&1")
            log = (self.folder / "play.log").read_text()
            self.assertEqual((status, error), (0, b""), log)
            self.assertEqual(log.count(f"changed={changed} "), 2, log)

    @unittest.skipUnless(shutil.which("ansible-playbook"), "Ansible is not installed")
    def test_the_play_of_a_master_sends_each_display_its_own(self):
        self.write_master({"117": self.display(), "118": self.display()})
        self.expect(0, "master", "PLANT.orx", "--list", "displays.csv")
        (self.folder / "plant.ini").write_text(self.fleet_page("[plant]"))
        (self.folder / "plant.yml").write_text(self.fleet_page("- hosts: plant"))
        for changed in (1, 0):
            status, error = self.shell(f"HOME={self.folder} ANSIBLE_NOCOLOR=1 ansible-playbook -i plant.ini plant.yml >play.log 2>&1")
            log = (self.folder / "play.log").read_text()
            self.assertEqual((status, error), (0, b""), log)
            self.assertEqual(log.count(f"changed={changed} "), 2, log)


main()
