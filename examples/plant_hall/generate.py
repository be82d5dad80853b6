#!/usr/bin/env python3
"""Makes the plant hall: a survey whose truth is known.

A hall of 60 x 40 x 8 m with 26 targets, measured from 8 scanner stations. Every station has a
system of its own, turned and shifted at random, and sees only the targets near it. Each measured
coordinate carries normally distributed noise of 1 mm. One target is measured badly in one station,
and one station sees three targets only.

    python3 generate.py [FOLDER]

writes into FOLDER (the script's own folder when it isn't given):

    nxyz/S1.txt .. nxyz/S5.txt       targets as "name x y z"
    nxyzw/S6.txt .. nxyzw/S8.txt     targets as "name x y z weight"
    clouds/S1.xyz, clouds/S2.xyz     a few hundred points as "x y z intensity"
    truth.json                       what the survey was made from

Its random numbers start from a fixed place and only the standard library is used, so that every run
gives the same bytes.
"""

import json
import math
import pathlib
import random
import sys

SEED = 20240611
HALL = (60.0, 40.0, 8.0)  # metres
TARGETS = 26
NOISE = 0.001  # standard deviation of each coordinate, metres
CLOUD_NOISE = 0.002
CLOUD_POINTS = 300
CLOUD_RANGE = 18.0

# Where the scanners stood, in the hall's system, and how far each sees targets.
STATIONS = {
    "S1": ((8.0, 8.0, 1.7), 22.0),
    "S2": ((24.0, 10.0, 1.7), 22.0),
    "S3": ((42.0, 9.0, 1.8), 23.0),
    "S4": ((53.0, 20.0, 1.6), 23.0),
    "S5": ((41.0, 31.0, 1.7), 22.0),
    "S6": ((24.0, 30.0, 1.7), 22.0),
    "S7": ((8.0, 31.0, 1.8), 23.0),
    "S8": ((30.0, 20.0, 4.5), 60.0),
}
# The station on the gantry looks through a gap and sees these alone.
FEW = {"S8": 3}
WITH_WEIGHTS = ("S6", "S7", "S8")
WITH_CLOUD = ("S1", "S2")
# The target that moved while one station was measured.
BAD_STATION = "S4"
BAD_OFFSET = 0.060


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


def to_station(placement, p):
    """From the hall's system to the station's: the inverse of rotation x p + translation."""
    r, t = placement
    d = [p[i] - t[i] for i in range(3)]
    return [sum(r[k][i] * d[k] for k in range(3)) for i in range(3)]


def on_shell(rng):
    """A point on one of the hall's walls, its floor or its ceiling."""
    length, width, height = HALL
    x, y, z = rng.uniform(0, length), rng.uniform(0, width), rng.uniform(0, height)
    face = rng.choice(["west", "east", "south", "north", "floor", "floor", "ceiling"])
    return {
        "west": [0.0, y, z],
        "east": [length, y, z],
        "south": [x, 0.0, z],
        "north": [x, width, z],
        "floor": [x, y, 0.0],
        "ceiling": [x, y, height],
    }[face]


def make_targets(rng):
    """Targets on columns, walls and machines, at least 5 m from one another."""
    targets = {}
    while len(targets) < TARGETS:
        p = [rng.uniform(1, HALL[0] - 1), rng.uniform(1, HALL[1] - 1), rng.uniform(0.4, HALL[2] - 0.6)]
        if all(math.dist(p, q) >= 5.0 for q in targets.values()):
            targets[f"T{len(targets) + 1:02d}"] = [round(v, 4) for v in p]
    return targets


def visible_targets(station, targets):
    """Names of the targets in the station's reach, nearest alone where it sees few."""
    place, reach = STATIONS[station]
    near = sorted((math.dist(place, p), name) for name, p in targets.items() if math.dist(place, p) <= reach)
    return sorted(name for _, name in near[: FEW.get(station)])


def choose_bad_target(seen):
    """The target of the bad station that most stations see: the others outvote the bad measurement."""
    return max(seen[BAD_STATION], key=lambda name: (sum(name in names for names in seen.values()), name))


def measured(rng, placement, p, noise):
    return [v + rng.gauss(0.0, noise) for v in to_station(placement, p)]


def write_lines(path, lines):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("".join(line + "\n" for line in lines), encoding="ascii", newline="\n")


def write_targets(folder, rng, station, placement, names, targets, bad):
    lines = []
    for name in names:
        p = measured(rng, placement, targets[name], NOISE)
        if (station, name) == bad["measurement"]:
            p = [v + o for v, o in zip(p, bad["offset"])]
        fields = [name] + [f"{v:.4f}" for v in p]
        if station in WITH_WEIGHTS:
            far = math.dist(STATIONS[station][0], targets[name]) > 18.0
            fields.append("0.5" if far else "1")
        lines.append(" ".join(fields))
    layout = "nxyzw" if station in WITH_WEIGHTS else "nxyz"
    write_lines(folder / layout / f"{station}.txt", lines)


def write_cloud(folder, rng, station, placement):
    lines = []
    while len(lines) < CLOUD_POINTS:
        p = on_shell(rng)
        distance = math.dist(p, STATIONS[station][0])
        if distance > CLOUD_RANGE:
            continue
        x, y, z = measured(rng, placement, p, CLOUD_NOISE)
        lines.append(f"{x:.4f} {y:.4f} {z:.4f} {max(1, round(255 - 12 * distance))}")
    write_lines(folder / "clouds" / f"{station}.xyz", lines)


def write_truth(folder, placements, targets, seen, bad):
    station, name = bad["measurement"]
    truth = {
        "units": "metres",
        "noise": NOISE,
        "direction": "rotation x p + translation takes a point p of the station to the hall's system",
        "stations": {
            s: {"rotation": placements[s][0], "translation": placements[s][1], "targets": seen[s]} for s in STATIONS
        },
        "targets": targets,
        "bad": {"station": station, "target": name, "offset": bad["offset"], "distance": BAD_OFFSET},
    }
    (folder / "truth.json").write_text(json.dumps(truth, indent=1) + "\n", encoding="ascii", newline="\n")


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent
    rng = random.Random(SEED)
    targets = make_targets(rng)
    placements = {s: (random_rotation(rng), [round(rng.uniform(-100, 100), 3) for _ in range(3)]) for s in STATIONS}
    seen = {s: visible_targets(s, targets) for s in STATIONS}

    direction = [rng.gauss(0.0, 1.0) for _ in range(3)]
    length = math.hypot(*direction)
    bad = {
        "measurement": (BAD_STATION, choose_bad_target(seen)),
        "offset": [BAD_OFFSET * v / length for v in direction],
    }
    for station in STATIONS:
        write_targets(folder, rng, station, placements[station], seen[station], targets, bad)
    for station in WITH_CLOUD:
        write_cloud(folder, rng, station, placements[station])
    write_truth(folder, placements, targets, seen, bad)


if __name__ == "__main__":
    main()
