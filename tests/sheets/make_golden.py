#!/usr/bin/env python3
"""Writes what the tables of the example project must hold into golden/, from the description of the tables alone:
nothing here is shared with the program."""

import csv
import io
import re
from pathlib import Path

HERE = Path(__file__).parent
EXAMPLE = HERE.parents[1] / "examples" / "pumpstation" / "PUMPSTATION.orx"
COLOURS = "(RED|GREEN|ORANGE|BLACK) (RED|GREEN|ORANGE|BLACK)"
SPEEDS = {"100": "Low", "50": "Medium", "25": "High"}
ADDRESS_HEAD = ("kind,number,name,table,address,address_hex,reference,count,data_type,word_order,write_function,"
                "used_by,default,format,text,note,label,unit,comment").split(",")
PAGE_HEAD = (["message", "page", "content", "bitmap", "font", "foreground", "background"]
             + [f"var{n}{suffix}" for n in (1, 2, 3, 4) for suffix in ("", "_foreground", "_background")]
             + ["entering", "entering_speed", "special", "delay", "leaving", "leaving_speed", "script"])
VARIABLE_HEAD = ["name", "default", "width", "precision", "on", "off"]


def read_project(path):
    """What opening the file gives."""
    project = {"STDMSG": [], "ALTMSG": [], "RegVar": [], "CoilVar": []}
    section, message, variable = None, None, {}
    for line in path.read_bytes().decode("cp1252").split("\r\n"):
        line = line.strip(" ")
        if line.startswith("["):
            section = line.strip("[]")
        elif not line:
            continue
        elif section == "MODBUS.ADR":
            name, value = line.split()
            project[name] = int(value)
        elif section in ("STDMSG.ILM", "ALTMSG.ILM"):
            if line.startswith("DEFMSG"):
                message = []
            elif line == "ENDMSG":
                project[section[:6]].append("".join(text + "\r\n" for text in message))
            else:
                message.append(line)
        elif section == "ILMVAR.DEF":
            key, _, value = line.partition(" ")
            value = value.strip(" ")
            if key == "ENDVAR":
                project["RegVar" if variable["type"] == "float" else "CoilVar"].append(variable)
                variable = {}
            else:
                variable[key] = value[1:-1] if key in ("ON", "OFF") else value
    return project


def shown_width(project, name):
    if name in ("TIME", "DATE"):
        return {"TIME": 8, "DATE": 10}[name]
    kind, number = re.fullmatch(r"(RegVar|CoilVar)(\d+)", name).groups()
    variable = project[kind][int(number) - 1]
    return int(variable["width"]) if kind == "RegVar" else max(len(variable["ON"]), len(variable["OFF"]))


def with_places(project, text, fields):
    """The text with %wv for each (column, name)."""
    content, taken = "", 0
    for i, (column, name) in enumerate(fields):
        end = fields[i + 1][0] if i + 1 < len(fields) else len(text)
        blanks = re.match(" *", text[column:end]).end()
        width = max(1, min(blanks, shown_width(project, name)))
        content += text[taken:column] + f"%{width}v"
        taken = column + width
    return content + text[taken:]


def pages_of(script):
    """Of a script as the wizard writes it: the lines of each page."""
    pages = []
    for line in script.split("\r\n"):
        if line == "CLEAR":
            pages.append([])
        elif line:
            pages[-1].append(line)
    return pages


