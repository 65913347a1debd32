"""Simulated displays for tests of the built program. SIMULATOR in the environment is the built simulator."""

import os
import random
import subprocess
import tempfile

SIMULATOR = os.environ["SIMULATOR"]
# Transfers take ports up to 32767; from here on nobody else is likely to listen.
PORTS = range(20000, 32768)
# Tests may give the program another one to look at.
FOLDER = tempfile.gettempdir()


class Display:
    """A simulated display that holds the files of `folder`, until close(). `address` is where it takes and gives files,
    `modbus` where it speaks Modbus."""

    def __init__(self, folder, *options):
        for _ in range(100):
            self.port = random.choice(PORTS)
            self.process = subprocess.Popen(
                [SIMULATOR, "--headless", "--modbus-port", "0", "--transfer-port", str(self.port), "--root", folder, *options],
                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                env=os.environ | {"QT_QPA_PLATFORM": "offscreen", "TMPDIR": FOLDER})
            announced = list(self.lines_until(b"Files in"))
            if any(b"File transfer on" in line for line in announced):
                break
            self.close()
        else:
            raise RuntimeError("no free port for a display")
        self.address = f"127.0.0.1:{self.port}"
        self.modbus = announced[0].decode().split()[-1]

    def lines_until(self, text):
        for line in self.process.stdout:
            yield line
            if text in line:
                return

    def close(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()
