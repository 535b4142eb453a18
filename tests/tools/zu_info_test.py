"""zu info against what the system tells, and with modules of the tests.

usage: zu_info_test.py ZU [unittest options]
"""
import json
import os
import pathlib
import platform
import subprocess
import sys
import unittest

ZU = sys.argv.pop(1)
WINDOWS = os.environ.get("ZU_TEST_SYSTEM") == "Windows"
MODULES = pathlib.Path(ZU).resolve().parents[2] / ("bin" if WINDOWS else "tests/modules")
FLAGS = "ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH|ZU_RUNTIME_FLAG_MODULE_DEBUG"


def run(*arguments):
    environment = {**os.environ, "LD_LIBRARY_PATH": str(MODULES)}
    finished = subprocess.run(
        [ZU, "info", *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment
    )
    return finished.returncode, finished.stdout.decode(), finished.stderr.decode()


class Info(unittest.TestCase):
    def test_tells_what_the_system_tells(self):
        status, output, errors = run("--json")
        self.assertEqual((status, errors), (0, ""))
        info = json.loads(output)
        if WINDOWS:  # one of Wine's
            self.assertRegex(info["operatingSystemInfo"], r"^Windows .*\(\d+/\d+/1")
        else:
            self.assertIn(f"({platform.release()})", info["operatingSystemInfo"])
            self.assertEqual(info.get("computerName"), platform.node() if len(platform.node()) < 16 else None)
        self.assertEqual(info["applicationIdentifier"], "zu")
        self.assertEqual(info["flags"], "")
        self.assertEqual([module["name"] for module in info["modules"]], ["zu"])

    def test_text_has_the_same_values(self):
        info = json.loads(run("--json")[1])
        status, output, _ = run()
        self.assertEqual(status, 0)
        values = [line[15:] for line in output.splitlines()]
        for address, value in info.items():
            if address not in ("flags", "modules", "startTime"):
                self.assertIn(value, values)
        module = info["modules"][0]
        self.assertIn(f"{module['name']} {module['version']}: {module['description']}", values)

    def test_flags_are_normalised(self):
        self.assertEqual(json.loads(run("--json", "--flags", "ZU_RUNTIME_FLAG_SNAPSHOT_SORT")[1])["flags"], "")
        self.assertEqual(json.loads(run("--json", "--flags", "3")[1])["flags"], "ZU_RUNTIME_FLAG_MINIMAL")

    @unittest.skipUnless(MODULES.is_dir(), "the modules of the tests are not built")
    def test_loads_modules(self):
        status, output, errors = run("--json", "--flags", FLAGS, "--load", "gauge")
        self.assertEqual(status, 0, errors)
        names = [module["name"] for module in json.loads(output)["modules"]]
        self.assertEqual(names, ["zu", "unit", "scale", "gauge", "plot", "ink"])
        self.assertTrue(errors.startswith("[zu___RuntimeTryLoadModule()] module: gauge\n"), errors)

    def test_says_what_cannot_be_loaded(self):
        status, output, errors = run("--flags", FLAGS, "--load", "nowhere")
        self.assertEqual((status, output), (1, ""))
        call = "LoadLibraryA" if WINDOWS else "dlopen"
        self.assertIn(f"[zu___RuntimePlatformLoadModule()] {call}(): null", errors)
        self.assertTrue(errors.endswith("zu info: cannot load the modules: nowhere\n"), errors)

    def test_wrong_use(self):
        self.assertEqual(run("operand")[0], 2)
        self.assertEqual(run("--unknown")[0], 2)


if __name__ == "__main__":
    unittest.main()
