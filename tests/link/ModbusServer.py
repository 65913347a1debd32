"""An independent Modbus/TCP device for one test: its port goes to standard output, then a line for each write
it took, "coils ADDRESS BITS" or "registers ADDRESS WORDS". A line of standard input says how writes are answered
from now on, "well", "exception CODE" (they are not carried out then) or one of FAULTS, and is repeated to standard
output. It ends with the end of standard input.
"""

import asyncio
import logging
import os
import sys
import threading
from unittest.mock import MagicMock

# The library's package insists on serial lines, which nobody needs here.
for absent in ("serial", "serial_asyncio"):
    sys.modules.setdefault(absent, MagicMock())

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext  # noqa: E402
from pymodbus.server import async_io  # noqa: E402


class Told(ModbusSequentialDataBlock):
    """Says what is written."""

    def __init__(self, kind):
        super().__init__(0, [0] * 65536)
        self.kind = kind

    def setValues(self, address, values):  # noqa: N802
        super().setValues(address, values)
        values = values if isinstance(values, list) else [values]
        print(self.kind, address, ",".join(str(int(value)) for value in values), flush=True)


FAULTS = {
    "wrong transaction": lambda frame: bytes([frame[0] ^ 1]) + frame[1:],
    "wrong unit": lambda frame: frame[:6] + bytes([frame[6] ^ 1]) + frame[7:],
    "cut off": lambda frame: frame[:-1],
    "silent": lambda frame: b"",
}


class Misbehaving(async_io.ModbusConnectedRequestHandler):
    """Answers writes as it was told last."""

    manner = "well"

    def execute(self, request, *addr):
        self.change = bytes
        if request.function_code in (5, 16):
            self.change = FAULTS.get(self.manner, bytes)
            if self.manner.startswith("exception "):
                self.refuse(request, int(self.manner.split()[1]), *addr)
                return
        super().execute(request, *addr)

    def refuse(self, request, code, *addr):
        answer = request.doException(code)
        answer.transaction_id = request.transaction_id
        answer.unit_id = request.unit_id
        self.send(answer, *addr)

    def _send_(self, data):
        super()._send_(self.change(bytes(data)))


def follow_input():
    for line in sys.stdin:
        Misbehaving.manner = line.rstrip("\n")
        print(Misbehaving.manner, flush=True)
    os._exit(0)


async def main():
    memory = ModbusSlaveContext(co=Told("coils"), hr=Told("registers"), zero_mode=True)
    context = ModbusServerContext(slaves={255: memory}, single=False)
    server = async_io.ModbusTcpServer(context, address=("127.0.0.1", 0), handler=Misbehaving)
    serving = asyncio.ensure_future(server.serve_forever())
    await server.serving
    print(server.server.sockets[0].getsockname()[1], flush=True)
    await serving


logging.disable(logging.CRITICAL)
threading.Thread(target=follow_input, daemon=True).start()
asyncio.run(main())
