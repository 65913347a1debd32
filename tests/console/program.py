"""Runs the built orvista in folders of its own. The first two arguments are the program and the source folder."""

import os
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)
SOURCE = Path(sys.argv.pop(1))
GOLDEN = SOURCE / "tests" / "sheets" / "golden"
EXAMPLE = SOURCE / "examples" / "pumpstation"
PROJECT = "PUMPSTATION.orx"
COMMANDS = (["check"], ["compare"], ["fingerprint"], ["show"], ["addresses"], ["book"], ["messages", "export"], ["messages", "import"],
            ["variables", "export"], ["variables", "import"], ["names", "export"], ["names", "import"], ["fix"], ["mend"], ["new"], ["master"], ["expand"], ["upload"], ["download"], ["read"], ["switch"], ["write"],
            ["help"], ["version"])

# What starts the tests may ignore these, as nohup and a script's background do, and the program keeps to that.
signal.signal(signal.SIGINT, signal.default_int_handler)
if hasattr(signal, "SIGHUP"):
    signal.signal(signal.SIGHUP, signal.SIG_DFL)


class ProgramTest(unittest.TestCase):
    """Each test has a copy of the example, in which it runs the program."""

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix="orvista-console-"))
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copytree(EXAMPLE, self.folder, dirs_exist_ok=True)

    def run_program(self, *arguments, preexec=None, stdout=subprocess.PIPE, given=None, settings=None):
        """`given`: bytes for standard input. `settings`: variables of its environment besides."""
        return subprocess.run([PROGRAM, *arguments], cwd=self.folder, stdout=stdout, stderr=subprocess.PIPE,
                              preexec_fn=preexec, input=given, check=False, timeout=120,
                              env=os.environ | (settings or {}))

    def expect(self, status, *arguments, **keywords):
        """Standard output, once the status is as expected; whatever fails says so in a line."""
        result = self.run_program(*arguments, **keywords)
        self.assertEqual(result.returncode, status, (arguments, result.stdout, result.stderr))
        if status == 0:
            self.assertEqual(result.stderr, b"", arguments)
        return result.stdout

    def complaint(self, status, *arguments, **keywords):
        """The one line on standard error."""
        result = self.run_program(*arguments, **keywords)
        self.assertEqual(result.returncode, status, (arguments, result.stdout, result.stderr))
        lines = result.stderr.decode("utf-8").splitlines()
        self.assertEqual(len(lines), 1, lines)
        self.assertTrue(lines[0].startswith("orvista: "), lines)
        return lines[0]

    def version(self):
        return self.expect(0, "--version").decode().split()[1]

    def files(self):
        """Every file below the folder with its bytes."""
        return {str(path.relative_to(self.folder)): path.read_bytes()
                for path in sorted(self.folder.rglob("*")) if path.is_file()}


def as_ordinary_user():
    """Root may write everywhere; nobody may not."""
    if os.geteuid() == 0:
        os.setgid(65534)
        os.setuid(65534)


# Where the program counts what tests reach, a full disk would cut its counters off for all tests: it keeps others beside
# itself.
OTHER_COUNTERS = {"GCOV_PREFIX": str(Path(PROGRAM).parent / "cut-off")}


def no_file_grows(size=1000):
    """As on a full disk, for the process that is about to become the program."""
    resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


def main():
    unittest.main(verbosity=1)
