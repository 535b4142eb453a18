#!/usr/bin/env python3
"""Write the tables of the Unicode Character Database, and the names of characters, as C++ and C.

usage: unicode_tables.py [--data DIR] [--check]

DIR holds the published files in ucd-14.0.0/; the default is ../shared/data beside the repository. With --check
nothing is written: the files are made in memory and compared with those in the repository; exit status 1 if they
differ. Same input, same bytes.

What the values of categories, decomposition tags and scripts are is read from the headers of the library, so that
they are told once; what the tables mean and how they are read, zu_unicode_db_internal.h tells.
"""
import os
import re

from support.generated import ROOT, run, stop

VERSION = "14.0.0"
UNICODE = "source/zu/unicode/"
CODE_POINTS = 0x110000
LINE_WIDTH = 120

# Named beside Basic Latin and Latin-1 Supplement: what programs write or look for by itself. Ranges include both ends.
NAMED_CHARACTERS = [
    ("Letters beyond Latin-1, and ligatures",
     "0130 0131 0141 0142 0152 0153 0160 0161 0178 017D 017E 017F 0192 1E0B 1E0D 1E9E FB00-FB04"),
    ("Modifier letters and combining marks",
     "02C6 02C7 02D8-02DD 0300-0304 0306-0308 030A-030C 0323 0327 0328 0331 0338 0340-0345 20DD 20E3"),
    ("Greek and Cyrillic",
     "0391-0394 03A0 03A3 03A6 03A9 03B1-03B5 03B8 03BB 03BC 03C0 03C2-03C4 03C6 03C9 0410 042F 0430 044F"),
    ("Right-to-left scripts", "05D0 0627 060C 061B 061F 0640 0660 0669 06F0 06F9"),
    ("Devanagari", "0915 093C 0958 0964 0966 096F"),
    ("Conjoining jamo: the first and last of each kind", "1100 1112 1161 1175 11A7 11A8 11C2"),
    ("Blanks", "1680 180E 2000-200A 202F 205F 3000 3164"),
    ("Joiners, marks and controls of direction, and other format characters",
     "034F 061C 200B-200F 2028-202E 2060-2064 2066-2069 FE00 FE0E FE0F FEFF FFF9-FFFB"),
    ("Dashes", "2010-2015 2212 301C"),
    ("Quotation marks", "2018-201F 2039 203A 300C-300F"),
    ("Other punctuation", "2016 2017 2020-2026 2030-2037 203B-203D 2042 2044 2047-2049 3001-3003 30FB 30FC FF0C FF0E"),
    ("Superscripts and subscripts", "2070 2071 2074-207F 2080-208E"),
    ("Currency signs", "20A4 20A6 20A8-20AC 20B1 20B4 20B9 20BA 20BD 20BF FFE5"),
    ("Letterlike symbols and number forms",
     "2100 2103 2105 2109 210E 210F 2113 2115-2117 211A 211D 211E 2120 2122 2124 2126 212A 212B 212E 2135 2150-215F "
     "2160 2164 2169"),
    ("Arrows", "2190-2199 21A9 21AA 21B5 21BA 21BB 21D0-21D4 21E7 27A1"),
    ("Mathematical operators",
     "2200 2202 2203 2205-2209 220B 220F 2211 2213 2215-221A 221D-2220 2227-222B 2234 2235 223C 2248 2260 2261 2264 "
     "2265 226A 226B 2282 2283 2286 2287 2295 2297 22A5 22C5 27E8 27E9"),
    ("Technical symbols and pictures of controls",
     "2302 2308-230B 2318 231A 231B 2325 2326 232B 23CE 23CF 2400 2409 240A 240D 241B 2420-2424"),
    ("Box drawing, blocks and geometric shapes",
     "2500-2503 250C 2510 2514 2518 251C 2524 252C 2534 253C 2550 2551 2554 2557 255A 255D 2560 2563 2566 2569 256C "
     "256D-2570 2580-2593 25A0 25A1 25AA 25AB 25B2 25B3 25B6 25B7 25BA 25BC 25BD 25C0 25C6 25C7 25CA 25CB 25CF 25E6"),
    ("Signs",
     "2605 2606 2610-2612 263A 2640 2642 2660-2663 2665 2666 2669-266B 266D-266F 26A0 26A1 2705 2708 2709 2713 2714 "
     "2717 2718 274C 2753 2757 2764 2B50"),
    ("Fullwidth digits and letters", "FF10 FF19 FF21 FF26 FF3A FF41 FF46 FF5A"),
    ("Replacement", "FFFC FFFD"),
    ("Pictographs", "1F1E6 1F1FF 1F389 1F3FB 1F3FF 1F44B 1F44D 1F468 1F469 1F525 1F600 1F602 1F680"),
]


