#!/usr/bin/env python3
"""Reads the JSON of bench_tav and prints the table of docs/performance.md.

    bench/report.py build/release/bench/bench_tav.json
    bench/report.py --write docs/performance.md --keep bench/results/measured.json JSON...
"""

import argparse
import json
import math
import re
import sys

BEGIN, END = "<!-- measured: begin -->", "<!-- measured: end -->"
SIZES = (1000, 10000, 100000, 1000000)
AT = 100000  # where aims and yardsticks are compared

# row, text in the table, aim in ns at AT or None, the yardsticks with their largest wanted share or None
ROWS = (
    ("create", "create a node, its ports, values and metadata, and add it", 1000, (("create.bare", None),)),
    ("connect", "connect two ports", 300, (("connect.bare", None),)),
    ("find by name", "find by name", 150, (("find by name.bare", None),)),
    ("find by path", "find by path of depth 8", 700, ()),
    ("rename", "rename, all references right afterwards", 500, (("rename.bare", None),)),
    ("set value", "set a value, unobserved", None, (("set value.bare", None),)),
    ("set value, editor at the container", "the same, an editor at the container", "set value", ()),
    ("set value, editor at the node", "the same, an editor at the node", "set value", ()),
    ("remove at random", "remove a random node with its connections", 2000, (("remove at random.bare", None),)),
    ("cut a hub, called at the hub", "cut a connection of a hub, called at the hub", 300,
     (("cut a hub, called at the hub.bare", None),)),
    ("cut a hub, called at the inputs", "the same, called at the inputs", 300,
     (("cut a hub, called at the hub.bare", None),)),
    ("next free name", "next free name among N taken ones", 500, (("next free name.bare", None),)),
    ("save", "save", 1500, (("save.writer", 0.25),)),
    ("save, nested 8 deep", "save, nested 8 deep", None, (("save, nested 8 deep.writer", 0.25),)),
    ("load", "load", 2700, (("load.reader", 0.5),)),
    ("paste, every name taken", "paste, every name taken", 5000, (("paste, every name taken.reader", None),)),
    ("destroy", "destroy", None, (("destroy.bare", None),)),
    ("command: remove", "command: remove a random node", None, ()),
    ("command: remove, undo", "its undo", 10000, ()),
    ("command: remove, redo", "its redo", 10000, ()),
    ("command: cut a hub", "command: cut a connection of a hub", None, ()),
    ("command: cut a hub, undo", "its undo", None, ()),
    ("command: paste", "command: paste, every name taken", 5000, ()),
    ("command: paste, undo", "its undo", None, ()),
    ("command: group", "command: group up to 10,000 nodes", None, ()),
    ("command: group, undo", "its undo", None, ()),
    ("command: explode", "command: explode them again", None, ()),
)
EDITOR_AIM = 50  # ns over the unobserved row
YARDSTICKS = {"bare": "plain structs", "writer": "QXmlStreamWriter", "reader": "QXmlStreamReader"}


