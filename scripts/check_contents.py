#!/usr/bin/env python3
"""Holds the contents headers, out of which zu/zu.h is made, against the headers themselves.

usage: check_contents.py

Every public header stands in exactly one of the headers source/zu/zu_<subject>.h, and the comment ahead of its include is
the sentence that it begins with itself.  The map of source/zu/base has each of that folder.
"""
import pathlib
import re
import sys

SOURCES = pathlib.Path(__file__).resolve().parent.parent / "source"
SUBJECTS = ["objects", "text", "containers", "settings", "bytes", "clock", "threads", "platform"]
# What the others include: linkage, and a generated list of names.
PARTS = {"zu/sys/zu_api.h", "zu/sys/zu_char_names.h"}
ENTRY = re.compile(r'((?:^// .*\n)+)#include "(.*)"$', re.M)


def text_of(comment):
    return re.sub(r"\s*\n// ?", " ", "\n" + comment.strip("\n")).strip()


def sentence_of(header):
    """Returns the first sentence of a header."""
    comment = re.match(r"(?:// .+\n)+", (SOURCES / header).read_text(encoding="utf-8"))
    text = text_of(comment.group(0)) if comment else ""
    return re.match(r".*?(?<=[a-z0-9)\"])\.(?= [A-Z]|$)|.*", text).group(0)


def main():
    faults = []
    listed = {}
    for subject in SUBJECTS:
        contents = f"zu/zu_{subject}.h"
        text = (SOURCES / contents).read_text(encoding="utf-8")
        entries = ENTRY.findall(text)
        if len(entries) != text.count("#include"):
            faults.append(f"{contents}: an include without its sentence")
        for comment, header in entries:
            if header in listed:
                faults.append(f"{header}: in {listed[header]} and in {contents}")
            listed[header] = contents
            if not (SOURCES / header).exists():
                faults.append(f"{contents}: there is no {header}")
            elif text_of(comment) != sentence_of(header):
                faults.append(f"{contents}: {header} begins with\n    {sentence_of(header)}\nand not with\n    {text_of(comment)}")
    public = {str(path.relative_to(SOURCES)) for path in SOURCES.glob("zu/*/*.h") if not path.name.endswith("_internal.h")}
    faults += [f"{header}: in no contents header" for header in sorted(public - PARTS - set(listed))]
    whole = re.findall(r'#include "(.*)"', (SOURCES / "zu/zu.h").read_text(encoding="utf-8"))
    if sorted(whole) != sorted(f"zu/zu_{subject}.h" for subject in SUBJECTS):
        faults.append("zu/zu.h is not made of the contents headers")
    chart = (SOURCES / "zu/base/README.md").read_text(encoding="utf-8")
    places = set(re.findall(r"\]\((\S+?)\)", chart))
    faults += [f"zu/base/README.md: no {header}" for header in sorted(public)
               if header.startswith("zu/base/") and header.rpartition("/")[2] not in places]
    faults += [f"zu/base/README.md: there is no {place}" for place in sorted(places) if not (SOURCES / "zu/base" / place).exists()]
    for fault in faults:
        print(fault)
    if not faults:
        print(f"{len(listed)} headers in {len(SUBJECTS)} contents headers, all as they tell themselves")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
