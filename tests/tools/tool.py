"""What the tests of the commands share.  The first argument of each is the command, ZU."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ZU = sys.argv.pop(1)
TESTS = pathlib.Path(__file__).resolve().parent.parent
EXAMPLES = sorted((TESTS.parent / "examples" / "texts").glob("*.txt"))
WINDOWS = os.environ.get("ZU_TEST_SYSTEM") == "Windows"
MODULES = pathlib.Path(ZU).resolve().parents[2] / ("bin" if WINDOWS else "tests/modules")
NEEDS_MODULES = unittest.skipUnless(MODULES.is_dir(), "the modules of the tests are not built")


def call(*arguments, data=b"", **environment):
    """Runs the command, and returns the process, which has ended."""
    environment = {**os.environ, **environment}
    return subprocess.run([ZU, *map(str, arguments)], input=data, capture_output=True, env=environment)


def run(*arguments, **more):
    """Runs the command, and returns its status, and what it has written to its output and to its error stream."""
    finished = call(*arguments, **more)
    return finished.returncode, finished.stdout.decode(), finished.stderr.decode()


def call_on_full_disk(*arguments, data=b""):
    with open("/dev/full", "wb") as full:
        return subprocess.run([ZU, *map(str, arguments)], input=data, stdout=full, stderr=subprocess.PIPE)


class FilesTest(unittest.TestCase):
    """Tests with a folder of their own."""

    maxDiff = 4000

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
