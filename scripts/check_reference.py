#!/usr/bin/env python3
"""Looks for every exported name of the interface in the reference.

usage: check_reference.py TAG_FILE
"""
import pathlib
import re
import sys

EXPORTS = pathlib.Path(__file__).resolve().parent.parent / "source" / "zu.exports"


def main():
    found = set(re.findall(r"<name>(zu\w+)</name>", pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")))
    names = [line.split()[0] for line in EXPORTS.read_text(encoding="ascii").splitlines() if line.endswith(" ZU_1")]
    missing = [name for name in names if name not in found]
    for name in missing:
        print(f"{name}: not in the reference")
    print(f"{len(names) - len(missing)} of {len(names)} functions are in the reference")
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
