#!/usr/bin/python3
"""Write the reference cases of the equal-area and equidistant engines.

Four files of tests/data/engines (the format is described in
tests/engines/EngineCasesTest.cpp): albers_equal_area.cases,
lambert_azimuthal_equal_area.cases, cassini_soldner.cases and
equidistant_conic.cases.  Every expected value is PROJ's, computed here with
pyproj 3.4.1 over PROJ 9.1.1 (used only as an oracle; the build and the tests
do not need it):

    c = CRS("EPSG:<code>")            or   CRS.from_proj4("<proj string>")
    Transformer.from_crs(c.geodetic_crs, c, always_xy=True).transform(lon, lat)

EPSG systems are sampled over their area of use (CRS.area_of_use), the
others over the bounds written beside them, as tools/proj_area_cases.py
samples an area.  Each point
is a "both" case: forward within 0.1 mm (in the system's unit), reverse
within 1e-9 degrees; points at a pole or on the antimeridian, whose
longitude the reverse cannot tell, are forward cases.  The worked examples of EPSG Guidance Note 7-2 are
written with their published figures beside PROJ's.

Usage: /usr/bin/python3 tools/make_equal_area_cases.py [folder, default
tests/data/engines]
"""

import math
import os
import sys

from pyproj import CRS, Transformer

import proj_area_cases

COMMAND = '/usr/bin/python3 tools/make_equal_area_cases.py'
PYPROJ = ('pyproj 3.4.1 (PROJ 9.1.1) Transformer.from_crs(c.geodetic_crs, c, always_xy=True), '
          'c = %s')

WGS84 = ('WGS 84', 6378137.0, 298.257223563)
GRS80 = ('GRS 1980', 6378137.0, 298.257222101)
SPHERE = ('Sphere', 6371000.0, 0.0)

# EPSG parameter names and the WKT names the library reads.
WKT_NAMES = {
    'Latitude of false origin': 'Latitude_Of_Origin',
    'Longitude of false origin': 'Central_Meridian',
    'Latitude of natural origin': 'Latitude_Of_Origin',
    'Longitude of natural origin': 'Central_Meridian',
    'Latitude of 1st standard parallel': 'Standard_Parallel_1',
    'Latitude of 2nd standard parallel': 'Standard_Parallel_2',
    'Easting at false origin': 'False_Easting',
    'Northing at false origin': 'False_Northing',
    'False easting': 'False_Easting',
    'False northing': 'False_Northing',
}
# The order the library writes them in.
WKT_ORDER = ['False_Easting', 'False_Northing', 'Central_Meridian', 'Standard_Parallel_1',
             'Standard_Parallel_2', 'Latitude_Of_Origin']
# proj keys and the WKT names.
PROJ_KEYS = {'lat_0': 'Latitude_Of_Origin', 'lon_0': 'Central_Meridian',
             'lat_1': 'Standard_Parallel_1', 'lat_2': 'Standard_Parallel_2',
             'x_0': 'False_Easting', 'y_0': 'False_Northing'}


def number(x):
    return repr(float(x)) if x != int(x) else '%d' % x


def wkt(name, spheroid, method, params, unit=('Meter', 1.0), northing_first=False):
    """A WKT text in the library's dialect; every line but the last ends
    with the continuation mark."""
    ell_name, a, invf = spheroid
    head = ('PROJCS["%s",GEOGCS["%s",DATUM["%s",SPHEROID["%s",%s,%s]],\\\n'
            'PRIMEM["Greenwich",0],UNIT["Degree",0.017453292519943295]],PROJECTION["%s"],\\\n'
            % (name, ell_name, ell_name, ell_name, number(a), number(invf), method))
    values = ','.join('PARAMETER["%s",%s]' % (k, number(params[k]))
                      for k in WKT_ORDER if k in params)
    tail = 'UNIT["%s",%s]' % unit
    if northing_first:
        tail += ',AXIS["Northing",NORTH],AXIS["Easting",EAST]'
    return head + values + ',\\\n' + tail + ']'


def epsg_system(code):
    """The WKT of an EPSG system, its oracle and its area of use."""
    crs = CRS.from_epsg(code)
    op = crs.coordinate_operation
    unit = crs.axis_info[0].unit_conversion_factor
    params = {}
    for p in op.params:
        name = WKT_NAMES[p.name]
        if p.unit_name == 'degree' or p.unit_conversion_factor == unit:
            params[name] = p.value
        else:
            params[name] = p.value * p.unit_conversion_factor / unit
    ell = crs.ellipsoid
    spheroid = (ell.name, ell.semi_major_metre, ell.inverse_flattening)
    return crs, params, spheroid, (crs.axis_info[0].unit_name, unit)


def proj_params(text):
    params = {}
    for word in text.split():
        key, _, value = word.lstrip('+').partition('=')
        if key in PROJ_KEYS:
            params[PROJ_KEYS[key]] = float(value)
    for k in ('False_Easting', 'False_Northing'):
        params.setdefault(k, 0.0)
    return params


