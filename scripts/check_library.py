#!/usr/bin/env python3
"""Reads the built library and its objects, and checks what has been promised of them.

usage: check_library.py BUILD_FOLDER

Checked are the shared library's size, hardening, name and needs; that the generated tables are constant data without
relocations; the stack that functions use; what loading costs; and which folder of the sources includes which.  Needs the binutils and a C compiler.
"""
import argparse
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = ROOT / "source"

MOST_BYTES = 2_500_000  # of the stripped shared library
MOST_FRAME = 16 * 1024  # bytes of stack in one function: the library works on threads of 128 KiB
MOST_LOAD_TIME = 0.5  # milliseconds beyond those of a program that needs nothing
SONAME = "libzu.so.1"
# The C library and what its compilers bring; not the C++ library, so that programs in C need none.
ALLOWED_NEEDS = re.compile(r"lib(c|m|gcc_s|pthread|dl|rt)\.so\.\d+|ld-linux.*")

# What a folder of the sources may include beside itself; CONTRIBUTING.md shows the same as a table.
LAYERS = {
    "sys": [],
    "runtime": ["sys", "base"],
    "base": ["sys", "runtime", "unicode"],
    "unicode": ["sys", "base"],
    "io": ["sys", "runtime", "base"],
    "charset": ["sys", "runtime", "base", "io"],
    "tag": ["sys", "runtime", "base"],
}
# Who stands outside of that: what starts everything, what reports to a human, what reads and writes files or looks for
# those of a product, what opens a file by the name of its character set, what converts by normal forms, and what tells of
# a crash, which reads constant texts and the stack, and tells the time by fields.
EXCEPTIONS = {
    "runtime/zu_runtime.cpp": ["unicode", "io", "charset", "tag"],
    "runtime/zu_runtime_info.cpp": ["io"],
    "runtime/zu_runtime_report.cpp": ["io"],
    "runtime/zu_runtime_platform.cpp": ["io"],
    "base/zu_store_text.h": ["io", "charset"],
    "base/zu_store_text.cpp": ["io"],
    "base/zu_timezone_windows.cpp": ["io"],
    "base/zu_tool_switch.cpp": ["io"],
    "io/zu_file.h": ["charset"],
    "io/zu_file_exact.h": ["charset"],
    "runtime/zu_runtime_paths.cpp": ["io"],
    "runtime/zu_runtime_paths_linux.cpp": ["io"],
    "runtime/zu_runtime_install_info.cpp": ["io", "charset"],
    "charset/zu_charset_map_char_sink.cpp": ["unicode"],
    "charset/zu_exact_char_sink.cpp": ["unicode"],
    "unicode/zu_unicode_normalizer.cpp": ["runtime"],
    "sys/zu_abort.cpp": ["runtime", "base"],
    "sys/zu_abort_internal.h": ["base"],
    "sys/zu_abort_dump_windows.cpp": ["runtime"],
    "sys/zu_abort_linux.cpp": ["base"],
    "sys/zu_abort_windows.cpp": ["base"],
}
# Of the runtime all other folders see objects, sorts and the module that their sorts belong to.
RUNTIME_FOR_ALL = {"zu_obj.h", "zu_obj_internal.h", "zu_ref_internal.h", "zu_sort.h", "zu_module.h"}
RUNTIME_EXCEPTIONS = {
    "io/zu_print.cpp": {"zu_runtime.h"},
    "io/zu_debug_print.cpp": {"zu_runtime_version.h"},
    "sys/zu_abort_dump_windows.cpp": {"zu_runtime_version.h"},
    "sys/zu_abort.cpp": {"zu_runtime_hardware.h", "zu_runtime_os.h", "zu_runtime_variant.h", "zu_runtime_version.h"},
}


def run(*command):
    return subprocess.run(
        [str(each) for each in command],
        check=True,
        stdout=subprocess.PIPE,
        text=True,
        env={"LC_ALL": "C", "PATH": "/usr/local/bin:/usr/bin:/bin"},
    ).stdout


class Report:
    """Prints each finding; remembers whether one was bad."""

    def __init__(self):
        self.faults = 0

    def check(self, good, text):
        print(f"{'ok   ' if good else 'FAULT'} {text}")
        self.faults += not good


def check_size(report, library):
    with tempfile.TemporaryDirectory() as folder:
        stripped = pathlib.Path(folder) / "stripped.so"
        run("strip", "-o", stripped, library)
        size = stripped.stat().st_size
    report.check(size <= MOST_BYTES, f"stripped size: {size:,} bytes of at most {MOST_BYTES:,}")


def check_hardening(report, library):
    dynamic = run("readelf", "--wide", "--dynamic", library)
    segments = run("readelf", "--wide", "--program-headers", library)
    symbols = run("nm", "--dynamic", "--undefined-only", library)
    name = re.search(r"\(SONAME\).*\[(.*)\]", dynamic)
    report.check(name and name[1] == SONAME, f"name: {name and name[1]}")
    needs = re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic)
    report.check(all(ALLOWED_NEEDS.fullmatch(need) for need in needs), f"needs: {' '.join(needs)}")
    report.check(not re.search(r"\((RPATH|RUNPATH)\)", dynamic), "no search path of its own")
    report.check("TEXTREL" not in dynamic, "no relocations in code")
    now = re.search(r"\(BIND_NOW\)|\(FLAGS\).*BIND_NOW|\(FLAGS_1\).*NOW", dynamic)
    report.check("GNU_RELRO" in segments and now, "relocated once, then read-only (full RELRO)")
    stack = re.search(r"GNU_STACK.*", segments)
    report.check(stack and "E" not in re.sub(r"GNU_STACK|0x\w+", "", stack[0]), "stack is not executable")
    report.check(not re.search(r"LOAD.*\bRWE\b", segments), "nothing is both writable and executable")
    report.check("__stack_chk_fail" in symbols, "stack protector")
    report.check(re.search(r"__\w+_chk\b", symbols.replace("__stack_chk_fail", "")), "fortified calls")


