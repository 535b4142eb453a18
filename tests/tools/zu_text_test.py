"""zu text against Python's own decoder and Unicode database, and against perl's scripts.

usage: zu_text_test.py ZU [unittest options]
"""
import bisect
import codecs
import collections
import json
import os
import pathlib
import random
import re
import signal
import subprocess
import unicodedata
import unittest

from tool import EXAMPLES, TESTS, WINDOWS, ZU, FilesTest, call, call_on_full_disk, run

BLOCK = 256 * 1024  # bytes that the command reads at once
INVALID = "\ud800"  # stands for an invalid sequence: what is well formed never decodes to it

codecs.register_error("mark", lambda error: (INVALID, error.end))


def read_scripts():
    program = ["perl", TESTS / "conformance" / "unicode_reference.pl", "scripts"]
    output = subprocess.run(program, check=True, stdout=subprocess.PIPE, text=True).stdout
    rows = [line.split() for line in output.splitlines()]
    return [int(row[0], 16) for row in rows], [row[2] for row in rows]


SCRIPT_STARTS, SCRIPT_NAMES = read_scripts()


def script(ch):
    return SCRIPT_NAMES[bisect.bisect(SCRIPT_STARTS, ord(ch)) - 1]


def reference(name, data):
    """What the command must say of these bytes, in the form of its JSON, with the groups as dictionaries."""
    text = data.decode("utf-8", "mark")
    lines = re.split("\r\n|[\n\v\f\r\x85\u2028\u2029]", text)
    if lines[-1] == "":
        lines.pop()
    lengths = [len(line.replace(INVALID, "")) for line in lines]
    characters = collections.Counter(text.replace(INVALID, ""))
    categories = collections.Counter()
    scripts = collections.Counter()
    for ch, count in characters.items():
        categories[unicodedata.category(ch)] += count
        scripts[script(ch)] += count
    longest = lines and {"line": lengths.index(max(lengths)) + 1, "codePoints": max(lengths)}
    return {
        "file": name,
        "bytes": len(data),
        "codePoints": sum(characters.values()),
        "lines": len(lines),
        "invalidSequences": text.count(INVALID),
        "longestLine": longest or None,
        "generalCategories": dict(categories),
        "scripts": dict(scripts),
    }


