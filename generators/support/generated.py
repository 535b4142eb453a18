"""What the generators share: their command line, and files that are written or compared."""
import argparse
import os
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def stop(text):
    sys.exit(f"{os.path.basename(sys.argv[0])}: {text}")


def run(make_files):
    """Reads the command line and writes what `make_files( data )` returns, texts by their names in the repository; with
    --check it compares them with what is there instead, and the exit status is 1 if they differ."""
    parser = argparse.ArgumentParser(usage="%(prog)s [--data DIR] [--check]")
    parser.add_argument("--data", default=os.path.join(ROOT, "../shared/data"))
    parser.add_argument("--check", action="store_true")
    arguments = parser.parse_args()

    status = 0
    for name, text in make_files(arguments.data).items():
        path = os.path.join(ROOT, name)
        if not arguments.check:
            with open(path, "w", encoding="ascii", newline="\n") as file:
                file.write(text)
            continue
        with open(path, encoding="ascii", newline="") as file:
            if file.read() != text:
                print(f"{name} is not what the data gives")
                status = 1
    sys.exit(status)
