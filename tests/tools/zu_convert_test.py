"""zu convert against Python's codecs.

usage: zu_convert_test.py ZU [unittest options]
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unicodedata
import unittest

TESTS = pathlib.Path(__file__).resolve().parent.parent
EXAMPLES = sorted((TESTS.parent / "examples" / "texts").glob("*.txt"))
ZU = sys.argv.pop(1)
LINE_END = re.compile("\r\n|[\n\r\x85\u2028\u2029]")


# A sanitizer keeps freed memory for a while; here that would hide what the command itself keeps.
ENVIRONMENT = {**os.environ, "ASAN_OPTIONS": "quarantine_size_mb=1"}


def run(*arguments, data=b""):
    return subprocess.run([ZU, "convert", *map(str, arguments)], input=data, capture_output=True, env=ENVIRONMENT)


class Convert(unittest.TestCase):
    def expect(self, output, *arguments, data, status=0):
        result = run(*arguments, data=data)
        self.assertEqual((result.returncode, result.stdout), (status, output), (arguments, result.stderr))
        return result.stderr.decode()

    def test_all_examples(self):
        for path in EXAMPLES:
            data = path.read_bytes()
            text = data.decode()
            self.expect(text.encode("utf-32-le"), "--from", "utf-8", "--to", "UTF-32", data=data)
            self.expect(data, "--from", "utf-16be", "--to", "utf-8", data=text.encode("utf-16-be"))
            marked = b"\xef\xbb\xbf" + data
            self.expect(marked, "--from", "utf-32", "--to", "utf-8", "--bom", data=b"\xff\xfe\0\0" + text.encode("utf-32-le"))
            for name in ["iso-8859-1", "windows-1251", "koi8-r", "ISO-8859-7", "cp437", "IBM037"]:
                composed = unicodedata.normalize("NFC", text)
                codec = {"IBM037": "cp037"}.get(name, name)
                mark = "?".encode(codec)
                replaced = b"".join(ch.encode(codec, "ignore") or mark for ch in composed)
                self.expect(replaced, "--from", "utf-8", "--to", name, data=data)
                self.expect(composed.encode(codec, "ignore"), "--from", "utf-8", "--to", name, "--errors", "ignore", data=data)

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
        with tempfile.TemporaryDirectory() as folder:
            both = ["--from", "utf-8", "--to", "ascii"]
            missing = pathlib.Path(folder) / "missing"
            nowhere = missing / "out"
            error = self.expect(b"", *both, missing, data=b"", status=1)
            self.assertIn(str(missing), error)
            error = self.expect(b"", *both, "-", nowhere, data=b"x", status=1)
            self.assertIn(str(nowhere), error)
            out = pathlib.Path(folder) / "out"
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
            for fault in [b"\xff", b"\xed\xa0\x80"]:
                error = self.expect(text.encode(), *both, "--errors=fail", data=text.encode() + fault, status=1)
                self.assertIn(f"no UTF-8 behind the first {ahead} characters", error)
            self.expect(text.encode() + b"\xe9", "--from", "utf-8", "--to", "latin1", "--errors=fail",
                        data=f"{text}e\u0301".encode())
        error = self.expect(b"a\0\xac\0", "--from", "utf-8", "--to", "utf-16", data="a€".encode(), status=1)
        self.assertIn("damaged: 1", error)
        for arguments in [both, ["--list"], ["--help"]]:
            with open("/dev/full", "wb") as full:
                finished = subprocess.run([ZU, "convert", *arguments], input=b"x", stdout=full, stderr=subprocess.PIPE)
            self.assertEqual((finished.returncode, finished.stderr.count(b"No space left")), (1, 1), arguments)

    def test_misuse(self):
        for arguments in [
            [],
            ["--from", "utf-8"],
            ["--from", "utf-8", "--to", "klingon"],
            ["--from", "utf-8", "--to", "ascii", "--errors", "maybe"],
            ["--from", "utf-8", "--to", "ascii", "--newlines", "vt"],
            ["--from", "utf-8", "--to", "ascii", "a", "b", "c"],
            ["--list", "a"],
            ["--nonsense"],
        ]:
            result = run(*arguments)
            self.assertEqual((result.returncode, result.stdout), (2, b""), arguments)
            self.assertIn(b"--help", result.stderr)
        self.assertEqual(run("--help").returncode, 0)

    def test_list(self):
        lines = run("--list").stdout.decode().splitlines()
        self.assertEqual(len(lines), 51)
        self.assertTrue(any(line.split()[:3] == ["UTF-8", "65001", "cp65001"] for line in lines))


if __name__ == "__main__":
    unittest.main()