# Reading the published files


class Database:
    """What the files say, by code point; mappings are tuples of code points."""

    def __init__(self, folder, categories, tags, scripts):
        self.folder = folder
        self.category = [0] * CODE_POINTS
        self.separators = {categories[name] for name in ("Zs", "Zl", "Zp")}
        self.combining_class = [0] * CODE_POINTS
        self.decimal = [-1] * CODE_POINTS
        self.script = [0] * CODE_POINTS
        self.decomposition = {}  # code point: (tag, characters)
        self.lower, self.upper, self.fold = {}, {}, {}
        self.name = {}
        self.read_unicode_data(categories, tags)
        self.read_special_casing()
        self.read_case_folding()
        self.read_scripts(scripts)
        self.compositions = self.find_compositions()
        self.quick_check = {form: {} for form in FORMS}  # code points that are not in the form, or perhaps not
        self.read_normalization_props()

    def lines(self, name):
        """Yields the fields of each line of a file, without comments and empty lines."""
        with open(os.path.join(self.folder, name), encoding="utf-8") as file:
            lines = file.read().split("\n")
        title = os.path.splitext(name)[0]
        if name != "UnicodeData.txt" and f"{title}-{VERSION}.txt" not in lines[0]:
            stop(f"{name} is not of version {VERSION}")
        for line in lines:
            line = line.partition("#")[0].strip()
            if line:
                yield [field.strip() for field in line.split(";")]

    def read_unicode_data(self, categories, tags):
        first = None
        for fields in self.lines("UnicodeData.txt"):
            ch = int(fields[0], 16)
            if fields[1].endswith(", First>"):
                first = ch
                continue
            for each in range(ch if first is None else first, ch + 1):
                self.category[each] = categories[fields[2]]
                self.combining_class[each] = int(fields[3])
                if fields[6]:
                    self.decimal[each] = int(fields[6])
            first = None
            if fields[5]:
                tag, mapping = re.fullmatch("(?:(<.*>) )?(.*)", fields[5]).groups()
                self.decomposition[ch] = (tags[tag or ""], code_points(mapping))
            if fields[12]:
                self.upper[ch] = code_points(fields[12])
            if fields[13]:
                self.lower[ch] = code_points(fields[13])
            # A control has no name of its own, but one that version 1.0 gave it, some with an abbreviation behind it.
            name = re.sub(r" \(.*\)", "", fields[10]) if fields[1] == "<control>" else fields[1]
            if name and not name.startswith("<"):
                self.name[ch] = name

    def read_special_casing(self):
        for fields in self.lines("SpecialCasing.txt"):
            if len(fields) > 5 and fields[4]:
                continue  # holds only in a context or a language
            ch = int(fields[0], 16)
            for mappings, field in ((self.lower, fields[1]), (self.upper, fields[3])):
                mappings[ch] = code_points(field)
                if mappings[ch] == (ch,):
                    del mappings[ch]

    def read_case_folding(self):
        for ch, status, mapping, *_ in self.lines("CaseFolding.txt"):
            if status in "CF":
                self.fold[int(ch, 16)] = code_points(mapping)

    def read_scripts(self, scripts):
        for characters, script in self.lines("Scripts.txt"):
            first, _, last = characters.partition("..")
            for ch in range(int(first, 16), int(last or first, 16) + 1):
                self.script[ch] = scripts[script]

    def read_normalization_props(self):
        for characters, name, *value in self.lines("DerivedNormalizationProps.txt"):
            form, _, check = name.partition("_")
            if check == "QC":
                first, _, last = characters.partition("..")
                for ch in range(int(first, 16), int(last or first, 16) + 1):
                    self.quick_check[form][ch] = value[0]

    def decompose(self, ch, form):
        """Returns the full decomposition of `ch`, as far as the form goes; Hangul syllables stay whole."""
        tag, mapping = self.decomposition.get(ch, (None, None))
        if tag is None or tag != CANONICAL and "K" not in form:
            return (ch,)
        return tuple(each for part in mapping for each in self.decompose(part, form))

    def find_compositions(self):
        """Returns the pairs that compose, with their primary composites (Unicode Standard, section 3.11)."""
        excluded = {int(ch, 16) for ch, in self.lines("CompositionExclusions.txt")}
        pairs = {}
        for ch, (tag, mapping) in self.decomposition.items():
            starters = [self.combining_class[each] == 0 for each in (ch, mapping[0])]
            if tag == CANONICAL and len(mapping) == 2 and ch not in excluded and all(starters):
                pairs[mapping] = ch
        return pairs