def area_grid(bounds):
    """proj_area_cases.py's sample of an area: a 5 x 5 grid off its edges,
    and a pole it holds."""
    grid, pole = proj_area_cases.points(bounds, 5)
    return grid + ([pole] if pole else [])


class Writer:
    def __init__(self, folder, name, title):
        self.out = open(os.path.join(folder, name), 'w')
        self.out.write('# %s\n# Written by %s; the expected values are PROJ\'s\n'
                       '# (see the tool), the published ones where a source line says so.\n'
                       % (title, COMMAND))

    def system(self, comment, text, crs, points, bounds_text, northing_first=False,
               published=(), oracle=None):
        w = self.out
        w.write('\n# %s\nsystem %s\n' % (comment, text))
        t = Transformer.from_crs(crs.geodetic_crs, crs, always_xy=True)
        for lon, lat, x, y, tolerance, source in published:
            w.write('tolerance %s\nsource %s\nforward %s %s %s %s\n'
                    % (tolerance, source, lon, lat, x, y))
        w.write('tolerance 0.1 mm\ntolerance 1e-9 deg\nsource %s: %s, %s\n'
                % (COMMAND, PYPROJ % oracle, bounds_text))
        for lon, lat in points:
            x, y = t.transform(lon, lat)
            if northing_first:
                x, y = y, x
            # A pole has no longitude and the antimeridian two: forward only.
            kind = 'forward' if abs(lat) == 90 or abs(lon) == 180 else 'both'
            w.write('%s %s %s %.6f %.6f\n' % (kind, number(lon), number(lat), x, y))


def write_epsg(w, code, comment, published=(), northing_first=False, extra=()):
    crs, params, spheroid, unit = epsg_system(code)
    method = {'Albers Equal Area': 'Albers_Conic_Equal_Area',
              'Lambert Azimuthal Equal Area': 'Lambert_Azimuthal_Equal_Area',
              'Cassini-Soldner': 'Cassini_Soldner'}[crs.coordinate_operation.method_name]
    unit_name = {'metre': 'Meter'}.get(unit[0], unit[0])
    text = wkt(crs.name, spheroid, method, params, (unit_name, number(unit[1])),
               northing_first)
    a = crs.area_of_use
    bounds = (a.west, a.south, a.east, a.north)
    w.system('%s, EPSG:%d' % (comment, code), text, crs, list(extra) + area_grid(bounds),
             'its area of use %s' % (bounds,), northing_first, published,
             'CRS("EPSG:%d")' % code)


def write_proj(w, comment, proj, method, spheroid, bounds):
    crs = CRS.from_proj4(proj)
    text = wkt(comment, spheroid, method, proj_params(proj))
    w.system(comment, text, crs, area_grid(bounds),
             'lon %s to %s, lat %s to %s' % (bounds[0], bounds[2], bounds[1], bounds[3]),
             oracle='CRS.from_proj4("%s")' % proj)


