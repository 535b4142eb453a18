#!/usr/bin/env python3
"""Compiles and runs every sample of C and C++ in the documents.

usage: check_samples.py BUILD_FOLDER

A sample with a main function is a program; if the paragraph behind it begins with "It prints", the lines that follow,
set in by four blanks, are what it must print.  All others are fragments, which a comment ahead of the fence, unseen by
readers, makes whole:

    <!-- sample                   the fragment is the body of a function; without this comment too
    statements ahead of it
    ---
    statements behind it -->
    <!-- sample file              it stands outside of functions; the lines behind "---" are the body of a function that is
    declarations ahead of it      run.  Without them it is compiled only, together with what continues it
    ---
    statements -->
    <!-- sample continues ... --> likewise, below all that the last "file" of the document has had

An ellipsis that stands for code is left out.  Fragments run with the library started, and the object database tells what
they have not released.
"""
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
FENCE = re.compile(r"^```(c|cpp)\n(.*?)^```\n", re.S | re.M)
MARK = re.compile(r"<!-- sample(?: (file|continues))?\n?(.*?)-->\n\Z", re.S)
PRINTS = re.compile(r"\nIt prints.*?\n\n((?:    .*\n|\n(?=    ))+)")
WARNINGS = ["-Wall", "-Wextra", "-Wno-unused", "-Werror"]
FRAME = """
static int said;
static void say( const ZU_CHAR *chs, ZU_INT chsLength )
{
    for ( ZU_INT i = 0; i < chsLength; i++ ) {
        fprintf( stderr, chs[ i ] < 0x80 ? "%c" : "<%x>", (int)chs[ i ] );
    }
    said = 1;
}
int main( void )
{
    // What it prints at its end is what has not been released.
    zuRuntimeStartup( ZU_RUNTIME_FLAG_OBJECT_DATABASE | ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT |
                      ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING, -1, say, "sample", "Sample", "1.0" );
    sample();
    said = 0;
    zuRuntimeShutdown();
    return said;
}
"""


class Sample:
    def __init__(self, document, line, language, source, expected):
        self.place = f"{document}:{line}"
        self.language = language
        self.source = source
        self.expected = expected

    def check(self, build, folder):
        """Returns what is wrong, or null."""
        base = folder / re.sub(r"\W", "_", self.place)
        file = base.with_suffix("." + self.language)
        file.write_text(self.source, encoding="utf-8")
        compiler = ["cc", "-std=c11"] if self.language == "c" else ["c++", "-std=c++20"]
        library = build / "source"
        command = [*compiler, *WARNINGS, f"-I{ROOT / 'source'}", str(file), f"-L{library}", "-lzu", "-o", str(base)]
        made = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8", check=False)
        if made.returncode:
            return made.stdout
        environment = dict(os.environ, LD_LIBRARY_PATH=str(library))
        ran = subprocess.run([str(base)], cwd=folder, env=environment, capture_output=True, encoding="utf-8",
                             timeout=60, check=False)
        if ran.returncode:
            return f"ended with {ran.returncode}\n{ran.stdout}{ran.stderr}"
        if self.expected is not None and ran.stdout != self.expected:
            return f"printed\n{ran.stdout}not\n{self.expected}"
        return None


def without_ellipses(code):
    code = re.sub(r"^ *\.\.\.\n", "\n", code, flags=re.M)
    return re.sub(r"\{ \.\.\. \}", "{ }", code)


def samples_of(path):
    text = path.read_text(encoding="utf-8")
    document = str(path.relative_to(ROOT))
    kept = ""  # what "file" and "continues" have left
    fences = list(FENCE.finditer(text))
    marks = []
    for fence in fences:
        ahead = text[: fence.start()]
        marks.append(MARK.match(ahead, max(ahead.rfind("<!-- sample"), 0)))
    for i, (fence, mark) in enumerate(zip(fences, marks)):
        language, code = fence.groups()
        line = text.count("\n", 0, fence.start(2)) + 1
        placed = f'#line {line} "{document}"\n' + without_ellipses(code)
        kind, around = mark.groups() if mark else (None, "")
        before, divided, after = around.partition("---\n")
        header = '#include "zu/zu.h%s"\n#include <stdio.h>\n' % ("pp" if language == "cpp" else "")
        expected = None
        if re.search(r"^int main\(", code, re.M):
            printed = PRINTS.match(text, fence.end())
            if printed:
                expected = re.sub(r"^    ", "", printed.group(1), flags=re.M)
            source = placed
        elif kind:
            kept = (kept if kind == "continues" else header) + before + placed
            if not divided and i + 1 < len(marks) and marks[i + 1] and marks[i + 1].group(1) == "continues":
                continue
            body = "static void sample( void )\n{\n" + after + "}\n" + FRAME
            source = kept + (body if divided else "int main( void ) {}\n")
        else:
            body = "static void sample( void )\n{\n" + before + "{\n" + placed + after + "}\n}\n"
            includes = "".join(re.findall(r"^#include.*\n", placed, re.M))
            source = header + includes + re.sub(r"^#include.*\n", "\n", body, flags=re.M) + FRAME
        yield Sample(document, line, language, source, expected)


def main():
    if len(sys.argv) != 2:
        print(__doc__)
        return 1
    build = pathlib.Path(sys.argv[1]).resolve()
    documents = [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]
    samples = [sample for document in documents for sample in samples_of(document)]
    bad = 0
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        found = pool.map(lambda sample: sample.check(build, pathlib.Path(folder)), samples)
        for sample, fault in zip(samples, found):
            if fault:
                print(f"{sample.place}:\n{fault}")
                bad += 1
    print(f"{len(samples)} samples, {bad} of them bad")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
