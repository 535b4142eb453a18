#!/usr/bin/env python3
"""Calls each function with sound arguments but for one, which is outside of its range or null, and expects a failed check
that names that parameter.  The first parameter, and forms that take other texts, have sweeps of their own.

usage: range_sweep.py LIBRARY
"""
import ctypes
import re
import sys

import interface

# What has no range, or is told by the result; what may be null.
ANYTHING = [
    (r".*", r"value|key|bits|flags|.*Flags|seconds|number|ts|insertValue|optional.*|owner|closure|.*[fF]unc|arg|parent"),
    (r".*(From|Obj)", r"obj"),
    (r"zuTime(TryCreateFromSystemTime|SetYear|Shift.*)|zuReal.*Int|zuInt[A-Z][a-z]+(Ok|Saturating)?|zuRandomBytes", r".*"),
    (r"zu(RangeMap(Set|Del)RangeKey|PriorityMapSet|OptDefShortOpt|StringEqualsChar)", r"startingKey|priority|optChar|ch"),
]
# What is checked under another name, further in or of a sum
OTHERWISE = (
    r"zuBuffer.*|zuEncoderWrite.*|zu(Enum|Flagset)Set.*|zuVector(Insert|Append|Prepend|Set|CreateFromObjsUse).*"
    r"|zuString(Delimited.*|SplitChars)|zuIntBit.*Range|zuMemAllocN"
)
# What waits, changes files, makes a string of its text and hands it on, or returns more than fits a register
NOT_CALLED = r".*(Wait|Pass|Sleep|Join|Enter|Acquire|Leave|Timed|(C|Wc)str|Format)(?![a-z]).*|zu(___|File|Directory|VectorCursor).*"
RANGES = re.compile(r"(?:byte|bit|char|line)?(?:[oO]ffset|[cC]ount|[iI]dx)")


class Caller(interface.Maker):
    def __init__(self, library, functions):
        super().__init__(library)
        for function in functions:
            if function.name.endswith("Create") and not function.parameters:
                self.makers.setdefault(function.result, lambda name=function.name: self.call(name))
        for kind in interface.integers():
            self.makers.setdefault(kind, self.makers["ZU_INT"])
        for kind in ["ZU_CHAR*", "char*", "char16_t*", "uint8_t*", "ZU_INT*", "ZU_BOOL*", "double*"]:
            self.makers[kind] = lambda: (ctypes.c_uint64 * 8)(*[ord("b") << 32 | ord("b")] * 8)
            self.makers.setdefault("const " + kind, self.makers[kind])
        self.makers["uint8_t"] = lambda: ctypes.c_uint8(1)

    def knows(self, kind):
        return kind in self.makers or (kind.endswith("**") and kind[:-1] in self.makers)

    def argument(self, kind):
        return self.makers[kind]() if kind in self.makers else ctypes.byref(self.makers[kind[:-1]]())

    def told(self, function, wrong, value):
        """Calls in a child process with `value` for one parameter; returns the failed expression, or the end."""

        def run():
            kinds = [kind for kind, _ in function.parameters]
            self.call(function.name, *[value if i == wrong else self.argument(kind) for i, kind in enumerate(kinds)])

        return interface.failure(run)

    def outside(self, kind, name, first):
        """Yields what cannot be right for a parameter."""
        if kind == "ZU_CHAR":
            yield ctypes.c_uint32(0x110000)
        elif kind.endswith("**"):
            yield ctypes.byref(ctypes.c_void_p(0))
        elif re.fullmatch(r"ZU_\w+\*", kind) and kind not in ("ZU_INT*", "ZU_BOOL*", "ZU_CHAR*") and not first:
            yield ctypes.c_void_p(0)
        elif self.makers[kind] == self.makers["ZU_INT"]:
            yield ctypes.c_int64(-(2**63))
            if RANGES.fullmatch(name):
                yield ctypes.c_int64(2**63 - 1)


def main():
    library = interface.load(sys.argv[1])
    functions = interface.functions().values()
    caller = Caller(library, functions)
    faults = []
    count = 0
    for function in functions:
        if (
            function.variadic
            or re.fullmatch(NOT_CALLED, function.name)
            or not all(caller.knows(kind) for kind, _ in function.parameters)
        ):
            continue
        for i, (kind, name) in enumerate(function.parameters):
            if any(re.fullmatch(f, function.name) and re.fullmatch(p, name) for f, p in ANYTHING):
                continue
            for value in caller.outside(kind, name, i == 0):
                count += 1
                told = caller.told(function, i, value)
                if told.startswith("ended with ") or not re.search(
                    r"." if re.fullmatch(OTHERWISE, function.name) else rf"\b{name}\b", told
                ):
                    faults.append(f"{function.name}, {name}: {told}")
    return interface.conclude(count, faults, 1000)


if __name__ == "__main__":
    sys.exit(main())
