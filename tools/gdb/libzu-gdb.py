"""Shows the library's objects in gdb by what they hold: a string by its text, a vector by its items, a store by its tree.

Installed beside the shared library under the name that gdb looks for, <library>-gdb.py.  Where gdb does not trust the
folder it says so, and how to make it: add-auto-load-safe-path.  It can be loaded by hand too:

    (gdb) source tools/gdb/libzu-gdb.py

Needs the library's debugging information, from which it takes the structures; nothing of the process is called, so that
it works on core files and in processes that are broken.
"""
import itertools

import gdb
import gdb.printing

MOST_CHARACTERS = 200
MOST_ITEMS = 200


def sort_name(obj):
    """Returns the class of an object by the object itself, whatever the static type is; None for what is no object."""
    try:
        return obj.cast(gdb.lookup_type("ZU_OBJ").pointer())["sort"]["name"].string()
    except (gdb.error, UnicodeDecodeError):
        return None


def as_class(obj, name):
    """Returns the structure of an object of the class `name`; None where the debugging information has none."""
    try:
        return obj.cast(gdb.lookup_type(name).pointer()).dereference()
    except gdb.error:
        return None


def text_of(string):
    """Returns the text of a ZU_STRING as a literal."""
    length = int(string["length"])
    first = int(string["fspace"])
    chars = [int(string["chars"][first + i]) for i in range(min(length, MOST_CHARACTERS))]
    text = "".join(chr(ch) if ch < 0x110000 and not 0xD800 <= ch < 0xE000 else f"\\x{{{ch:x}}}" for ch in chars)
    more = "..." if length > MOST_CHARACTERS else ""
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"' + more


def pair_of(dict_, i):
    if int(dict_["items"]):
        return dict_["items"][i]
    rings = dict_["rings"]  # of a large dict
    ring = rings["items"][i >> int(rings["shift"])]
    return ring["pairs"][(int(ring["first"]) + i) & ((1 << int(rings["shift"])) - 1)]


def pairs_of(dict_):
    for i in range(min(int(dict_["length"]), MOST_ITEMS)):
        pair = pair_of(dict_, i)
        yield pair["key"], pair["val"]


class Printer:
    """Of a pointer to an object."""

    def __init__(self, value, name):
        self.name = name
        self.retains = int(value.cast(gdb.lookup_type("ZU_OBJ").pointer())["retainCount"])
        self.object = as_class(value, name)

    def to_string(self):
        return f"{self.name} ({self.retains})"


class StringPrinter(Printer):
    def to_string(self):
        return text_of(self.object)


class ValuePrinter(Printer):
    def to_string(self):
        return f"{self.name} {self.object['value']}"


class NamedPrinter(Printer):
    """Of a class that has a name."""

    FIELDS = {"ZU_THREAD": "threadName", "ZU_TAG_DEFINITION": "tag", "ZU_TAG_REWRITE_OPERATION": "tag"}

    def to_string(self):
        return f"{self.name} {text_of(self.object[self.FIELDS[self.name]].dereference())}"


class VectorPrinter(Printer):
    def to_string(self):
        return f"{self.name} of {int(self.object['length'])}"

    def children(self):
        for i in range(min(int(self.object["length"]), MOST_ITEMS)):
            yield f"[{i}]", self.object["items"][int(self.object["fspace"]) + i]

    def display_hint(self):
        return "array"


class DictPrinter(Printer):
    def to_string(self):
        return f"{self.name} of {int(self.object['length'])}"

    def children(self):
        for i, (key, value) in enumerate(pairs_of(self.object)):
            yield f"{i} key", key
            yield f"{i} value", value

    def display_hint(self):
        return "map"


class StorePrinter(Printer):
    def to_string(self):
        return f"{self.name} of {int(self.object['addresses']['length'])}"

    def children(self):
        both = itertools.chain(pairs_of(self.object["values"]), pairs_of(self.object["stores"]))
        for i, (address, value) in enumerate(both):
            yield f"{i} key", address
            yield f"{i} value", value

    def display_hint(self):
        return "map"


class BufferPrinter(Printer):
    def to_string(self):
        return f"{self.name} of {int(self.object['bitLength'])} bits"


class FieldsPrinter(Printer):
    """Of all other classes: the fields of the structure."""

    def children(self):
        for field in self.object.type.fields() if self.object is not None else []:
            if field.name and field.name != "obj":
                yield field.name, self.object[field.name]


PRINTERS = {
    "ZU_STRING": StringPrinter,
    "ZU_VECTOR": VectorPrinter,
    "ZU_DICT": DictPrinter,
    "ZU_STORE": StorePrinter,
    "ZU_BUFFER": BufferPrinter,
    "ZU_BOXED_BOOL": ValuePrinter,
    "ZU_BOXED_INT": ValuePrinter,
    "ZU_BOXED_REAL": ValuePrinter,
}


class Objects(gdb.printing.PrettyPrinter):
    """Chooses by the object's class, which the static type need not tell."""

    def __init__(self):
        super().__init__("zu", [])

    def __call__(self, value):
        kind = value.type.strip_typedefs()
        if kind.code != gdb.TYPE_CODE_PTR or not int(value):
            return None
        target = kind.target().unqualified()
        if not (target.name or "").startswith("ZU_") or target.name == "ZU_SORT":
            return None
        name = sort_name(value)
        if not name or (target.name != "ZU_OBJ" and target.name != name):
            return None
        if name in NamedPrinter.FIELDS:
            return NamedPrinter(value, name)
        printer = PRINTERS.get(name, FieldsPrinter)(value, name)
        return printer if printer.object is not None else Printer(value, name)


gdb.printing.register_pretty_printer(gdb.current_objfile(), Objects(), replace=True)
