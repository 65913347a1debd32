#!/usr/bin/env python3
"""Writes what the tables of the example project must hold into golden/, from the description of the tables alone:
nothing here is shared with the program."""

import csv
import io
import json
import re
import unicodedata
from xml.sax.saxutils import escape
from pathlib import Path

HERE = Path(__file__).parent
EXAMPLE = HERE.parents[1] / "examples" / "pumpstation" / "PUMPSTATION.orx"
NOTES = json.loads(EXAMPLE.with_suffix(".notes.json").read_text("utf-8"))
COLOURS = "(RED|GREEN|ORANGE|BLACK) (RED|GREEN|ORANGE|BLACK)"
SPEEDS = {"100": "Low", "50": "Medium", "25": "High"}
ADDRESS_HEAD = ("kind,number,name,table,address,address_hex,reference,count,data_type,word_order,write_function,"
                "used_by,default,format,text,note,label,unit,comment").split(",")
PAGE_HEAD = (["message", "page", "content", "bitmap", "font", "foreground", "background"]
             + [f"var{n}{suffix}" for n in (1, 2, 3, 4) for suffix in ("", "_foreground", "_background")]
             + ["entering", "entering_speed", "special", "delay", "leaving", "leaving_speed", "script"])
NAME_HEAD = ["name", "label", "unit", "comment"]
VARIABLE_HEAD = ["name", "default", "width", "precision", "on", "off"]
HEAD = {"file": "PUMPSTATION.orx", "display": NOTES["display"]["name"], "fingerprint": "0123456789ab",
        "time": "2026-11-22T03:15:07Z"}


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
            row.update(NOTES["items"].get(f"{table}{index + 1}", {}))
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


REAL_BITS = """FUNCTION %RealBits : DWORD
(* The bits of a REAL. Each tool has a way of its own for this, such as a union or a copy of memory: take it in
   place of these lines, which reckon with standard functions only. *)
VAR_INPUT
    Value : REAL;
END_VAR
VAR
    Rest : REAL;
    Exponent : DINT;
    Bits : DWORD;
END_VAR
IF NOT (Value = Value) THEN
    Bits := DWORD#16#7FC00000;
ELSIF Value = 0.0 THEN
    Bits := DWORD#16#00000000;
ELSE
    Rest := ABS(Value);
    Exponent := 127;
    WHILE (Rest >= 2.0) AND (Exponent < 255) DO
        Rest := Rest / 2.0;
        Exponent := Exponent + 1;
    END_WHILE;
    WHILE (Rest < 1.0) AND (Exponent > 1) DO
        Rest := Rest * 2.0;
        Exponent := Exponent - 1;
    END_WHILE;
    IF Exponent = 255 THEN
        Rest := 0.0;
    ELSIF Rest < 1.0 THEN
        Exponent := 0;
    ELSE
        Rest := Rest - 1.0;
    END_IF;
    Bits := SHL(DINT_TO_DWORD(Exponent), 23) OR DINT_TO_DWORD(REAL_TO_DINT(Rest * 8388608.0));
    IF Value < 0.0 THEN
        Bits := Bits OR DWORD#16#80000000;
    END_IF;
END_IF;
%RealBits := Bits;
END_FUNCTION
"""


def described(row):
    """What is said of an item: unit, place, the other items there, who shows it and what it is."""
    place = f"{row['table']} {row['reference']}, address {row['address']}"
    if row["kind"] == "float":
        place += ", low word first (CDAB)"
    who = row["used_by"] if row["kind"] in ("float", "boolean") else row["name"]
    return "; ".join(filter(None, [row["unit"], place, row["note"], ": ".join(filter(None, [who, row["comment"]]))]))


def plc_items(rows):
    """Name, type, initial value, description and row of each. The example's defaults are plain decimals."""
    for row in rows:
        if row["kind"] == "float":
            initial = repr(float(row["default"]))
        else:
            initial = "TRUE" if row["default"] == "1" else "FALSE"
        yield ("LINE3_" + (row["label"] or row["name"]), "REAL" if row["kind"] == "float" else "BOOL", initial,
               described(row), row)


BUFFERS = [("float", "LINE3_Registers", 128, "WORD", "holding registers, function 16, at most 123 in a request, from address 100"),
           ("boolean", "LINE3_Booleans", 32, "BOOL", "coils of Boolean variables, function 5, from address 100"),
           ("emergency", "LINE3_Emergency", 20, "BOOL", "coils of emergency messages, function 5 or 15, from address 300"),
           ("regular", "LINE3_Regular", 40, "BOOL", "coils of regular messages, function 5 or 15, from address 320")]


def st_comment(text):
    plain = unicodedata.normalize("NFD", text.replace("\u00df", "ss"))
    plain = "".join(c if ord(c) < 128 else "?" for c in plain if not unicodedata.combining(c))
    return "(* " + plain.replace("(*", "( *").replace("*)", "* )") + " *)"