def check_tables(report, objects):
    """The tables are read by many processes from the same pages: no relocations, nothing writable."""
    tables = 0
    bytes_of_tables = 0
    for source in sorted(SOURCES.rglob("*.cpp")):
        with open(source, encoding="utf-8") as file:
            if not file.readline().startswith("// Generated by "):
                continue
        compiled = objects / (str(source.relative_to(SOURCES)) + ".o")
        tables += 1
        for line in run("readelf", "--wide", "--section-headers", compiled).splitlines():
            section = re.match(r"\s*\[\s*\d+\]\s+(\S+)\s+(\S+)\s+\w+\s+\w+\s+(\w+)\s+\w+\s+([A-Za-z]*)", line)
            if not section:
                continue
            name, kind, size, flags = section[1], section[2], int(section[3], 16), section[4]
            relocates = kind in ("REL", "RELA") and re.match(r"\.rela?\.(data|rodata|tdata|init_array)", name)
            writable = kind in ("PROGBITS", "NOBITS") and "W" in flags and size > 0
            if relocates or writable:
                report.check(False, f"{source.name}: {name} {'relocates data' if relocates else 'is writable'}")
            elif name.startswith(".rodata"):
                bytes_of_tables += size
    report.check(tables > 0, f"{tables} table files: {bytes_of_tables:,} bytes, constant and without relocations")


def check_stack(report, objects):
    """Reads the files that -fstack-usage leaves: place and name, bytes, and how the size is known."""
    functions = []
    for usage in sorted(objects.rglob("*.su")):
        for line in usage.read_text(encoding="utf-8").splitlines():
            place, size, kind = line.split("\t")
            functions.append((int(size), place, kind))
    missing = [each for each in objects.rglob("*.o") if not each.with_suffix(".su").exists()]
    report.check(functions and not missing, f"stack usage known of {len(functions)} functions")
    for _, place, kind in functions:
        if kind == "dynamic":
            report.check(False, f"{place} uses stack without a bound")
    for size, place, _ in sorted(functions, reverse=True)[:1]:
        report.check(size <= MOST_FRAME, f"largest frame: {size:,} bytes of at most {MOST_FRAME:,}, {place.replace(str(ROOT) + '/', '')}")


def check_layers(report):
    edges = 0
    for source in sorted((SOURCES / "zu").rglob("*.*")):
        name = str(source.relative_to(SOURCES / "zu"))
        folder = name.partition("/")[0]
        if folder not in LAYERS or source.suffix not in (".h", ".cpp"):
            continue
        for other, header in re.findall(r'^#include "zu/(\w+)/(\w+\.h)"', source.read_text(encoding="utf-8"), re.MULTILINE):
            edges += 1
            good = other == folder or other in LAYERS[folder] + EXCEPTIONS.get(name, [])
            if good and other == "runtime" and folder != "runtime":
                good = header in RUNTIME_FOR_ALL | RUNTIME_EXCEPTIONS.get(name, set())
            if not good:
                report.check(False, f"{name} includes {other}/{header}")
    report.check(edges > 500, f"layers: {edges} includes go where they may")


def load_time(program):
    begin = time.perf_counter()
    subprocess.run([program], check=True)
    return (time.perf_counter() - begin) * 1000


def check_load_time(report, library):
    """Compares a program that needs the library with one that does not, in turns; a busy machine gets three chances."""
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "empty.c"
        source.write_text("int main( void ) { return 0; }\n", encoding="ascii")
        without, needing = f"{folder}/without", f"{folder}/needing"
        run("cc", "-O2", source, "-o", without)
        where = library.parent
        run("cc", "-O2", source, "-o", needing, "-Wl,--no-as-needed", f"-L{where}", "-lzu", f"-Wl,-rpath,{where}")
        for _ in range(3):
            times = [(load_time(without), load_time(needing)) for _ in range(200)]
            medians = [statistics.median(each) for each in zip(*times)]
            cost = medians[1] - medians[0]
            if cost <= MOST_LOAD_TIME:
                break
    report.check(cost <= MOST_LOAD_TIME, f"loading costs {cost:.2f} ms of at most {MOST_LOAD_TIME} ms")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=pathlib.Path, metavar="BUILD_FOLDER", help="such as build/release")
    build = parser.parse_args().build.resolve()
    library = build / "source" / "libzu.so"
    objects = build / "source" / "CMakeFiles" / "zu_objects.dir"

    report = Report()
    check_size(report, library)
    check_hardening(report, library)
    check_tables(report, objects)
    check_stack(report, objects)
    check_layers(report)
    check_load_time(report, library)
    return report.faults > 0


if __name__ == "__main__":
    sys.exit(main())