class Text(FilesTest):
    def write(self, name, data):
        path = self.folder / name
        path.write_bytes(data)
        return path

    def check(self, paths):
        """Runs the command on the files and compares each object with the reference."""
        status, output, errors = run("text", "--json", *paths)
        self.assertEqual((status, errors), (0, ""))
        found = json.loads(output)
        self.assertEqual(len(found), len(paths))
        for path, counts in zip(paths, found):
            data = path.read_bytes()
            for key, name in (("generalCategories", "abbreviation"), ("scripts", "name")):
                sizes = [group["count"] for group in counts[key]]
                self.assertEqual(sizes, sorted(sizes, reverse=True), key)
                counts[key] = {group[name]: group["count"] for group in counts[key]}
            self.assertEqual(counts, reference(str(path), data), data[:200])

    def test_examples(self):
        self.assertGreater(len(EXAMPLES), 5)
        self.check(EXAMPLES)

    def test_hostile_bytes(self):
        seed = random.randrange(1 << 32)
        print("seed", seed, flush=True)
        rng = random.Random(seed)
        # What decides in UTF-8: the ends of all ranges of first and second bytes, and the newline functions
        edges = bytes.fromhex("00090a0b0c0d20417f80858f909fa0a8a9bfc0c1c2dfe0e1e2ecedeeeff0f1f3f4f5f7f8ff")
        tables = [edges, edges + b"\r\n\r\n" * 8, bytes(range(256)), b"\xe2\x80\xa8\xa9", b"\xc2\x85\r\n"]
        paths = []
        for number in range(300):
            length = rng.choice([0, 1, 2, 3, 4, 7, 40, 3000])
            paths.append(self.write(f"{number}", bytes(rng.choices(rng.choice(tables), k=length))))
        self.check(paths)

    def test_sequences_across_blocks(self):
        paths = []
        for text in (b"\r\n", "é€😀".encode(), b"\xf0\x9f\x98", b"\xf4\x90\x80\x80", b"\xe2\x80\xa8\r\n\xff"):
            for ahead in range(len(text) + 1):
                data = b"x" * (BLOCK - ahead) + text + b"y"
                paths.append(self.write(f"{len(paths)}", data))
                paths.append(self.write(f"{len(paths)}", data[:-1]))
        self.check(paths)

    def test_report(self):
        text = "Ночь\tnight\n\n夜 ".encode() + b"\xff"
        found = run("text", data=text)[1]
        for row in (
            "bytes +21", "code points +14", "lines +3", "invalid sequences +1", "longest line +10  .* line 1",
            "Ll  Letter, Lowercase +8 +57.1 %", "Lo  Letter, Other +1 +7.1 %", "Cyrillic +4 +28.6 %", "Han +1 +7.1 %",
        ):
            self.assertRegex(found, f"(?m)^ +{row}")

    def check_transformed(self, texts):
        """Runs the transformations on the bytes of the texts and compares with what Python makes of them."""
        mappings = {
            "lower": lambda text: "".join(map(str.lower, text)),  # one by one: there is no rule for a final sigma
            "upper": str.upper,
            "fold": str.casefold,
        }
        paths = [self.write(f"{number}", text) for number, text in enumerate(texts)]
        decoded = [text.decode("utf-8", "replace") for text in texts]
        for form in ("NFC", "NFD", "NFKC", "NFKD"):
            for name, mapping in {"": str, **mappings}.items():
                options = ["--normalize", form.lower()] + (["--case=" + name] if name else [])
                expected = "".join(unicodedata.normalize(form, mapping(text)) for text in decoded)
                self.assert_output(call("text", *options, *paths), expected)
        for name, mapping in mappings.items():
            self.assert_output(call("text", "--case", name.upper(), *paths), "".join(map(mapping, decoded)))

    def assert_output(self, finished, text):
        self.assertEqual((finished.returncode, finished.stderr), (0, b""))
        self.assertTrue(finished.stdout == text.encode(), (finished.stdout[:200], text[:200]))

    def test_transformed_texts(self):
        self.check_transformed([path.read_bytes() for path in EXAMPLES])
        self.check_transformed([b"e", "\u0301".encode(), b"", b"a\xffb\xe2\x82"])
        # A composing pair, and marks in no order, that the blocks divide
        for ahead in range(1, 6):
            self.check_transformed([b"x" * (BLOCK - ahead) + "e\u0301\u0323\u1100\u1161 Σ".encode()])

    @unittest.skipIf(WINDOWS, "names there are no bytes, and lack the characters of paths")
    def test_file_names(self):
        # What is no UTF-8 in a name is told as half a surrogate pair, as Python does.
        names = ['quote"back\\slash', "tab\tline\nend", "--json", "\udcff"]
        paths = [self.write(name, b"x") for name in names]
        self.assertEqual([pathlib.Path(each["file"]).name for each in json.loads(call("text", "--json", *paths).stdout)],
                         names)
        self.assertEqual(run("text", "-", data=b"x"), run("text", data=b"x"))

    def test_unreadable_files(self):
        there = self.write("there", b"here")
        gone = there.with_name("gone")
        for arguments in ([], ["--json"]):
            told = (f"zu text: cannot read {gone}: No such file or directory\n"
                    f"zu text: cannot read {self.folder}: Is a directory\n")
            self.assertEqual(run("text", gone, there, self.folder, *arguments), (1, run("text", there, *arguments)[1], told))
        self.assertEqual(json.loads(run("text", "--json", gone)[1]), [])
        self.assertEqual(run("text", "--case", "lower", gone, there)[:2], (1, "here"))
        finished = call_on_full_disk("text", there)
        self.assertEqual((finished.returncode, finished.stderr.splitlines()[0]),
                         (1, b"zu text: cannot write the standard output: No space left on device"))
        if WINDOWS:
            return  # no signal tells that nobody reads
        unread, pipe = os.pipe()
        os.close(unread)
        finished = subprocess.run([ZU, "text", there], stdout=pipe, stderr=subprocess.PIPE)
        os.close(pipe)
        self.assertEqual((finished.returncode, finished.stderr), (-signal.SIGPIPE, b""), "like any filter ahead of head")

    def test_descriptions(self):
        """What is told of code points, against the database in Python."""
        mappings = {"lowerCase": str.lower, "upperCase": str.upper, "caseFolding": str.casefold}
        forms = {form: lambda ch, form=form: unicodedata.normalize(form, ch) for form in ("NFC", "NFD", "NFKC", "NFKD")}
        edges = "\x01\t\n\x85 09AFaf\x7f\u0660\uff21ǄßİΣς\u0301\u212b\uac00\uac01\ufb03\ufdfa\ufffe\u2028😀\U0010ffff"
        text = edges + "".join(map(chr, [*range(0xA0, 0x250), *range(0x1E00, 0x2200, 7), *range(0xE000, 0x20000, 977)]))
        found = json.loads(run("text", "--char", text, "--json")[1])
        self.assertEqual(len(found), len(text))
        codes = lambda text: " ".join(f"U+{ord(ch):04X}" for ch in text)
        for ch, told in zip(text, found):
            decomposition = unicodedata.decomposition(ch)
            wanted = {
                "codePoint": codes(ch),
                "generalCategory": unicodedata.category(ch),
                "script": script(ch),
                "combiningClass": unicodedata.combining(ch),
                "decimalDigit": unicodedata.decimal(ch, None),
                "hexadecimalDigit": int(unicodedata.normalize("NFKC", ch), 16) if ch in "09AFaf\uff21" else None,
                "whiteSpace": ch.isspace() or None,
                "newlineFunction": True if ch in "\n\x85\u2028\u2029" else None,
                "decomposition": re.sub(r"\b([0-9A-F]{4,})", r"U+\1", decomposition) or None,
                "decompositionKind": told.get("decompositionKind"),
                "utf8": ch.encode().hex(" ").upper(),
                "utf16": ch.encode("utf-16-be").hex(" ", 2).upper(),
            } | {key: codes(change(ch)) if change(ch) != ch else None for key, change in (mappings | forms).items()}
            self.assertEqual(told, {key: value for key, value in wanted.items() if value is not None})
        lines = run("text", "--char", "U+e9")[1].splitlines()
        self.assertEqual((lines[0], lines[1].split()), ("U+00E9  é", ["General", "category", "Ll,", "Letter,", "Lowercase"]))
        self.assertEqual(json.loads(run("text", "-ju", "U+D800")[1])[0].get("utf8"), None)

    @unittest.skipIf(WINDOWS, "the memory would be Wine's")
    def test_memory_does_not_grow_with_the_file(self):
        def memory(megabytes, line, *options):
            # What a sanitizer keeps of freed memory is not the tool's.
            sanitizer = {"ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=1"}
            program = subprocess.Popen(
                [ZU, "text", *options], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, env=os.environ | sanitizer
            )
            for _ in range(megabytes):
                program.stdin.write(line * ((1 << 20) // len(line)))
            program.stdin.close()
            _, status, usage = os.wait4(program.pid, 0)
            program.returncode = status
            self.assertEqual(status, 0)
            return usage.ru_maxrss

        for line, *options in (
            (b"one line of a file\n",),
            (b"one line of a file\n", "--normalize", "NFC"),
            ("\u0301\u0323".encode(), "--normalize", "NFKC"),
            ("\u0390".encode(), "--case", "upper", "--normalize", "NFKD"),
        ):
            self.assertLess(memory(60, line, *options), memory(2, line, *options) + 8 * 1024, options)


unittest.main()