def structured_text(items):
    items = list(items)
    lines = [st_comment("Addresses of PUMPSTATION.orx"), st_comment(f"Display: {HEAD['display']}"),
             st_comment(f"Fingerprint of the project: {HEAD['fingerprint']}"), st_comment(f"As of {HEAD['time']}"), ""]
    lines += REAL_BITS.replace("%", "LINE3_").splitlines() + ["", "VAR_GLOBAL"]
    lines += [f"    {name} : {kind} := {initial}; {st_comment(text)}" for name, kind, initial, text, _ in items]
    arrays = [f"    {name} : ARRAY [0..{count - 1}] OF {kind};" for _, name, count, kind, _ in BUFFERS]
    lines += [f"{array} {st_comment(buffer[4])}" for array, buffer in zip(arrays, BUFFERS)]
    lines += ["END_VAR", "", "PROGRAM LINE3_ToDisplay", "VAR_EXTERNAL"]
    lines += [f"    {name} : {kind};" for name, kind, _, _, _ in items] + arrays
    lines += ["END_VAR", "VAR", "    LINE3_Bits : DWORD;", "END_VAR",
              "(* Fills what a Modbus client sends. The first of two registers is the low word. *)",
              "LINE3_Bits := DWORD#16#00000000;"]
    for name, _, _, _, row in items:
        place = int(row["number"]) - 1
        if row["kind"] == "float":
            lines += [f"LINE3_Bits := LINE3_RealBits({name});", f"LINE3_Registers[{2 * place}] := DWORD_TO_WORD(LINE3_Bits);",
                      f"LINE3_Registers[{2 * place + 1}] := DWORD_TO_WORD(SHR(LINE3_Bits, 16));"]
        else:
            lines.append(f"{ {kind: array for kind, array, *_ in BUFFERS}[row['kind']] }[{place}] := {name};")
    return "".join(line + "\r\n" for line in lines + ["END_PROGRAM"]).encode("ascii")


def in_markup(text):
    return escape(text, {'"': "&quot;"})


def plcopen_xml(items):
    def variable(name, kind, initial, text):
        lines = [f'          <variable name="{name}">', f"            <type>{kind}</type>"]
        if initial:
            lines.append(f'            <initialValue><simpleValue value="{initial}"/></initialValue>')
        return lines + [f"            <documentation><xhtml:p>{in_markup(text)}</xhtml:p></documentation>", "          </variable>"]

    lines = ['<?xml version="1.0" encoding="utf-8"?>',
             '<project xmlns="http://www.plcopen.org/xml/tc6_0201" xmlns:xhtml="http://www.w3.org/1999/xhtml">',
             '  <fileHeader companyName="" productName="Orvista Message Editor" productVersion="1.03-2" '
             f'creationDateTime="{HEAD["time"]}" contentDescription="Addresses of PUMPSTATION.orx; display: {HEAD["display"]}; '
             f'fingerprint of the project: {HEAD["fingerprint"]}"/>',
             '  <contentHeader name="PUMPSTATION">', "    <coordinateInfo>"]
    lines += [f'      <{language}><scaling x="1" y="1"/></{language}>' for language in ("fbd", "ld", "sfc")]
    lines += ["    </coordinateInfo>", "  </contentHeader>", "  <types>", "    <dataTypes/>", "    <pous/>", "  </types>",
              "  <instances>", "    <configurations>", '      <configuration name="LINE3_Globals">',
              '        <globalVars name="LINE3_Globals">']
    for name, kind, initial, text, row in items:
        lines += variable(name, f"<{kind}/>", initial, f"{row['name']}; {text}")
    for _, name, count, kind, text in BUFFERS:
        lines += variable(name, f'<array><dimension lower="0" upper="{count - 1}"/><baseType><{kind}/></baseType></array>', "", text)
    lines += ["        </globalVars>", "      </configuration>", "    </configurations>", "  </instances>", "</project>"]
    return "".join(line + "\n" for line in lines).encode("utf-8")


