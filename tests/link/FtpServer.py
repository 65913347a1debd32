"""FTP servers for tests, each in a process of its own, which need not start Python and import all of this again.

Every line of standard input holds words between tabs and gets a line of standard output. "start" and a server's
arguments begin one, which is told as its port and its process; "end" and the process end it. With standard input all end.

A server keeps file names as the bytes that were sent, and writes every command it gets to a file.
"""

import argparse
import io
import logging
import os
import random
import signal
import sys
import threading
import time

# Not needed, and most of the time that starting takes.
sys.modules["OpenSSL"] = None

# pylint: disable=wrong-import-position
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.filesystems import AbstractedFS
from pyftpdlib.handlers import DTPHandler, FTPHandler
from pyftpdlib.ioloop import IOLoop
from pyftpdlib.servers import FTPServer

# The connection dialog's port is a signed 16-bit number.
PORTS = range(20000, 32768)


def parse(arguments):
    parser = argparse.ArgumentParser()
    parser.add_argument("root")
    parser.add_argument("--fault", default="none")
    parser.add_argument("--listing", help="file whose bytes are the listing")
    parser.add_argument("--greeting", help="all that is said before the server hangs up")
    parser.add_argument("--commands", help="file for the commands that came in")
    parser.add_argument("--files-served", type=int, default=0, help="transfers before the fault shows")
    parser.add_argument("--piece", type=int, default=1, help="bytes that go at once, where all goes slowly")
    parser.add_argument("--pause", type=float, default=0, help="seconds before each of them")
    return parser.parse_args(arguments)


OPTIONS = None  # those of this process's server


def fall_silent():
    """Neither reads nor sends nor closes anything any more."""
    threading.Event().wait()


