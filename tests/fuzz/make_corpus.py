#!/usr/bin/env python3
"""Writes the corpus beside this script: small lists, pictures and notes, whole and hostile, for the fuzzer to begin with.

What the fuzzer found is kept there as well, in files whose names begin with "found-"; they are left alone.
"""

import datetime
import pathlib
import plistlib
import struct
import zlib

CORPUS = pathlib.Path(__file__).parent / "corpus"


def write(folder, name, data):
    path = CORPUS / folder
    path.mkdir(parents=True, exist_ok=True)
    (path / name).write_bytes(data)


# --- Lists ---

TYPES = {
    "array": [1, "two", [3.5, {}], []],
    "data": bytes(range(20)),
    "date": datetime.datetime(2024, 2, 29, 12, 0, 0),
    "escaped": "<a & b>\n\t\"c\"",
    "false": False,
    "integers": [0, 255, 256, 65536, 2**32, -1, -(2**63)],
    "reals": [0.0, -1.5, 1e300],
    "long": "0123456789" * 3,
    "true": True,
    "\u00fcml\u00e4ut": "\U0001f3b9 \u20ac",
}


def binary_list(objects, offset_size=1, reference_size=1):
    body = b"bplist00"
    table = b""
    for an_object in objects:
        table += len(body).to_bytes(offset_size, "big")
        body += an_object
    counts = struct.pack(">6xBBQQQ", offset_size, reference_size, len(objects), 0, len(body))
    return body + table + counts


def write_lists():
    write("lists", "types-binary", plistlib.dumps(TYPES, fmt=plistlib.FMT_BINARY))
    write("lists", "types-xml", plistlib.dumps(TYPES, fmt=plistlib.FMT_XML))
    write("lists", "uid", plistlib.dumps([plistlib.UID(7)], fmt=plistlib.FMT_BINARY))
    write("lists", "contains-itself", binary_list([b"\xa1\x00"]))
    write("lists", "slow-doublings", binary_list([bytes([0xA2, i, i]) for i in range(1, 60)] + [b"\x09"]))
    write("lists", "shared-text", binary_list([b"\xaf\x10\x3f" + b"\x01" * 63, b"\x5f\x10\x40" + b"x" * 64]))
    write("lists", "endless-length", binary_list([b"\xaf\x13" + b"\x20" + bytes(7)], reference_size=8))
    write("lists", "unknown-node", b"<plist><set/></plist>")
    write("lists", "key-without-value", b"<plist><dict><key>A</key></dict></plist>")
    write("lists", "deep", b"<plist>" + b"<array>" * 600 + b"</array>" * 600 + b"</plist>")
    write("lists", "utf16", "<plist><array><true/><string>\u00e9</string></array></plist>".encode("utf-16"))


# --- Pictures ---


def chunk(name, data=b""):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def png(width, height, depth, colours, row, extra=b"", interlace=0, behind=b""):
    header = chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, depth, colours, 0, 0, interlace))
    rows = b"".join(b"\0" + row for _ in range(height))
    return b"\x89PNG\r\n\x1a\n" + header + extra + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND") + behind


def segment(marker, data):
    return bytes([0xFF, marker]) + struct.pack(">H", len(data) + 2) + data


def table(table_class, value):
    """One code of one bit."""
    return segment(0xC4, bytes([table_class, 1]) + bytes(15) + bytes([value]))


def scan(components, first, last, data):
    header = bytes([len(components)]) + b"".join(bytes([c, 0]) for c in components)
    return segment(0xDA, header + bytes([first, last, 0])) + data


def jpeg(frame_marker, components, scans, extra=b""):
    frame = struct.pack(">BHHB", 8, 8, 8, components)
    frame += b"".join(bytes([i + 1, 0x11, 0]) for i in range(components))
    tables = segment(0xDB, b"\0" + b"\x01" * 64) + table(0x00, 0) + table(0x10, 0)
    return b"\xff\xd8" + extra + tables + segment(frame_marker, frame) + scans + b"\xff\xd9"


def write_pictures():
    write("pictures", "rgba.png", png(4, 3, 8, 6, bytes(range(16))))
    write("pictures", "palette.png", png(9, 2, 1, 3, b"\x55\x80", chunk(b"PLTE", bytes(6)) + chunk(b"tRNS", b"\x7f")))
    write("pictures", "deep.png", png(2, 2, 16, 2, bytes(12), chunk(b"gAMA", struct.pack(">I", 45455))))
    write("pictures", "interlaced.png", png(1, 1, 8, 0, b"\x80", interlace=1))
    write("pictures", "texts.png", png(1, 1, 8, 0, b"\0", chunk(b"zTXt", b"k\0\0" + zlib.compress(bytes(100000))) * 4))
    write("pictures", "trailing.png", png(1, 1, 8, 0, b"\0", behind=b"\xff\xd8\xff"))
    write("pictures", "huge.png", png(0x7FFFFFFF, 0, 8, 6, b""))
    grey = scan([1], 0, 63, b"\x3f")
    write("pictures", "grey.jpg", jpeg(0xC0, 1, grey, segment(0xE0, b"JFIF\0\1\1\0\0\1\0\1\0\0")))
    write("pictures", "colour.jpg", jpeg(0xC0, 3, scan([1, 2, 3], 0, 63, b"\x03"), segment(0xE1, b"Exif\0\0")))
    write("pictures", "cmyk.jpg", jpeg(0xC1, 4, scan([1, 2, 3, 4], 0, 63, b"\0"), segment(0xEE, b"Adobe" + bytes(7))))
    in_turn = b"".join(scan([i], 0, 63, b"\x3f") for i in (1, 2, 3))
    write("pictures", "one-by-one.jpg", jpeg(0xC0, 3, in_turn))
    passes = scan([1, 2, 3], 0, 0, b"\x1f") + b"".join(scan([i], 1, 63, b"\x7f") for i in (1, 2, 3))
    write("pictures", "progressive.jpg", jpeg(0xC2, 3, passes))
    write("pictures", "restarts.jpg", jpeg(0xC0, 1, grey, segment(0xDD, b"\0\1")))
    write("pictures", "restart-with-length.jpg", jpeg(0xC0, 1, grey, segment(0xD0, b"\0\1")))
    write("pictures", "two-frames.jpg", jpeg(0xC0, 1, segment(0xC2, b"\x08" + bytes(8)) + grey))


# --- Bundles ---

SONG = {
    "ActiveVariant": 1,
    "BeatsPerMinute": 92.5,
    "LastSavedFrom": "Logic Pro 10.7.9 (5762)",
    "NumberOfTracks": 48,
    "SUFID": "2049-1234567",
    "SampleRate": 44100,
    "SongGenderKey": "minor",
    "SongKey": "C#",
    "SongSignatureDenominator": 4,
    "SongSignatureNumerator": 3,
    "VariantNamesV2": {"0": "a", "1": "b"},
    "project_id": 7,
}


def write_bundles():
    write("bundles", "song-binary", plistlib.dumps(SONG, fmt=plistlib.FMT_BINARY))
    write("bundles", "song-xml", plistlib.dumps(SONG, fmt=plistlib.FMT_XML))
    other = dict(SONG, ActiveVariant=-99, SUFID=["x"], SongKey="x" * 2000, VariantNamesV2={}, project_id=2**63 - 1)
    write("bundles", "odd-values", plistlib.dumps(other, fmt=plistlib.FMT_BINARY))
    write("bundles", "an-array", plistlib.dumps([SONG], fmt=plistlib.FMT_BINARY))
    write("bundles", "empty", b"")


write_lists()
write_pictures()
write_bundles()