HTML_START = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Addresses of PUMPSTATION</title>
<style>
body { font: 10pt sans-serif; margin: 2em; color: #000; background: #fff }
h1 { font-size: 16pt } h2 { font-size: 12pt; margin-top: 2em; break-after: avoid }
table { border-collapse: collapse; width: 100% }
thead { display: table-header-group } tr { break-inside: avoid }
th, td { border: 1px solid #888; padding: 2px 6px; text-align: left; vertical-align: top }
th { background: #ddd; print-color-adjust: exact; -webkit-print-color-adjust: exact }
td { white-space: pre-wrap }
@page { size: A4 landscape; margin: 12mm }
@media print { body { margin: 0; font-size: 8pt } }
</style>
</head>
<body>
<h1>Addresses of PUMPSTATION</h1>
<p>Device address: 127.0.0.1</p>
"""
EXPLANATIONS = """<p>In this list addresses count from 0, as in the request. A reference counts from 1, after a 0 for coils and
a 4 for holding registers. Coils are written with function 5, the coils of messages also with function 15.</p>
<p>A float takes two holding registers, the low word first, and is written whole with function 16. 123.456 is
42F6E979 as a single: its first register is E979, the second 42F6, and the request carries the bytes
E9 79 42 F6. Many tools call this order CDAB.</p>
"""
HTML_TABLES = [("float", "Float variables", {"text"}), ("boolean", "Boolean variables", {"word_order", "format"}),
               ("emergency", "Emergency messages", {"word_order", "format", "used_by", "default"}),
               ("regular", "Regular messages", {"word_order", "format", "used_by", "default"})]


def html_page(rows):
    def line(tag, cells):
        return "<tr>" + "".join(f"<{tag}>{in_markup(cell)}</{tag}>" for cell in cells) + "</tr>\n"

    day, clock = HEAD["time"].rstrip("Z").split("T")
    page = HTML_START + (f"<p>Display: {in_markup(HEAD['display'])}<br>\nFile: {HEAD['file']}</p>\n"
                         f"<p>Fingerprint of the project: {HEAD['fingerprint']}<br>\nAs of {day} {clock} UTC</p>\n")
    page += EXPLANATIONS
    for kind, title, left_out in HTML_TABLES:
        block = [row for row in rows if row["kind"] == kind]
        unused = {column for column in NAME_HEAD[1:] if not any(row[column] for row in block)}
        head = [column for column in ADDRESS_HEAD[1:] if column not in left_out | unused]
        page += f"<h2>{title}</h2>\n<table>\n<thead>" + line("th", [column.replace("_", " ") for column in head])
        page += "</thead>\n<tbody>\n"
        for row in block:
            page += line("td", [row[column] + (" (CDAB)" if column == "word_order" else "") for column in head])
        page += "</tbody>\n</table>\n"
    return (page + "</body>\n</html>\n").encode("utf-8")


def json_list(rows):
    def json_row(row):
        found = {}
        for column in ADDRESS_HEAD:
            found[column] = int(row[column]) if column in ("number", "address", "count") else row[column]
            if column == "word_order":
                found["byte_order"] = "CDAB" if row[column] else ""
        return found

    document = {"version": "1.03-2"} | HEAD | {"addresses": [json_row(row) for row in rows]}
    return (json.dumps(document, indent=2, ensure_ascii=False) + "\n").encode("utf-8")


def quoted(text):
    return json.dumps(text, ensure_ascii=False)


def modbus_scope(rows):
    lines = ["{", f'  "file": {quoted(HEAD["file"])},', f'  "display": {quoted(HEAD["display"])},', '  "host": "127.0.0.1",',
             '  "port": 502,', '  "registers": [']
    floats = [row for row in rows if row["kind"] == "float"]
    for row in floats:
        texts = {"text": row["label"] or row["name"], "expression": f"${{{row['reference']}: f32b}}", "unit": row["unit"],
                 "comment": row["comment"]}
        lines.append("    {" + ", ".join(f'"{key}": {quoted(text)}' for key, text in texts.items()) + "}"
                     + ("" if row is floats[-1] else ","))
    return "".join(line + "\n" for line in lines + ["  ]", "}"]).encode("utf-8")


def home_assistant(rows):
    lines = [f"# Addresses of {HEAD['file']}, {HEAD['display']}",
             f"# Fingerprint of the project: {HEAD['fingerprint']}; as of {HEAD['time']}",
             "modbus:", '  - name: "PUMPSTATION"', "    type: tcp", '    host: "127.0.0.1"', "    port: 502"]
    section = None
    for row in rows:
        is_float = row["kind"] == "float"
        if section != (section := "    sensors:" if is_float else "    switches:"):
            lines.append(section)
        lines.append(f"      - name: {quoted(row['label'] or row['name'])}")
        lines += [f"        # {row['comment']}"] * bool(row["comment"]) + [f"        address: {row['address']}"]
        if is_float:
            lines += ["        input_type: holding", "        data_type: float32", "        swap: word"]
            lines += [f"        unit_of_measurement: {quoted(row['unit'])}"] * bool(row["unit"])
        else:
            lines += ["        write_type: coil", "        command_on: 1", "        command_off: 0"]
    return "".join(line + "\n" for line in lines).encode("utf-8")


def main():
    project = read_project(EXAMPLE)
    rows = address_rows(project)
    for name, content in (("addresses.st", structured_text(plc_items(rows))), ("addresses.xml", plcopen_xml(plc_items(rows))),
                          ("addresses.html", html_page(rows)), ("addresses.json", json_list(rows)),
                          ("modbusscope.json", modbus_scope(rows)), ("home-assistant.yaml", home_assistant(rows))):
        (HERE / "golden" / name).write_bytes(content)
    # Regular messages before emergency messages, as in all tables that come back.
    write_table("names.csv", NAME_HEAD, sorted(rows, key=lambda row: row["kind"] == "emergency"))
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
