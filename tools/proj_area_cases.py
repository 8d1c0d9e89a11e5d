#!/usr/bin/python3
"""Engine cases over the area of use of bundled catalogue systems, from PROJ.

For each EPSG code given, finds the bundled catalogue record that carries the
code (data/*.tsf, EPSG_Code), samples a grid of points over the system's EPSG
area of use (pyproj's CRS.area_of_use), and writes, in the format of
tests/engines/EngineCasesTest.cpp, the forward values PROJ gives for them and
the values PROJ's inverse gives for those eastings and northings:

  /usr/bin/python3 tools/proj_area_cases.py [--grid N] CODE... > FILE.cases

A CODE written CODE:esri or CODE:gdal names the system by the WKT text that
PROJ writes for it in that dialect instead of by its catalogue record; the
cases are then in the text's own unit and axis order, as a caller of the
text gets them.

The transformation is pyproj's
  Transformer.from_crs(crs.geodetic_crs, crs, always_xy=True)
(Debian's pyproj 3.4.1 on PROJ 9.1.1), so outputs are easting first whatever
the system's axis order, and they are written in metres whatever the
system's unit, as the catalogue's engines give them.  Longitudes are
degrees east of Greenwich, as the library takes them whatever the system's
prime meridian; PROJ is handed them in the geodetic system's own unit and
from its own prime meridian.  Points on a pole are written as forward cases
only (their longitude is arbitrary), and the grid keeps off the area's
edges so that no longitude lies on +-180.
"""

import glob
import math
import os
import re
import sys

from pyproj import CRS, Transformer
import pyproj

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def catalogue_names():
    """EPSG code -> record name, from the bundled catalogue files."""
    names = {}
    for path in sorted(glob.glob(os.path.join(ROOT, 'data', '*.tsf'))):
        text = open(path, encoding='latin-1').read()
        # every record's section (Krovak's name does not end in _PROJECTION)
        for body in re.findall(r'\[(?!MAP_PROJECTION_DEFINITION\])\w+\](.*?)EndSect', text, re.S):
            name = re.search(r"Projection_Name = '([^']*)'", body)
            code = re.search(r'EPSG_Code = (\d+)', body)
            if name and code:
                names[int(code.group(1))] = name.group(1)
    return names


def spread(lo, hi, count):
    """count values inside [lo, hi], off both ends."""
    return [lo + (hi - lo) * (k + 0.5) / count for k in range(count)]


def points(bounds, count):
    west, south, east, north = bounds
    if east < west:  # the area crosses the antimeridian
        east += 360
    lons = [((lon + 180) % 360) - 180 for lon in spread(west, east, count)]
    lats = spread(south, north, count)
    grid = [(round(lon, 6), round(lat, 6)) for lon in lons for lat in lats]
    pole = None
    if north == 90:
        pole = (round(lons[0], 6), 90.0)
    elif south == -90:
        pole = (round(lons[0], 6), -90.0)
    return grid, pole


def wrapped(text, width=100):
    """A long system text as lines that end in a backslash."""
    return '\\\n'.join(text[i:i + width] for i in range(0, len(text), width))


def write(code, name, count, out, dialect=None):
    crs = CRS.from_epsg(code)
    area = crs.area_of_use
    geodetic = crs.geodetic_crs
    to = Transformer.from_crs(geodetic, crs, always_xy=True)
    grid, pole = points(area.bounds, count)
    # the engines work in metres; PROJ in the system's unit (a text brings it)
    unit = crs.axis_info[0].unit_conversion_factor if dialect is None else 1
    # degrees per unit of the geodetic system, and its prime meridian in degrees
    angle = math.degrees(geodetic.axis_info[0].unit_conversion_factor)
    pm = math.degrees(geodetic.prime_meridian.longitude *
                      geodetic.prime_meridian.unit_conversion_factor)
    out.write('\n# EPSG:%d, %s; area of use %s\n' % (code, crs.name, area.name))
    if dialect:
        name = wrapped(crs.to_wkt('WKT1_ESRI' if dialect == 'esri' else 'WKT1_GDAL'))
    out.write('system %s\n' % name)
    out.write('tolerance 0.1 mm\ntolerance 1e-9 deg\n')
    out.write('source pyproj %s (PROJ %s), Transformer.from_crs(geodetic, EPSG:%d, '
              'always_xy=True)%s, %d points over %.4g..%.4g E, %.4g..%.4g N\n'
              % (pyproj.__version__, pyproj.proj_version_str, code,
                 '' if unit == 1 else ' in metres (times %.16g)' % unit, len(grid),
                 area.west, area.east, area.south, area.north))
    back = Transformer.from_crs(crs, geodetic, always_xy=True)
    metres = lambda lon, lat: tuple(v * unit for v in to.transform((lon - pm) / angle,
                                                                   lat / angle))
    projected = ['%.6f %.6f' % metres(lon, lat) for lon, lat in grid]
    if pole:
        out.write('forward %s %s %.6f %.6f\n' % (pole + metres(*pole)))
    for (lon, lat), xy in zip(grid, projected):
        out.write('forward %s %s %s\n' % (lon, lat, xy))
    out.write('source the same transformer reversed on the eastings and northings above\n')
    for xy in projected:
        lon, lat = back.transform(*(float(v) / unit for v in xy.split()))
        out.write('inverse %s %.12f %.12f\n' % (xy, lon * angle + pm, lat * angle))


def main(argv):
    count = 4
    if len(argv) > 1 and argv[0] == '--grid':
        count = int(argv[1])
        argv = argv[2:]
    if not argv:
        sys.exit(__doc__)
    names = catalogue_names()
    out = sys.stdout
    out.write('# Bundled catalogue systems over their EPSG areas of use, against PROJ.\n'
              '# Written by: /usr/bin/python3 tools/proj_area_cases.py %s\n'
              % ' '.join(([] if count == 4 else ['--grid', str(count)]) + argv))
    for arg in argv:
        code, _, dialect = arg.partition(':')
        code = int(code)
        if dialect not in ('', 'esri', 'gdal'):
            sys.exit('no WKT dialect %s' % dialect)
        if not dialect and code not in names:
            sys.exit('no bundled record with EPSG code %d' % code)
        write(code, names.get(code), count, out, dialect or None)


if __name__ == '__main__':
    main(sys.argv[1:])
