"""Shows the library's objects in gdb by what they hold: a string by its text, a vector by its items, a store by its tree,
a stream by what it stands on, a timer by what it does and when.

Installed beside the shared library under the name that gdb looks for, <library>-gdb.py.  Where gdb does not trust the
folder it says so, and how to make it: add-auto-load-safe-path.  It can be loaded by hand too:

    (gdb) source tools/gdb/libzu-gdb.py

Needs the library's debugging information, from which it takes the structures; nothing of the process is called, so that
it works on core files and in processes that are broken.
"""
import os
import re

import gdb
import gdb.printing

MOST_CHARACTERS = 200
MOST_BYTES = 16
MOST_ITEMS = 200
NO_SORT = {1: "ZU_SORT", 2: "ZU_MODULE"}  # the static kinds of objects, which have their class by that


# Reading


def sort_name(obj):
    """Returns the class of an object by the object itself, whatever the static type is; None for what is no object."""
    try:
        header = obj.cast(gdb.lookup_type("ZU_OBJ").pointer())
        return NO_SORT.get(int(header["type"])) or header["sort"]["name"].string()
    except (gdb.error, UnicodeDecodeError):
        return None


def as_class(obj, name):
    """Returns the structure of an object of the class `name`; None where the debugging information has none."""
    try:
        return obj.cast(gdb.lookup_type(name).pointer()).dereference()
    except gdb.error:
        return None


def field_of(obj, path):
    """Returns the field that a path of names leads to, through structures, pointers and, by number, arrays."""
    for name in path.split(".") if path else []:
        obj = obj[int(name) if name.isdigit() else name]
    return obj


def text_of(string):
    """Returns the text of a ZU_STRING as a literal."""
    length = int(string["length"])
    first = int(string["fspace"])
    chars = [int(string["chars"][first + i]) for i in range(min(length, MOST_CHARACTERS))]
    text = "".join(chr(ch) if ch < 0x110000 and not 0xD800 <= ch < 0xE000 else f"\\x{{{ch:x}}}" for ch in chars)
    more = "..." if length > MOST_CHARACTERS else ""
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"' + more


def bytes_of(first, length):
    digits = [f" {int(first[i]):02X}" for i in range(min(length, MOST_BYTES))]
    return f" of {length} bytes{':' if digits else ''}{''.join(digits)}{' ...' if length > MOST_BYTES else ''}"


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


def items_of(vector):
    for i in range(min(int(vector["length"]), MOST_ITEMS)):
        yield vector["items"][int(vector["fspace"]) + i]


# What stands behind the name of a class
#
# A text in which {field} is the value of a field, or of a path of such; {field?this:that} tells by a field that is set
# or is not, {field|A|B} names its values from 0 on, and by the last name -1.  What stands in brackets is there if the fields in it are
# neither null nor 0, or the one field that it begins with: [field?text].

FIELD = re.compile(r"\{([\w.]+)(?:\?([^:}]*):([^}]*)|\|([^}]*))?\}")
SECTION = re.compile(r"\[(?:([\w.]+)\?)?([^\]]*)\]|([^\[]+)")


def function_name(pointer):
    """Returns the name of a function without its parameters, the address if it has none.  What zu.hpp calls a lambda by
    goes by the function in which that stands."""
    symbol = gdb.execute(f"info symbol {int(pointer)}", to_string=True)
    found = re.search(r"<(?:zu::internal::Two<)?((?:\w+::)*~?\w+)(?:\(.*?\))?(?: const)?::(?:\{lambda|\$_)", symbol)
    if found:
        return f"a lambda in {found[1]}"
    found = re.match(r"(?!No symbol)(.+?)(?:\(| \+| in section)", symbol)
    return found[1] if found else hex(int(pointer))


def shown(value):
    kind = value.type.strip_typedefs()
    if kind.code != gdb.TYPE_CODE_PTR:
        return str(value)
    if not int(value):
        return "nothing"
    target = kind.target().strip_typedefs()
    if target.code == gdb.TYPE_CODE_FUNC:
        return function_name(value)
    if target.sizeof == 1 and target.code == gdb.TYPE_CODE_INT:
        return value.string(errors="replace")
    printer = printer_of(value)
    return printer.to_string() if printer else hex(int(value))


def fill(obj, text):
    def word(match):
        value = field_of(obj, match[1])
        if match[2] is not None:
            return match[2] if int(value) else match[3]
        names = match[4].split("|") if match[4] else []
        return names[int(value)] if names and -1 <= int(value) < len(names) else shown(value)

    return FIELD.sub(word, text)


def told(obj, text):
    if callable(text):
        return text(obj)
    parts = []
    for condition, section, plain in SECTION.findall(text):
        asked = [condition] if condition else [path for path, *_ in FIELD.findall(section)]
        if plain or all(int(field_of(obj, path)) for path in asked):
            parts.append(fill(obj, plain or section))
    return "".join(parts)


