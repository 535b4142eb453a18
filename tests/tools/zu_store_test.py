"""zu store against a model of nested dictionaries.

usage: zu_store_test.py ZU [unittest options]
"""
import json
import random
import subprocess
import sys
import unicodedata
import unittest

ZU = sys.argv.pop(1)


def run(*arguments):
    finished = subprocess.run([ZU, "store", *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    return finished.returncode, finished.stdout.decode(), finished.stderr.decode()


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


def build(entries):
    store = make_store()
    for entry in entries:
        add(store, entry)
    return store


def delete(store, path):
    store, last = find(store, path)
    if store:
        store["stores" if path.endswith(".") else "values"].pop(last, None)


def merge(store, other):
    store["values"] = {**other["values"], **store["values"]}
    for address, sub in other["stores"].items():
        if address in store["stores"]:
            merge(store["stores"][address], sub)
        else:
            store["stores"][address] = sub


def escape(value):
    return "".join(f"%{ord(ch):06x}" if unicodedata.category(ch) == "Cc" else "%%" if ch == "%" else ch for ch in value)


def lines(store, prefix=""):
    text = "".join(f"{prefix}{address}={escape(value)}\n" for address, value in sorted(store["values"].items()))
    for address, sub in sorted(store["stores"].items()):
        text += lines(sub, f"{prefix}{address}.") or f"{prefix}{address}.\n"
    return text


class Store(unittest.TestCase):
    maxDiff = 4000

    def check(self, wanted, *arguments):
        self.assertEqual(run(*arguments), (0, lines(wanted), ""), arguments)
        status, output, _ = run("--json", *arguments)
        self.assertEqual((status, json.loads(output)), (0, wanted), arguments)

    def test_random_stores(self):
        seed = random.randrange(1 << 32)
        print("seed", seed, flush=True)
        rng = random.Random(seed)

        def path():
            return ".".join(rng.choices(["0", "A", "_", "a", "a-b", "z9"], k=rng.choice([1, 1, 2, 3])))

        def entries():
            values = ["", "1", "x=y", "100%", "a.b", "tab\t\n\x7f\x85", 'q"\\', "€😀", " "]
            return [path() + rng.choice([".", "=" + rng.choice(values)]) for _ in range(rng.randrange(12))]

        for _ in range(60):
            first, second, third = entries(), entries(), entries()
            self.check(build(first), "set", *first)
            merged = build(first)
            merge(merged, build(second))
            merge(merged, build(third))
            self.check(merged, "merge", *first, "+", *second, "+", *third)
            place = path() + rng.choice(["", "."])
            rest = build(first)
            delete(rest, place)
            self.check(rest, "del", place, *first)
            holder, last = find(build(first), place)
            there = holder and holder["stores" if place.endswith(".") else "values"].get(last)
            if there is None:
                kind = "sub-store" if place.endswith(".") else "value"
                self.assertEqual(run("get", place, *first), (1, "", f"zu store: no {kind} at {place}\n"))
            elif place.endswith("."):
                self.check(there, "get", place, *first)
            else:
                self.assertEqual(run("get", place, *first), (0, there + "\n", ""))
                self.assertEqual(json.loads(run("get", place, *first, "--json")[1]), there)

    def test_types(self):
        for kind, text, shown in (
            ("int", "0x10", "16"), ("int", " 12 ", "12"), ("int", "12x", None), ("int", "1.5", None),
            ("bool", "TRUE", "true"), ("bool", "0", "false"), ("bool", "yes", None),
            ("real", "1,5", "1.500000"), ("real", "", None),
        ):
            wanted = (1, "", f"zu store: no {kind} at a.b: {text}\n") if shown is None else (0, shown + "\n", "")
            self.assertEqual(run("get", "--type", kind, "a.b", f"a.b={text}"), wanted)

    def test_use(self):
        self.assertEqual(run("set", "--", "-a=1", "--json=2"), (0, "--json=2\n-a=1\n", ""))
        deep = ".".join(["a"] * 100)
        self.assertEqual(run("set", deep + "=1"), (0, deep + "=1\n", ""))
        status, output, errors = run("--help")
        self.assertEqual((status, errors), (0, ""))
        self.assertTrue(output.startswith("usage: zu store "))
        for arguments, message in (
            ([], "an action is missing: set, get, del or merge"),
            (["put"], "unknown action: put"),
            (["set", "a"], 'neither ADDRESS=VALUE nor ADDRESS.: "a"'),
            (["set", "a.=1"], 'neither ADDRESS=VALUE nor ADDRESS.: "a.=1"'),
            (["set", "=1"], 'not an address: "" in ""'),
            (["set", "a..b=1"], 'not an address: "" in "a..b"'),
            (["set", "a.ö=1"], 'not an address: "ö" in "a.ö"'),
            (["set", "+"], 'not an address: "+" in "+"'),
            (["set", deep + ".a=1"], "an address of more than 100 parts"),
            (["get"], "get needs an address"),
            (["get", "a/", "a=1"], 'not an address: "a/" in "a/"'),
            (["get", "--type", "text", "a"], "unknown type: text"),
            (["get", "--type", "int", "a.", "a.b=1"], "--type does not go with a sub-store: a."),
            (["set", "--type", "int"], "--type does not go with set"),
            (["set", "--jsno"], "unknown option: --jsno"),
        ):
            self.assertEqual(run(*arguments), (2, "", f'zu store: {message}\nTry "zu store --help".\n'))


unittest.main()
