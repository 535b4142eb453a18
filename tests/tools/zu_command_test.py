"""The command line of zu: what each command prints and returns, its manual and its completion.

usage: zu_command_test.py ZU [unittest options]
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import unittest

from tool import MODULES, NEEDS_MODULES, TESTS, WINDOWS, ZU, FilesTest, run

EMULATED = "ZU_TEST_EMULATED" in os.environ  # by a program that ends in its own way when the command is to end by a signal


# A command line, and what it prints or, where that is wrong, how its message begins
RIGHT = {
    "zone Europe/Zurich": "W. Europe Standard Time\n",
    "zone europe/zurich W.|EUROPE|standard|time": "W. Europe Standard Time\nEurope/Berlin\n",
    "tags match a|b": "match\n",
    "tags match -t and -w a|b a|c b": "match\n",
    "tags match --type=NOT --want b a": "match\n",
    "tags rewrite a b a": "a b\n",
    "tags rewrite --set z --delete b a|b c": "a c z\n",
    "tag rewrite --clear --pass a|z --set q a b": "a q\n",
    "id -n 0": "",
    "id --json -n 0": "[]\n",
    "random 5 5": "5\n",
    "random -xn2 255 255": "ff\nff\n",
    "random -b0": "",
    "random -jb0": '""\n',
    "random -jn2 5 5": "[\n  5,\n  5\n]\n",
    "random -xj 255 255": '[\n  "ff"\n]\n',
}
WRONG = {
    "": "usage: zu ",
    "txet": "zu: unknown command: txet\n",
    "cras check": "zu: unknown command: cras\n",
    "t": 'zu: several commands begin with "t": tags text\n',
    "--txet": "zu: unknown option: --txet\n",
    "text --jsno": "zu text: unknown option: --jsno\n",
    "text -q": "zu text: unknown option: -q\n",
    "text --json=1": "zu text: --json takes no value\n",
    "text --case": "zu text: --case needs a value\n",
    "text -n": "zu text: -n needs a value\n",
    "store show --t=int x": "zu store: several options begin with --t\n",
    "text --case title": "zu text: --case is lower, upper or fold, and not title\n",
    "text --normalize NFX": "zu text: --normalize is NFC, NFKC, NFD or NFKD, and not NFX\n",
    "text --case fold --json": "zu text: --json does not go with --case and --normalize\n",
    "text --char U+110000": "zu text: --char is U+0000 to U+10FFFF or a text, and not U+110000\n",
    "text --char U+41 file": "zu text: --char takes no FILE\n",
    "convert": "zu convert: --from is missing\n",
    "convert --from utf-8": "zu convert: --to is missing\n",
    "convert --from utf-8 --to klingon": "zu convert: unknown character set: klingon ",
    "convert --from utf-8 --to ascii --errors maybe": "zu convert: --errors is replace, skip, fail or ignore, and not maybe\n",
    "convert --from utf-8 --to ascii --newlines vt": "zu convert: --newlines is lf, crlf, cr, nel, ls or ps, and not vt\n",
    "convert --from utf-8 --to ascii a b c": "zu convert: one input and one output at most, not 3 files\n",
    "convert --from utf-8 --to ascii --json a": "zu convert: --json needs a file OUT\n",
    "convert --from utf-8 --to ascii --json --contract a b": "zu convert: --json does not go with --contract\n",
    "convert --list a": "zu convert: --list goes with --json alone\n",
    "info operand": "zu info: takes no operand: operand\n",
    "id --count=-1": "zu id: --count is an integer from 0 to 9223372036854775807, and not -1\n",
    "random 1": "zu random: takes both bounds or none, not 1 operands\n",
    "random 3 2": "zu random: HIGH is an integer from 3 to ",
    "random 1x 2": "zu random: LOW is an integer from ",
    "random --bytes 3 1 2": "zu random: --bytes goes with --hex and --json alone\n",
    "zone --local UTC": "zu zone: --local takes no NAME\n",
    "tags": "zu tags: an action is missing: match or rewrite\n",
    "tags march": "zu tags: the action is match or rewrite, and not march\n",
    "tags match --clear": "zu tags: --clear does not go with match\n",
    "tags match A": "zu tags: not a tag: A\n",
    "tags rewrite --set a-b": "zu tags: not a tag: a-b\n",
    "module check": "zu module: check needs a file\n",
    "crash": "zu crash: takes one KIND, not 0\n",
    "crash test": "zu crash: KIND is check, null, ",
}
FAILED = {
    "zone Europe/Atlantis": "zu zone: unknown time zone: Europe/Atlantis\n",
    "tags match -w a b": "",
    "tags match --rules /nowhere": "zu tags: cannot read /nowhere: No such file or directory\n",
}


class Command(FilesTest):
    def test_table(self):
        # A line is divided at its blanks; "|" is a blank within an argument.
        def split(line):
            return [word.replace("|", " ") for word in line.split()]

        for line, output in RIGHT.items():
            self.assertEqual(run(*split(line)), (0, output, ""), line)
        for status, lines in ((2, WRONG), (1, FAILED)):
            for line, message in lines.items():
                found, output, errors = run(*split(line))
                self.assertEqual(found, status, line)
                self.assertTrue(errors.startswith(message), (line, errors))
                self.assertTrue(status == 1 or not output and ("--help" in errors), line)

    def test_help(self):
        names = re.findall(r"^  (\w+)  ", run("--help")[1], re.MULTILINE)
        self.assertEqual(names, sorted(names))
        self.assertIn("text", names)
        self.assertNotIn("crash", names)
        for name in names:
            for option in ("--help", "-h", "--hel"):
                status, output, errors = run(name, option)
                self.assertEqual((status, errors), (0, ""))
                self.assertTrue(output.startswith(f"usage: zu {name} "))
                self.assertLessEqual(max(map(len, output.splitlines())), 80, name)

    def test_manual_is_that_of_the_help(self):
        subprocess.run([sys.executable, TESTS.parent / "scripts" / "update_manual.py", "--check", ZU], check=True)

    def test_versions(self):
        output = run("--version")[1]
        version = re.findall(r"#define ZU_VERSION_[MP]\w+ (\d+)",
                             (TESTS.parent / "source/zu/sys/zu_version.h").read_text())
        self.assertTrue(output.startswith(f"zu {'.'.join(version)}, the library\n"), output)
        info = json.loads(run("info", "--json")[1])
        self.assertIn(f"{info['friendlyName']} {info['version']} by ", output)

    def test_completion(self):
        def complete(*words):
            completion = TESTS.parent / "tools" / "zu" / "zu.bash"
            script = f'source {completion}; COMP_WORDS=(zu "$@"); COMP_CWORD=$#; _zu; printf "%s\\n" "${{COMPREPLY[@]}}"'
            path = {**os.environ, "PATH": f"{pathlib.Path(ZU).parent}:{os.environ['PATH']}"}
            return subprocess.run(["bash", "-c", script, "-", *words], capture_output=True, text=True, env=path).stdout.split()

        self.assertEqual(complete("t"), ["tags", "text"])
        self.assertEqual(complete("text", "--c"), ["--case", "--char"])
        self.assertEqual(complete("text", "--case", ""), ["lower", "upper", "fold"])
        self.assertEqual(complete("store", "m"), ["merge"])

    def test_zones(self):
        zones = json.loads(run("zone", "--json")[1])
        self.assertEqual((len(zones), len({zone["windows"] for zone in zones})), (455, 132))
        self.assertEqual(len(run("zone")[1].splitlines()), 455)
        if WINDOWS:
            return  # no variable of the environment tells the zone
        here = json.loads(run("zone", "--local", "--json", TZ="Asia/Katmandu")[1])
        self.assertEqual(here, {"iana": "Asia/Katmandu", "windows": "Nepal Standard Time", "utcOffset": 20700})
        self.assertRegex(run("zone", "-l", TZ="America/St_Johns")[1], r"\nUTC      -0[23]:30\n$")

    def test_draws(self):
        self.assertRegex(run("id", "-n", "2")[1], r"^([0-9A-F]{32}\n)(?!\1)[0-9A-F]{32}\n$")
        numbers = run("random", "--count=500", "--", "-2", "2")[1].split()
        self.assertEqual((len(numbers), {*numbers}), (500, {"-2", "-1", "0", "1", "2"}))
        self.assertRegex(json.loads(run("id", "--json")[1])[0], r"^[0-9A-F]{32}$")
        self.assertRegex(run("random", "-xb", "100000")[1], r"^[0-9a-f]{200000}\n$")
        self.assertEqual(len(subprocess.check_output([ZU, "random", "--bytes", "70000"])), 70000)

    @NEEDS_MODULES
    def test_modules(self):
        def check(name, **environment):
            file = next(MODULES.glob(f"*-{name}." + ("dll" if WINDOWS else "so")))
            status, output, _ = run("module", "check", "--json", file, LD_LIBRARY_PATH=str(MODULES), **environment)
            (found,) = json.loads(output)
            self.assertEqual((found["file"], found["fits"], status), (str(file), status == 0, 0 if found["fits"] else 1))
            return found["failure"]

        self.assertEqual(check("unit"), None)
        if not WINDOWS:  # where no exported symbol is null
            self.assertEqual(check("null"), "module: null")
        text = re.sub(r"\s+", " ", (TESTS / "modules" / "zu_test_module_misfits.h").read_text())
        misfits = re.findall(r', "([^"]+)" \)', text)
        self.assertGreater(len(misfits), 15)
        for number, failure in enumerate(misfits):
            self.assertEqual(check("changing", ZU_TEST_MISFIT=str(number)), failure)
        self.assertEqual(run("module", "check", "a.so")[0], 1)

    def test_paths(self):
        folder = f"{'Z:' * WINDOWS}{self.folder}"  # where Wine has it
        status, output, _ = run("info", "--paths", "--json", RQ_ZELKARATR_DATA_PATH=folder)
        paths = json.loads(output)
        self.assertEqual((status, len(paths)), (0, 9))
        self.assertEqual(paths["ZU_RUNTIME_PATH_DATA"], folder + "/")
        self.assertEqual(paths["ZU_RUNTIME_PATH_DATA_TEMP"], folder + "/temp/")
        self.assertIn(f"Data           {folder}/\n", run("info", "-p", RQ_ZELKARATR_DATA_PATH=folder)[1])

    def test_crashes(self):
        options = "handle_segv=0:handle_sigbus=0:handle_sigfpe=0:handle_sigill=0:allocator_may_return_null=1"
        for kind in re.findall(r"^  (\w+)   ", run("crash", "--help")[1].split("Options:")[0], re.MULTILINE):
            if WINDOWS and kind in ("abort", "stack"):
                continue  # the one is no exception, and for the other Wine keeps no room at the end of a stack
            for thread in ([], ["--thread"]):
                status, output, errors = run("crash", kind, *thread, ASAN_OPTIONS=options, TSAN_OPTIONS=options)
                # Some processors divide by zero, and a sanitizer may be the first to mind.
                if "takes no offence" not in errors and "runtime error: " not in errors:
                    self.assertTrue(status == 3 if WINDOWS else status < 0 or EMULATED, (kind, errors))
                    self.assertRegex(errors, r"(?s)PRODUCT.*(ABORT|EXCEPTION)\n.*STACK\n", kind)

    @unittest.skipIf(WINDOWS, "has another kind of terminal")
    def test_bold_on_terminals_only(self):
        import pty

        def show(*arguments, **environment):
            leader, follower = pty.openpty()
            subprocess.run([ZU, *arguments], stdout=follower, stderr=follower, env={**os.environ, **environment})
            os.close(follower)
            with open(leader, "rb", 0) as file:
                return file.read(10_000)

        self.assertIn(b"\x1b[1m", show("info", TERM="xterm", NO_COLOR=""))
        self.assertIn(b"\x1b[1mzu:\x1b[0m unknown", show("nothing", TERM="xterm", NO_COLOR=""))
        for environment in ({"TERM": "dumb"}, {"TERM": "xterm", "NO_COLOR": "1"}):
            self.assertNotIn(b"\x1b", show("info", **environment))
        self.assertNotIn("\x1b", run("info", TERM="xterm")[1])


unittest.main()
