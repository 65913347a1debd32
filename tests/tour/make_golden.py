#!/usr/bin/env python3
"""Writes what the guided tour must leave behind, step by step, into golden/."""

import shutil
from pathlib import Path

from device_files import new_project, reopened, write

GOLDEN = Path(__file__).parent / "golden"


def lines(*texts):
    return "\r\n".join(texts).encode("cp1252")


plant = new_project()
plant["IP"] = b"127.0.0.1"
write(GOLDEN / "created", "PLANT", plant)
write(GOLDEN / "saved-as", "PLANT", plant)
write(GOLDEN / "saved-as", "PLANT2", reopened(plant))

station = new_project()
station["IP"] = b"127.0.0.1"
station.update(AlertMessage=400, AnalogInput=200, DigitalInput=150)
# "Level %5v %4v" in the large font: the fields lie at columns 6 and 12.
station["STDMSG"][3] = lines(
    "CLEAR",
    'TEXT 0 0 GREEN BLACK "Level           "',
    "DISPVAR 48 0 ORANGE BLACK RegVar1",
    "DISPVAR 96 0 RED BLACK CoilVar1",
    "IN GO-LEFT 1 50",
    "ACT STILL 3000",
    "OUT GO-UP 1 100")
station["ALTMSG"][1] = lines(
    "CLEAR",
    "IMG 0 0 RED BLACK alarm.bmp",
    "ACT BLINK 4 75",
    "ACT STILL 500")
station["RegVar"][1] = (b"1.5", b"5", b"2")
station["CoilVar"][1] = (b"1", b"RUN", b"STOP")
write(GOLDEN / "edited", "STATION", station)
write(GOLDEN / "saved-again", "STATION", reopened(station))
# The device has the files that opening left. It knows no address of its own: that is typed in again.
write(GOLDEN / "downloaded", "FROMDEVICE", reopened(station))

BITMAP = Path(__file__).parents[2] / "examples" / "pumpstation" / "alarm.bmp"
for folder in ("edited", "saved-again", "downloaded"):
    shutil.copy(BITMAP, GOLDEN / folder)