def read_text(project, lines):
    """Font, colours, text with places, and fields of a page's text."""
    match = re.fullmatch(f'(TEXTS?) 0 [05] {COLOURS} "(.*)"', lines[0])
    if not match:
        return None
    cell = 6 if match[1] == "TEXTS" else 8
    fields = []
    for line in lines[1:]:
        field = re.fullmatch(f"(DISPVAR|TIME|DATE)S? (\\d+) [05] {COLOURS}(?: (\\w+))?", line)
        if field:
            fields.append((int(field[2]) // cell, field[5] or field[1], field[3], field[4]))
    text = with_places(project, match[4], [field[:2] for field in fields])
    return ("5x7" if cell == 6 else "8x15", match[2], match[3], text, fields)


def page_row(project, lines):
    row = dict.fromkeys(PAGE_HEAD, "")
    if not lines:
        return row
    picture = re.fullmatch(f"IMG 0 0 {COLOURS} (.*)", lines[0])
    if picture:
        row["foreground"], row["background"], row["bitmap"] = picture.groups()
    else:
        row["font"], row["foreground"], row["background"], row["content"], fields = read_text(project, lines)
        for n, (_, name, foreground, background) in enumerate(fields, 1):
            row[f"var{n}"], row[f"var{n}_foreground"], row[f"var{n}_background"] = name, foreground, background
    row["entering"] = row["leaving"] = "NONE"
    row["special"] = "STILL"
    for line in lines:
        words = line.split()
        if words[0] in ("IN", "OUT"):
            column = "entering" if words[0] == "IN" else "leaving"
            row[column], row[column + "_speed"] = words[1], SPEEDS[words[-1]]
        elif words[:2] == ["ACT", "BLINK"]:
            row["special"] = "BLINK"
        elif words[:2] == ["ACT", "STILL"] and row["special"] == "STILL":
            row["delay"] = str(int(words[2]) // 1000)
    return row


def users(project, name):
    found = []
    for kind in ("STDMSG", "ALTMSG"):
        for number, script in enumerate(project[kind], 1):
            if any(re.match("DISPVARS? ", line) and line.split()[-1] == name for line in script.split("\r\n")):
                found.append(f"{kind}{number}")
    return " ".join(found)


def first_text(project, script):
    for lines in pages_of(script):
        if lines and lines[0].startswith("TEXT"):
            return read_text(project, lines)[3]
    return ""


def placed(row, address):
    row["address"] = str(address)
    if 0 <= address <= 65535:
        row["address_hex"] = f"0x{address:04X}"
        row["reference"] = ("4" if row["kind"] == "float" else "0") + f"{address + 1:04d}"
    else:
        row["note"] = "not addressable"
    return row


def address_rows(project):
    rows = []
    for kind, start, table, step in (("float", project["AnalogInput"], "RegVar", 2),
                                     ("boolean", project["DigitalInput"], "CoilVar", 1),
                                     ("emergency", project["AlertMessage"], "ALTMSG", 1),
                                     ("regular", project["AlertMessage"] + 20, "STDMSG", 1)):
        for index, item in enumerate(project[table]):
            row = dict.fromkeys(ADDRESS_HEAD, "")
            row.update(kind=kind, number=str(index + 1), name=f"{table}{index + 1}", table="coil", count="1",
                       data_type="bit", write_function="5 15")
            if kind == "float":
                row.update(table="holding register", count="2", data_type="float32", word_order="low word first",
                           write_function="16", default=item["default"],
                           format=item["width"] + "." + item["precision"], used_by=users(project, row["name"]))
            elif kind == "boolean":
                row.update(write_function="5", default=item["default"], text=item["OFF"] + "/" + item["ON"],
                           used_by=users(project, row["name"]))
            else:
                row["text"] = first_text(project, item)
            rows.append(placed(row, start + step * index))
    for row in rows:
        for other in rows:
            if row is not other and row["table"] == other["table"] == "coil" and row["address"] == other["address"]:
                row["note"] += ("; " if row["note"] else "") + "also " + other["name"]
    return rows


def is_used(project, row):
    if row["kind"] in ("float", "boolean"):
        return bool(row["used_by"])
    return any(pages_of(project[row["name"][:6]][int(row["number"]) - 1]))


def write_table(name, head, rows, separator=","):
    text = io.StringIO()
    writer = csv.writer(text, delimiter=separator, lineterminator="\r\n")
    writer.writerow(head)
    for row in rows:
        cells = [row[column] for column in head]
        # None of the example's texts looks like a formula, so no cell needs an apostrophe.
        assert not any(re.match("'*[=+@\t-]", cell) for cell in cells)
        writer.writerow(cells)
    (HERE / "golden" / name).write_bytes(b"\xef\xbb\xbf" + text.getvalue().encode("utf-8"))


def message_rows(project):
    return [(f"{kind}{number}", script) for kind in ("STDMSG", "ALTMSG")
            for number, script in enumerate(project[kind], 1)]


def main():
    project = read_project(EXAMPLE)
    rows = address_rows(project)
    write_table("addresses.csv", ADDRESS_HEAD, rows)
    write_table("addresses-semicolon.csv", ADDRESS_HEAD, rows, ";")
    write_table("addresses-used.csv", ADDRESS_HEAD, [row for row in rows if is_used(project, row)])
    # The coils of the variables on those of the messages, and both beyond what a request can name.
    write_table("addresses-shared.csv", ADDRESS_HEAD,
                address_rows(project | {"DigitalInput": 65530, "AlertMessage": 65510, "AnalogInput": 9950}))
    write_table("messages.csv", ["message", "script"],
                [{"message": name, "script": script} for name, script in message_rows(project)])
    pages = []
    for name, script in message_rows(project):
        for number, lines in enumerate(pages_of(script), 1):
            pages.append(page_row(project, lines) | {"message": name, "page": str(number)})
    write_table("pages.csv", PAGE_HEAD, pages)
    write_table("variables.csv", VARIABLE_HEAD, [
        {"name": f"RegVar{n}", "default": v["default"], "width": v["width"], "precision": v["precision"], "on": "",
         "off": ""} for n, v in enumerate(project["RegVar"], 1)] + [
        {"name": f"CoilVar{n}", "default": v["default"], "width": "", "precision": "", "on": v["ON"],
         "off": v["OFF"]} for n, v in enumerate(project["CoilVar"], 1)])


main()
