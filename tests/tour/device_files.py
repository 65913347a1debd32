"""The project's files, written from the description of their format and not by the editor's own writers.

A project is a dictionary: AnalogInput, DigitalInput, AlertMessage, SerialPort, IP, and the tables STDMSG,
ALTMSG (number: text), RegVar (number: (default, width, precision)) and CoilVar (number: (default, on, off)).
What a table does not name holds its default. All texts are Windows-1252 bytes.
"""

from pathlib import Path

FLOATS, BOOLEANS, REGULAR, EMERGENCY = 64, 32, 40, 20


def new_project():
    return {
        "SerialPort": b"COM1", "IP": b"192.168.1.100", "AnalogInput": 100, "DigitalInput": 100,
        "AlertMessage": 300, "STDMSG": {}, "ALTMSG": {}, "RegVar": {}, "CoilVar": {},
    }


def number(value):
    return str(value).encode("ascii")


def modbus_adr(project):
    return [b"AnalogInput    " + number(project["AnalogInput"]),
            b"DigitalInput   " + number(project["DigitalInput"]),
            b"AlertMessage   " + number(project["AlertMessage"])]


def messages(project, name, count):
    lines = []
    for n in range(1, count + 1):
        text = project[name].get(n, b"CLEAR")
        lines += [b"DEFMSG " + name.encode("ascii") + number(n), text or b"CLEAR", b"ENDMSG"]
    return lines


def ilmvar(project, gap=False):
    lines = []
    for i in range(FLOATS):
        default, width, precision = project["RegVar"].get(i + 1, (b"0.0", b"7", b"3"))
        lines += [b"DEFVAR RegVar" + number(i + 1),
                  b"    type      float",
                  b"    address   " + number(project["AnalogInput"] + 2 * i),
                  b"    default   " + default,
                  b"    width     " + width,
                  b"    precision " + precision,
                  b"ENDVAR"]
    for i in range(BOOLEANS):
        default, on, off = project["CoilVar"].get(i + 1, (b"0", b"ON", b"OFF"))
        lines += [b"DEFVAR CoilVar" + number(i + 1),
                  b"    type      bit",
                  b"    address   " + number(project["DigitalInput"] + i),
                  b"    default   " + default,
                  b'    ON        "' + on + b'"',
                  b'    OFF       "' + off + b'"']
        lines += [b"", b"ENDVAR"] if gap else [b"ENDVAR"]
    return lines


def default_pls():
    return [b"DISPMSG STDMSG" + number(n) for n in range(1, REGULAR + 1)]


def orx(project):
    return ([b"[CONFIG]", b"SerialPort   " + project["SerialPort"], b"IP   " + project["IP"], b"[MODBUS.ADR]"]
            + modbus_adr(project) + [b"[STDMSG.ILM]"] + messages(project, "STDMSG", REGULAR)
            + [b"[ALTMSG.ILM]"] + messages(project, "ALTMSG", EMERGENCY)
            + [b"[ILMVAR.DEF]"] + ilmvar(project, gap=True))


def write(folder, name, project):
    """Writes what a save leaves in a folder."""
    files = {
        name + ".orx": orx(project), "modbus.adr": modbus_adr(project),
        "stdmsg.ilm": messages(project, "STDMSG", REGULAR),
        "altmsg.ilm": messages(project, "ALTMSG", EMERGENCY),
        "ilmvar.def": ilmvar(project), "default.pls": default_pls(),
    }
    Path(folder).mkdir(parents=True, exist_ok=True)
    for file, lines in files.items():
        (Path(folder) / file).write_bytes(b"".join(line + b"\r\n" for line in lines))


def reopened(project):
    """What reading the saved project gives: a line end after every text, no blanks around its lines."""
    def text(raw):
        lines = [line.strip(b" ") for line in raw.split(b"\r\n")]
        return b"".join(line + b"\r\n" for line in lines if line)

    again = dict(project)
    for name, count in (("STDMSG", REGULAR), ("ALTMSG", EMERGENCY)):
        again[name] = {n: text(project[name].get(n) or b"CLEAR") for n in range(1, count + 1)}
    return again
