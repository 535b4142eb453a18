"""zu convert against Python's codecs and iconv.

usage: zu_convert_test.py ZU [unittest options]

ZU_CONVERT_TEXTS is the number of texts that are compared with iconv, 4 without it.
"""
import json
import os
import random
import re
import shutil
import subprocess
import unicodedata
import unittest

from tool import EXAMPLES, WINDOWS, FilesTest, call, call_on_full_disk

TEXTS = int(os.environ.get("ZU_CONVERT_TEXTS", 0 if WINDOWS else 4))  # each some 300 processes, which take their time there
LINE_END = re.compile("\r\n|[\n\r\x85\u2028\u2029]")
UTF = ["UTF-8", "UTF-16", "UTF-16BE", "UTF-16LE", "UTF-32", "UTF-32BE", "UTF-32LE"]

# Where iconv is known to differ.  It has other tables for these two,
ICONV_OTHER_TABLES = {"cp875", "IBM1026"}
# loses the letter ahead of a fault in these two,
ICONV_HOLDS_BACK = {"windows-1255", "windows-1258"}
# takes UTF-8 beyond U+10FFFF, keeps the mark of UTF-8, begins UTF-16 and UTF-32 with a mark unasked, and does not look for
# other forms of a character that a single-byte set lacks: the texts below have no mark in front, and nothing that a set
# has in another form only.


def run(*arguments, data=b""):
    # A sanitizer keeps freed memory for a while; here that would hide what the command itself keeps.
    return call("convert", *arguments, data=data, ASAN_OPTIONS="quarantine_size_mb=1")


def other(command, *arguments, data):
    """What another converter makes of the data, and whether it took all of them."""
    result = subprocess.run([command, *arguments], input=data, capture_output=True)
    return result.stdout, result.returncode == 0


def sets():
    return [line.split()[0] for line in run("--list").stdout.decode().splitlines()]


def chars(name):
    """The characters of a single-byte set."""
    return run("--from", name, "--to", "utf-8", "--errors=skip", data=bytes(range(256))).stdout.decode()


def nasty(seed):
    """Bytes of all kinds, in which sequences begin, break off, are cut, and say what they must not."""
    rng = random.Random(seed)
    pieces = [b"a", "é€😀".encode(), b"\xe2\x82", b"\xf0\x90\x80", b"\xc0\x80", b"\xed\xa0\x80", b"\xf4\x90\x80\x80",
              b"\x80", b"\xff", b"\0\xd8", b"\xd8\0", b"=\xd8\0\xde", b"\xd8=\xde\0", b"\0\0\1\0", b"\0\0\x11\0", b"\0\x11\0\0"]
    return b"x" * 4 + b"".join(rng.choice(pieces) for _ in range(rng.randrange(2000)))


