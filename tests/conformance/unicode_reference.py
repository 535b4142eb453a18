"""Prints what Python's own Unicode database says.

usage: unicode_reference.py characters | compositions | normalization-test | normalizations

characters: a line for each code point with its category, combining class, decimal value, kind of decomposition and
decomposition, and its lower case, upper case and case folding, all empty where it has none or maps to itself.
compositions: a line for each pair that NFC composes, with what it becomes.
normalization-test: the lines of the Unicode Consortium's NormalizationTest.txt, as far as the database knows all of
their characters, without comments.
normalizations: random texts, and what they are in NFC, NFD, NFKC and NFKD, divided as those lines are.
"""
import bz2
import os
import random
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


def print_normalization_test():
    path = "/usr/share/unicode/NormalizationTest.txt"
    with open(path, "rb") if os.path.exists(path) else bz2.open(path + ".bz2") as file:
        for line in file.read().decode().split("\n"):
            fields = line.partition("#")[0].split(";")[:5]
            if len(fields) == 5:
                texts = ["".join(chr(int(each, 16)) for each in field.split()) for field in fields]
                if all(unicodedata.category(ch) != "Cn" for ch in "".join(texts)):
                    print(";".join(map(text, texts)))


def print_normalizations():
    # U+11A7 is left out, see zu_unicode_normalizer.h.
    assigned = [ch for ch in map(chr, range(0x110000)) if unicodedata.category(ch) not in ("Cn", "Cs", "Co")]
    assigned.remove("\u11A7")
    marks = [ch for ch in assigned if unicodedata.combining(ch)]
    decomposing = [ch for ch in assigned if unicodedata.decomposition(ch)]
    parts = sorted({ch for each in decomposing for ch in unicodedata.normalize("NFKD", each)})
    hangul = "\u1100\u1112\u1161\u1175\u11A8\u11C2\uAC00\uAC01\uD7A3\uD788"
    random.seed(14)
    for i in range(20000):
        pools = random.choices((assigned, marks, decomposing, parts, "aeiou", hangul), k=random.randint(1, 4))
        length = 3000 if i % 1000 == 0 else random.choice((4, 12, 60))
        characters = "".join(random.choice(random.choice(pools)) for _ in range(random.randint(1, length)))
        print(";".join(map(text, [characters] + [unicodedata.normalize(form, characters)
                                                 for form in ("NFC", "NFD", "NFKC", "NFKD")])))


{
    "characters": print_characters,
    "compositions": print_compositions,
    "normalization-test": print_normalization_test,
    "normalizations": print_normalizations,
}[sys.argv[1]]()
