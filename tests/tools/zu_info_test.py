"""zu info against what the system tells, and with modules of the tests.

usage: zu_info_test.py ZU [unittest options]
"""
import json
import platform
import unittest

import tool
from tool import MODULES, NEEDS_MODULES, WINDOWS

FLAGS = "ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH|ZU_RUNTIME_FLAG_MODULE_DEBUG"


def run(*arguments):
    return tool.run("info", *arguments, LD_LIBRARY_PATH=str(MODULES))


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

    @NEEDS_MODULES
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


unittest.main()
