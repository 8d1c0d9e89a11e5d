#!/usr/bin/env python3
"""Measures the library's geocentric-to-geographic conversion (WGS 84)
against GeographicLib's exact CartConvert and against PROJ's cct, on random
points from 10 km below to 30,000 km above the ellipsoid.

    tools/measure_geocentric.py build/release/libKvCart.so data/ [COUNT]

Needs CartConvert (Debian geographiclib-tools) and cct (proj-bin); prints the
largest differences in latitude (degrees) and height (metres).
"""
import ctypes
import math
import random
import subprocess
import sys


def main():
    lib = ctypes.CDLL(sys.argv[1])
    data = sys.argv[2].rstrip('/') + '/'
    count = int(sys.argv[3]) if len(sys.argv) > 3 else 200000
    lib.CARTSETUPLINUX(data.encode(), b"/nonexistent-kvcart-user/")
    handle, status = ctypes.c_void_p(), ctypes.c_int()
    lib.C_KVMP_CREATE(b"LONG/LAT", ctypes.byref(handle), ctypes.byref(status))
    d = ctypes.c_double
    lib.C_KVMP_GEO2XYZ.argtypes = [ctypes.c_void_p, d, d, d] + [ctypes.POINTER(d)] * 3
    lib.C_KVMP_XYZ2GEO.argtypes = [ctypes.c_void_p, d, d, d] + [ctypes.POINTER(d)] * 3

    rng = random.Random(7)
    points = []
    for i in range(count):
        lon = rng.uniform(-180, 180)
        lat = math.degrees(math.asin(rng.uniform(-1, 1)))
        if i % 10 == 0:
            lat = math.copysign(90 - 1e-6 * rng.random(), lat)
        h = rng.uniform(-10e3, 10e3) if i % 3 == 0 else -10e3 + rng.random() ** 3 * 30010e3
        X, Y, Z = d(), d(), d()
        lib.C_KVMP_GEO2XYZ(handle, lon, lat, h, ctypes.byref(X), ctypes.byref(Y), ctypes.byref(Z))
        points.append((X.value, Y.value, Z.value))
    ours = []
    for X, Y, Z in points:
        lon, lat, h = d(), d(), d()
        lib.C_KVMP_XYZ2GEO(handle, X, Y, Z, ctypes.byref(lon), ctypes.byref(lat), ctypes.byref(h))
        ours.append((lat.value, h.value))

    text = ''.join('%.17g %.17g %.17g\n' % p for p in points)
    exact = subprocess.run(['CartConvert', '-r', '-p', '12'], input=text, capture_output=True,
                           text=True, check=True).stdout.split('\n')
    proj = subprocess.run(['cct', '-d', '15', '-I', '+proj=cart', '+ellps=WGS84'],
                          input=''.join('%.17g %.17g %.17g 0\n' % p for p in points),
                          capture_output=True, text=True, check=True).stdout.split('\n')
    for name, rows, lat_col, h_col in (('CartConvert', exact, 0, 2), ('cct', proj, 1, 2)):
        worst_lat = worst_h = 0.0
        for (lat, h), row in zip(ours, rows):
            fields = row.split()
            worst_lat = max(worst_lat, abs(lat - float(fields[lat_col])))
            worst_h = max(worst_h, abs(h - float(fields[h_col])))
        print('%-12s %d points: latitude within %.3g degrees, height within %.3g m'
              % (name, len(points), worst_lat, worst_h))


if __name__ == '__main__':
    main()
