"""fleet_causes_test.py PROGRAM SOURCE: why a display was not served, by name."""

import random
import socket
import threading

from displays import PORTS
from fleet import NOBODY, FleetTest, device_files
from program import main

# Login takes 4 commands with the announcement, a file 2, the first file a third; then comes the end.
LAST_COMMAND = 20


class Causes(FleetTest):
    maxDiff = None

    def service(self, greeting):
        """The address of a service that says this to whoever connects, and no more. Nothing ends the connection at once."""
        listener = socket.create_server(("127.0.0.1", random.choice(PORTS)))
        self.addCleanup(listener.close)
        connections = []
        self.addCleanup(lambda: [connection.close() for connection in connections])

        def serve():
            try:
                while True:
                    connection, _ = listener.accept()
                    if greeting is None:
                        connection.close()
                        continue
                    connection.sendall(greeting)
                    connections.append(connection)
            except OSError:
                pass
        threading.Thread(target=serve, daemon=True).start()
        return "127.0.0.1:%d" % listener.getsockname()[1]

    def faulty(self, **faults):
        """A display that has the project's files."""
        display = self.displays.make(**faults)
        device_files.write(display.root, "X", self.project)
        (display.root / "X.orx").unlink()
        return display.address

    def ends(self, *arguments):
        results, _ = self.results(1, *arguments)
        return {name: (result["result"], result["reason"]) for name, result in results.items()}

    def connecting(self):
        unknown = "x" * 64  # no name has such a part, so that nobody is asked for it
        return {NOBODY: "connection refused", unknown: "unknown host",
                self.service(b""): "no answer within 10 s",
                self.service(b"SSH-2.0-OpenSSH_9.2\r\n"): "no file service answers there",
                self.service(None): "hung up",
                self.faulty(replies={"220": "421 Too many connections"}): "refused: 421 Too many connections",
                self.faulty(replies={"230": "530 Not today"}): "login refused: 530 Not today"}

    def test_an_upload_names_the_cause(self):
        causes = self.connecting()
        expected = {address: ("failed", cause) for address, cause in causes.items()}
        expected[self.faulty(replies={"226": "452 disk full"})] = ("failed", "modbus.adr was not taken: 452 disk full")
        expected[self.faulty(silent_at=7)] = ("failed", "modbus.adr was not taken: no answer within 10 s")
        expected[self.faulty(hangs_up_at=9)] = ("half", "ilmvar.def was not taken: hung up; arrived: modbus.adr")
        expected[self.faulty(replies={"226": "552 \x1b[2J" + "\u00e9" * 100})] = (
            "failed", "modbus.adr was not taken: 552 ?[2J" + "\u00e9" * 72)
        expected[self.faulty(hangs_up_at=LAST_COMMAND)] = ("done", "the end was not confirmed: hung up")
        expected[self.faulty(silent_at=LAST_COMMAND)] = ("done", "the end was not confirmed: no answer within 10 s")
        expected[self.faulty(replies={"500": "451 Try again"})] = ("done", "the end was not confirmed: 451 Try again")
        expected[self.faulty()] = ("done", "")
        self.displays.serve()
        self.assertEqual(self.ends("upload", "plant/LINE3.orx", "--jobs", "20", "--to", *expected), expected)

    def test_a_download_and_a_comparison_name_the_cause(self):
        causes = self.connecting()
        missing = self.faulty()
        (self.displays.all[-1].root / "altmsg.ilm").unlink()
        causes[missing] = "altmsg.ilm could not be fetched: 550 /altmsg.ilm is not retrievable."
        causes[self.faulty(replies={"125": "425 No way"})] = "its list of files could not be fetched: 425 No way"
        causes[self.faulty(lies=7000000)] = "modbus.adr could not be fetched: it ended too early"
        self.displays.serve()
        rows = [f"{i},{address},,plant/LINE3.orx" for i, address in enumerate(causes)]
        expected = {str(i): ("failed", cause) for i, cause in enumerate(causes.values())}
        name = self.write_list(rows)
        self.assertEqual(self.ends("download", "--jobs", "20", "--list", name, "-o", "backup"), expected)
        self.assertEqual(self.ends("compare", "--jobs", "20", "--list", name), expected)


main()
