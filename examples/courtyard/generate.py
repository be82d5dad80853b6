#!/usr/bin/env python3
"""Makes the courtyard: two stations whose six targets look the same from either end.

The targets hang at the corners and in the middle of the long walls of a yard of 24 x 14 m, all at one
height, so that the yard turned by half a circle is the same yard. Each coordinate carries normally
distributed noise of 2 mm.

    python3 generate.py [FOLDER]

writes east.txt and west.txt into FOLDER (the script's own folder when it isn't given). Every run gives
the same bytes.
"""

import math
import pathlib
import random
import sys

START = 6
NOISE = 0.002  # standard deviation of each coordinate, metres
TARGETS = [(0.0, 0.0), (12.0, 0.0), (24.0, 0.0), (24.0, 14.0), (12.0, 14.0), (0.0, 14.0)]
HEIGHT = 2.5
# Where the stations stood, and how far their systems are turned, degrees.
STATIONS = {"east": ((19.0, 6.0, 1.6), 35.0), "west": ((4.0, 8.0, 1.7), 211.0)}


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent
    rng = random.Random(START)
    for name, ((x0, y0, z0), degrees) in STATIONS.items():
        cosine, sine = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
        order = list(TARGETS)
        rng.shuffle(order)
        lines = []
        for x, y in order:
            dx, dy = x - x0, y - y0
            place = (cosine * dx + sine * dy, cosine * dy - sine * dx, HEIGHT - z0)
            lines.append("%.4f %.4f %.4f\n" % tuple(c + rng.gauss(0.0, NOISE) for c in place))
        (folder / f"{name}.txt").write_text("".join(lines), encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()
