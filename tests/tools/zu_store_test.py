"""zu store against a model of nested dictionaries.

usage: zu_store_test.py ZU [unittest options]
"""
import json
import os
import random
import unicodedata
import unittest

import tool
from tool import WINDOWS, FilesTest

STEPS = 20 if WINDOWS else 150  # of five processes each, which take their time there


def run(*arguments, data=b""):
    return tool.run("store", *arguments, data=data)


# A store of the model is what --json prints.
def make_store():
    return {"values": {}, "stores": {}}


def find(store, path):
    """The store that holds the last address of the path, and that address; None for no store."""
    *ahead, last = path.rstrip(".").split(".")
    for address in ahead:
        store = store and store["stores"].get(address)
    return store, last


def add(store, entry):
    path, equals, value = entry.partition("=")
    *ahead, last = path.rstrip(".").split(".")
    for address in ahead:
        store = store["stores"].setdefault(address, make_store())
    if equals:
        store["values"][last] = value
    else:
        store["stores"].setdefault(last, make_store())


def delete(store, path):
    store, last = find(store, path)
    if store:
        store["stores" if path.endswith(".") else "values"].pop(last, None)


def merge(store, other):
    store["values"] = {**other["values"], **store["values"]}
    for address, sub in other["stores"].items():
        merge(store["stores"].setdefault(address, make_store()), sub)


def escape(value):
    return "".join(f"%{ord(ch):06x}" if unicodedata.category(ch) == "Cc" else "%%" if ch == "%" else ch for ch in value)


def lines(store, prefix=""):
    text = "".join(f"{prefix}{address}={escape(value)}\n" for address, value in sorted(store["values"].items()))
    for address, sub in sorted(store["stores"].items()):
        text += lines(sub, f"{prefix}{address}.") or f"{prefix}{address}.\n"
    return text


