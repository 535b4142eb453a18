#!/usr/bin/env python3
"""Stops a program in gdb and expects to see what its variables hold.

usage: gdb_test.py PROGRAM SCRIPT
"""
import subprocess
import sys

EXPECTED = {
    "text": '"κόσμε \\"😀\\""',
    "any": 'ZU_DICT of 1 = {["key"] = ZU_BOXED_BOOL 1}',
    "many": "ZU_DICT of 5000 = {[ZU_BOXED_INT 1] = ZU_BOXED_INT 1, [ZU_BOXED_INT 2] = ZU_BOXED_INT 2, ",
    "items": 'ZU_VECTOR of 2 = {ZU_BOXED_INT 7, "seven"}',
    "settings": 'ZU_STORE of 1 = {["inner"] = ZU_STORE of 1 = {["depth"] = "two"}}',
    "thread": "ZU_THREAD ",
}


def main():
    program, script = sys.argv[1:]
    commands = ["break look", "run"] + [f"print {name}" for name in EXPECTED]
    arguments = [part for each in commands for part in ("-ex", each)]
    told = subprocess.run(
        ["gdb", "-nx", "-batch", "-iex", f"source {script}", *arguments, program],
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        encoding="utf-8",
        check=True,
        timeout=120,
    ).stdout
    faults = [f"{name} is not shown as {text}" for name, text in EXPECTED.items() if f" = {text}" not in told]
    if faults:
        print(*faults, told, sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
