#!/usr/bin/env python3
"""Whether each public class has its virtual operations in one order with the compilers of all systems.

MSVC keeps overloads of one name together, where the name stands first in the class, and puts them into the
table from the last to the first; all other compilers take the operations as they are declared. Clang knows
both layouts and prints the places when something is called through a table.
"""

import argparse
import itertools
import pathlib
import re
import subprocess
import sys

TARGETS = {"Linux": "x86_64-pc-linux-gnu", "MSVC": "x86_64-pc-windows-msvc"}
FOLDERS = {"include/tav": "TAV_marlo_v1::", "kit/include/tav/kit": "TAV_marlo_v1::kit::",
           "pel_1_2/include/pel_1_2": ""}
# A template has a table for each argument, and all of them are alike.
INSTANCES = ("TAV_marlo_v1::Flaggable<TAV_marlo_v1::NodeFlags>",)

CLASS_HEAD = re.compile(r"^(template[^;{]*?>\s*)?(?:class|struct) (?:\[\[\S+\]\] |\w+_API )*(\w+)(?: final)?[^;{()]*\{",
                        re.MULTILINE)


def public_classes(source):
    """The classes that the public headers define outside of other classes, and those that could have a table."""
    names, with_table = [], set()
    for folder, namespace in FOLDERS.items():
        for header in sorted((source / folder).glob("*.h")):
            text = re.sub(r"//.*", "", header.read_text(encoding="utf-8"))
            heads = list(CLASS_HEAD.finditer(text))
            for head, following in itertools.zip_longest(heads, heads[1:]):
                if head[1]:
                    continue
                names.append(namespace + head[2])
                body = text[head.end():following.start() if following else len(text)]
                if re.search(r"\b(virtual|override)\b", body) and not re.search(r"\bfinal\b", head[0]):
                    with_table.add(namespace + head[2])
    return names + list(INSTANCES), with_table


def write_caller(source, names, work):
    """A source that calls each destructor: through the table, where the class has one."""
    lines = ["#include <tav/tav.h>", "#include <tav/kit/kit.h>"]
    lines += [f"#include <pel_1_2/{header.name}>" for header in (source / "pel_1_2/include/pel_1_2").glob("*.h")]
    lines += ["template <class T> void end(T* object) { object->~T(); }"]
    lines += [f"template void end<{name}>({name}*);" for name in names]
    caller = work / "slots.cpp"
    caller.write_text("\n".join(lines) + "\n", encoding="utf-8")
    return caller


def tables(compiler, target, source, standard, caller):
    """For each class the names of what it has in the table at its own beginning, in order of the places."""
    command = [compiler, f"--target={target}", "-std=c++17", "-nostdinc", "-isystem", standard,
               *(f"-I{source / folder}" for folder in ("include", "kit/include", "pel_1_2/include")),
               # Destructors of shared objects are protected.
               "-Xclang", "-fno-access-control", "-Xclang", "-fdump-vtable-layouts",
               "-S", "-emit-llvm", "-o", "/dev/null", caller]
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    if run.returncode != 0:
        sys.exit(f"{compiler} for {target} failed:\n{run.stderr}")
    found, entries = {}, None
    for line in run.stdout.splitlines():
        if head := re.match(r"VF?Table indices for '(.+)' \(", line):
            entries = found.setdefault(head[1], [])
        elif "accessible via" in line and "vfptr at offset 0 " not in line:
            entries = None  # a table of another base; what stands there is that base's business
        elif not line.strip():
            entries = None
        elif entries is not None and (entry := re.match(r"\s*(\d+) \| (.+)", line)):
            # One destructor has two places, or another word for the one; instances of a template are one class.
            operation = re.sub(r" \[(complete|deleting|scalar deleting|vector deleting)\]$", "", entry[2])
            operation = re.sub(r" \[E = .*\]$", "", re.sub(r"Flaggable<[^>]*>", "Flaggable", operation))
            entries.append((int(entry[1]), operation))
    return {name: list(dict.fromkeys(text for _, text in sorted(entries))) for name, entries in found.items()}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--compiler", default="clang++")
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--standard", type=pathlib.Path, required=True, help="a folder: the stand-in")
    parser.add_argument("--work", type=pathlib.Path, required=True)
    given = parser.parse_args()

    names, with_table = public_classes(given.source)
    caller = write_caller(given.source, names, given.work)
    linux, msvc = (tables(given.compiler, target, given.source, given.standard, caller) for target in TARGETS.values())

    faults = [f"{name}: no table was found" for name in sorted(with_table - (linux.keys() & msvc.keys()))]
    for name in sorted(linux.keys() & msvc.keys()):
        # An override of what a further base began has a place here on Linux alone.
        here = [operation for operation in linux[name] if operation in set(msvc[name])]
        if here != msvc[name]:
            listing = "\n".join(f"    {a or '':<100} | {b or ''}" for a, b in itertools.zip_longest(here, msvc[name])
                                if a != b)
            faults.append(f"{name}: in the order of Linux | in that of MSVC\n{listing}")
    print("\n".join(faults))
    print(f"{len(msvc)} classes with a table, {len(faults)} faults")
    sys.exit(1 if faults or not msvc else 0)


if __name__ == "__main__":
    main()
