#!/usr/bin/env python3
"""Calls each function that takes a pointer first with zeros, and expects the failed check of that parameter.

usage: null_sweep.py LIBRARY
"""
import ctypes
import re
import sys

import interface

RETURNS = "ended with 0"
# What stops, or does not, elsewhere than at the first parameter; the first row that fits a name holds.
EXCEPTIONS = [
    # An empty text or array may be null.
    (r"zu(Chars(AllOk|Sanitize|Convert)|Mem(Copy|Move|Set|Compare)N?$|MemDupCstr|(Debug)?Print(C|Wc)str|RuntimePrint|PrintTo).*", RETURNS),
    (r"zu(Buffer|String|Vector)CreateFrom((Bytes|Chars|Objs)(Copy|Use)|Ascii|Utf8|(C|Wc)str)", RETURNS),
    (r"zuFormat(EncodeChars|TryDecodeBoolChars)|zuRealTextTryRead(Chars|Utf8)|zuUtf(8|16|32)(Fault|(Try)?Decode)|zuRandomBytes", RETURNS),
    (r"zuFormatTryDecode(Int|Real)Chars", "base == -1 || base >= 2"),
    (r"zu(ModuleVersionTryCreateFrom|RuntimeTryLoadModules)(C|Wc)str", RETURNS),
    # What nothing can be done with, or may be left out.
    (r"zuMemFree|zuSleepTimed|zu___(BoxedPointerCreate|LockFinalize|RuntimeVersionStartup)", RETURNS),
    (r"zuMemRealloc", "newSize > 0"),
    (r"zuMemReallocN", "count > 0"),
    (r"zuMemDupN?", "size > 0"),
    (r"zuBufferCreateFromBytesUseWithRef", "ref"),
    (r"zuThreadTrySpawn(Call)?(C|Wc)str", "threadFunc"),
    (r"zu___ThreadEncapsulateBegin", "!zuThreadEncapsulated()"),
    # Other names in the text, or another parameter first.
    (r"zuNlfFlagsFromString", "flags"),
    (r"zuTimezone(Iana|Windows).*", "key"),
    (r"zuString(Insert|Prepend)Obj", "thisObj"),
    (r"zu___ObjLogAppend", "logMessage"),
    (r"zuStringEqualsCaseFold(C|Wc)str", "zusA"),
    # The format is made ahead of the rest; the empty one has no conversion for a first argument.
    (r"zu((Store|String|Vector(Insert|Prepend|Set)).*|(Debug)?Print)Format(At)?", "fmt"),
    (r"zu((Store|String|Vector(Insert|Prepend|Set)).*|(Debug)?Print)Format(C|Wc)str(At)?", "fmtContainsConversion"),
]
# What cannot be called so: a list of arguments is no number, zero waits for ever, the last ones check nothing or leave it
# to the public function of their name.
NOT_CALLED = (
    r".*ArgList|zuSleep|zu___(RetainCount.*|Lock(Acquire|Release)|Abort|File.*|DirectoryContent|PathIsRelative)"
)


def expected(function):
    if re.fullmatch(r"(?!.*Create).*(From|Obj)", function.name) and [name for _, name in function.parameters] == ["obj"]:
        return RETURNS  # a cast
    for pattern, told in EXCEPTIONS:
        if re.fullmatch(pattern, function.name):
            return told
    return function.parameters[0][1]


def main():
    library = interface.load(sys.argv[1])
    zeros = [ctypes.c_int64(0)] * 8
    faults = []
    count = 0
    for function in interface.functions().values():
        if not function.parameters or "*" not in function.parameters[0][0] or re.fullmatch(NOT_CALLED, function.name):
            continue
        count += 1
        told = interface.failure(lambda: getattr(library, function.name)(*zeros))
        if told != expected(function):
            faults.append(f"{function.name}: {told}; expected: {expected(function)}")
    return interface.conclude(count, faults, 1000)


if __name__ == "__main__":
    sys.exit(main())