def code_points(field):
    return tuple(int(ch, 16) for ch in field.split())


# Reading the library's headers

CANONICAL = 1

# The normalization forms by number
FORMS = ("NFC", "NFKC", "NFD", "NFKD")
SURROGATES = range(0xD800, 0xE000)
# What has the property White_Space besides the separators (Zs, Zl, Zp)
WHITE_SPACE_CONTROLS = (*range(0x09, 0x0E), 0x85)
SYLLABLES = range(0xAC00, 0xD7A4)
# Second characters of Hangul syllables.  U+11A7 is none, but the composing step takes it for one.
JAMO = [*range(0x1161, 0x1176), *range(0x11A7, 0x11C3)]


def read_enumeration(name):
    """Returns the values of a header by text: the first text in the row that its _internal.h has for each."""
    with open(os.path.join(ROOT, UNICODE, f"zu_unicode_{name}.h"), encoding="ascii") as file:
        values = dict(re.findall(r"#define (\w+) +\( \(ZU_INT\)(\d+) \)", file.read()))
    with open(os.path.join(ROOT, UNICODE, f"zu_unicode_{name}_internal.h"), encoding="ascii") as file:
        rows = re.findall(r'^    ZU___UNICODE_\w+_ROW\( (\w+),\s+"([^"]*)"', file.read(), re.MULTILINE)
    return {text: int(values[symbol]) for symbol, text in rows}


# Making tables


def integer_type(highest):
    return next(f"uint{bits}_t" for bits in (8, 16, 32) if highest >> bits == 0)


def array(name, values, element_type):
    lines, line = [f"const {element_type} {name}[] = {{"], ""
    for value in values:
        text = f"{value:#x}," if element_type == "uint32_t" else f"{value},"
        if line and len(line) + len(text) + 5 > LINE_WIDTH:
            lines.append("    " + line)
            line = ""
        line += (" " if line else "") + text
    return "\n".join(lines + ["    " + line, "};"])


