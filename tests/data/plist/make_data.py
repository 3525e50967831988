#!/usr/bin/env python3
"""Writes the property lists beside this script with Python's plistlib. Run it again after a change here."""

import datetime
import pathlib
import plistlib

HERE = pathlib.Path(__file__).parent

TYPES = {
    "array": [1, "two", [3.5, {}], []],
    "bytes": bytes(range(256)),
    "date": datetime.datetime(2024, 2, 29, 12, 0, 0),
    "date before the epoch of the binary form": datetime.datetime(1987, 6, 5, 4, 3, 2),
    "dictionary": {"inner": {"innermost": True}},
    "empty": "",
    "escaped": "<a & b>\n\t\"c\"",
    "false": False,
    "integers": [0, 127, 128, 255, 256, 65535, 65536, 2**31, 2**32 - 1, 2**32, 2**63 - 1, -1, -(2**63)],
    "no bytes": b"",
    "reals": [0.0, -1.5, 92.5, 123.456789, 1e-300, 1e300],
    "long": "0123456789" * 30,
    "true": True,
    "\u00fcml\u00e4ut": "Gr\u00f6\u00dfe",
    "outside the basic plane": "\U0001f3b9 \u20ac",
}

METADATA = {
    "SongKey": "C#",
    "BeatsPerMinute": 92.5,
    "NumberOfTracks": 48,
    "Markers": [{"Name": "Verse", "Position": 38400 * i} for i in range(300)],
    "Names": ["a name that is written once and used often"] * 2000,
}


def write(name, value, fmt, **options):
    (HERE / name).write_bytes(plistlib.dumps(value, fmt=fmt, **options))


write("types-binary.plist", TYPES, plistlib.FMT_BINARY)
write("types-xml.plist", TYPES, plistlib.FMT_XML)
write("metadata-unsorted.plist", METADATA, plistlib.FMT_BINARY, sort_keys=False)
write("uid.plist", {"id": plistlib.UID(7)}, plistlib.FMT_BINARY)
write("huge-integer.plist", 2**63, plistlib.FMT_BINARY)
