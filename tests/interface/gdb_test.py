#!/usr/bin/env python3
"""Stops a program in gdb and expects to see what its variables hold, and of every class more than its name.

usage: gdb_test.py PROGRAM SCRIPT
"""
import re
import subprocess
import sys

EXPECTED = {  # what the beginning is, as an expression
    "any": r'ZU_DICT of 1 = \{\["κόσμε \\"😀\\""\] = ZU_BOXED_BOOL true\}',
    "many": r"ZU_DICT of 5000 = \{\[ZU_BOXED_INT 1\] = ZU_BOXED_INT 1, \[ZU_BOXED_INT 2\] = ZU_BOXED_INT 2, ",
    "settings": r'ZU_STORE of 1 = \{\["inner"\] = ZU_STORE of 1 = \{\["depth"\] = "two"\}\}',
    "timer": r"ZU_TIMER runs until ZU_TIME 2999-12-31 23:59:59, calls fire$",
    "lines": r'ZU_LINE_SOURCE by \w+ on ZU_NLF_LINE_SOURCE on .* file ".*gdb_test.py" read up to [1-9]\d*, 1 lines$',
    "named": '"jobs"$',
    "empty": "empty$",
    "sink": "ZU_BYTE_SINK by a lambda in makeReferences on ZU_HPP_CLOSURE",
    "probe": r"PROBE \(1\) = \{reading = 7\}$",
    "zuVectorSort()": r"ZU_SORT ZU_VECTOR, \d+ objects$",
    "zuModule()": r"ZU_MODULE zu \d+\.\d+$",
}
# Classes without an object in the sweep: static ones, one that is gone as soon as its thread runs, and the program's own
MISSING = {"ZU_MODULE", "ZU_SORT", "ZU___THREAD_CALL", "PROBE"}
SWEEP = r"""
every = as_class(gdb.parse_and_eval("all"), "ZU_VECTOR")
newest = {}
for i in range(int(every["length"])):
    item = every["items"][int(every["fspace"]) + i]
    newest[sort_name(item)] = item
for name in re.findall(r"zu___sort_(\w+)", gdb.execute("info variables -q -n zu___sort_", to_string=True)):
    print(f"class {name}:", newest[name].format_string(max_elements=3) if name in newest else "no object")
"""


def main():
    program, script = sys.argv[1:]
    commands = ["break look", f"run {__file__}"] + [f"print {name}" for name in EXPECTED] + [f"python exec({SWEEP!r})"]
    arguments = [part for each in commands for part in ("-ex", each)]
    told = subprocess.run(
        ["gdb", "-nx", "-batch", "-iex", f"source {script}", *arguments, program],
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        encoding="utf-8",
        timeout=120,
    ).stdout
    faults = [
        f"{name} is not shown as {text}"
        for name, text in EXPECTED.items()
        if not re.search(rf"^\$\d+ = {text}", told, re.MULTILINE)
    ]
    classes = dict(re.findall(r"^class (\w+): (.*)$", told, re.MULTILINE))
    for name in classes.keys() - MISSING:
        if re.search(rf"^$|no object|{name} \(\d+\)|There is no member|Cannot access", classes[name]):
            faults.append(f"{name} is not shown by what it holds: {classes[name]}")
    if len(classes) < 70 or faults:
        print(*faults, told, sep="\n")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