class CutFile:
    """Ends after half of the file, or gives all of it and no end."""

    def __init__(self, file, channel):
        self.file = file
        self.name = file.name
        self.closed = False
        self.channel = channel
        self.given = False

    def read(self, size):
        if self.given:
            if OPTIONS.fault == "hang-up-in-retrieve":
                self.channel.close()
            if OPTIONS.fault in ("silent-in-retrieve", "silent-after-retrieve"):
                fall_silent()
            return b""
        self.given = True
        if OPTIONS.fault == "silent-after-retrieve":
            return self.file.read()
        return self.file.read(max(1, min(size, os.path.getsize(self.name) // 2)))

    def close(self):
        self.closed = True
        self.file.close()


class SlowFile:
    """Gives a piece now and then; also what a list is made with."""

    def __init__(self, file):
        self.file = file
        self.name = getattr(file, "name", "")
        self.closed = False

    def read(self, _size):
        time.sleep(OPTIONS.pause)
        return self.file.read(OPTIONS.piece)

    def more(self):
        return self.read(0)

    def close(self):
        self.closed = True
        self.file.close()


class EndlessFile(SlowFile):
    """Gives as much as anybody takes."""

    def read(self, size):
        return bytes(size)


class Files(AbstractedFS):
    def open(self, filename, mode):
        file = super().open(filename, mode)
        if mode == "rb" and OPTIONS.fault in ("endless-retrieve", "endless-retrieve-no-size"):
            return EndlessFile(file)
        if mode == "rb" and OPTIONS.fault == "slow-retrieve":
            return SlowFile(file)
        if mode == "rb" and OPTIONS.fault in ("hang-up-in-retrieve", "short-retrieve", "silent-in-retrieve",
                                              "silent-after-retrieve"):
            return CutFile(file, self.cmd_channel)
        return file


class Data(DTPHandler):
    def handle_read(self):
        if OPTIONS.fault == "hang-up-in-store":
            self.recv(10)
            self.cmd_channel.close()
            return
        if OPTIONS.fault == "silent-in-store":
            self.recv(10)
            fall_silent()
        if OPTIONS.fault == "full-in-store" and self.tot_bytes_received > 0:
            self._resp = ("552 Exceeded storage allocation.", None)
            self.close()
            return
        super().handle_read()

    handle_read_event = handle_read

    def handle_close(self):
        if OPTIONS.fault == "silent-after-store":
            fall_silent()
        super().handle_close()

    def close(self):
        if OPTIONS.fault == "broken-list" and self.cmd == "NLST":
            self._resp = ("426 Transfer aborted.", None)
        if OPTIONS.fault == "open-after-retrieve" and self.cmd == "RETR":
            self.cmd_channel.socket.send(b"226 Transfer complete.\r\n")
            fall_silent()
        super().close()


class Control(FTPHandler):
    banner = "ready"
    use_sendfile = False
    unicode_errors = "surrogateescape"
    abstracted_fs = Files
    dtp_handler = Data
    transfers = 0
    logins = 0

    def handle(self):
        if OPTIONS.greeting:
            self.push(OPTIONS.greeting + "\r\n")
            self.close_when_done()
        elif OPTIONS.fault != "no-greeting":
            super().handle()

    def pre_process_command(self, line, cmd, arg):
        if OPTIONS.commands:
            with open(OPTIONS.commands, "ab") as commands:
                commands.write(line.encode("utf8", "surrogateescape") + b"\n")
        if OPTIONS.fault == "silent-quit" and cmd == "QUIT":
            fall_silent()
        if OPTIONS.fault == "site-hang-up" and cmd == "SITE":
            self.close()
            return
        super().pre_process_command(line, cmd, arg)

    def on_login(self, username):
        Control.logins += 1
        if OPTIONS.fault == "hang-up-after-login":
            self.close_when_done()
        if OPTIONS.fault == "hang-up-after-first-login" and Control.logins == 1:
            self.close_when_done()

    def is_due(self, fault):
        """True when the fault shows now; counts the transfers before it."""
        if OPTIONS.fault != fault:
            return False
        Control.transfers += 1
        return Control.transfers > OPTIONS.files_served

    def ftp_STOR(self, file, mode="w"):
        if self.is_due("full"):
            self.respond("452 Insufficient storage space.")
        elif self.is_due("hang-up-before-store"):
            self.close()
        elif not self.is_due("silent-store"):
            return super().ftp_STOR(file, mode)

    def ftp_RETR(self, file):
        if self.is_due("silent-retrieve"):
            return None
        return super().ftp_RETR(file)

    def ftp_SIZE(self, path):
        if OPTIONS.fault in ("no-size", "endless-retrieve-no-size", "small-announcement"):
            self.respond("502 Command not implemented.")
            return None
        if OPTIONS.fault == "small-size" and path.endswith(".bmp"):
            self.respond(f"213 {os.path.getsize(path) // 2}")
            return None
        return super().ftp_SIZE(path)

    def respond(self, resp, *arguments, **keywords):
        if OPTIONS.fault == "small-announcement" and resp.startswith(("125 ", "150 ")):
            resp = "150 Opening data connection (3 bytes)."
        # To a server that is done with its file once the system has taken the bytes, all is well.
        if OPTIONS.fault in ("small-announcement", "small-size") and resp.startswith("426 "):
            resp = "226 Transfer complete."
        super().respond(resp, *arguments, **keywords)

    def ftp_NLST(self, path):
        if OPTIONS.fault == "slow-list":
            self.push_dtp_data(SlowFile(io.BytesIO(b"\r\n" * 1000)), isproducer=True, cmd="NLST")
            return None
        if not OPTIONS.listing:
            return super().ftp_NLST(path)
        with open(OPTIONS.listing, "rb") as listing:
            self.push_dtp_data(listing.read(), cmd="NLST")


def server():
    authorizer = DummyAuthorizer()
    authorizer.add_user("admin", "", OPTIONS.root, perm="elr" if OPTIONS.fault == "read-only" else "elradfmw")
    Control.authorizer = authorizer
    for port in random.sample(PORTS, 100):
        try:
            return FTPServer(("127.0.0.1", port), Control, ioloop=IOLoop()), port
        except OSError:
            continue
    raise SystemExit("no free port")


def end_with(pipe):
    os.read(pipe, 1)
    os._exit(0)


def serve(arguments):
    global OPTIONS
    OPTIONS = parse(arguments)
    ftp, port = server()
    print(port, os.getpid(), flush=True)
    ftp.serve_forever(timeout=1, handle_exit=False)


def end(process):
    os.kill(process, signal.SIGKILL)
    os.waitpid(process, 0)
    print("ended", flush=True)


def main():
    logging.disable(logging.CRITICAL)
    # Its other end closes with this process, however that ends.
    life, end_of_life = os.pipe()
    for line in sys.stdin:
        order, *words = line.rstrip("\n").split("\t")
        if order == "end":
            end(int(words[0]))
        elif os.fork() == 0:
            os.close(end_of_life)
            threading.Thread(target=end_with, args=[life], daemon=True).start()
            serve(words)


main()
