"""Prints what Python's codecs make of the 256 bytes of a character set, and of all code points.

usage: charset_reference.py CODEC...

For each codec a line of 256 code points in hexadecimal, "-" where the codec has none, and a line of all pairs
"character:byte" that it encodes.
"""
import sys


def decoded(codec, byte):
    try:
        return f"{ord(bytes([byte]).decode(codec)):X}"
    except UnicodeDecodeError:
        return "-"


def encoded(codec):
    for first in range(0, 0x110000, 256):
        row = [chr(code_point) for code_point in range(first, first + 256)]
        if not "".join(row).encode(codec, "ignore"):
            continue
        for ch in row:
            byte = ch.encode(codec, "ignore")
            if byte:
                yield f"{ord(ch):X}:{byte[0]:X}"


for codec in sys.argv[1:]:
    print(" ".join(decoded(codec, byte) for byte in range(256)))
    print(" ".join(encoded(codec)))
