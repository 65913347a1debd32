"""An independent Modbus/TCP device for one test: its port goes to standard output, then a line for each write
it took, "coils ADDRESS BITS" or "registers ADDRESS WORDS". It ends with the end of standard input.
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


def end_with_input():
    while os.read(0, 1):
        pass
    os._exit(0)


async def main():
    memory = ModbusSlaveContext(co=Told("coils"), hr=Told("registers"), zero_mode=True)
    context = ModbusServerContext(slaves={255: memory}, single=False)
    server = async_io.ModbusTcpServer(context, address=("127.0.0.1", 0))
    serving = asyncio.ensure_future(server.serve_forever())
    await server.serving
    print(server.server.sockets[0].getsockname()[1], flush=True)
    await serving


logging.disable(logging.CRITICAL)
threading.Thread(target=end_with_input, daemon=True).start()
asyncio.run(main())
