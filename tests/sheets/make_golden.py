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


def described(row, note):
    """What is said of an item: unit, place, the other items there, who shows it and what it is."""
    place = f"{row['table']} {row['reference']}, address {row['address']}"
    if row["kind"] == "float":
        place += ", low word first (CDAB)"
    who = row["used_by"] if row["kind"] in ("float", "boolean") else row["name"]
    comment = note.get("comment", "")
    return "; ".join(filter(None, [note.get("unit"), place, row["note"], ": ".join(filter(None, [who, comment]))]))


def plc_items(rows, notes):
    """Name, type, initial value, description and row of each. The example's defaults are plain decimals."""
    for row in rows:
        note = notes["items"].get(row["name"], {})
        if row["kind"] == "float":
            initial = repr(float(row["default"]))
        else:
            initial = "TRUE" if row["default"] == "1" else "FALSE"
        yield ("LINE3_" + note.get("label", row["name"]), "REAL" if row["kind"] == "float" else "BOOL", initial,
               described(row, note), row)


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
    lines = [st_comment("Addresses of PUMPSTATION.orx"), st_comment("Display: Line 3, gate"),
             st_comment("Fingerprint of the project: 0123456789ab"), st_comment("As of 2026-11-22T03:15:07Z"), ""]
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


def plcopen_xml(items):
    def variable(name, kind, initial, text):
        lines = [f'          <variable name="{name}">', f"            <type>{kind}</type>"]
        if initial:
            lines.append(f'            <initialValue><simpleValue value="{initial}"/></initialValue>')
        text = escape(text, {'"': "&quot;"})
        return lines + [f"            <documentation><xhtml:p>{text}</xhtml:p></documentation>", "          </variable>"]

    lines = ['<?xml version="1.0" encoding="utf-8"?>',
             '<project xmlns="http://www.plcopen.org/xml/tc6_0201" xmlns:xhtml="http://www.w3.org/1999/xhtml">',
             '  <fileHeader companyName="" productName="Orvista Message Editor" productVersion="1.03-2" '
             'creationDateTime="2026-11-22T03:15:07Z" contentDescription="Addresses of PUMPSTATION.orx; display: Line 3, gate; '
             'fingerprint of the project: 0123456789ab"/>',
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


def main():
    project = read_project(EXAMPLE)
    rows = address_rows(project)
    notes = json.loads((HERE / "golden" / "PUMPSTATION.notes.json").read_text("utf-8"))
    (HERE / "golden" / "addresses.st").write_bytes(structured_text(plc_items(rows, notes)))
    (HERE / "golden" / "addresses.xml").write_bytes(plcopen_xml(plc_items(rows, notes)))
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
