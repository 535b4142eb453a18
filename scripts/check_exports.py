#!/usr/bin/env python3
"""Compares the names that the shared library exports with the list under version control.

usage: check_exports.py [--write] LIBRARY

The list is source/zu.exports: a name and its version node a line, sorted by name.  A name that goes missing breaks
programs that were linked before; one that appears is a promise.  So either shows in a diff of that file, which --write
(scripts/update_exports.sh) rewrites from the library.  A DLL has the same names, and no version nodes.
"""
import argparse
import pathlib
import re
import subprocess
import sys

LIST = pathlib.Path(__file__).resolve().parent.parent / "source" / "zu.exports"


def exported_names(library):
    """Returns the lines of the list that this library calls for, and what is wrong with its names by themselves."""
    symbols = subprocess.run(
        ["nm", "--dynamic", "--defined-only", "--with-symbol-versions", library],
        check=True,
        stdout=subprocess.PIPE,
        text=True,
        env={"LC_ALL": "C", "PATH": "/usr/local/bin:/usr/bin:/bin"},
    ).stdout
    lines = []
    faults = []
    for symbol in symbols.splitlines():
        kind, versioned = symbol.split()[-2:]
        name, _, node = versioned.partition("@@")
        if kind == "A":  # the version nodes themselves
            continue
        expected = "ZU_PRIVATE_1" if name.startswith("zu___") else "ZU_1"
        if not re.fullmatch(r"zu(___\w+|[A-Z]\w*)", name):
            faults.append(f"{name} is no name of the interface")
        elif name.startswith("zu___outlined_"):
            faults.append(f"{name} should be another name for the function that it is the body of")
        elif node != expected:
            faults.append(f"{name} has the version node {node or 'of none'}, not {expected}")
        lines.append(f"{name} {node}")
    return sorted(lines), faults


def exported_by_dll(library):
    """Returns the names in the table of exports of a DLL."""
    headers = subprocess.run(
        ["x86_64-w64-mingw32-objdump", "--private-headers", library], check=True, stdout=subprocess.PIPE, text=True
    ).stdout
    table = headers[headers.index("[Ordinal/Name Pointer] Table"):]
    return sorted(re.findall(r"^\t\[[^\]]*\].* (\w+)$", table[:table.index("\n\n")], re.MULTILINE))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--write", action="store_true", help="rewrite the list instead of comparing")
    parser.add_argument("library", help="the shared library, such as build/release/source/libzu.so")
    arguments = parser.parse_args()

    is_dll = arguments.library.endswith(".dll")
    found, faults = (exported_by_dll(arguments.library), []) if is_dll else exported_names(arguments.library)
    if arguments.write and not faults:
        LIST.write_text("\n".join(found) + "\n", encoding="ascii")
        print(f"{LIST}: {len(found)} names")
        return 0
    listed = LIST.read_text(encoding="ascii").splitlines() if LIST.exists() else []
    if listed != sorted(listed):
        faults.append(f"{LIST.name} is not sorted")
    if is_dll:
        listed = [line.split()[0] for line in listed]
    faults += [f"{line}: listed, but not exported" for line in sorted(set(listed) - set(found))]
    faults += [f"{line}: exported, but not listed" for line in sorted(set(found) - set(listed))]
    for fault in faults:
        print(fault)
    if faults:
        print("If the change of the interface is meant, run scripts/update_exports.sh and review the difference.")
        return 1
    print(f"{len(found)} exported names, all as listed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