class Output:
    """The two files of tables as they grow."""

    def __init__(self):
        self.header, self.source = [], []

    def add_array(self, name, values):
        element_type = integer_type(max(values))
        self.header.append(f"extern const {element_type} {name}[ {len(values)} ];")
        self.source.append(array(name, values, element_type))
        return len(values) * int(re.sub(r"\D", "", element_type)) // 8

    def add_two_stages(self, name, values, places=False):
        """Adds a table of `values` by code point, cut where only zeros follow, with the size of block that makes it
        smallest. Its index has the numbers of blocks, or with `places` where they begin. Returns its bytes."""
        used = max(ch for ch in range(CODE_POINTS) if values[ch]) + 1

        def split(bits):
            size = 1 << bits
            blocks, index = {}, []
            for start in range(0, used, size):
                number = blocks.setdefault(tuple(values[start : start + size]), len(blocks))
                index.append(number * size if places else number)
            return bits, index, [value for block in blocks for value in block]

        def cost(stages):
            _, index, flat = stages
            width = {"uint8_t": 1, "uint16_t": 2, "uint32_t": 4}
            return len(index) * width[integer_type(max(index))] + len(flat) * width[integer_type(max(flat))]

        best = min((split(bits) for bits in range(4, 10)), key=cost)
        bits, index, flat = best
        self.header.append("")
        self.header.append(f"static constexpr int zu___unicode{name}Bits = {bits};")
        self.header.append(f"static constexpr ZU_CHAR zu___unicode{name}End = {len(index) << bits:#x};")
        self.add_array(f"zu___unicode{name}Index", index)
        self.add_array(f"zu___unicode{name}Blocks", flat)
        return cost(best)


def by_code_point(entries):
    values = [0] * CODE_POINTS
    for ch, value in entries.items():
        values[ch] = value
    return values


def make_runs(mappings):
    """Returns a text that holds each of `mappings`, the longer ones first so that shorter ones are found in them, and
    where each stands. Position 0 stays empty."""
    pool, place = "\0", {}
    for mapping in sorted(set(mappings), key=lambda mapping: (-len(mapping), mapping)):
        text = "".join(map(chr, mapping))
        if text not in pool:
            overlap = next(n for n in range(len(text) - 1, -1, -1) if pool.endswith(text[:n]))
            pool += text[overlap:]
        place[mapping] = pool.index(text, 1)
    return [ord(ch) for ch in pool], place


def make_composition(pairs):
    """Lays the rows of all first characters over one another in one array, each shifted so that no two entries meet
    (first fit, the fullest rows first). Returns the shift of each first character, the number of each second one,
    and the array; an entry tells the shift of its row too, which no other row has."""
    counts = {}
    for _, second in pairs:
        counts[second] = counts.get(second, 0) + 1
    number = {second: i for i, second in enumerate(sorted(counts, key=lambda ch: (-counts[ch], ch)), 1)}
    rows = {}
    for (first, second), composite in pairs.items():
        rows.setdefault(first, {})[number[second]] = composite
    slots, shifts = {}, {}
    for first in sorted(rows, key=lambda ch: (-len(rows[ch]), ch)):
        shift = 1
        while shift in shifts.values() or any(shift + column in slots for column in rows[first]):
            shift += 1
        shifts[first] = shift
        for column, composite in rows[first].items():
            slots[shift + column] = shift << 21 | composite
    if max(shifts.values()) >> 11:
        stop("the array of compositions has outgrown the 11 bits of an entry")
    length = max(shifts.values()) + len(number) + 1
    return shifts, number, [slots.get(i, 0) for i in range(length)]


