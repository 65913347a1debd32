"""Displays for one test: FTP servers that are not ours, all in this process, each with a folder of its own."""

import logging
import random
import sys
import threading
import time
from pathlib import Path

# Not needed, and most of the time that starting takes.
sys.modules["OpenSSL"] = None

# pylint: disable=wrong-import-position
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import DTPHandler, FTPHandler
from pyftpdlib.ioloop import IOLoop
from pyftpdlib.servers import ThreadedFTPServer

# The transfer's port is a signed 16-bit number; the system's own free ports lie above.
PORTS = range(20000, 32768)
DEVICE_FILES = ("modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls")


class Data(DTPHandler):
    ac_in_buffer_size = 4096

    def handle_read(self):
        if self.cmd_channel.display.drips:
            time.sleep(0.05)
            self.ac_in_buffer_size = 1
        super().handle_read()

    handle_read_event = handle_read

    def handle_close(self):
        display = self.cmd_channel.display
        if self.cmd == "STOR" and display.spoils == Path(getattr(self.file_obj, "name", "")).name:
            self.file_obj.write(b"spoilt")
        super().handle_close()


class Control(FTPHandler):
    banner = "ready"
    use_sendfile = False
    dtp_handler = Data
    display = None

    def pre_process_command(self, line, cmd, arg):
        display = self.display
        display.commands.append(line)
        if len(display.commands) == display.hangs_up_at:
            self.close()
        elif not self.display.silent_at or len(self.display.commands) < self.display.silent_at:
            super().pre_process_command(line, cmd, arg)

    def ftp_SIZE(self, path):
        if self.display.lies:
            self.respond(f"213 {self.display.lies}")
            return None
        return super().ftp_SIZE(path)

    def respond(self, resp, *arguments, **keywords):
        # To a display that is done with its file once the system has taken the bytes, all is well.
        if self.display.lies and resp.startswith("426 "):
            resp = "226 Transfer complete."
        for beginning, other in self.display.replies.items():
            if resp.startswith(beginning):
                resp = other
        super().respond(resp, *arguments, **keywords)

    def ftp_NLST(self, path):
        if self.display.listing is None:
            return super().ftp_NLST(path)
        self.push_dtp_data(self.display.listing, cmd="NLST")
        return None


class Display:
    """What one display does wrong, and what came in."""

    def __init__(self, loop, root, faults):
        self.root = root
        self.commands = []
        self.hangs_up_at = faults.pop("hangs_up_at", 0)  # the number of the command, from 1
        self.drips = faults.pop("drips", False)
        self.lies = faults.pop("lies", None)  # the size it gives each file
        self.listing = faults.pop("listing", None)  # bytes instead of the true one
        self.spoils = faults.pop("spoils", None)  # the file that gets other bytes than were sent
        self.silent_at = faults.pop("silent_at", 0)  # says nothing any more from this command on
        self.replies = faults.pop("replies", {})  # by the beginning of a reply, what is said instead
        read_only = faults.pop("read_only", False)
        assert not faults, faults
        root.mkdir(parents=True, exist_ok=True)
        authorizer = DummyAuthorizer()
        authorizer.add_user("admin", "", str(root), perm="elr" if read_only else "elradfmw")
        handler = type("ThisControl", (Control,), {"display": self, "authorizer": authorizer})
        for self.port in random.sample(PORTS, 100):
            try:
                self.server = ThreadedFTPServer(("127.0.0.1", self.port), handler, ioloop=loop)
                return
            except OSError:
                continue
        raise SystemExit("no free port")

    @property
    def address(self):
        return f"127.0.0.1:{self.port}"

    def files(self):
        return {path.name: path.read_bytes() for path in self.root.iterdir()}


class Displays:
    """Serves as many displays as are made, until close()."""

    def __init__(self, folder):
        logging.disable(logging.CRITICAL)
        self.folder = folder
        self.loop = IOLoop()
        self.all = []
        self.thread = None

    def make(self, **faults):
        assert self.thread is None
        self.all.append(Display(self.loop, self.folder / str(len(self.all)), faults))
        return self.all[-1]

    def serve(self):
        def run():
            while not self.ended:
                self.loop.loop(timeout=0.05, blocking=False)
        self.ended = False
        self.thread = threading.Thread(target=run, daemon=True)
        self.thread.start()

    def close(self):
        if self.thread is not None:
            self.ended = True
            self.thread.join()
        for display in self.all:
            display.server.close()
        self.loop.close()