def targets(holder, lead=""):
    """What a listener or a timer does when it fires."""
    does = {"func": "calls", "sig": "asserts", "alert": "sets", "barrier": "opens", "eq": "writes to"}
    return "".join(f"[{lead} {verb} {{{holder}{field}}}]" for field, verb in does.items())


def timer(closure):
    return f"[{closure}sched? runs][{closure}at? until {{{closure}at}}][{closure}schedRel? until {{{closure}due}}]" + (
        f"{targets(closure, ',')}[{closure}abortThread?, aborts]"
    )


def barrier_text(barrier):
    closed = not int(barrier["open"])
    return (" closed" if closed else " open") + (", waited for" if closed and int(barrier["cond"]["sequence"]) & 1 else "")


def buffer_text(buffer):
    bits, first = int(buffer["bitLength"]), int(buffer["bitFspace"])
    return f" of {bits} bits" if bits % 8 or first % 8 else bytes_of(buffer["bytes"] + first // 8, bits // 8)


def encoder_text(encoder):
    if not int(encoder["buffer"]) or not int(encoder["end"]):
        return told(encoder, "[ of {buffer}]")
    first = encoder["buffer"]["bytes"]
    return bytes_of(first, int(encoder["end"]) - int(first))


def generation_text(generation):
    return " " + ".".join(str(int(as_class(each, "ZU_BOXED_INT")["value"])) for each in items_of(generation["path"]))


def region_text(region):
    state = int(region["srw"]["state"])
    readers, waiting = state & 0xFFFFF, (state >> 20 & 0xFFFFF) + (state >> 40 & 0xFFFFF)
    held = " held by one" if state >> 61 & 1 else f" shared by {readers}" if readers else " free"
    return held + (f", {waiting} wait" if waiting else "")


def time_text(time):
    year, month, day, hour, minute, second = (int(time[name]) for name in "year month day hour minute second".split())
    return f" {year:04}-{month:02}-{day:02} {hour:02}:{minute:02}:{second:02}"


def pointer_text(boxed):
    """Streams on files are such pointers.  Which file that is, Linux tells while the process lives on this machine."""
    if not int(boxed["destroyFunc"]) or function_name(boxed["destroyFunc"]) != "fileStreamDestroy":
        return told(boxed, "ZU___BOXED_POINTER {value}[ until {destroyFunc}]")
    stream = as_class(boxed["value"], "FILE_STREAM")
    handle, cached = int(stream["handle"]), int(stream["end"]) - int(stream["begin"])
    failed = ", failed" if stream["failed"] else ""
    inferior = gdb.selected_inferior()
    if inferior.connection and inferior.connection.type == "native":
        try:
            name = os.readlink(f"/proc/{inferior.pid}/fd/{handle}")
            with open(f"/proc/{inferior.pid}/fdinfo/{handle}", encoding="ascii") as info:
                position, flags = re.match(r"pos:\s*(\d+)\nflags:\s*(\d+)", info.read()).groups()
            writes = int(flags, 8) & os.O_ACCMODE != os.O_RDONLY
            done = f"written up to {int(position) + cached}" if writes else f"read up to {int(position) - cached}"
            return f'file "{name}" {done}{failed}'
        except OSError:
            pass
    return f"file handle {handle}, {cached} bytes in the cache{failed}"


def stream(function, rest=""):
    def text(obj):
        name, backend = function_name(obj[function]), obj["closure"]
        if name == "fileCharSinkWrite":  # on a byte sink, and on the sink that encodes for it
            backend = field_of(as_class(backend, "ZU_VECTOR"), "items.1")
        return f" by {name}" + (f" on {shown(backend)}" if int(backend) else "") + told(obj, "[error?, failed]" + rest)

    return text


# What an object holds: functions that yield names and values, with the hint for gdb


def vector(path):
    return "array", lambda obj: ((f"[{i}]", item) for i, item in enumerate(items_of(field_of(obj, path))))


def pairs(*paths):
    def walk(obj):
        every = [pair for path in paths for pair in pairs_of(field_of(obj, path))]
        return ((f"{i}", value) for i, value in enumerate(part for pair in every for part in pair))

    return "map", walk


def keys(path):
    return "array", lambda obj: ((f"[{i}]", key) for i, (key, _) in enumerate(pairs_of(field_of(obj, path))))


def values(path):
    return "array", lambda obj: ((f"[{i}]", value) for i, (_, value) in enumerate(pairs_of(field_of(obj, path))))


def ranges(obj):
    for i in range(min(int(obj["length"]), MOST_ITEMS)):
        each = obj["ranges"][i]
        first, last = int(each["startingKey"]), int(each["endingKey"])
        yield str(first) if first == last else f"{first} to {last}", each["value"]


def lines(obj):
    for i in range(int(obj["symbolsLength"])):
        yield f"[{i}]", obj["symbols"][i].string(errors="replace")


def fields(obj):
    return ((each.name, obj[each.name]) for each in obj.type.fields() if each.name and each.name != "obj")


ON_SOURCE = " on {input.byteSource}"
ON_SINK = " on {output.byteSink}[, {output.used} bytes wait]"
FORM = " of {form|single bytes|UTF-8|UTF-16|UTF-32}"
COUNT = " of {length}"
NAMES = " of {byName.length} names"
QUEUE = "[{0}vector? of {{{0}vector.length}}][{0}halted?, halted]"

# A row for each class: what stands behind its name and, where there is such, what it holds.
ROWS = {
    "ZU_ALERT": (" {set?set:not set}[alertables.slot?, with listeners]",),
    "ZU_ALERTABLE": (targets("imp.listener.targets."),),
    "ZU_BARRIER": (barrier_text,),
    "ZU_BOXED_BOOL": (" {value?true:false}",),
    "ZU_BOXED_INT": (" {value}",),
    "ZU_BOXED_NULL": ("",),
    "ZU_BOXED_REAL": (" {value}",),
    "ZU_BOXED_UNIQUE": (" {obj.unique}",),
    "ZU_BUFFER": (buffer_text,),
    "ZU_BUFFER_BYTE_SINK": (" with {buffer}",),
    "ZU_BUFFER_BYTE_SOURCE": (" at {offset} in {buffer}",),
    "ZU_BYTE_SINK": (stream("writeFunc"),),
    "ZU_BYTE_SOURCE": (stream("readFunc", "[end?, at its end]"),),
    "ZU_CHAR_SINK": (stream("writeFunc"),),
    "ZU_CHAR_SOURCE": (stream("readFunc", "[end?, at its end]"),),
    "ZU_COUNTER": (" {value}",),
    "ZU_DECODER": (" at {offset} in {buf}[error?, failed]",),
    "ZU_DICT": (COUNT, pairs("")),
    "ZU_ENCODER": (encoder_text,),
    "ZU_ENUM": (NAMES, pairs("byValue")),
    "ZU_EVENT_QUEUE": (QUEUE.format("imp."), vector("imp.vector")),
    "ZU_EXACT_CHAR_SINK": (FORM + " on {byteSink}[failed?, failed, fault at {fault}]",),
    "ZU_EXACT_CHAR_SOURCE": (FORM + " on {byteSource}[failed?, failed, fault at {fault}]",),
    "ZU_FLAGSET": (NAMES, pairs("byName")),
    "ZU_GENERATION": (generation_text,),
    "ZU_GENERATION_MUTEX": (" of {registered.length}", keys("registered")),
    "ZU_IDENTIFIER": (" {string}",),
    "ZU_LINE_SINK": (stream("writeFunc", ", {linesWritten} lines"),),
    "ZU_LINE_SOURCE": (stream("readFunc", "[end?, at its end], {linesRead} lines"),),
    "ZU_MODULE": (" {moduleRecord.name} {moduleRecord.version}",),
    "ZU_MODULE_VERSION": (" {major}[#{majorInsert}].{minor}[#{minorInsert}]",),
    "ZU_MONITOR": (" {obj.lock.state|free|entered|entered, waited for|entered, waited for|free, waited for}",),
    "ZU_NLF_LINE_SINK": (" on {dest}",),
    "ZU_NLF_LINE_SOURCE": (" on {src}",),
    "ZU_OPT_DEF": (" of {idForLongOpt.length} long and {idForShortOpt.length} short options", pairs("idForLongOpt")),
    "ZU_OPT_SEQ": ("[ at {opt}][ with {arg}][, {error}], {argv.length} words left", vector("argv")),
    "ZU_PRIORITY_MAP": (" of {entryDict.length}", keys("entryDict")),
    "ZU_RANGE_MAP": (COUNT, (None, ranges)),
    "ZU_REGION": (region_text,),
    "ZU_RUNTIME_INSTALL_INFO": (" {texts.0} {texts.2}",),
    "ZU_RUNTIME_PATHS": (" of {map.length}", (None, lambda paths: ranges(paths["map"]))),
    "ZU_SIGNAL": (" {asserted?asserted:not asserted}[waitBarrier?, waited for][sets.0.slot?, with listeners]",),
    "ZU_SIGNALABLE": (targets("imp.listener.targets."),),
    "ZU_SORT": (" {name}, {objects} objects",),
    "ZU_STACK_TRACE": (" of {symbolsLength}", ("array", lines)),
    "ZU_STORE": (" of {addresses.length}", pairs("values", "stores")),
    "ZU_STRING": (text_of,),
    "ZU_STRING_CHAR_SINK": (" with {dest}",),
    "ZU_STRING_CHAR_SOURCE": (" at {offset} in {src}",),
    "ZU_TAG_DEFINITION": (
        " {tag}[, {comment}], {color|red|orange|yellow|green|blue|indigo|violet|white|grey|black|no colour}",
    ),
    "ZU_TAG_DEFINITION_SET": (" of {dict.length}", values("dict")),
    "ZU_TAG_MATCH": (" {type|or|xor|and|not} of {tagSet.dict.length}", keys("tagSet.dict")),
    "ZU_TAG_REWRITE": (" of {operations.length}[clear?, clears]", values("operations")),
    "ZU_TAG_REWRITE_OPERATION": (" {type|set|delete|pass through} {tag}",),
    "ZU_TAG_SET": (" of {dict.length}", keys("dict")),
    "ZU_THREAD": (" {threadName}[ in {threadFunc}][stateTerminated?, ended]",),
    "ZU_TIME": (time_text,),
    "ZU_TIMER": (timer("tcl."),),
    "ZU_TOOL_SWITCH": (" of {tools.length}", pairs("tools")),
    "ZU_UNICODE_NORMALIZER": (" to {normalForm|NFC|NFKC|NFD|NFKD}, {pendingLength} wait",),
    "ZU_VECTOR": (COUNT, vector("")),
    # What no header tells of, and stands within the others
    "ZU___ALERTABLE_IMP": (targets("listener.targets."),),
    "ZU___BOXED_POINTER": (pointer_text,),
    "ZU___CHARSET_MAP_CHAR_SINK_CLOSURE": (ON_SINK,),
    "ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE": (ON_SOURCE,),
    "ZU___CHARSET_UTF16_CHAR_SINK_CLOSURE": (ON_SINK,),
    "ZU___CHARSET_UTF16_CHAR_SOURCE_CLOSURE": (ON_SOURCE,),
    "ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE": (ON_SINK,),
    "ZU___CHARSET_UTF32_CHAR_SOURCE_CLOSURE": (ON_SOURCE,),
    "ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE": (ON_SINK,),
    "ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE": (ON_SOURCE,),
    "ZU___EVENT_QUEUE_IMP": (QUEUE.format(""), vector("vector")),
    "ZU___PRIORITY_MAP_ENTRY": (" {priority}, {value}",),
    "ZU___SIGNALABLE_IMP": (targets("listener.targets."),),
    "ZU___THREAD_CALL": (" of {func}",),
    "ZU___TIMER_CLOSURE": (timer(""),),
    "ZU___TOOL_SWITCH_TOOL": ("[ calls {toolFunc}]",),
}


class Printer:
    """Of a pointer to an object.  Classes that the table lacks, which are a program's own, show their fields."""

    def __init__(self, value, name):
        self.name = name
        self.value = value
        self.object = as_class(value, name)
        own = (lambda _: f" ({self.value.cast(gdb.lookup_type('ZU_OBJ').pointer())['retainCount']})", (None, fields))
        row = ROWS.get(name, own) if self.object is not None else own[:1]
        self.text = row[0]
        self.hint, self.items = row[1] if len(row) > 1 else (None, None)

    def to_string(self):
        name = "" if self.text in (text_of, pointer_text) else self.name
        try:
            return name + told(self.object, self.text)
        except (gdb.error, RecursionError) as fault:  # an object that is broken, or a class that has changed
            return f"{self.name} <{fault}>"

    def children(self):
        try:
            yield from self.items(self.object) if self.items else []
        except gdb.error as fault:
            yield "fault", str(fault)

    def display_hint(self):
        return self.hint


def printer_of(value):
    """Returns the printer of a pointer to an object by the object's class, which the static type need not tell."""
    kind = value.type.strip_typedefs()
    if kind.code != gdb.TYPE_CODE_PTR or not int(value):
        return None
    target = kind.target().unqualified().strip_typedefs()
    first = target.fields()[:1] if target.code == gdb.TYPE_CODE_STRUCT else []
    if not (target.name or "").startswith("ZU_") and not any(str(field.type) == "ZU_OBJ" for field in first):
        return None
    name = sort_name(value)
    if not name or (target.name or name).split("::")[-1] not in ("ZU_OBJ", name):
        return None
    return Printer(value, name)


class EmptyPrinter:
    """Of a zu::Ref to nothing."""

    def to_string(self):
        return "empty"


class Objects(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("zu", [])

    def __call__(self, value):
        kind = value.type.strip_typedefs()
        if kind.code == gdb.TYPE_CODE_REF:
            kind = kind.target().strip_typedefs()
        if (kind.unqualified().name or "").startswith("zu::Ref<"):
            return printer_of(value["obj"]) if int(value["obj"]) else EmptyPrinter()
        return printer_of(value)


gdb.printing.register_pretty_printer(gdb.current_objfile(), Objects(), replace=True)
