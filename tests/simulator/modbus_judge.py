"""An independent Modbus master: modbus_judge.py PORT, then steps such as

    coils:300:1010  coil:100:1  registers:100:0,16256  read-coils:300:4  read-registers:100:2

Prints what every step gave, one line each.
"""
import sys
from unittest.mock import MagicMock

# The library's package insists on serial lines, which nobody needs here.
for absent in ("serial", "serial_asyncio"):
    sys.modules.setdefault(absent, MagicMock())

from pymodbus.client import ModbusTcpClient  # noqa: E402


def perform(client, step):
    kind, address, value = step.split(":")
    address = int(address)
    if kind == "coils":
        return client.write_coils(address, [bit == "1" for bit in value], slave=255)
    if kind == "coil":
        return client.write_coil(address, value == "1", slave=255)
    if kind == "registers":
        return client.write_registers(address, [int(word) for word in value.split(",")], slave=255)
    if kind == "read-coils":
        answer = client.read_coils(address, int(value), slave=255)
        return answer if answer.isError() else "".join("1" if bit else "0" for bit in answer.bits[: int(value)])
    if kind == "read-registers":
        answer = client.read_holding_registers(address, int(value), slave=255)
        return answer if answer.isError() else ",".join(str(word) for word in answer.registers)
    raise ValueError(step)


def main():
    client = ModbusTcpClient("127.0.0.1", port=int(sys.argv[1]), timeout=5)
    if not client.connect():
        sys.exit("no connection")
    for step in sys.argv[2:]:
        result = perform(client, step)
        print(result if isinstance(result, str) else ("error %d" % result.exception_code if result.isError() else "done"))
    client.close()


main()
