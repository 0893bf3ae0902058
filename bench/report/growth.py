"""How the cost of a row grows with its size, and whether that is what its class allows.

The exponent is that of the whole work: 1 is linear, an item costs the same at every size; 2 is quadratic. What
is judged is the growth from the smallest to the largest size. Whatever goes through much memory gets dearer with the
size on any machine, so a row may grow by as much more as the yardstick that goes through memory as it does.
"""

import math
from dataclasses import dataclass
from typing import Optional

from rows import JUDGED, LOGARITHMIC

# For noise, and for touching more memory than the yardstick does.
ALLOWANCE = 0.20
# Near 1.5 the square root of the size is in the cost of an item, whatever the yardstick does.
NEVER = 1.44


def exponent(small, large, cost_at_small, cost_at_large):
    return 1 + math.log(cost_at_large / cost_at_small) / math.log(large / small)


def growth(figures, name, key, sizes):
    """From the smallest to the largest of the sizes that there are; None without two of them."""
    found = [size for size in sizes if figures.get(name, size, key)]
    if len(found) < 2:
        return None
    small, large = found[0], found[-1]
    return exponent(small, large, figures.get(name, small, key), figures.get(name, large, key))


def steps(figures, name, key, sizes):
    """From each size to the next."""
    found = [growth(figures, name, key, pair) for pair in zip(sizes, sizes[1:])]
    return [step for step in found if step is not None]


def of_class(kind, small, large):
    return exponent(small, large, math.log(small), math.log(large)) if kind == LOGARITHMIC else 1.0


@dataclass(frozen=True)
class Verdict:
    row: object
    measured: Optional[float]  # None: there are no figures
    limit: float = 0.0

    @property
    def good(self):
        return self.measured is not None and self.measured <= self.limit

    def __str__(self):
        if self.measured is None:
            return f"{self.row.name}: not measured"
        return (f"{self.row.name}{'' if self.row.key == 'ns_per_item' else ', ' + self.row.title}: grows with exponent "
                f"{self.measured:.2f}, and {self.limit:.2f} is the most for {self.row.growth} per item")


def judge(figures, rows=JUDGED, largest=100000):
    """A verdict for each row."""
    def sizes_of(name):
        return [size for size in figures.sizes(name) if size <= largest]

    verdicts = []
    for row in rows:
        sizes = sizes_of(row.name)
        measured = growth(figures, row.name, row.key, sizes)
        if measured is None:
            verdicts.append(Verdict(row, None))
            continue
        plain = row.reference()
        memory = growth(figures, plain, "ns_per_item", sizes_of(plain)) if plain else None
        limit = of_class(row.growth, sizes[0], sizes[-1]) + max(0.0, (memory or 1.0) - 1.0) + ALLOWANCE
        verdicts.append(Verdict(row, measured, min(limit, NEVER)))
    return verdicts
