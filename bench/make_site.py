#!/usr/bin/env python3
"""Makes the stations of a large site, one text file each, to measure the whole command on.

    bench/make_site.py KIND STATIONS FOLDER [--unnamed]

grid:  a level square of stations 20 m apart. Each sees 20 targets: five on every border to a
       neighbour, which both see; where there is no neighbour, five that nobody else sees.
field: a level square of stations 20 m apart in a field of targets, of which each sees the 20 nearest:
       those beside it share about ten with it, those across a corner about six.
pairs: every two stations share their 20 targets with one another and none with any other, so that
       the site falls into as many parts as there are pairs.

Each station turns and shifts the site and adds 1 mm of noise. The same arguments give the same bytes.
Files are called S00001.txt and so on: "name x y z" in metres, or "x y z" with --unnamed.
"""
import argparse
import math
import pathlib
import random

SPACING = 20.0
TARGETS_PER_BORDER = 5
TARGETS_PER_CELL = 4
TARGETS_PER_STATION = 20
# So many cells about a station's hold the targets nearest to it.
MARGIN = 2
BORDERS = ((1, 0), (0, 1), (-1, 0), (0, -1))
NOISE = 0.001
SEED = 20262


def border_targets(rng, cell, step):
    """Positions about the middle of a border, which no plane holds."""
    middle = [SPACING * (c + s / 2.0) for c, s in zip(cell, step)]
    return [(middle[0] + rng.uniform(-8.0, 8.0), middle[1] + rng.uniform(-8.0, 8.0), rng.uniform(-3.0, 9.0))
            for _ in range(TARGETS_PER_BORDER)]


def grid(rng, count):
    """For each station its cell and its targets, as pairs of a name and a position."""
    width = math.isqrt(count - 1) + 1
    cells = [(i % width, i // width) for i in range(count)]
    taken = set(cells)
    targets, numbers = {}, 0

    def side(cell, step):
        nonlocal numbers
        neighbour = (cell[0] + step[0], cell[1] + step[1])
        key = frozenset((cell, neighbour)) if neighbour in taken else (cell, step)
        if key not in targets:
            targets[key] = [(f"T{numbers + k}", p) for k, p in enumerate(border_targets(rng, cell, step))]
            numbers += TARGETS_PER_BORDER
        return targets[key]

    for cell in cells:
        yield cell, [target for step in BORDERS for target in side(cell, step)]


def field(rng, count):
    """As grid. The targets reach two cells beyond the stations."""
    width = math.isqrt(count - 1) + 1
    by_cell = {}
    for column in range(-MARGIN, width + MARGIN):
        for row in range(-MARGIN, width + MARGIN):
            by_cell[column, row] = [
                (f"T{column + MARGIN}.{row + MARGIN}.{k}",
                 (SPACING * (column + rng.uniform(-0.5, 0.5)), SPACING * (row + rng.uniform(-0.5, 0.5)),
                  rng.uniform(-3.0, 9.0))) for k in range(TARGETS_PER_CELL)]
    for number in range(count):
        cell = (number % width, number // width)
        near = [target for dx in range(-MARGIN, MARGIN + 1) for dy in range(-MARGIN, MARGIN + 1)
                for target in by_cell[cell[0] + dx, cell[1] + dy]]
        near.sort(key=lambda target: math.dist(target[1][:2], (SPACING * cell[0], SPACING * cell[1])))
        yield cell, near[:TARGETS_PER_STATION]


def pairs(rng, count):
    """As grid; both stations of a pair stand in one cell."""
    for first in range(0, count, 2):
        cell = (first // 2, 0)
        targets = [target for step in BORDERS for target in border_targets(rng, cell, step)]
        named = [(f"T{first * 10 + k}", p) for k, p in enumerate(targets)]
        for _ in range(min(2, count - first)):
            yield cell, named


def measured(rng, cell, targets):
    """The targets from a level instrument at the cell's middle, in an order of its own."""
    turn = rng.uniform(0.0, 2.0 * math.pi)
    c, s = math.cos(turn), math.sin(turn)
    rows = []
    for name, (x, y, z) in targets:
        dx, dy = x - SPACING * cell[0], y - SPACING * cell[1]
        here = (c * dx - s * dy, s * dx + c * dy, z - 1.7)
        rows.append((name, *(value + rng.gauss(0.0, NOISE) for value in here)))
    rng.shuffle(rows)
    return rows


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("kind", choices=("grid", "field", "pairs"))
    parser.add_argument("stations", type=int)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--unnamed", action="store_true")
    options = parser.parse_args()

    options.folder.mkdir(parents=True, exist_ok=True)
    layout, noise = random.Random(SEED), random.Random(SEED + 1)
    stations = {"grid": grid, "field": field, "pairs": pairs}[options.kind](layout, options.stations)
    for number, (cell, targets) in enumerate(stations, 1):
        rows = measured(noise, cell, targets)
        lines = (f"{'' if options.unnamed else name + ' '}{x:.4f} {y:.4f} {z:.4f}\n" for name, x, y, z in rows)
        (options.folder / f"S{number:05}.txt").write_text("".join(lines), newline="\n")


if __name__ == "__main__":
    main()
