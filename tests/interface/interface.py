"""What the sweeps share: the functions that the public headers declare, and the library, called through ctypes."""
import ctypes
import os
import pathlib
import re
import signal

SOURCE = pathlib.Path(__file__).resolve().parents[2] / "source"
STANDARD = re.search(
    r"#define ZU_STDFUNCS_DECLARE\( type, prefix \)(.*?)ZU_API type \*zu___outlined",
    (SOURCE / "zu/runtime/zu_obj.h").read_text(),
    re.DOTALL,
).group(1).replace("\\\n", "\n")


class Function:
    def __init__(self, result, name, parameters):
        self.result, self.name = re.sub(r"\s*\*", "*", " ".join(result.split())), name
        self.parameters = []  # pairs of type and name
        self.variadic = parameters.endswith("...")
        for parameter in parameters.replace("...", "").strip().strip(",").split(","):
            found = re.fullmatch(r"\s*(.*?[\s*])(\w+)\s*", parameter, re.DOTALL)
            if found:
                self.parameters.append((re.sub(r"\s*\*", "*", " ".join(found.group(1).split())), found.group(2)))


def functions():
    """Returns all functions of the public headers by name, those that macros declare for each class included."""
    found = {}
    for header in sorted(SOURCE.rglob("*.h")):
        if header.name.endswith("_internal.h"):
            continue
        text = re.sub(r"//[^\n]*|/\*.*?\*/", "", header.read_text(), flags=re.DOTALL)
        for kind, prefix in re.findall(r"^ZU_STDFUNCS_DECLARE\( (\w+), (\w+) \)", text, re.MULTILINE):
            text += STANDARD.replace("prefix##", prefix).replace("type ", kind + " ")
        text = re.sub(r"^#.*?[^\\]$", "", text, flags=re.DOTALL | re.MULTILINE)
        for result, name, parameters in re.findall(
            r"ZU_API (?:ZU_NORETURN )?([^;()]*?)(zu\w+)\(\s*([^;]*?)\s*\)[^;)]*;", text, re.DOTALL
        ):
            if "outlined" not in name:
                found[name] = Function(result, name, "" if parameters == "void" else parameters)
    return found


def integers():
    """Returns the names of the integer types that the public headers declare."""
    return [
        kind
        for header in SOURCE.rglob("*.h")
        for kind in re.findall(r"^typedef ZU_INT (\w+);", header.read_text(), re.MULTILINE)
    ]


def load(path, printed=None):
    """Loads the library and starts it; what it prints is appended to the list `printed`."""

    @ctypes.CFUNCTYPE(None, ctypes.POINTER(ctypes.c_uint32), ctypes.c_int64)
    def print_function(chars, length):
        if printed is not None:
            printed.append("".join(map(chr, chars[:length])))

    library = ctypes.CDLL(path)
    library.print_function = print_function  # lives as long as the library may call it
    library.zuRuntimeStartup(0, ctypes.c_int64(-1), print_function, b"sweep", b"Sweep", b"1.0")
    return library


def in_child(body):
    """Runs `body` in a forked process and returns what came over its error stream, and how it ended."""
    read_end, write_end = os.pipe()
    child = os.fork()
    if child == 0:
        os.dup2(write_end, 2)
        os.close(read_end)
        os.close(write_end)
        signal.alarm(3)  # what waits for ever fails
        try:
            body()
        finally:
            os._exit(0)
    os.close(write_end)
    report = ""
    with os.fdopen(read_end, encoding="utf-8", errors="replace") as errors:
        for line in errors:
            report += line
            if line.startswith("    Expression: "):
                os.kill(child, signal.SIGKILL)  # ahead of the stack, which takes longer than all else
                break
    return report, os.waitpid(child, 0)[1]


def failure(body):
    """Runs `body` in a forked process and returns the check that has failed there, or how it ended."""
    report, status = in_child(body)
    line = re.search(r"^    Expression: (.*)$", report, re.MULTILINE)
    return line.group(1) if line else f"ended with {status}"


def conclude(count, faults, least):
    """Tells of a sweep's calls, which must be so many, and returns its exit status."""
    print(*faults, sep="\n")
    print(f"{count - len(faults)} passed, {len(faults)} failed")
    return 1 if faults or count < least else 0


class Maker:
    """Makes arguments by their type."""

    def __init__(self, library):
        self.library = library
        self.makers = {
            "ZU_INT": lambda: ctypes.c_int64(1),
            "ZU_CHAR": lambda: ctypes.c_uint32(ord("b")),
            "ZU_BOOL": lambda: ctypes.c_int32(1),
            "double": lambda: ctypes.c_double(1.5),
            "ZU_STRING*": lambda: self.string("abcabc"),
            "ZU_OBJ*": lambda: self.string("q"),
            "ZU_VECTOR*": self.vector,
            "ZU_DICT*": self.dict,
            "ZU_STORE*": self.store,
            "ZU_ENUM*": lambda: self.call("zuEnumCreate"),
            "ZU_FLAGSET*": lambda: self.call("zuFlagsetCreate"),
        }

    def call(self, name, *arguments):
        function = getattr(self.library, name)
        function.restype = ctypes.c_void_p
        return ctypes.c_void_p(function(*arguments))

    def string(self, text):
        return self.call("zuStringCreateFromUtf8", text.encode(), ctypes.c_int64(len(text.encode())))

    def text(self, obj):
        if not obj.value:
            return "null"
        copied = self.call("zuStringConvertToUtf8", self.call("zuObjToString", obj), 1, None)
        return ctypes.string_at(copied.value).decode()

    def vector(self):
        held = self.call("zuVectorCreate")
        for text in ["x", "abcabc", "b"]:
            self.call("zuVectorAppendString", ctypes.byref(held), self.string(text))
        return held

    def dict(self):
        held = self.call("zuDictCreate")
        for key in ["ab", "b"]:
            self.call("zuDictSetStringKey", ctypes.byref(held), self.string(key), self.string(key + key))
        return held

    def store(self):
        held = self.call("zuStoreCreate")
        inner = self.call("zuStoreCreate")
        for address, value in [("12", "7"), ("ab", "1"), ("b", "true")]:
            self.call("zuStoreSetValue", ctypes.byref(held), self.string(address), self.string(value))
        self.call("zuStoreSetStore", ctypes.byref(held), self.string("b"), inner)
        return held
