#!/usr/bin/env python3
"""Calls the forms of each family that takes a text (a string, Cstr, Wcstr, Format...) with the same text, and expects
the same result, the same change and the same failed check as of the form with a string.

usage: forms_sweep.py LIBRARY
"""
import ctypes
import os
import re
import sys

import interface

TEXTS = ["b", "", "ab", "é", "c.b", "12", "true"]
SUFFIXES = ["FormatWcstr", "FormatCstr", "Format", "Wcstr", "Cstr"]
PLACES = {"ZU_INT*", "ZU_BOOL*", "double*"}  # for results
PRINTED = []
INT = ctypes.c_int64


class Caller(interface.Maker):
    """Calls with arguments by their type, and tells what came of it as a text."""

    def __init__(self, library):
        super().__init__(library)
        self.makers["ZU_CHAR_SINK*"] = self.char_sink
        self.makers["ZU_LINE_SINK*"] = self.line_sink

    # What is written is found in the string below.
    def char_sink(self):
        self.below = self.call("zuStringCharSinkCreate")
        return self.call("zuStringCharSinkCharSink", self.below)

    def line_sink(self):
        return self.call("zuNlfLineSinkLineSink", self.call("zuNlfLineSinkCreate", self.char_sink(), INT(1)))

    def outcome(self, function, text_at, text_arguments):
        """Calls with the text in place of the parameters from `text_at` on; returns the result and every change."""
        self.below = None
        PRINTED.clear()
        arguments, holders = [], []
        at = 0
        while at < len(function.parameters):
            kind = function.parameters[at][0]
            if at == text_at:
                arguments += text_arguments[: text_arguments.index(None)]
                at += text_arguments.index(None)
                continue
            if kind.endswith("**"):
                holders.append(self.makers[kind[:-1]]())
                arguments.append(ctypes.byref(holders[-1]))
            elif kind in PLACES:
                holders.append(INT(0))
                arguments.append(ctypes.byref(holders[-1]))
            else:
                arguments.append(self.makers[kind]())
            at += 1
        arguments += text_arguments[text_arguments.index(None) + 1 :]
        result = self.call(function.name, *arguments)
        told = []
        if "*" in function.result:
            told.append(self.text(result))
        elif function.result != "void":
            told.append(str((result.value or 0) & 0xFFFFFFFF))
        told += [self.text(held) if isinstance(held, ctypes.c_void_p) else str(held.value) for held in holders]
        if self.below:
            told.append(self.text(self.call("zuStringCharSinkString", self.below)))
        return repr(told + PRINTED)


def outcome(caller, *call):
    report, status = interface.in_child(lambda: os.write(2, ("RESULT " + caller.outcome(*call)).encode()))
    failed = re.search(r"^    Expression: (.*)$", report, re.MULTILINE)
    return failed.group(1) if failed else report[report.find("RESULT ") :] or f"ended with {status}: {report}"


def forms(caller, text, suffix):
    """Yields what stands for the text in a form: the arguments in its place, None, and those at the very end."""
    if suffix == "":
        yield [caller.string(text), None]
    else:
        ending = suffix.removeprefix("Format")
        of_format = suffix != ending
        written, more = ("%s", [caller.string(text)]) if of_format else (text, [])
        if ending == "":
            yield [caller.string(written), None] + more
            return
        encode, unit = (str.encode, 1) if ending == "Cstr" else (lambda t: t.encode("utf-16-le"), 2)
        yield [encode(written) + b"\0\0", INT(-1), None] + more
        yield [encode(written + "!!"), INT(len(encode(written)) // unit), None] + more


def main():
    library = interface.load(sys.argv[1], PRINTED)
    caller = Caller(library)
    functions = interface.functions()
    faults = []
    families = set()
    count = 0
    for function in functions.values():
        suffix = next((s for s in SUFFIXES if re.search(s + r"(?![a-z])", function.name)), None)
        base = suffix and functions.get(function.name.replace(suffix, ""))
        if not base:
            continue
        differs = [
            i
            for i, (kind, _) in enumerate(base.parameters)
            if function.parameters[i][0] != kind or function.parameters[i][1] in ("fmt", "format")
        ]
        known = {kind.removesuffix("*") if kind.endswith("**") else kind for kind, _ in base.parameters}
        if not differs or not known <= caller.makers.keys() | PLACES:
            continue
        behind = [kind for kind, _ in base.parameters[differs[0] + 1 :]]
        if behind != [kind for kind, _ in function.parameters[len(function.parameters) - len(behind) :]]:
            continue  # takes more than one text
        families.add(base.name)
        for text in TEXTS:
            wanted = outcome(caller, base, differs[0], next(forms(caller, text, "")))
            for arguments in forms(caller, text, suffix):
                count += 1
                told = outcome(caller, function, differs[0], arguments)
                if told != wanted:
                    faults.append(f"{function.name} of {text!r}: {told}; {base.name}: {wanted}")
    print(f"{len(families)} families")
    return interface.conclude(count, faults, 700) if len(families) >= 50 else 1


if __name__ == "__main__":
    sys.exit(main())
