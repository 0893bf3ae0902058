"""The tables, as Markdown: what the console shows and what stands in docs/performance.md."""

import growth
from rows import (BY_HUNDREDS, BY_TENS, EDITOR_AIM, FEW, LIFECYCLE, MANY, MEMORY, NODES, SESSION, START, kind_of)

AT = 100000  # where aims, yardsticks and earlier figures are compared; below it the largest size that there is


def text_of(value):
    if value is None:
        return ""
    return f"{value:,.0f}" if value >= 99.5 else f"{value:.3g}"


def at(figures, name, key="ns_per_item"):
    sizes = [size for size in figures.sizes(name) if size <= AT]
    return figures.get(name, sizes[-1], key) if sizes else None


def ratio(a, b):
    return a / b if a and b else None


def aim_of(row, figures):
    if isinstance(row.aim, str):
        base = at(figures, row.aim)
        return base + EDITOR_AIM if base else None
    return row.aim


def change(row, figures, kept):
    """In per cent against the kept figures."""
    factor = ratio(at(figures, row.name, row.key), at(kept, row.name, row.key))
    return f"{100 * (factor - 1):+.0f} %" if factor else ""


def steps_of(figures, name, key, sizes):
    return " ".join(f"{step:.2f}" for step in growth.steps(figures, name, key, sizes))


def yardstick_cells(row, figures, sizes):
    if not row.yardstick:
        return ["", "", ""]
    share = ratio(at(figures, row.name), at(figures, row.yardstick))
    wanted = f" (aim {row.share})" if row.share else ""
    return [f"{text_of(at(figures, row.yardstick))}, {kind_of(row.yardstick)}",
            steps_of(figures, row.yardstick, "ns_per_item", sizes),
            (f"{share:.2f}" if share else "") + wanted]


def table(head, rows, sizes, figures, kept=None, aims=True, yardsticks=True):
    """One line a row. @param kept: earlier figures to compare with"""
    columns = [head] + [f"{size:,}" for size in sizes] + ["growth"]
    layout = "|---|" + "--:|" * len(sizes) + "---|"
    for wanted, names, lines in ((aims, ["aim"], "--:|"),
                                 (yardsticks, ["yardstick", "its growth", "share of it"], "--:|---|--:|"),
                                 (kept, ["change"], "--:|")):
        if wanted:
            columns += names
            layout += lines
    lines = ["| " + " | ".join(columns) + " |", layout]
    for row in rows:
        if not figures.sizes(row.name):
            continue
        cells = [row.title, *(text_of(figures.get(row.name, size, row.key)) for size in sizes),
                 steps_of(figures, row.name, row.key, sizes)]
        cells += [text_of(aim_of(row, figures))] if aims else []
        cells += yardstick_cells(row, figures, sizes) if yardsticks else []
        cells += [change(row, figures, kept)] if kept else []
        lines.append("| " + " | ".join(cells) + " |")
    return lines if len(lines) > 2 else []


def start_table(figures):
    if not figures.sizes("start"):
        return []
    lines = ["| starting a process | ms |", "|---|--:|"]
    lines += [f"| {title} | {text_of(at(figures, 'start', key))} |" for key, title in START]
    lines.append(f"| of that, from `main` to the graph | {at(figures, 'start', 'main_to_graph_ns') / 1e6:.3f} |")
    return lines


def report(figures, kept=None):
    def plain(head, rows, **more):
        return table(head, rows, BY_HUNDREDS, figures, kept, yardsticks=False, **more)

    tables = (
        table("ns for an item at N =", NODES, BY_HUNDREDS, figures, kept),
        table("ns for an item at N =", MANY, BY_HUNDREDS, figures, kept, aims=False),
        table("ns for an item at N =", FEW, BY_TENS, figures, kept, aims=False),
        plain("ns for an item, in a session at N =", SESSION, aims=False),
        plain("ns a node, from the first to the last, at N =", LIFECYCLE, aims=False),
        plain("memory at N =", MEMORY),
        start_table(figures),
    )
    return "\n\n".join("\n".join(lines) for lines in tables if lines)