class Convert(FilesTest):
    def expect(self, output, *arguments, data, status=0):
        result = run(*arguments, data=data)
        self.assertEqual((result.returncode, result.stdout), (status, output), (arguments, result.stderr))
        return result.stderr.decode()

    def test_all_examples(self):
        for path in EXAMPLES:
            data = path.read_bytes()
            text = data.decode()
            for name in UTF:
                encoded = text.encode(name + "-LE" if name in ["UTF-16", "UTF-32"] else name)
                self.expect(encoded, "--from", "utf-8", "--to", name, data=data)
                self.expect(data, "--from", name, "--to", "utf-8", data=encoded)
            marked = b"\xef\xbb\xbf" + data
            self.expect(marked, "--from", "utf-32", "--to", "utf-8", "--bom", data=b"\xff\xfe\0\0" + text.encode("utf-32-le"))
            for name in ["iso-8859-1", "windows-1251", "koi8-r", "ISO-8859-7", "ISO-8859-8", "cp437", "IBM037"]:
                composed = unicodedata.normalize("NFC", text)
                codec = {"IBM037": "cp037"}.get(name, name)
                mark = "?".encode(codec)
                replaced = b"".join(ch.encode(codec, "ignore") or mark for ch in composed)
                self.expect(replaced, "--from", "utf-8", "--to", name, data=data)
                self.expect(composed.encode(codec, "ignore"), "--from", "utf-8", "--to", name, "--errors", "skip", data=data)

    def test_faults_as_python_has_them(self):
        for seed in range(8):
            data = nasty(seed)
            for name in UTF[:1] + UTF[2:4] + UTF[5:]:
                for errors in ["replace", "ignore"]:
                    self.expect(data.decode(name, errors).encode(), "--from", name, "--to", "utf-8", "--errors", errors, data=data)
                with self.assertRaises(UnicodeDecodeError) as caught:
                    data.decode(name)
                fault = caught.exception.start
                error = self.expect(data[:fault].decode(name).encode(), "--from", name, "--to", "utf-8", "--errors=fail",
                                    data=data, status=1)
                self.assertIn(f"no {name} from byte {fault} on", error)

    @unittest.skipUnless(shutil.which("iconv"), "needs iconv")
    def test_iconv(self):
        outside = "€😀אαж漢\u0e01\u3042"
        for name in sets():
            if name in ICONV_OTHER_TABLES:
                continue
            own = "" if name in UTF else chars(name)
            for seed in range(TEXTS):
                rng = random.Random(seed)
                text = "".join(chr(rng.choice([rng.randrange(0x80), rng.randrange(0x100, 0x250), rng.randrange(0x400, 0xD800),
                                               rng.randrange(0xE000, 0x110000)])) if name in UTF else rng.choice(own)
                               for _ in range(rng.randrange(1, 300)))
                data = text.encode()
                marks = {"UTF-16": ["--bom"], "UTF-32": ["--bom"]}.get(name, [])
                encoded, ok = other("iconv", "-f", "utf-8", "-t", name, data=data)
                self.assertTrue(ok, name)
                self.expect(encoded, "--from", "utf-8", "--to", name, "--errors=fail", *marks, data=data)
                self.expect(data, "--from", name, "--to", "utf-8", "--errors=fail", data=encoded)
                # What is lacking, and what is broken
                mixed = "x" + "".join(rng.choice(own or outside) + rng.choice(["", "", outside]) for _ in range(50))
                wanted, ok = other("iconv", "-f", "utf-8", "-t", name, data=mixed.encode())
                self.expect(wanted, "--from", "utf-8", "--to", name, "--errors=fail", *marks, data=mixed.encode(), status=not ok)
                wanted, _ = other("iconv", "-c", "-f", "utf-8", "-t", name, data=mixed.encode())
                self.expect(wanted, "--from", "utf-8", "--to", name, "--errors=skip", *marks, data=mixed.encode())
                if name in ICONV_HOLDS_BACK:
                    continue
                data = nasty(seed).replace(b"\xf4\x90\x80\x80", b"")
                wanted, ok = other("iconv", "-f", name, "-t", "utf-8", data=data)
                self.expect(wanted, "--from", name, "--to", "utf-8", "--errors=fail", data=data, status=not ok)

    def test_contract(self):
        for source, target, data, wanted in [
            ("utf-8", "utf-8", b"\xc0\x80 x\xe9\"y", b"\0 x\xef\xbf\xbdy"),
            ("utf-8", "utf-16", "a€".encode(), b"a\0\xac\0"),
            ("iso-8859-8", "utf-8", b"\xe1", "α".encode()),
        ]:
            self.expect(wanted, "--contract", "--from", source, "--to", target, data=data)

    def test_pairs_across_blocks(self):
        text = "x" + "\U0001F600" * 100_000
        self.expect(text.encode(), "--from", "utf-16le", "--to", "utf-8", data=text.encode("utf-16-le"))
        alone = "a\udc00\ud800\U0001F600\ud800".encode("utf-16-le", "surrogatepass")
        for errors, kept in [("replace", "a\ufffd\ufffd\U0001F600\ufffd"), ("ignore", "a\U0001F600"), ("fail", "a")]:
            self.expect(kept.encode(), "--from", "utf-16le", "--to", "utf-8", "--errors", errors, data=alone,
                        status=errors == "fail")

    def test_newlines(self):
        text = "a\r\nb\rc\nd\r\r\n\x85e\u2028f\u2029\n\rg\vh\f"
        forms = {"lf": "\n", "crlf": "\r\n", "cr": "\r", "nel": "\x85", "ls": "\u2028", "ps": "\u2029"}
        # The second text has pairs at all distances from the ends of blocks.
        for source in [text, "x\r\n" * 50_000]:
            for name, newline in forms.items():
                wanted = LINE_END.sub(newline, source).encode()
                self.expect(wanted, "--from", "utf-8", "--to", "utf-8", f"--newlines={name}", data=source.encode())

    def test_failures(self):
        both = ["--from", "utf-8", "--to", "ascii"]
        missing, out = self.folder / "missing", self.folder / "out"
        self.assertIn(str(missing), self.expect(b"", *both, missing, data=b"", status=1))
        self.assertIn(str(missing / "out"), self.expect(b"", *both, "-", missing / "out", data=b"x", status=1))
        self.expect(b"", *both, "-", out, data="aé".encode())
        self.assertEqual(out.read_bytes(), b"a?")
        self.expect(b"", *both, out, out, data=b"", status=1)
        self.assertEqual(out.read_bytes(), b"a?", "the input is not its own output")
        self.expect(b"a", *both, "--errors=ignore", data=b"a\xff")
        # What is lacking is found wherever blocks and caches end, and what may compose is waited for.
        for ahead in [1, 1024, 5000, 40_000]:
            text = "x" * ahead
            error = self.expect(text.encode(), *both, "--errors=fail", data=f"{text}€{text}".encode(), status=1)
            self.assertIn("the input has U+20AC, which US-ASCII lacks", error)
            for fault in [b"\xff", b"\xed\xa0\x80", b"\xc0\x80"]:
                error = self.expect(text.encode(), *both, "--errors=fail", data=text.encode() + fault, status=1)
                self.assertIn(f"no UTF-8 from byte {ahead} on", error)
            self.expect(text.encode() + b"\xe9", "--from", "utf-8", "--to", "latin1", "--errors=fail",
                        data=f"{text}e\u0301".encode())
        for arguments in [both, ["--list"], ["--help"]]:
            finished = call_on_full_disk("convert", *arguments, data=b"x" * 100_000)
            self.assertEqual((finished.returncode, finished.stderr.count(b"No space left")), (1, 1), arguments)

    def test_list(self):
        lines = [line.split() for line in run("--list").stdout.decode().splitlines()]
        self.assertEqual(len(lines), 51)
        self.assertIn(["UTF-8", "65001", "cp65001"], [line[:3] for line in lines])
        told = json.loads(run("--list", "--json").stdout)
        pages = [[str(each["codePage"])] * (each["codePage"] is not None) for each in told]
        self.assertEqual(lines, [[each["name"], *page, *each["aliases"]] for each, page in zip(told, pages)])

    def test_losses(self):
        data = b"x" * 40_000 + "\u20ac\xfcy".encode() + b"\xff"
        for errors in ["replace", "skip", "fail"]:
            options = ["--json", "--from=utf-8", "--to=latin1", "--errors", errors]
            result = run(*options, "-", self.folder / "out", data=data)
            told = json.loads(result.stdout)
            self.assertEqual([*told.values()][1:], [40_006, 40_000, "U+20AC"], errors)
            self.assertEqual(result.returncode, errors == "fail")


unittest.main()
