"""The measured figures: read from the JSON of bench_tav, the least of all runs, and kept as a small file."""

import glob
import json
import os

# What Google Benchmark adds to each run and nobody reads here.
NOISE = {"family_index", "per_family_instance_index", "run_name", "run_type", "repetitions", "repetition_index",
         "threads", "iterations", "real_time", "cpu_time", "time_unit", "name"}


class Figures:
    def __init__(self):
        self.runs = {}  # {row: {size: {key: figure}}}
        self.context = {}

    def add(self, path):
        """Takes the file's runs in; of several runs of a row at one size the least of each figure counts."""
        with open(path, encoding="utf-8") as file:
            data = json.load(file)
        self.context = data["context"]
        for run in data["benchmarks"]:
            if run.get("run_type", "iteration") != "iteration" or "ns_per_item" not in run:
                continue
            sizes = self.runs.setdefault(run["name"].split("/")[0], {})
            size = int(run["size"])
            known = sizes.setdefault(size, {})
            for key in run.keys() - NOISE:
                known[key] = min(run[key], known.get(key, run[key]))

    def sizes(self, name):
        return sorted(self.runs.get(name, {}))

    def get(self, name, size, key="ns_per_item"):
        return self.runs.get(name, {}).get(size, {}).get(key)

    def keep(self, path):
        """The figures alone, in the form that add() takes."""
        runs = [{"name": name, **{key: float(f"{figure:.5g}") for key, figure in sorted(run.items())}}
                for name, sizes in sorted(self.runs.items()) for _, run in sorted(sizes.items())]
        about = {key: self.context[key] for key in ("date", "num_cpus", "mhz_per_cpu", "caches") if key in self.context}
        with open(path, "w", encoding="utf-8") as file:
            body = ",\n".join("  " + json.dumps(run) for run in runs)
            file.write('{"context": ' + json.dumps(about) + ',\n "benchmarks": [\n' + body + "\n]}\n")


def read(paths):
    figures = Figures()
    for path in paths:
        figures.add(path)
    return figures


def last_kept(folder):
    """The newest kept file and its figures; (None, None) when there is none."""
    kept = [(figures.context.get("date", ""), path, figures)
            for path in sorted(glob.glob(os.path.join(folder, "*.json"))) for figures in [read([path])]]
    return max(kept, key=lambda entry: entry[0])[1:] if kept else (None, None)
