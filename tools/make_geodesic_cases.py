#!/usr/bin/env python3
"""Write the inverse-geodesic test cases under tests/data/.

Each case is a pair of points and the independent solution of the inverse
problem computed by GeographicLib's GeodSolve (used only as an oracle; the
build and the tests do not need it):

    GeodSolve -i -p 9 -f                 (WGS 84)
    GeodSolve -e 6371000 0 -i -p 9 -f    (sphere of radius 6371 km)

of whose output lines (lat1 lon1 azi1 lat2 lon2 azi2 s12 a12 m12 M12 M21 S12)
azi1, azi2, s12 and the reduced length m12 are kept; m12 tells how far the
far end moves when an azimuth turns, which is what an azimuth near an
antipode or on a very short line can be held to.

Inputs are written with a fixed number of decimals (more where the points are
close to each other or to an antipode or pole); correctly rounded readers,
such as strtod and GeodSolve's, turn each into the same double.  The cases mix
random pairs, nearly antipodal pairs (including pairs symmetric about the
equator), points on the equator, at and near the poles, coincident points,
short lines down to 0.1 mm, meridians, the antimeridian and longitudes far
outside -180..180.  The seed is fixed, so the files are reproducible.

Usage: tools/make_geodesic_cases.py [output directory, default tests/data]
Python 3 standard library and GeodSolve on the PATH.
"""

import math
import os
import random
import subprocess
import sys

WGS84 = ("geodesic_inverse_wgs84.txt", ["GeodSolve", "-i", "-p", "9", "-f"], 10000)
SPHERE = ("geodesic_inverse_sphere.txt", ["GeodSolve", "-e", "6371000", "0", "-i", "-p", "9", "-f"],
          2000)


def decimal(x, places):
    """x with at most `places` decimals, trailing zeros dropped."""
    text = ("%.*f" % (places, x)).rstrip("0").rstrip(".")
    return "0" if text in ("", "-0") else text


def clamp_lat(lat):
    return max(-90.0, min(90.0, lat))


def random_lat(rng):
    return math.degrees(math.asin(rng.uniform(-1.0, 1.0)))


def log_uniform(rng, lo_exp, hi_exp):
    return 10.0 ** rng.uniform(lo_exp, hi_exp) * rng.choice((-1.0, 1.0))


def cases(rng, total):
    """(lat1, lon1, lat2, lon2) strings; category sizes scale with total."""
    out = []

    def add(lat1, lon1, lat2, lon2, places=6):
        out.append((decimal(clamp_lat(lat1), places), decimal(lon1, places),
                    decimal(clamp_lat(lat2), places), decimal(lon2, places)))

    def share(fraction):
        return int(round(total * fraction))

    for _ in range(share(0.30)):  # anywhere
        add(random_lat(rng), rng.uniform(-180, 180), random_lat(rng), rng.uniform(-180, 180))
    for _ in range(share(0.03)):  # longitudes far outside -180..180
        add(random_lat(rng), rng.uniform(-1000, 1000), random_lat(rng), rng.uniform(-1000, 1000))
    for i in range(share(0.20)):  # nearly antipodal
        lat1 = random_lat(rng) if i % 10 else 0.0
        lon1 = rng.uniform(-180, 180)
        dlat = 0.0 if i % 5 == 1 else log_uniform(rng, -6, 0.3)
        dlon = log_uniform(rng, -6, 0.3) if i % 7 else 0.0
        add(lat1, lon1, -lat1 + dlat, lon1 + 180 - abs(dlon), places=9)
    for i in range(share(0.08)):  # both on the equator, often beyond (1 - f) 180
        lon1 = rng.uniform(-180, 180)
        lon12 = 180 - 10.0 ** rng.uniform(-6, 0.5) if i % 2 else rng.uniform(0, 180)
        add(0.0, lon1, 0.0, lon1 + rng.choice((-1, 1)) * lon12, places=9)
    for _ in range(share(0.02)):  # one point on the equator
        add(0.0, rng.uniform(-180, 180), random_lat(rng), rng.uniform(-180, 180))
    for i in range(share(0.05)):  # on the poles
        pole = rng.choice((-90.0, 90.0))
        lon1 = rng.uniform(-180, 180)
        if i % 4 == 0:
            add(pole, lon1, rng.choice((-90.0, 90.0)), rng.uniform(-180, 180))
        elif i % 4 == 1:
            add(random_lat(rng), rng.uniform(-180, 180), pole, lon1)
        else:
            add(pole, lon1, random_lat(rng), rng.uniform(-180, 180))
    for _ in range(share(0.03)):  # coincident points
        lat, lon = random_lat(rng), rng.uniform(-180, 180)
        add(lat, lon, lat, lon)
    for _ in range(share(0.15)):  # short lines, 0.1 mm to 10 km
        lat1, lon1 = random_lat(rng), rng.uniform(-180, 180)
        add(lat1, lon1, lat1 + log_uniform(rng, -9, -1), lon1 + log_uniform(rng, -9, -1), places=13)
    for _ in range(share(0.06)):  # on one meridian or on opposite meridians
        lon1 = rng.uniform(-180, 180)
        add(random_lat(rng), lon1, random_lat(rng), lon1 + rng.choice((0, 180, -180)))
    for _ in range(share(0.04)):  # near the poles
        lat1 = rng.choice((-1, 1)) * (90 - 10.0 ** rng.uniform(-8, -1))
        lat2 = rng.choice((-1, 1)) * (90 - 10.0 ** rng.uniform(-8, -1)) if rng.random() < 0.5 \
            else random_lat(rng)
        add(lat1, rng.uniform(-180, 180), lat2, rng.uniform(-180, 180), places=10)
    while len(out) < total:  # across the antimeridian
        add(random_lat(rng), 180 - 10.0 ** rng.uniform(-7, 0), random_lat(rng),
            -180 + 10.0 ** rng.uniform(-7, 0), places=9)
    rng.shuffle(out)
    return out[:total]


def write(directory, name, command, total, seed):
    rng = random.Random(seed)
    pairs = cases(rng, total)
    text = "".join(" ".join(p) + "\n" for p in pairs)
    result = subprocess.run(command, input=text, capture_output=True, text=True, check=True)
    answers = [line.split() for line in result.stdout.splitlines()]
    if len(answers) != len(pairs):
        sys.exit("GeodSolve answered %d of %d cases" % (len(answers), len(pairs)))
    path = os.path.join(directory, name)
    with open(path, "w") as f:
        f.write("# Inverse geodesic problem: lat1 lon1 lat2 lon2 (degrees) azi1 azi2 (degrees,\n")
        f.write("# azi2 forward at point 2) s12 m12 (metres, m12 the reduced length).\n")
        f.write("# Written by tools/make_geodesic_cases.py (seed %d); the last four columns"
                " are\n" % seed)
        f.write("# fields 3, 6, 7 and 9 of the output of: %s\n" % " ".join(command))
        for p, answer in zip(pairs, answers):
            f.write(" ".join(p + (answer[2], answer[5], answer[6], answer[8])) + "\n")
    print("%s: %d cases" % (path, len(pairs)))


def main():
    directory = sys.argv[1] if len(sys.argv) > 1 else os.path.normpath(os.path.join(
        os.path.dirname(os.path.abspath(__file__)), "..", "tests", "data"))
    os.makedirs(directory, exist_ok=True)
    write(directory, *WGS84, seed=20130601)
    write(directory, *SPHERE, seed=6371)


if __name__ == "__main__":
    main()