def make_normalization(data):
    """Returns the entry of each code point for the normalizer, and the elements of all decompositions; what their bits
    are, zu_unicode_db_internal.h tells."""
    ranks = {value: rank for rank, value in enumerate(sorted(set(data.combining_class)))}
    if max(ranks.values()) >= 63:
        stop("the ranks of combining classes have outgrown their field")
    seconds = {second for _, second in data.compositions} | set(JAMO)
    rank = [ranks[value] for value in data.combining_class]

    def elements(characters):
        ahead = range(len(characters), 0, -1)
        return tuple(ch | (ch in seconds) << 21 | min(n, 15) << 22 | rank[ch] << 26 for ch, n in zip(characters, ahead))

    def inner(characters, form):
        return rank[characters[0]] > 0 or "C" in form and characters[0] in seconds

    entries, sequences = {}, {}
    for ch in range(CODE_POINTS):
        canonical, compatible = data.decompose(ch, "NFD"), data.decompose(ch, "NFKD")
        entry = rank[ch] << 26 | (ch in seconds) << 21 | (ch in SYLLABLES) << 16
        for i, form in enumerate(FORMS):
            decomposed = compatible if "K" in form else canonical
            work = data.quick_check[form].get(ch)
            if (work == "N") != (decomposed != (ch,) or ch in SYLLABLES) and "D" in form:
                stop(f"U+{ch:04X} decomposes otherwise than {form}_QC tells")
            if (work == "M") != (ch in seconds and ch != 0x11A7) and "C" in form:
                stop(f"U+{ch:04X} composes otherwise than {form}_QC tells")
            work = work or ch in SURROGATES or "C" in form and ch in seconds
            within = inner(decomposed, form) or ch in SURROGATES
            if within and not work and not rank[ch]:
                stop(f"U+{ch:04X} is settled in {form}, but no boundary")
            entry |= bool(work) << 17 + i | within << 22 + i
        if entry:
            entries[ch] = entry
        for characters in (canonical, compatible):
            found = [rank[each] for each in characters]
            if any(left > right > 0 for left, right in zip(found, found[1:])):
                stop(f"U+{ch:04X} decomposes out of order")
            if rank[ch] and (len(found) > 2 or 0 in found):
                stop(f"U+{ch:04X} is a mark, but decomposes to more than two marks")
        if compatible != (ch,):
            both = canonical not in ((ch,), compatible)
            sequences[ch] = (elements(canonical) if both else ()) + elements(compatible), both

    # Longer ones first, so that others are found as their ends.
    pool, place = [0], {}
    for sequence in sorted({sequence for sequence, _ in sequences.values()}, key=lambda each: (-len(each), each)):
        if sequence not in place:
            for i in range(len(sequence)):
                place.setdefault(sequence[i:], len(pool) + i)
            pool += sequence
    pool += [0] * 3  # whoever reads four at a time reads on
    if len(pool) >> 15:
        stop("the decompositions have outgrown the field of their place")
    for ch, (sequence, both) in sequences.items():
        entries[ch] |= place[sequence] | both << 15
    return entries, pool


def make_properties(data):
    """Returns the array that the public headers look properties up in; zu_unicode_properties.h tells what it is. Its form
    is part of the binary interface, and so fixed."""
    size = 0x80
    white_space = {ch for ch in range(CODE_POINTS) if data.category[ch] in data.separators or ch in WHITE_SPACE_CONTROLS}
    entries = [
        category | script << 5 | (ch in white_space) << 13 | (combining_class != 0) << 14
        for ch, (category, script, combining_class) in enumerate(
            zip(data.category, data.script, data.combining_class))
    ]
    places, index, blocks = {}, [], []
    for start in range(0, CODE_POINTS, size):
        block = tuple(entries[start : start + size])
        if block not in places:
            places[block] = CODE_POINTS // size + len(blocks)
            blocks += block
        index.append(places[block])
    if max(index) >> 16 or max(data.script) >> 8 or max(data.category) >> 5:
        stop("the properties have outgrown their fields")
    return index + blocks


BANNER = f"// Generated by generators/unicode_tables.py from the Unicode Character Database {VERSION}; do not edit."


