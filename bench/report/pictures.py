"""The growth as pictures, drawn by gnuplot: cost of an item over the size, a line a row, its yardstick dashed."""

import os
import shutil
import subprocess

from rows import FEW, MANY, NODES

PICTURES = (
    ("editing", "Editing"),
    ("finding", "Finding"),
    ("text", "Text"),
    ("commands", "Commands"),
)
COLOURS = ("#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00", "#56b4e9", "#7f3fbf", "#8c564b", "#444444", "#b0a000")


def points(figures, name):
    return "\n".join(f"{size} {figures.get(name, size)}" for size in figures.sizes(name))


def script(title, rows, figures, path):
    """What gnuplot is told."""
    data, curves = [], []
    for colour, row in zip(COLOURS, rows):
        for name, dash, width, label in ((row.name, 1, 2.2, row.name), (row.yardstick, 2, 1.4, "")):
            if not name or not figures.sizes(name):
                continue
            block = f"$data{len(data)}"
            data.append(f"{block} << END\n{points(figures, name)}\nEND")
            key = f'title "{label}"' if label else "notitle"
            mark = "pt 7 ps 0.5" if label else "pt 6 ps 0.4"
            curves.append(f'{block} with linespoints lc rgb "{colour}" dt {dash} lw {width} {mark} {key}')
    if any(row.yardstick for row in rows):
        curves.append('NaN with lines lc rgb "black" dt 2 lw 1.4 title "dashed: its yardstick"')
    return "\n".join([
        'set terminal svg size 860,460 font "sans-serif,13" background "white"',
        f'set output "{path}"',
        f'set title "{title}: the time of one item, by the size of the graph"',
        "set logscale xy",
        'set xtics ("1,000" 1e3, "10,000" 1e4, "100,000" 1e5, "1,000,000" 1e6)',
        'set ytics ("1 ns" 1, "10 ns" 10, "100 ns" 1e2, "1 µs" 1e3, "10 µs" 1e4, "100 µs" 1e5)',
        "set xrange [800:1300000]",
        "set grid back lc rgb '#dddddd' lt 1",
        "set border 3",
        "set tics nomirror",
        "set rmargin at screen 0.66",
        "set key at screen 0.68, screen 0.5 left center Left reverse spacing 1.35 samplen 2.5",
        *data,
        "plot " + ", \\\n     ".join(curves),
    ]) + "\n"


def draw(figures, folder):
    if not shutil.which("gnuplot"):
        raise SystemExit("the pictures need gnuplot")
    for name, title in PICTURES:
        rows = [row for row in NODES + MANY + FEW if row.picture == name and figures.sizes(row.name)]
        path = os.path.join(folder, f"growth-{name}.svg")
        if rows:
            subprocess.run(["gnuplot"], input=script(title, rows, figures, path), text=True, check=True)