def read(paths):
    """{row: {size: counters}} and the context of the last file."""
    rows, context = {}, {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            data = json.load(file)
        context = data["context"]
        for run in data["benchmarks"]:
            if run.get("run_type", "iteration") != "iteration" or "ns_per_item" not in run:
                continue
            name = run["name"].split("/")[0]
            rows.setdefault(name, {})[int(run["nodes"])] = run
    return rows, context


def ns(row, size):
    run = row.get(size) if row else None
    return run["ns_per_item"] if run else None


def text_of(value):
    if value is None:
        return ""
    return f"{value:,.0f}" if value >= 99.5 else f"{value:.3g}"


def growth(row):
    """The exponents of the whole work from size to size: 1 is linear, so that an item costs the same."""
    steps = []
    for small, large in zip(SIZES, SIZES[1:]):
        a, b = ns(row, small), ns(row, large)
        if a and b:
            steps.append(f"{1 + math.log(b / a) / math.log(large / small):.2f}")
    return " ".join(steps)


def aim_of(aim, rows):
    if isinstance(aim, str):
        base = ns(rows.get(aim), AT)
        return base + EDITOR_AIM if base else None
    return aim


def share(row, yardstick):
    a, b = ns(row, AT), ns(yardstick, AT)
    return a / b if a and b else None


def table(rows):
    head = ["ns for an item at N =", *(f"{size:,}" for size in SIZES), "growth", "aim", "yardstick", "its growth",
            "share of it"]
    lines = ["| " + " | ".join(head) + " |", "|---|" + "--:|" * 4 + "---|--:|--:|---|--:|"]
    for name, title, aim, yardsticks in ROWS:
        row = rows.get(name)
        if not row:
            continue
        aim = aim_of(aim, rows)
        cells = [title, *(text_of(ns(row, size)) for size in SIZES), growth(row), text_of(aim)]
        if yardsticks:
            yard, limit = yardsticks[0]
            ratio = share(row, rows.get(yard))
            cells.append(f"{text_of(ns(rows.get(yard), AT))}, {YARDSTICKS[yard.rsplit('.', 1)[1]]}")
            cells.append(growth(rows.get(yard)))
            cells.append((f"{ratio:.2f}" if ratio else "") + (f" (aim {limit})" if limit else ""))
        else:
            cells += ["", "", ""]
        lines.append("| " + " | ".join(cells) + " |")
    return lines


def memory_table(rows):
    lines = ["| bytes at N = | " + " | ".join(f"{size:,}" for size in SIZES) + " | aim |", "|---|" + "--:|" * 5]
    for name, title in (("memory", ""), ("memory.bare", " of plain structs")):
        for key, what, aim in (("bytes_per_node", "a node", 1000), ("bytes_per_connection", "a connection", None)):
            row = rows.get(name, {})
            cells = [text_of(row[size][key]) if size in row else "" for size in SIZES]
            lines.append(f"| {what}{title} | " + " | ".join(cells) + f" | {text_of(aim) if name == 'memory' else ''} |")
    return lines


def lifecycle_table(rows):
    row = rows.get("lifecycle", {})
    lines = ["| ns a node at N = | " + " | ".join(f"{size:,}" for size in SIZES) + " |", "|---|" + "--:|" * 4]
    for key, what in (("build_ns", "built and connected"), ("save_ns", "saved"), ("load_ns", "loaded"),
                      ("destroy_ns", "destroyed")):
        lines.append(f"| {what} | " + " | ".join(text_of(row[size][key]) if size in row else "" for size in SIZES) + " |")
    return lines


def report(rows):
    lines = table(rows)
    if "memory" in rows:
        lines += ["", *memory_table(rows)]
    if "lifecycle" in rows:
        lines += ["", *lifecycle_table(rows)]
    return "\n".join(lines)


def rewrite(path, text):
    with open(path, encoding="utf-8") as file:
        page = file.read()
    found = re.search(re.escape(BEGIN) + ".*?" + re.escape(END), page, re.DOTALL)
    if not found:
        sys.exit(f"{path}: there is no {BEGIN} … {END}")
    page = page[: found.start()] + f"{BEGIN}\n\n{text}\n\n{END}" + page[found.end():]
    with open(path, "w", encoding="utf-8") as file:
        file.write(page)


def keep(path, rows, context):
    """The figures alone, in the form that read() takes."""
    wanted = ("name", "run_type", "iterations", "nodes", "items", "ns_per_item", "bytes_per_node",
              "bytes_per_connection", "build_ns", "save_ns", "load_ns", "destroy_ns")
    runs = [{key: run[key] if not isinstance(run[key], float) else float(f"{run[key]:.5g}") for key in wanted
             if key in run} for row in rows.values() for run in row.values()]
    about = {key: context[key] for key in ("date", "num_cpus", "mhz_per_cpu", "caches", "load_avg") if key in context}
    with open(path, "w", encoding="utf-8") as file:
        body = ",\n".join("  " + json.dumps(run) for run in runs)
        file.write('{"context": ' + json.dumps(about) + ',\n "benchmarks": [\n' + body + "\n]}\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("json", nargs="+")
    parser.add_argument("--write", metavar="PAGE", help="put the tables between the page's two marks")
    parser.add_argument("--keep", metavar="FILE", help="write the figures alone into a small JSON file")
    arguments = parser.parse_args()
    rows, context = read(arguments.json)
    text = report(rows)
    print(text)
    if arguments.write:
        rewrite(arguments.write, text)
    if arguments.keep:
        keep(arguments.keep, rows, context)


if __name__ == "__main__":
    main()
