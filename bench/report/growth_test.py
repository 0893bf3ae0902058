"""What the judge of the growth lets pass and what not, over made-up figures."""

import json
import math
import os
import tempfile
import unittest

import figures
import growth
from rows import CONSTANT, LOGARITHMIC, Row

SIZES = (1000, 10000, 100000)


def file_of(**costs):
    """A JSON file as the program writes it; the costs are functions of the size."""
    runs = [{"name": f"{name}/{size}/iterations:2/manual_time", "run_type": "iteration", "size": float(size),
             "ns_per_item": cost(size), "peak": 2.0} for name, cost in costs.items() for size in SIZES]
    with tempfile.NamedTemporaryFile("w", suffix=".json", delete=False) as file:
        json.dump({"context": {"date": "2001-01-01"}, "benchmarks": runs}, file)
    return file.name


class GrowthTest(unittest.TestCase):
    def setUp(self):
        self.files = []

    def tearDown(self):
        for file in self.files:
            os.unlink(file)

    def read(self, *measured):
        self.files += [file_of(**costs) for costs in measured]
        return figures.read(self.files)

    def passes(self, cost, kind=CONSTANT, yardstick=None):
        row = Row("row", "a row", growth=kind, beside="plain" if yardstick else None)
        measured = self.read({"row": cost, **({"plain": yardstick} if yardstick else {})})
        return growth.judge(measured, [row])[0].good

    def test_constant_per_item_passes_with_noise(self):
        self.assertTrue(self.passes(lambda size: 100))
        self.assertTrue(self.passes(lambda size: 100 if size < 100000 else 190))
        self.assertTrue(self.passes(lambda size: 100 if size < 100000 else 40))

    def test_quadratic_work_fails_in_every_class(self):
        for kind in (CONSTANT, LOGARITHMIC):
            self.assertFalse(self.passes(lambda size: size / 10, kind))
            self.assertFalse(self.passes(lambda size: 100 + size / 20, kind, yardstick=lambda size: 50))

    def test_root_of_the_size_fails_whatever_the_memory_does(self):
        def root(size):
            return 10 * math.sqrt(size)
        for kind in (CONSTANT, LOGARITHMIC):
            self.assertFalse(self.passes(root, kind))
            self.assertFalse(self.passes(root, kind, yardstick=lambda size: 10 * size ** 0.45))

    def test_logarithm_is_a_class_of_its_own(self):
        def noisy(size):
            return 10 * math.log(size) * (2.2 if size == 100000 else 1)
        self.assertTrue(self.passes(noisy, LOGARITHMIC))
        self.assertFalse(self.passes(noisy, CONSTANT))

    def test_what_memory_costs_plain_structs_is_allowed(self):
        def cold(size):
            return 100 if size < 100000 else 350
        self.assertFalse(self.passes(cold))
        self.assertTrue(self.passes(cold, yardstick=lambda size: 50 if size < 100000 else 120))

    def test_the_best_of_several_runs_counts(self):
        measured = self.read({"row": lambda size: size}, {"row": lambda size: 120}, {"row": lambda size: 125})
        self.assertEqual(measured.get("row", 100000), 120)
        self.assertTrue(growth.judge(measured, [Row("row", "a row")])[0].good)

    def test_other_figures_than_time_are_judged_by_their_key(self):
        measured = self.read({"row": lambda size: size})
        self.assertTrue(growth.judge(measured, [Row("row", "a row", key="peak")])[0].good)

    def test_a_row_without_figures_fails_and_is_named(self):
        verdict = growth.judge(self.read({"row": lambda size: 1}), [Row("renamed", "a row")])[0]
        self.assertFalse(verdict.good)
        self.assertEqual(str(verdict), "renamed: not measured")

    def test_a_failure_names_row_exponent_and_class(self):
        verdict = growth.judge(self.read({"row": lambda size: size}), [Row("row", "a row")])[0]
        self.assertEqual(str(verdict), "row: grows with exponent 2.00, and 1.20 is the most for constant per item")

    def test_kept_figures_are_read_again_and_the_newest_are_the_last(self):
        with tempfile.TemporaryDirectory() as folder:
            older, newer = os.path.join(folder, "z.json"), os.path.join(folder, "a.json")
            measured = self.read({"row": lambda size: size / 3})
            measured.keep(older)
            measured.context["date"] = "2002-01-01"
            measured.keep(newer)
            path, kept = figures.last_kept(folder)
            self.assertEqual(path, newer)
            self.assertAlmostEqual(kept.get("row", 1000), 1000 / 3, places=1)


if __name__ == "__main__":
    unittest.main()
