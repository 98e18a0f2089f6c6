# SPDX-License-Identifier: GPL-3.0-or-later
"""Figures and the one table they are printed in."""

import dataclasses
import statistics

HEAD = ("name", "median", "min–max", "unit", "target", "note")


@dataclasses.dataclass
class Figure:
    """Values of one thing in one unit, and the most that they should be; no target: told for comparison."""

    name: str
    values: list
    unit: str
    target: float | None = None
    note: str = ""

    @property
    def median(self):
        return statistics.median(self.values)

    @property
    def kept(self):
        return self.target is None or self.median <= self.target

    def row(self):
        target = "" if self.target is None else f"≤ {self.target:.3g}" + ("" if self.kept else " missed")
        return (self.name, number(self.median), f"{number(min(self.values))}–{number(max(self.values))}", self.unit, target,
                self.note)


def number(value):
    if abs(value) >= 100:
        return f"{value:.0f}"
    return f"{value:.1f}" if abs(value) >= 10 else f"{value:.2f}"


def milliseconds(name, seconds, target=None, note=""):
    return Figure(name, [value * 1000 for value in seconds], "ms", target, note)


def ratio(name, ours, theirs, target=None, note=""):
    """Run by run."""
    return Figure(name, [a / b for a, b in zip(ours, theirs) if b > 0], "ratio", target, note)


def text(figures):
    """The table in Markdown, set so that it reads as plain text."""
    rows = [HEAD, *(figure.row() for figure in figures)]
    widths = [max(len(row[column]) for row in rows) for column in range(len(HEAD))]
    lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip() + " |" for row in rows]
    lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
    return "\n".join(lines)