def make_tables(data):
    """Returns the texts of the two files of tables."""
    out = Output()
    sizes = {}
    sizes["properties"] = out.add_array("zu___unicodePropertyTable", make_properties(data))
    out.header.append("")
    sizes["combining classes"] = out.add_two_stages("Cccv", data.combining_class)
    # Moved by one, so that 0 says that there is none.
    sizes["decimal digits"] = out.add_two_stages("Decimal", [value + 1 for value in data.decimal])

    cases = {"Lower": data.lower, "Upper": data.upper, "Fold": data.fold}
    mappings = [mapping for _, mapping in data.decomposition.values()]
    for case in cases.values():
        mappings += case.values()
    runs, place = make_runs(mappings)
    if len(runs) >> 14 or max(map(len, mappings)) > 255 or any(len(m) > 3 for c in cases.values() for m in c.values()):
        stop("the mappings have outgrown the fields of their entries")
    packed = {ch: tag << 24 | len(m) << 16 | place[m] for ch, (tag, m) in data.decomposition.items()}
    sizes["decompositions"] = out.add_two_stages("Cdm", by_code_point(packed))
    for name, case in cases.items():
        packed = {ch: place[mapping] << 2 | len(mapping) for ch, mapping in case.items()}
        sizes[name.lower() + " case"] = out.add_two_stages(name, by_code_point(packed))
    out.header.append("")
    sizes["characters of mappings"] = out.add_array("zu___unicodeRuns", runs)

    shifts, number, slots = make_composition(data.compositions)
    sizes["first characters"] = out.add_two_stages("CompFirst", by_code_point(shifts))
    sizes["second characters"] = out.add_two_stages("CompSecond", by_code_point(number))
    out.header.append("")
    sizes["compositions"] = out.add_array("zu___unicodeCompPairs", slots)

    entries, pool = make_normalization(data)
    sizes["normalization"] = out.add_two_stages("Norm", by_code_point(entries), places=True)
    out.header.append("")
    sizes["characters of full decompositions"] = out.add_array("zu___unicodeNormRuns", pool)

    header = [
        BANNER,
        "// clang-format off",
        "#pragma once",
        "",
        '#include "zu/sys/zu_chars.h"',
        "",
        "// Said at the declarations, so that no access goes by way of the global offset table.",
        "#pragma GCC visibility push( hidden )",
        *out.header,
        "#pragma GCC visibility pop",
    ]
    source = [
        BANNER,
        "// clang-format off",
        "//",
        "// Bytes:",
        *[f"//     {size:6} {what}" for what, size in [*sizes.items(), ("together", sum(sizes.values()))]],
        '#include "zu/unicode/zu_unicode_db_tables_internal.h"',
        *[line for text in out.source for line in ("", text)],
    ]
    return "\n".join(header) + "\n", "\n".join(source) + "\n"


def make_names(names):
    """Returns the text of the header of character names."""
    groups = [("Basic Latin", range(0x80)), ("Latin-1 Supplement", range(0x80, 0x100))]
    for title, characters in NAMED_CHARACTERS:
        group = set()
        for field in characters.split():
            first, _, last = field.partition("-")
            group |= set(range(int(first, 16), int(last or first, 16) + 1))
        groups.append((title, sorted(group)))
    macros, seen = {}, set()
    for title, group in groups:
        for ch in group:
            if ch in seen:
                stop(f"U+{ch:04X} is listed twice")
            seen.add(ch)
            if ch in names:
                macros[ch] = "ZU_CHAR_" + re.sub("[ -]", "_", names[ch])
            elif ch >= 0xA0:
                stop(f"U+{ch:04X} has no name")
    # Other words of the library begin alike.
    if len({"ZU_CHAR_OK", "ZU_CHAR_SINK", "ZU_CHAR_SOURCE", *macros.values()}) < 3 + len(macros):
        stop("two characters have one name")
    lines = [
        BANNER,
        "// clang-format off",
        "//",
        "// zu_char_names.h: constants for characters, by the names that the database gives them, with a low line for",
        "// each blank and hyphen.  Controls have their names of Unicode 1.0.  Include zu_chars.h, which has the type.",
        "#pragma once",
    ]
    width = max(map(len, macros.values()))
    for title, group in groups:
        lines += ["", "// " + title]
        lines += [f"#define {macros[ch]:{width}} ( (ZU_CHAR)0x{ch:02X} )" for ch in group if ch in macros]
    return "\n".join(lines) + "\n"


def make_files(folder):
    enumerations = [read_enumeration(name) for name in ("genc", "cdmt", "script")]
    # Two rows have no tag; the database leaves the tag of a canonical mapping out.
    enumerations[1][""] = CANONICAL
    data = Database(os.path.join(folder, "ucd-" + VERSION), *enumerations)
    header, source = make_tables(data)
    return {
        UNICODE + "zu_unicode_db_tables_internal.h": header,
        UNICODE + "zu_unicode_db_tables.cpp": source,
        "source/zu/sys/zu_char_names.h": make_names(data.name),
    }


if __name__ == "__main__":
    run(make_files)
