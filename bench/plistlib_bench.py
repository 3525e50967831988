"""plistlib_bench.py FILE: decodes and encodes a binary property list with Python's own library."""

import plistlib
import sys
import timeit


def report(name, work):
    timer = timeit.Timer(work)
    number, _ = timer.autorange()
    print(name, timer.timeit(number) / number, "s")


with open(sys.argv[1], "rb") as file:
    data = file.read()
value = plistlib.loads(data)
report("decode-plistlib", lambda: plistlib.loads(data))
report("encode-plistlib", lambda: plistlib.dumps(value, fmt=plistlib.FMT_BINARY))
