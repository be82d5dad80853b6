#!/usr/bin/env python3
"""Makes the hall without names: a survey whose targets bear none, and whose truth is known.

A hall of 60 x 60 x 8 m, measured from 6 scanner stations one after another. Every station has a
system of its own, turned and shifted at random, and writes its targets in an order of its own, as
x y z without a name. Each coordinate carries normally distributed noise of 2 mm. Half of a station's
targets are seen by the next one too.

    python3 generate.py [FOLDER]

writes S1.txt .. S6.txt and truth.json into FOLDER (the script's own folder when it isn't given).

Its random numbers start from a fixed place and only the standard library is used, so that every run
gives the same bytes.
"""

import json
import math
import pathlib
import random
import sys

START = 20261121
HALL = (60.0, 60.0, 8.0)  # metres
NOISE = 0.002  # standard deviation of each coordinate, metres
COUNTS = {"S1": 16, "S2": 20, "S3": 14, "S4": 18, "S5": 22, "S6": 15}


def random_rotation(rng):
    """A rotation matrix, uniformly distributed: from a normalised quaternion of four normal values."""
    w, x, y, z = (rng.gauss(0.0, 1.0) for _ in range(4))
    n = math.sqrt(w * w + x * x + y * y + z * z)
    w, x, y, z = w / n, x / n, y / n, z / n
    return [
        [1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y)],
        [2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x)],
        [2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y)],
    ]


def seen_targets(rng):
    """The places of all targets, and which each station sees, in the order of its file."""
    targets, seen, shared = [], {}, []
    names = list(COUNTS)
    for name, following in zip(names, names[1:] + [None]):
        own = list(shared)
        while len(own) < COUNTS[name]:
            own.append(len(targets))
            targets.append([rng.uniform(0.0, size) for size in HALL])
        rng.shuffle(own)
        seen[name] = own
        if following:
            shared = rng.sample(own, min(COUNTS[name], COUNTS[following]) // 2)
    return targets, seen


def measure(rng, target, rotation, translation):
    """Where the station has the target: the hall's place is rotation times that plus translation."""
    centred = [target[k] - translation[k] for k in range(3)]
    return [
        sum(rotation[row][column] * centred[row] for row in range(3)) + rng.gauss(0.0, NOISE) for column in range(3)
    ]


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent
    rng = random.Random(START)
    targets, seen = seen_targets(rng)
    truth = {"noise": NOISE, "targets": targets, "stations": {}}
    for name, own in seen.items():
        rotation = random_rotation(rng)
        translation = [rng.uniform(-200.0, 200.0) for _ in range(3)]
        lines = ["%.4f %.4f %.4f\n" % tuple(measure(rng, targets[k], rotation, translation)) for k in own]
        (folder / f"{name}.txt").write_text("".join(lines), encoding="ascii", newline="\n")
        truth["stations"][name] = {"rotation": rotation, "translation": translation, "targets": own}
    (folder / "truth.json").write_text(json.dumps(truth, indent=1) + "\n", encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()
