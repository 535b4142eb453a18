"""Prints what Python's own Unicode database says.

usage: unicode_reference.py characters | compositions

characters: a line for each code point with its category, combining class, decimal value, kind of decomposition and
decomposition, and its lower case, upper case and case folding, all empty where it has none or maps to itself.
compositions: a line for each pair that NFC composes, with what it becomes.
"""
import sys
import unicodedata


def text(characters):
    return " ".join(f"{ord(ch):X}" for ch in characters)


def mapping(ch, mapped):
    return "" if mapped == ch else text(mapped)


def print_characters():
    for code_point in range(0x110000):
        ch = chr(code_point)
        tag, _, decomposition = unicodedata.decomposition(ch).rpartition("> ")
        fields = [
            f"{code_point:X}",
            unicodedata.category(ch),
            str(unicodedata.combining(ch)),
            str(unicodedata.decimal(ch, "")),
            tag and tag + ">",
            " ".join(f"{int(each, 16):X}" for each in decomposition.split()),
            mapping(ch, ch.lower()),
            mapping(ch, ch.upper()),
            mapping(ch, ch.casefold()),
        ]
        print(";".join(fields))


def print_compositions():
    for code_point in range(0x110000):
        decomposition = unicodedata.decomposition(chr(code_point)).split()
        if len(decomposition) == 2 and not decomposition[0].startswith("<"):
            pair = "".join(chr(int(ch, 16)) for ch in decomposition)
            composed = unicodedata.normalize("NFC", pair)
            if len(composed) == 1:
                print(text(pair + composed))


{"characters": print_characters, "compositions": print_compositions}[sys.argv[1]]()
