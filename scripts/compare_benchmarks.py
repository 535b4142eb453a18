#!/usr/bin/env python3
"""Prints how zu compares with its peers, from the JSON files of Google Benchmark.

usage: compare_benchmarks.py FILE...

The last element of a benchmark's name is the contestant, what stands ahead of it the case: Topic/zu,
Topic/case/glib.  An argument of a benchmark, as in Topic/zu/64, belongs to the case.  A ratio is the time of zu over
that of the peer: below 1 zu is the faster one.  It is the processor's time, but for cases of which the name says that
they measure the real one, since others work in them too.  Where a file has aggregates, the median counts.
"""
import argparse
import json
import math
import sys

CONTESTANTS = ["zu", "c", "std", "libc", "getopt_long", "futex", "copy", "glib", "icu", "icu16", "qt", "absl", "apr", "iconv",
               "utf8proc", "uv", "msgpack", "unistring", "contract"]
NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def read_times(paths):
    """Returns the times in nanoseconds by case and contestant, and the names without a contestant."""
    times = {}
    strangers = []
    for path in paths:
        with open(path, encoding="utf-8") as file:
            runs = json.load(file)["benchmarks"]
        medians = [run for run in runs if run.get("aggregate_name") == "median"]
        for run in medians or [run for run in runs if run["run_type"] == "iteration"]:
            elements = run.get("run_name", run["name"]).split("/")
            contestant = next((each for each in reversed(elements) if each in CONTESTANTS), None)
            if contestant is None:
                strangers.append(run["name"])
                continue
            elements.remove(contestant)
            case = times.setdefault("/".join(elements), {})
            clock = "real_time" if {"real_time", "manual_time"} & set(elements) else "cpu_time"
            case[contestant] = run[clock] * NANOSECONDS[run["time_unit"]]
    return times, strangers


def time_text(nanoseconds):
    for unit, factor in reversed(NANOSECONDS.items()):
        if nanoseconds >= factor:
            break
    return f"{nanoseconds / factor:.3g} {unit}"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("files", nargs="+", metavar="FILE")
    times, strangers = read_times(parser.parse_args().files)
    peers = [peer for peer in CONTESTANTS[1:] if any(peer in case for case in times.values())]

    rows = [["case", "zu"] + [f"zu/{peer}" for peer in peers]]
    ratios = {peer: [] for peer in peers}
    for name, case in times.items():
        row = [name, time_text(case["zu"]) if "zu" in case else "-"]
        for peer in peers:
            if "zu" in case and peer in case:
                ratios[peer].append(case["zu"] / case[peer])
                row.append(f"{ratios[peer][-1]:.2f}")
            else:
                row.append("")
        rows.append(row)
    means = [math.exp(sum(map(math.log, ratios[peer])) / len(ratios[peer])) if ratios[peer] else None for peer in peers]
    rows.append(["geometric mean", ""] + [f"{mean:.2f}" if mean else "" for mean in means])

    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
    for number, row in enumerate(rows):
        print("  ".join([row[0].ljust(widths[0])] + [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]))
        if number in (0, len(rows) - 2):
            print("  ".join("-" * width for width in widths))
    for name in strangers:
        print(f"{name}: names no contestant", file=sys.stderr)
    return 0


if __name__ == "__main__":
    sys.exit(main())