def main(folder):
    w = Writer(folder, 'albers_equal_area.cases', 'Albers equal-area conic.')
    write_epsg(w, 5070, 'NAD83 / Conus Albers',
               published=[(-96, 40, '0.000', '1886977.565', '1 mm',
                           'pyproj 3.4.1: 96 W, 40 N is E 0.000, N 1886977.565')])
    write_epsg(w, 3577, 'GDA94 / Australian Albers, a southern cone',
               published=[(135, -25, '299362.221', '-2706085.980', '1 mm',
                           'pyproj 3.4.1: 135 E, 25 S is E 299362.221, N -2706085.980')])
    write_epsg(w, 3338, 'NAD83 / Alaska Albers, across the antimeridian')
    write_proj(w, 'Tangent cone, WGS 84', '+proj=aea +lat_1=45 +lat_2=45 +lat_0=45 +lon_0=10 '
               '+ellps=WGS84', 'Albers_Conic_Equal_Area', WGS84, (-20, 20, 40, 80))
    write_proj(w, 'Sphere', '+proj=aea +R=6371000 +lat_1=29.5 +lat_2=45.5 +lat_0=23 +lon_0=-96 '
               '+x_0=1000000 +y_0=-500000', 'Albers_Conic_Equal_Area', SPHERE,
               (-170, -30, -20, 85))
    write_proj(w, 'Sphere, southern cone', '+proj=aea +R=6371000 +lat_1=-18 +lat_2=-36 '
               '+lat_0=0 +lon_0=132', 'Albers_Conic_Equal_Area', SPHERE, (100, -85, 170, 10))

    w = Writer(folder, 'lambert_azimuthal_equal_area.cases',
               'Lambert azimuthal equal area: oblique, polar and equatorial aspects.')
    write_epsg(w, 3035, 'ETRS89-extended / LAEA Europe, northing first',
               northing_first=True,
               published=[(5, 50, '2999718.85', '3962799.45', '1 cm',
                           'EPSG Guidance Note 7-2, Lambert Azimuthal Equal Area example: '
                           '50 N, 5 E is N 2999718.85, E 3962799.45'),
                          (5, 50, '2999718.853', '3962799.451', '1 mm',
                           'pyproj 3.4.1: N 2999718.853, E 3962799.451')])
    write_proj(w, 'North polar aspect (WGS 84 / North Pole LAEA Europe, EPSG:3575)',
               '+proj=laea +lat_0=90 +lon_0=10 +datum=WGS84', 'Lambert_Azimuthal_Equal_Area',
               WGS84, (-180, 45, 180, 90))
    write_proj(w, 'South polar aspect (WGS 84 / NSIDC EASE-Grid 2.0 South, EPSG:6932)',
               '+proj=laea +lat_0=-90 +lon_0=0 +datum=WGS84', 'Lambert_Azimuthal_Equal_Area',
               WGS84, (-180, -90, 180, 0))
    write_proj(w, 'Equatorial aspect, WGS 84', '+proj=laea +lat_0=0 +lon_0=20 +x_0=5000000 '
               '+y_0=4000000 +ellps=WGS84', 'Lambert_Azimuthal_Equal_Area', WGS84,
               (-60, -80, 100, 80))
    write_proj(w, 'Sphere, oblique', '+proj=laea +R=6371000 +lat_0=52 +lon_0=10 +x_0=4321000 '
               '+y_0=3210000', 'Lambert_Azimuthal_Equal_Area', SPHERE, (-150, -30, 170, 90))
    write_proj(w, 'Sphere, south polar', '+proj=laea +R=6371000 +lat_0=-90 +lon_0=-45',
               'Lambert_Azimuthal_Equal_Area', SPHERE, (-180, -90, 180, 60))

    w = Writer(folder, 'cassini_soldner.cases', 'Cassini-Soldner.')
    write_epsg(w, 30200, 'Trinidad 1903 / Trinidad Grid, in Clarke\'s links (1 cm is 0.0497 '
               'link, so tolerances in "m" are links)',
               published=[(-62, 10, '66644.94', '82536.22', '0.0497 m',
                           'EPSG Guidance Note 7-2, Cassini-Soldner example: 10 N, 62 W is '
                           'E 66644.94, N 82536.22 links'),
                          (-62, 10, '66644.940', '82536.219', '0.005 m',
                           'pyproj 3.4.1: E 66644.940, N 82536.219 links')])
    write_epsg(w, 3068, 'DHDN / Soldner Berlin, easting first',
               published=[(13.5, 52.5, '31362.630', '19059.067', '1 mm',
                           'pyproj 3.4.1: 13.5 E, 52.5 N is E 31362.630, N 19059.067')])
    write_epsg(w, 3140, 'Viti Levu 1912 / Viti Levu Grid, in links, easting first')
    write_epsg(w, 3380, 'GDM2000 / Selangor Grid')
    write_proj(w, 'WGS 84, out to 5 degrees from the central meridian',
               '+proj=cass +lat_0=30 +lon_0=20 +x_0=200000 +y_0=100000 +datum=WGS84',
               'Cassini_Soldner', WGS84, (15, 0, 25, 80))
    write_proj(w, 'Sphere, out to 80 degrees from the central meridian',
               '+proj=cass +R=6371000 +lat_0=10 +lon_0=-60 +x_0=500000 +y_0=300000',
               'Cassini_Soldner', SPHERE, (-140, -80, 20, 80))

    w = Writer(folder, 'equidistant_conic.cases', 'Equidistant conic, two standard parallels.')
    write_proj(w, 'North America Equidistant Conic, WGS 84',
               '+proj=eqdc +lat_1=20 +lat_2=60 +lat_0=40 +lon_0=-96 +datum=WGS84',
               'Equidistant_Conic', WGS84, (-170, 5, -50, 85))
    w.out.write('tolerance 1 mm\nsource pyproj 3.4.1: 100 W, 45 N is E -296528.434, '
                'N 561938.465\nforward -100 45 -296528.434 561938.465\n')
    write_proj(w, 'Tangent cone on the 60th parallel, WGS 84',
               '+proj=eqdc +lat_1=60 +lat_2=60 +lat_0=0 +lon_0=0 +datum=WGS84',
               'Equidistant_Conic', WGS84, (-170, -80, 170, 85))
    write_proj(w, 'Southern cone, WGS 84',
               '+proj=eqdc +lat_1=-10 +lat_2=-40 +lat_0=-25 +lon_0=25 +x_0=1000000 '
               '+y_0=2000000 +datum=WGS84', 'Equidistant_Conic', WGS84, (-20, -85, 70, 30))
    write_proj(w, 'Sphere', '+proj=eqdc +R=6371000 +lat_1=20 +lat_2=60 +lat_0=40 +lon_0=-96',
               'Equidistant_Conic', SPHERE, (-175, -60, -20, 85))


if __name__ == '__main__':
    main(sys.argv[1] if len(sys.argv) > 1 else os.path.join(
        os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'data', 'engines'))
