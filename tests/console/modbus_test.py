"""modbus_test.py PROGRAM SOURCE: read, switch and write against an independent Modbus library, the simulated
display with each of its faults, and displays that answer wrongly on purpose."""

import contextlib
import json
import signal
import socket
import struct
import subprocess
import sys
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / "tour"))
import device_files  # noqa: E402  the project's files, written apart from the program

from displays import Display
from program import EXAMPLE, PROGRAM, PROJECT, SOURCE, ProgramTest, main

NO_NOTES = {"label": "", "unit": "", "comment": ""}
NOTES = json.loads((EXAMPLE / "PUMPSTATION.notes.json").read_text("utf-8"))["items"]
SERVER = SOURCE / "tests" / "link" / "ModbusServer.py"


class Server:
    """An independent Modbus library as the display; it tells of each write."""

    def __enter__(self):
        self.process = subprocess.Popen([sys.executable, SERVER], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.port = int(self.process.stdout.readline())
        self.display = f"127.0.0.1:{self.port}"
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait(timeout=30)
        self.process.stdout.close()

    def write(self):
        """The next write that arrived: "coils 300 1,0,1"."""
        return self.process.stdout.readline().decode().rstrip("\n")


class Scripted:
    """A display that answers every request by a function of it: bytes to send, or None to hang up; in pieces."""

    def __init__(self, answer):
        self.answer = answer
        self.requests = []
        self.over = False

    def __enter__(self):
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.display = "127.0.0.1:%d" % self.listener.getsockname()[1]
        self.thread = threading.Thread(target=self.serve)
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.over = True
        # The connection that wakes the server up.
        socket.create_connection(self.listener.getsockname()).close()
        self.thread.join()
        self.listener.close()

    def serve(self):
        while True:
            connection, _ = self.listener.accept()
            with connection, contextlib.suppress(OSError):
                if self.over:
                    return
                self.converse(connection)

    def converse(self, connection):
        while True:
            head = connection.recv(6, socket.MSG_WAITALL)
            if len(head) < 6:
                return
            request = head + connection.recv(struct.unpack(">H", head[4:])[0], socket.MSG_WAITALL)
            self.requests.append(request)
            answer = self.answer(request)
            if answer is None:
                return
            for piece in answer if isinstance(answer, list) else [answer]:
                connection.sendall(piece)


def right_answer(request):
    """Everything is 0, every write is confirmed."""
    function, = request[7:8]
    if function in (1, 3):
        count, = struct.unpack(">H", request[10:12])
        data = bytes((count + 7) // 8 if function == 1 else 2 * count)
        body = bytes([function, len(data)]) + data
    else:
        body = request[7:12]
    return request[:4] + struct.pack(">H", len(body) + 1) + request[6:7] + body


class Reading(ProgramTest):
    def read(self, display, *arguments):
        return self.expect(0, "read", display, "--project", PROJECT, *arguments)

    def test_tells_what_an_independent_server_holds(self):
        with Server() as server:
            self.expect(0, "switch", server.display, "--project", PROJECT, "--on", "STDMSG3,STDMSG40,ALTMSG20")
            self.expect(0, "write", server.display, "--project", PROJECT, "RegVar1=1.1", "RegVar63=-2.5", "RegVar64=123.456",
                        "CoilVar32=on")
            reading = json.loads(self.read(server.display, "--json"))
            text = self.read(server.display).decode()
        self.assertEqual(list(reading), ["version", "display", "on", "values"])
        self.assertEqual(reading["display"], server.display)
        self.assertEqual(reading["on"], ["STDMSG3", "STDMSG40", "ALTMSG20"])
        values = {value["name"]: value for value in reading["values"]}
        self.assertEqual(list(values), [f"RegVar{n}" for n in range(1, 65)] + [f"CoilVar{n}" for n in range(1, 33)])
        self.assertEqual(values["RegVar1"], {"name": "RegVar1", "address": 100, "value": 1.1, "raw": [0xCCCD, 0x3F8C], **NOTES["RegVar1"]})
        self.assertEqual(values["RegVar63"], {"name": "RegVar63", "address": 224, "value": -2.5, "raw": [0, 0xC020], **NO_NOTES})
        self.assertEqual(values["RegVar64"], {"name": "RegVar64", "address": 226, "value": 123.456, "raw": [0xE979, 0x42F6], **NO_NOTES})
        self.assertEqual(values["RegVar2"], {"name": "RegVar2", "address": 102, "value": 0.0, "raw": [0, 0], **NOTES["RegVar2"]})
        self.assertEqual(values["CoilVar32"], {"name": "CoilVar32", "address": 131, "value": True, "raw": [1], **NO_NOTES})
        self.assertEqual(values["CoilVar31"]["value"], False)
        lines = text.splitlines()
        self.assertEqual(len(lines), 3 + 96)
        self.assertRegex(lines[0], r"^STDMSG3 +322 +ON +\S")
        self.assertRegex(lines[2], r"^ALTMSG20 +319 +ON$")
        self.assertRegex(lines[3], r"^RegVar1 +100 +1\.1 +CCCD 3F8C +1\.1")
        self.assertRegex(lines[-1], r"^CoilVar32 +131 +ON +\S")

    def test_draws_what_the_display_should_show(self):
        project = device_files.new_project()
        project["STDMSG"][3] = (b"CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nACT STILL 1000")
        project["STDMSG"][4] = b'CLEAR\r\nTEXT 0 0 RED BLACK " -2.500"\r\nACT STILL 1000'
        device_files.write(self.folder, "DRAWN", project)
        with Server() as server:
            read = ["read", server.display, "--project", "DRAWN.orx", "--picture", "out.png"]
            self.expect(0, "switch", server.display, "--project", "DRAWN.orx", "--on", "STDMSG3")
            self.expect(0, "write", server.display, "--project", "DRAWN.orx", "RegVar1=-2.5")
            self.assertIn(b"STDMSG3 ", self.expect(0, *read, "--scale", "4", "--columns", "96"))
            self.expect(0, "show", "DRAWN.orx", "STDMSG4", "-o", "expected.png", "--scale", "4", "--columns", "96")
            self.assertEqual((self.folder / "out.png").read_bytes(), (self.folder / "expected.png").read_bytes())
            self.assertIn("does not end in .png", self.complaint(2, *read[:-1], "out.jpg"))
            self.assertEqual(self.complaint(2, *read, "--watch", "2"), "orvista: a picture is drawn once: give --picture or --watch")
            self.assertEqual(self.complaint(2, *read[:-2], "--columns", "96"),
                             "orvista: --columns and --scale are for a picture: give --picture")

    def test_a_number_that_json_has_not_is_null(self):
        with Scripted(lambda request: right_answer(request)[:9] + b"\x00\x00\x7F\xC0\x00\x00\xFF\x80" * 31
                      if request[7:12] == b"\x03\x00\x64\x00\x7C" else right_answer(request)) as display:
            values = json.loads(self.read(display.display, "--json"))["values"]
            self.assertIn("No message is on\n", self.read(display.display).decode())
        self.assertEqual([values[0]["value"], values[0]["raw"]], [None, [0, 0x7FC0]])
        self.assertEqual([values[1]["value"], values[1]["raw"]], [None, [0, 0xFF80]])

    def test_asks_for_blocks_from_unit_255_over_one_connection(self):
        with Scripted(right_answer) as display:
            self.read(display.display)
        asked = [struct.unpack(">HHHBBHH", request) for request in display.requests]
        self.assertEqual([row[:4] for row in asked], [(0x0102, 0, 6, 255)] * 5)
        self.assertEqual([row[4:] for row in asked], [(1, 320, 40), (1, 300, 20), (1, 100, 32), (3, 100, 124), (3, 224, 4)])

    def test_answers_in_pieces_are_put_together(self):
        with Scripted(lambda request: [bytes([byte]) for byte in right_answer(request)]) as display:
            self.read(display.display)

    def test_items_beyond_the_addresses_are_named_and_left_out(self):
        text = (self.folder / PROJECT).read_bytes()
        self.assertIn(b"DigitalInput", text)
        (self.folder / PROJECT).write_bytes(text.replace(b"DigitalInput    100", b"DigitalInput    65530")
                                            .replace(b"DigitalInput   100", b"DigitalInput   65530"))
        with Scripted(right_answer) as display:
            result = self.run_program("read", display.display, "--project", PROJECT, "--json")
        self.assertEqual(result.returncode, 0)
        self.assertIn(b"CoilVar7 to CoilVar32", result.stderr)
        values = {value["name"]: value for value in json.loads(result.stdout)["values"]}
        self.assertEqual(values["CoilVar6"], {"name": "CoilVar6", "address": 65535, "value": False, "raw": [0], **NO_NOTES})
        self.assertEqual(values["CoilVar7"], {"name": "CoilVar7", "address": 65536, "value": None, "raw": [], **NO_NOTES})

    def complaint_of(self, answer):
        with Scripted(answer) as display:
            line = self.complaint(1, "read", display.display, "--project", PROJECT)
        self.assertTrue(line.startswith(f"orvista: {display.display}: reading coils 320 to 359: "), line)
        return line.split(": ", 3)[3]

    def test_wrong_answers_are_told_in_words(self):
        def changed(place, value):
            return lambda request: right_answer(request)[:place] + bytes([value]) + right_answer(request)[place + 1:]
        self.assertEqual(self.complaint_of(lambda request: None), "the display ended the connection without an answer")
        self.assertEqual(self.complaint_of(changed(0, 7)), "the display answers another request")
        self.assertEqual(self.complaint_of(changed(2, 1)), "the display's answer is not Modbus")
        self.assertEqual(self.complaint_of(changed(6, 1)), "unit 1 answers instead of unit 255")
        self.assertEqual(self.complaint_of(changed(7, 3)), "the display answers with function 3")
        self.assertEqual(self.complaint_of(changed(8, 4)), "the answer does not hold the 5 bytes asked for")
        self.assertEqual(self.complaint_of(lambda request: right_answer(request) + b"\x00"), "the answer is longer than its header says")
        self.assertEqual(self.complaint_of(lambda request: request[:4] + b"\x00\x03\xFF\x81\x02"),
                         "exception 2, illegal data address")

    def test_short_answers_are_told_in_words(self):
        # The program has to give up by itself: this display keeps the connection.
        self.assertEqual(self.complaint_of(lambda request: right_answer(request)[:10]),
                         "only 10 bytes of an answer within 3 s")

    def test_watch_tells_what_changes_and_carries_on_after_a_failure(self):
        with Server() as server:
            process = subprocess.Popen([PROGRAM, "read", server.display, "--project", PROJECT, "--watch", "0.5"], cwd=self.folder,
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            first = [process.stdout.readline() for _ in range(97)]
            self.assertEqual(first[0], "No message is on\n")
            self.expect(0, "write", server.display, "--project", PROJECT, "RegVar2=7")
            self.assertRegex(process.stdout.readline(), r"^\d\d:\d\d:\d\d RegVar2 +102 +7 +0000 40E0")
            self.expect(0, "switch", server.display, "--project", PROJECT, "--on", "STDMSG1")
            self.assertRegex(process.stdout.readline(), r"^\d\d:\d\d:\d\d STDMSG1 +320 +ON")
        self.assertIn(server.display, process.stderr.readline())
        self.assertIsNone(process.poll())
        process.send_signal(signal.SIGINT)
        process.communicate(timeout=30)
        self.assertEqual(process.returncode, -signal.SIGINT)

    def test_watch_tells_when_a_display_fails_and_when_it_answers_again(self):
        for options in ([], ["--json"]):
            hangs_up = [True]
            with Scripted(lambda request, hangs_up=hangs_up: None if hangs_up else right_answer(request)) as display:
                process = subprocess.Popen([PROGRAM, "read", display.display, "--project", PROJECT, "--watch", "0.5", *options],
                                           cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
                said = process.stderr.readline()
                self.assertRegex(said, rf"^orvista: \d\d:\d\d:\d\d {display.display}: .")
                if options:
                    failure = json.loads(process.stdout.readline())
                    self.assertEqual(list(failure), ["version", "display", "time", "failure"])
                    self.assertEqual(said, f"orvista: {failure['time']} {display.display}: {failure['failure']}\n")
                hangs_up.clear()
                lines = [process.stdout.readline() for _ in range(2)]
                if options:
                    again = json.loads(lines[0])
                    self.assertRegex(again["time"], r"^\d\d:\d\d:\d\d$")
                    self.assertEqual((again["display"], again["failure"]), (display.display, ""))
                    self.assertEqual(json.loads(lines[1])["on"], [])
                else:
                    self.assertRegex(lines[0], rf"^\d\d:\d\d:\d\d {display.display} answers again\n$")
                    self.assertEqual(lines[1], "No message is on\n")
                process.kill()
                process.communicate()

    def test_watch_ends_with_its_reader_though_nothing_changes(self):
        with Server() as server:
            process = subprocess.Popen([PROGRAM, "read", server.display, "--project", PROJECT, "--watch", "0.5"],
                                       cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            self.assertEqual(process.stdout.readline(), b"No message is on\n")
            process.stdout.close()
            self.assertEqual(process.wait(timeout=30), 0)
            self.assertEqual(process.stderr.read(), b"")
            process.stderr.close()

    def test_seconds_to_watch_are_a_number_in_range(self):
        with Scripted(right_answer) as display:
            for seconds in ("0", "0.49", "3600.01", "-1", "nan", "inf", "x", ""):
                self.assertIn("--watch", self.complaint(2, "read", display.display, "--project", PROJECT, "--watch", seconds))
        self.assertEqual(display.requests, [])
        with Scripted(right_answer) as display:
            process = subprocess.Popen([PROGRAM, "read", display.display, "--project", PROJECT, "--watch", "3600"],
                                       cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            self.assertEqual(process.stdout.readline(), b"No message is on\n")
            process.send_signal(signal.SIGINT)
            process.communicate(timeout=30)

    def test_watch_as_json_is_an_object_a_line_and_ends_with_its_reader(self):
        with Server() as server:
            process = subprocess.Popen([PROGRAM, "read", server.display, "--project", PROJECT, "--watch", "0.5", "--json"],
                                       cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            for _ in range(2):
                self.assertEqual(json.loads(process.stdout.readline())["on"], [])
            process.stdout.close()
            self.assertEqual(process.wait(timeout=30), 0)
            self.assertEqual(process.stderr.read(), b"")
            process.stderr.close()


class Faults(ProgramTest):
    def display(self, *options):
        """A simulated display with the example's files; its Modbus address."""
        display = Display(self.folder, *options)
        self.addCleanup(display.close)
        return display.modbus

    def complaint_of(self, *arguments):
        display = self.display(*arguments)
        lines = [self.complaint(1, "read", display, "--project", PROJECT),
                 self.complaint(1, "switch", display, "--project", PROJECT, "--on", "STDMSG1"),
                 self.complaint(1, "write", display, "--project", PROJECT, "RegVar1=1")]
        return [line.removeprefix(f"orvista: {display}: ") for line in lines]

    REQUESTS = ("reading coils 320 to 359: ", "writing coil 320: ", "writing registers 100 to 101: ")

    def test_a_sound_display_shows_what_was_switched_and_written(self):
        display = self.display()
        self.expect(0, "switch", display, "--project", PROJECT, "--on", "STDMSG3")
        self.expect(0, "write", display, "--project", PROJECT, "RegVar1=12.5")
        reading = json.loads(self.expect(0, "read", display, "--project", PROJECT, "--json"))
        self.assertEqual((reading["on"], reading["values"][0]["value"]), (["STDMSG3"], 12.5))

    def test_refused(self):
        self.assertEqual(self.complaint_of("--fault", "refuse"), ["Connection refused"] * 3)

    def test_closed_or_reset_at_once(self):
        for fault in ("close", "reset"):
            for line in self.complaint_of("--fault", fault):
                self.assertRegex(line, r"(ended the connection without an answer|Connection reset by peer|Broken pipe)$", fault)

    def test_exception(self):
        self.assertEqual(self.complaint_of("--fault", "exception", "--exception", "6"),
                         [request + "exception 6, server device busy" for request in self.REQUESTS])

    def test_garbage(self):
        self.assertEqual(self.complaint_of("--fault", "garbage"),
                         [request + "the display's answer is not Modbus" for request in self.REQUESTS])

    def test_silence_is_given_three_seconds(self):
        display = self.display("--fault", "no-answer")
        begun = time.monotonic()
        line = self.complaint(1, "read", display, "--project", PROJECT)
        self.assertTrue(line.endswith(": reading coils 320 to 359: no answer within 3 s"), line)
        self.assertGreater(time.monotonic() - begun, 2.9)

    def test_a_slow_display_is_waited_for(self):
        self.expect(0, "read", self.display("--delay", "300"), "--project", PROJECT)


class Switching(ProgramTest):
    def test_single_coils_off_before_on(self):
        with Server() as server:
            self.expect(0, "switch", server.display, "--project", PROJECT, "--on", "stdmsg3,ALTMSG1", "--off", "STDMSG5",
                        "--on", "STDMSG3")
            self.assertEqual([server.write() for _ in range(3)], ["coils 324 0", "coils 322 1", "coils 300 1"])

    def test_messages_stand_with_blanks_or_commas_between(self):
        with Server() as server:
            for arguments in ([server.display, "--project", PROJECT, "--off", "STDMSG5", "--on", "STDMSG3", "ALTMSG1,STDMSG4"],
                              ["--project", PROJECT, "--on", "STDMSG3", "ALTMSG1", "STDMSG4", "--off", "STDMSG5", server.display],
                              ["--off", "STDMSG5", "--on", "STDMSG3", "ALTMSG1", "STDMSG4", server.display, "--project", PROJECT]):
                self.expect(0, "switch", *arguments)
                self.assertEqual([server.write() for _ in range(4)],
                                 ["coils 324 0", "coils 322 1", "coils 300 1", "coils 323 1"])

    def test_only_writes_both_blocks(self):
        with Server() as server:
            self.expect(0, "switch", server.display, "--project", PROJECT, "--only", "--on", "STDMSG40,ALTMSG2")
            self.assertEqual(server.write(), "coils 300 " + ",".join("1" if n == 2 else "0" for n in range(1, 21)))
            self.assertEqual(server.write(), "coils 320 " + ",".join("1" if n == 40 else "0" for n in range(1, 41)))
            self.expect(0, "switch", server.display, "--project", PROJECT, "--only")
            self.assertEqual(server.write(), "coils 300 " + ",".join("0" * 20))
            self.assertEqual(server.write(), "coils 320 " + ",".join("0" * 40))

    def test_a_number_that_reads_like_a_reference_is_refused(self):
        with Scripted(right_answer) as display:
            for value, said in (("40101=1.5", "40101 reads like a reference: write 100=1.5, or 0x9CA5=1.5 for address 40101"),
                                ("40001=1", "40001 reads like a reference: write 0=1, or 0x9C41=1 for address 40001"),
                                ("49999=on", "49999 reads like a reference: write 9998=on, or 0xC34F=on for address 49999"),
                                ("00000=on", "00000 reads like a reference: write 0=on, or 0x0000=on for address 0"),
                                ("00101=on", "00101 reads like a reference: write 100=on, or 0x0065=on for address 101")):
                self.assertEqual(self.complaint(2, "write", display.display, value), "orvista: " + said)
            self.complaint(2, "write", display.display, "0x=1")
            self.complaint(2, "write", display.display, "0x10000=on")
        self.assertEqual(display.requests, [])
        with Server() as server:
            self.expect(0, "write", server.display, "0x9CA5=1.5", "0Xc8=on", "40000=1.5", "50000=off", "0101=on")
            self.assertEqual([server.write() for _ in range(5)],
                             ["registers 40101 0,16320", "coils 200 1", "registers 40000 0,16320", "coils 50000 0", "coils 101 1"])
            # A project that has an item there leaves no doubt.
            project = (self.folder / PROJECT).read_bytes()
            (self.folder / PROJECT).write_bytes(project.replace(b"AnalogInput    100", b"AnalogInput    40101"))
            self.expect(0, "write", server.display, "--project", PROJECT, "--not-whole", "40101=1.5")
            self.assertEqual(server.write(), "registers 40101 0,16320")
            (self.folder / PROJECT).write_bytes(project)
            self.expect(0, "write", server.display, "--project", PROJECT, "00321=on")  # STDMSG2
            self.assertEqual(server.write(), "coils 321 1")

    def test_wrong_usage_is_status_2_and_sends_nothing(self):
        with Scripted(right_answer) as display:
            for arguments in ([], ["--on", "STDMSG1", "--off", "STDMSG2,stdmsg1"], ["--on", "STDMSG41"], ["--on", "RegVar1"],
                              ["--only", "--on", "STDMSG1", "--off", "STDMSG1"], ["--off"]):
                self.complaint(2, "switch", display.display, "--project", PROJECT, *arguments)
            self.complaint(2, "switch", display.display, "--on", "STDMSG1")
            self.complaint(2, "switch", "--project", PROJECT, "--on", "RegVar1", "STDMSG1")
            self.complaint(2, "switch", display.display, "--project", PROJECT, "--on", "STDMSG1", display.display)
            self.complaint(2, "switch", display.display, "--project", "missing.orx", "--on", "STDMSG1")
        self.assertEqual(display.requests, [])

    def test_what_was_written_before_a_failure_is_told(self):
        def second_fails(request):
            return right_answer(request) if len(display.requests) < 2 else None
        with Scripted(second_fails) as display:
            line = self.complaint(1, "switch", display.display, "--project", PROJECT, "--on", "STDMSG3,STDMSG4")
        self.assertTrue(line.endswith(": writing coil 323: the display ended the connection without an answer; written before: STDMSG3"), line)

    def test_a_write_that_is_confirmed_wrongly_failed(self):
        with Scripted(lambda request: right_answer(request)[:-2] + b"\x00\x00") as display:
            line = self.complaint(1, "switch", display.display, "--project", PROJECT, "--on", "STDMSG3")
        self.assertTrue(line.endswith(": writing coil 322: the display confirms something else"), line)


class Writing(ProgramTest):
    def test_writes_in_order_by_name_and_address(self):
        with Server() as server:
            self.expect(0, "write", server.display, "--project", PROJECT, "RegVar3=12.5", "coilvar2=ON", "200=1.5", "CoilVar3=0",
                        "65534=-1e2", "65535=off", "0=on")
            self.assertEqual([server.write() for _ in range(7)],
                             ["registers 104 0,16712", "coils 101 1", "registers 200 0,16320", "coils 102 0",
                              "registers 65534 0,49864", "coils 65535 0", "coils 0 1"])

    def test_items_go_by_their_labels(self):
        (self.folder / "PUMPSTATION.notes.json").write_text(json.dumps({"version": 1, "items": {
            "RegVar3": {"label": "TankLevel", "unit": "m"}, "STDMSG3": {"label": "TankFull"}}}))
        with Server() as server:
            self.expect(0, "write", server.display, "--project", PROJECT, "tanklevel=12.5")
            self.expect(0, "switch", "--project", PROJECT, "--on", "TankFull,Emergency1", server.display)
            self.assertEqual([server.write() for _ in range(3)], ["registers 104 0,16712", "coils 322 1", "coils 300 1"])
            values = json.loads(self.expect(0, "read", server.display, "--project", PROJECT, "--json"))["values"]
        self.assertEqual((values[2]["label"], values[2]["unit"]), ("TankLevel", "m"))

    def test_addresses_need_no_project(self):
        with Server() as server:
            self.expect(0, "write", server.display, "200=1.5")
            self.assertEqual(server.write(), "registers 200 0,16320")

    def test_wrong_usage_is_status_2_and_sends_nothing(self):
        with Scripted(right_answer) as display:
            for value in ("RegVar3", "RegVar3=", "RegVar3=on", "RegVar3=1,5", "RegVar3=1e39", "RegVar3=nan", "RegVar3=&H10", "RegVar65=1",
                          "CoilVar2=2", "CoilVar2=yes", "CoilVar33=on", "STDMSG1=on", "=1", "65535=1", "65536=on", "-1=1",
                          "99999999999999999999=1", "200=", "Var=1"):
                self.complaint(2, "write", display.display, "--project", PROJECT, "CoilVar1=on", value)
            self.assertIn("RegVar3=12.5: the address of RegVar3 is in the project: give --project", self.complaint(2, "write", display.display, "RegVar3=12.5"))
            self.complaint(2, "write", display.display)
        self.assertEqual(display.requests, [])


class Displays(ProgramTest):
    def test_what_names_no_display_is_status_2(self):
        for display in ("", "127.0.0.1:", "127.0.0.1:0", "127.0.0.1:65536", "::1", "[::1", "a b", "http://127.0.0.1/", PROJECT):
            for command in (["read", display, "--project", PROJECT], ["switch", display, "--project", PROJECT, "--only"],
                            ["write", display, "1=1"]):
                self.complaint(2, *command)

    def test_ipv6(self):
        try:
            listener = socket.create_server(("::1", 0), family=socket.AF_INET6)
        except OSError:
            self.skipTest("no IPv6 here")
        with listener:
            port = listener.getsockname()[1]
        line = self.complaint(1, "read", f"[::1]:{port}", "--project", PROJECT)
        self.assertEqual(line, f"orvista: [::1]:{port}: Connection refused")


main()
