#!/usr/bin/env python3
"""Runs bench_tav, prints its figures beside those kept last, and judges their growth. `./dev bench` calls it.

    bench/run.py BIN OUT                measures all, in minutes; JSON into the folder OUT
    bench/run.py BIN OUT --quick        judges the growth alone, and fails where a row leaves its class
    bench/run.py BIN OUT --keep NAME    keeps the figures in bench/results, docs/performance.md and docs/images

Other arguments are Google Benchmark's: --benchmark_filter='^save'.
"""

import argparse
import os
import re
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(HERE, "report"))

import figures as measured  # noqa: E402
import growth  # noqa: E402
import pictures  # noqa: E402
import tables  # noqa: E402

TREE = os.path.dirname(HERE)
RESULTS = os.path.join(HERE, "results")
PAGE = os.path.join(TREE, "docs", "performance.md")
IMAGES = os.path.join(TREE, "docs", "images")
BEGIN, END = "<!-- measured: begin -->", "<!-- measured: end -->"

# All sizes once; those that are soon done twice more, later, since noise comes in spells.
FULL = ([], ["--largest=100000"], ["--largest=100000"])
QUICK_ATTEMPTS = 3


def pin():
    """This process and what it starts stay on one core, where the system can do that."""
    if hasattr(os, "sched_setaffinity"):
        os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})


def run(arguments, number, more):
    """One run of the program. @return the JSON file"""
    path = os.path.join(arguments.out, f"run{number}.json")
    begun = time.monotonic()
    with open(os.path.join(arguments.out, f"run{number}.log"), "w", encoding="utf-8") as log:
        command = [os.path.join(arguments.bin, "bench_tav"), f"--benchmark_out={path}", "--benchmark_out_format=json"]
        code = subprocess.run(command + more, stdout=log, stderr=subprocess.STDOUT, check=False).returncode
    if code != 0:
        with open(log.name, encoding="utf-8") as log:
            sys.exit(f"{log.read()[-2000:]}\nbench_tav ended with {code}")
    print(f"Run {number} took {time.monotonic() - begun:.0f} s", flush=True)
    return path


def quick(arguments, more):
    """Judges the growth. A row that fails is measured again before that counts."""
    filtered = any(argument.startswith("--benchmark_filter") for argument in more)
    wanted = "-[.](reader|writer)/"  # all but the raw passes, which take long and judge nothing
    paths = []
    for attempt in range(1, QUICK_ATTEMPTS + 1):
        paths.append(run(arguments, attempt, ["--quick", f"--benchmark_filter={wanted}", *more]))
        verdicts = growth.judge(measured.read(paths))
        if filtered:
            verdicts = [verdict for verdict in verdicts if verdict.measured is not None]
        failed = [verdict for verdict in verdicts if not verdict.good]
        if not failed:
            break
        names = {name for verdict in failed for name in (verdict.row.name, verdict.row.reference()) if name}
        wanted = "^(" + "|".join(sorted(names)).replace(".", "[.]") + ")/"
    for verdict in sorted(verdicts, key=lambda verdict: (verdict.limit - (verdict.measured or 9), str(verdict))):
        print(f"{'' if verdict.good else 'FAILED  '}{verdict}")
    if failed:
        sys.exit(f"{len(failed)} rows grow faster than they may, or were not measured")
    print(f"{len(verdicts)} rows grow as they may")


def rewrite(page, text):
    with open(page, encoding="utf-8") as file:
        old = file.read()
    found = re.search(re.escape(BEGIN) + ".*?" + re.escape(END), old, re.DOTALL)
    if not found:
        sys.exit(f"{page}: there is no {BEGIN} … {END}")
    with open(page, "w", encoding="utf-8") as file:
        file.write(f"{old[:found.start()]}{BEGIN}\n\n{text}\n\n{END}{old[found.end():]}")


def full(arguments, more):
    now = measured.read([run(arguments, number, manner + more) for number, manner in enumerate(FULL, 1)])
    path, kept = measured.last_kept(RESULTS)
    if kept:
        print(f"\nCompared with {os.path.relpath(path, TREE)} of {kept.context.get('date', 'unknown date')}")
    print("\n" + tables.report(now, kept))
    if arguments.keep:
        now.keep(os.path.join(RESULTS, arguments.keep + ".json"))
        rewrite(PAGE, tables.report(now))
        pictures.draw(now, IMAGES)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("bin", help="the folder with the benchmark program")
    parser.add_argument("out", help="the folder for the JSON")
    parser.add_argument("--quick", action="store_true", help="judge the growth alone")
    parser.add_argument("--keep", metavar="NAME", help="keep the figures under that name")
    arguments, more = parser.parse_known_args()
    os.makedirs(arguments.out, exist_ok=True)
    pin()
    (quick if arguments.quick else full)(arguments, more)


if __name__ == "__main__":
    main()