class Store(FilesTest):
    def test_random_files(self):
        seed = random.randrange(1 << 32)
        print("seed", seed, flush=True)
        rng = random.Random(seed)
        file, other = self.folder / "file", self.folder / "other"
        model, is_text = make_store(), True

        def path(endings):
            return ".".join(rng.choices(["0", "A", "_", "a", "a-b", "z9"], k=rng.choice([1, 1, 2, 3]))) + rng.choice(endings)

        def entries():
            values = ["", "1", "x=y", "100%", "a.b", "tab\t\n\x7f\x85", 'q"\\', "€😀\u2028", " "]
            return [path([".", "=" + rng.choice(values), "=" + rng.choice(values)]) for _ in range(rng.randrange(1, 8))]

        self.assertEqual(run("set", file, "a=1"), (0, "", ""))
        add(model, "a=1")
        for step in range(STEPS):
            changes, place = entries(), path(["", "."])
            match rng.choice(["set", "del", "merge", "convert"]):
                case "set":
                    self.assertEqual(run("set", file, *changes), (0, "", ""))
                    for entry in changes:
                        add(model, entry)
                case "del":
                    self.assertEqual(run("del", file, place), (0, "", ""))
                    delete(model, place)
                case "merge":
                    added = make_store()
                    for entry in changes:
                        add(added, entry)
                    other.unlink(missing_ok=True)
                    self.assertEqual(run("set", "--to", rng.choice(["text", "binary"]), other, *changes)[0], 0)
                    self.assertEqual(run("merge", file, other), (0, "", ""))
                    merge(model, added)
                case "convert":
                    is_text = not is_text
                    self.assertEqual(run("convert", file, "--to", "text" if is_text else "binary"), (0, "", ""))
            text = lines(model).encode()
            self.assertEqual(file.read_bytes() == text, is_text or not text and file.stat().st_size == 0, step)
            self.assertEqual(run("show", file), (0, text.decode(), ""))
            self.assertEqual(json.loads(run("show", "--json", file)[1]), model)
            holder, last = find(model, place)
            there = holder and holder["stores" if place.endswith(".") else "values"].get(last)
            if there is None:
                kind = "sub-store" if place.endswith(".") else "value"
                self.assertEqual(run("get", file, place), (1, "", f"zu store: no {kind} at {place}\n"))
            else:
                shown = lines(there) if place.endswith(".") else there + "\n"
                self.assertEqual(run("get", file, place), (0, shown, ""))
                self.assertEqual(json.loads(run("get", file, place, "--json")[1]), there)

    def test_types(self):
        for kind, text, shown in (
            ("int", "0x10", "16"), ("int", " 12 ", "12"), ("int", "12x", None), ("int", "1.5", None),
            ("bool", "TRUE", "true"), ("bool", "0", "false"), ("bool", "yes", None),
            ("real", "1,5", "1.500000"), ("real", "", None),
        ):
            wanted = (1, "", f"zu store: no {kind} at a.b: {text}\n") if shown is None else (0, shown + "\n", "")
            self.assertEqual(run("get", "--type", kind, "-", "a.b", data=f"a.b={text}".encode()), wanted)

    def test_files(self):
        file, deep = self.folder / "file", ".".join(["a"] * 100)
        self.assertEqual(run("set", "-", "--", "-a=1", "--json=2"), (0, "--json=2\n-a=1\n", ""))
        self.assertEqual(run("set", "-", deep + "=1"), (0, deep + "=1\n", ""))
        self.assertEqual(run("convert", "--to", "text", "-", data=b"# none\r\n a = b\r\n")[1], "a= b\n")
        file.write_text("a=1\n")
        file.chmod(0o640)
        self.assertEqual(run("set", file, "a=2", "--output", "-"), (0, "a=2\n", ""))
        self.assertEqual(run("del", file, "a.b", "b."), (0, "", ""))
        self.assertEqual(file.read_text(), "a=1\n")
        if not WINDOWS:
            self.assertEqual(file.stat().st_mode & 0o777, 0o640)
        self.assertEqual(os.listdir(self.folder), ["file"])
        for arguments, message in (
            (["show", self.folder / "gone"], f"cannot read {self.folder}/gone: No such file or directory"),
            (["set", self.folder, "a=1"], f"cannot read {self.folder}: Is a directory"),
            (["set", file, "a=1", "-o", self.folder / "no" / "x"],
             f"cannot write {self.folder}/no/x: " + ("Path not found" if WINDOWS else "No such file or directory")),
            (["merge", file, file, "/nowhere"], "cannot read /nowhere: No such file or directory"),
            (["show", "-"], "- holds settings neither as text nor in binary"),
        ):
            self.assertEqual(run(*arguments, data=b"a=\xff"), (1, "", f"zu store: {message}\n"))
        self.assertEqual(file.read_text(), "a=1\n")

    def test_misuse(self):
        deep = ".".join(["a"] * 101)
        for arguments, message in (
            ([], "an action is missing: show, get, set, del, merge or convert"),
            (["put"], "the action is show, get, set, del, merge or convert, and not put"),
            (["show"], "show needs a FILE"),
            (["show", "-", "a"], "too much for show: a"),
            (["get", "-"], "get needs an ADDRESS"),
            (["set", "-", "a"], 'neither ADDRESS=VALUE nor ADDRESS.: "a"'),
            (["set", "-", "a.=1"], 'neither ADDRESS=VALUE nor ADDRESS.: "a.=1"'),
            (["set", "-", "=1"], 'not an address: "" in ""'),
            (["set", "-", "a..b=1"], 'not an address: "" in "a..b"'),
            (["set", "-", "a.ö=1"], 'not an address: "ö" in "a.ö"'),
            (["del", "-", deep], "an address of more than 100 parts"),
            (["get", "--type", "text", "-", "a"], "--type is bool, int or real, and not text"),
            (["get", "--type", "int", "-", "a."], "--type does not go with a sub-store: a."),
            (["set", "--type", "int"], "--type does not go with set"),
            (["convert", "-"], "convert needs --to"),
        ):
            self.assertEqual(run(*arguments, data=b"a=1"), (2, "", f'zu store: {message}\nTry "zu store --help".\n'))


unittest.main()
