#!/usr/bin/env python3
"""Write the bundled projection catalogue from the EPSG registry.

Reads the EPSG dataset from the SQLite registry file that Debian's proj-data
package installs (/usr/share/proj/proj.db) and writes into the data folder:

  map_projection.tsf     every supported projected CRS that is not one below
  state_plane_nad83.tsf  the SPCS83 state-plane zones
  state_plane_nad27.tsf  the SPCS27 state-plane zones on NAD27, false origins
                         in US survey feet under the "_ft_us" keys
  ellipsoid.tsf          the hand-written entries at its head are kept; the
                         registry ellipsoids that the records need and that
                         match none of them are appended under "E" + code

Only facts are taken from the registry: names, parameter values and units,
ellipsoid constants.  One record is written for every projected CRS of
authority EPSG that is not deprecated and whose conversion method has a
parameter set here; the others are counted in the report printed at the end.

Choices the registry leaves open:
- Name = the CRS name, branch = the name of its geodetic CRS's datum.
- Angles become decimal degrees and lengths metres, computed in exact
  rational arithmetic from the registry's decimal text and rounded once; the
  numbers are written in the shortest form that reads back to the same double.
- Longitudes are made Greenwich-based: the datum's prime meridian is added
  (the catalogue has no prime meridian of its own), so "NTF (Paris) / ..."
  records take Greenwich longitudes.
- Hotine variant A becomes a rectified skew orthomorphic set when the angle
  from the rectified to the skew grid differs from the azimuth (modulo 360
  degrees), a Hotine oblique Mercator set otherwise.  Hotine variant B becomes
  an oblique Mercator set; that set has no grid angle, so a variant B CRS whose
  grid angle differs from its azimuth is left out.
- Polar stereographic variant A (origin at a pole, scale at the origin) uses
  the polar stereographic set; variant B (latitude of standard parallel) uses
  the north-pole or south-pole set by the sign of that latitude, with the
  standard parallel as "Parallel_1" (a standard parallel at the pole itself is
  variant A with scale 1).
- Krovak is written with a zero grid rotation and unit x and y scales: the
  method's own south-west orientated axes.
- A state-plane zone is recognised by its conversion's name: SPCS83 zones are
  named "SPCS83 ..." and lie on NAD83 or one of its realisations (HARN,
  NSRS2007, 2011, ...); SPCS27 zones lie on NAD27 and are named "<State> CS27
  ...", with a few older names ("Arizona Coordinate System ... zone",
  "Michigan State Plane ... zone").  SPCS27 zones on other datums (Old
  Hawaiian, Puerto Rico) go to map_projection.tsf.
- Records are sorted by EPSG code, so the output is deterministic.

Usage: tools/make_catalogue.py [--registry PATH] [--data FOLDER]
Python 3 standard library only.
"""

import argparse
import collections
import os
import re
import sqlite3
import sys
from decimal import Decimal
from fractions import Fraction

DEFAULT_REGISTRY = "/usr/share/proj/proj.db"
GENERATOR = "tools/make_catalogue.py"

# pi to 40 digits, enough for any double converted from radians.
PI = Fraction("3.141592653589793238462643383279502884197")

US_FOOT = Fraction(1200, 3937)

# Exact definitions of the units that are not a decimal multiple of a metre or
# a degree, or whose factor in the registry is a rounded double.
EXACT_LENGTH = {
    9001: Fraction(1),  # metre
    9003: US_FOOT,  # US survey foot
    9033: 66 * US_FOOT,  # US survey chain
    9034: Fraction(66, 100) * US_FOOT,  # US survey link
    9035: 5280 * US_FOOT,  # US survey mile
}
EXACT_ANGLE = {
    9101: 180 / PI,  # radian
    9102: Fraction(1),  # degree
    9103: Fraction(1, 60),  # arc-minute
    9104: Fraction(1, 3600),  # arc-second
    9105: Fraction(9, 10),  # grad
    9106: Fraction(9, 10),  # gon
    9109: 180 / PI / 1000000,  # microradian
    9112: Fraction(9, 1000),  # centesimal minute
    9113: Fraction(9, 100000),  # centesimal second
    9114: Fraction(360, 6400),  # mil
    9122: Fraction(1),  # degree (supplier to define representation)
}
DMS_PACKED = 9110  # sexagesimal DMS: [-]DDD.MMSSsss
DM_PACKED = 9111  # sexagesimal DM: [-]DDD.MMmmm
DMS_SECONDS = 9121  # sexagesimal DMS.s: [-]DDDMMSS.sss
UNITY = (9201, 9203)  # unity, coefficient


class Skip(Exception):
    """A CRS that cannot be written; the message is the reason counted."""


def exact(value):
    """The decimal number the registry means by a stored double."""
    return Fraction(repr(float(value)))


def _plain_digits(value):
    """|value| as fixed-point text (never exponent form) and its sign."""
    d = Decimal(repr(float(value)))
    return format(abs(d), "f"), (-1 if d < 0 else 1)


def dms_packed_to_degrees(value):
    """DDD.MMSSsss (EPSG unit 9110) to exact decimal degrees."""
    text, sign = _plain_digits(value)
    whole, _, frac = text.partition(".")
    frac = (frac + "0000")
    minutes = int(frac[0:2])
    seconds = Fraction(frac[2:4] + "." + frac[4:] + "0")
    if minutes >= 60 or seconds >= 60:
        raise Skip("malformed sexagesimal DMS value %r" % value)
    return sign * (int(whole) + Fraction(minutes, 60) + seconds / 3600)


def dm_packed_to_degrees(value):
    """DDD.MMmmm (EPSG unit 9111) to exact decimal degrees."""
    text, sign = _plain_digits(value)
    whole, _, frac = text.partition(".")
    frac = (frac + "00")
    minutes = Fraction(frac[0:2] + "." + frac[2:] + "0")
    if minutes >= 60:
        raise Skip("malformed sexagesimal DM value %r" % value)
    return sign * (int(whole) + minutes / 60)


def dms_seconds_to_degrees(value):
    """DDDMMSS.sss (EPSG unit 9121) to exact decimal degrees."""
    text, sign = _plain_digits(value)
    whole, _, frac = text.partition(".")
    whole = whole.rjust(5, "0")
    minutes = int(whole[-4:-2])
    seconds = Fraction(whole[-2:] + "." + frac + "0")
    if minutes >= 60 or seconds >= 60:
        raise Skip("malformed sexagesimal DMS.s value %r" % value)
    return sign * (int(whole[:-4]) + Fraction(minutes, 60) + seconds / 3600)


class Units:
    """Conversions from the registry's units of measure."""

    def __init__(self, rows):
        # rows: (code, type, conv_factor) of EPSG units
        self.kind = {code: kind for code, kind, _ in rows}
        self.factor = {code: factor for code, _, factor in rows}

    def degrees(self, value, uom):
        if uom in EXACT_ANGLE:
            return exact(value) * EXACT_ANGLE[uom]
        if uom == DMS_PACKED:
            return dms_packed_to_degrees(value)
        if uom == DM_PACKED:
            return dm_packed_to_degrees(value)
        if uom == DMS_SECONDS:
            return dms_seconds_to_degrees(value)
        if self.kind.get(uom) == "angle" and self.factor.get(uom):
            # Relative to the registry's own factor for the degree, so that
            # a unit defined as a decimal fraction of a degree stays exact.
            return exact(value) * exact(self.factor[uom]) / exact(self.factor[9102])
        raise Skip("unsupported angle unit %s" % uom)

    def metres(self, value, uom):
        if uom in EXACT_LENGTH:
            return exact(value) * EXACT_LENGTH[uom]
        if self.kind.get(uom) == "length" and self.factor.get(uom):
            return exact(value) * exact(self.factor[uom])
        raise Skip("unsupported length unit %s" % uom)

    def unity(self, value, uom):
        if uom in UNITY:
            return exact(value)
        raise Skip("unsupported scale unit %s" % uom)


def fmt(value):
    """Shortest text that reads back as the same double; integers plain."""
    x = float(value)
    if x == 0:
        return "0"
    if x.is_integer() and abs(x) < 1e15:
        return str(int(x))
    return repr(x)


def quote(text):
    """A text parameter of the parameter-file format."""
    if "\n" in text or "\r" in text:
        raise Skip("line break in name %r" % text)
    return "'" + text.replace("'", "''") + "'"


# ---------------------------------------------------------------------------
# Methods

# EPSG parameter codes
LAT_NO, LON_NO, K0, FE, FN = 8801, 8802, 8805, 8806, 8807
LAT_PC, LON_PC, AZIMUTH, GAMMA, K_IL, E_PC, N_PC = 8811, 8812, 8813, 8814, 8815, 8816, 8817
LAT_PSP, K_PSP = 8818, 8819
LAT_FO, LON_FO, LAT_SP1, LAT_SP2, E_FO, N_FO = 8821, 8822, 8823, 8824, 8826, 8827
LAT_SP, LON_O = 8832, 8833
COLAT_CONE = 1036

LONGITUDES = {LON_NO, LON_PC, LON_FO, LON_O}
FALSE_EASTINGS = {FE, E_PC, E_FO}
FALSE_NORTHINGS = {FN, N_PC, N_FO}

# A value written as is, not taken from the registry.
Fixed = collections.namedtuple("Fixed", "value")

# method code -> (section, [(file key, parameter code or Fixed)])
TM = ("UTM_PROJECTION",
      [("Scale", K0), ("Centre", LON_NO), ("Origin_Latitude", LAT_NO), ("Feast", FE),
       ("Fnorth", FN)])
LCC2 = ("LAMBERT_CONIC_2SP_PROJECTION",
        [("Parallel_1", LAT_SP1), ("Parallel_2", LAT_SP2), ("Origin_Longitude", LON_FO),
         ("Origin_Latitude", LAT_FO), ("Feast", E_FO), ("Fnorth", N_FO)])
LCC1 = ("LAMBERT_CONIC_1SP_PROJECTION",
        [("Scale", K0), ("Origin_Longitude", LON_NO), ("Origin_Latitude", LAT_NO),
         ("Feast", FE), ("Fnorth", FN)])
STEREO = ("STEREOGRAPHIC_PROJECTION",
          [("Scale", K0), ("Centre", LON_NO), ("Origin_Latitude", LAT_NO), ("Feast", FE),
           ("Fnorth", FN)])
NZMG = ("NEW_ZEALAND_MAP_GRID_PROJECTION",
        [("Origin_Longitude", LON_NO), ("Origin_Latitude", LAT_NO), ("Feast", FE),
         ("Fnorth", FN)])
HOTINE = ("HOTINE_OBLIQUE_MERCATOR_PROJECTION",
          [("Scale", K_IL), ("Center_Longitude", LON_PC), ("Center_Latitude", LAT_PC),
           ("Azimuth", AZIMUTH), ("Feast", FE), ("Fnorth", FN)])
RSO = ("RECTIFIED_SKEW_ORTHOMORPHIC_PROJECTION",
       [("Scale", K_IL), ("Center_Longitude", LON_PC), ("Center_Latitude", LAT_PC),
        ("Azimuth", AZIMUTH), ("XY_Plane_Rotation", GAMMA), ("Feast", FE), ("Fnorth", FN)])
OBLIQUE = ("OBLIQUE_MERCATOR_PROJECTION",
           [("Scale", K_IL), ("Center_Longitude", LON_PC), ("Center_Latitude", LAT_PC),
            ("Azimuth", AZIMUTH), ("Feast", E_PC), ("Fnorth", N_PC)])
MERC1 = ("MERCATOR_1SP_PROJECTION",
         [("Scale", K0), ("Centre", LON_NO), ("Feast", FE), ("Fnorth", FN)])
MERC2 = ("MERCATOR_2SP_PROJECTION",
         [("Parallel_1", LAT_SP1), ("Centre", LON_NO), ("Feast", FE), ("Fnorth", FN)])
POLAR_A = ("POLAR_STEREOGRAPHIC_PROJECTION",
           [("Scale", K0), ("Centre", LON_NO), ("Origin_Latitude", LAT_NO), ("Feast", FE),
            ("Fnorth", FN)])
POLAR_B_AT_POLE = ("POLAR_STEREOGRAPHIC_PROJECTION",
                   [("Scale", Fixed(1)), ("Centre", LON_O), ("Origin_Latitude", LAT_SP),
                    ("Feast", FE), ("Fnorth", FN)])
NORTH_POLE = ("STEREOGRAPHIC_NORTH_POLE_PROJECTION",
              [("Parallel_1", LAT_SP), ("Centre", LON_O), ("Feast", FE), ("Fnorth", FN)])
SOUTH_POLE = ("STEREOGRAPHIC_SOUTH_POLE_PROJECTION",
              [("Parallel_1", LAT_SP), ("Centre", LON_O), ("Feast", FE), ("Fnorth", FN)])
KROVAK = ("KROVAK_OBLIQUE_CONFORMAL_CONIC",
          [("Scale_At_Pseudo_Parallel", K_PSP), ("Pseudo_Parallel", LAT_PSP),
           ("Center_Longitude", LON_O), ("Center_Latitude", LAT_PC), ("Azimuth", COLAT_CONE),
           ("XY_Plane_Rotation", Fixed(0)), ("X_Scale", Fixed(1)), ("Y_Scale", Fixed(1)),
           ("Feast", FE), ("Fnorth", FN)])
ALBERS = ("ALBERS_EQUAL_AREA_PROJECTION",
          [("Parallel_1", LAT_SP1), ("Parallel_2", LAT_SP2), ("Central_Meridian", LON_FO),
           ("Origin_Latitude", LAT_FO), ("Feast", E_FO), ("Fnorth", N_FO)])
LAEA = ("LAMBERT_AZIMUTHAL_EQUAL_AREA_PROJECTION",
        [("Centre", LON_NO), ("Origin_Latitude", LAT_NO), ("Feast", FE), ("Fnorth", FN)])
CASSINI = ("CASSINI_SOLDNER_PROJECTION",
           [("Central_Meridian", LON_NO), ("Origin_Latitude", LAT_NO), ("Feast", FE),
            ("Fnorth", FN)])
EQDC = ("EQUIDISTANT_CONIC_PROJECTION",
        [("Parallel_1", LAT_SP1), ("Parallel_2", LAT_SP2), ("Central_Meridian", LON_FO),
         ("Origin_Latitude", LAT_FO), ("Feast", E_FO), ("Fnorth", N_FO)])

SCALES = {K0, K_IL, K_PSP}

METHOD_NAMES = {
    9807: "Transverse Mercator",
    9802: "Lambert Conic Conformal (2SP)",
    9801: "Lambert Conic Conformal (1SP)",
    9809: "Oblique Stereographic",
    9811: "New Zealand Map Grid",
    9812: "Hotine Oblique Mercator (variant A)",
    9815: "Hotine Oblique Mercator (variant B)",
    9804: "Mercator (variant A)",
    9805: "Mercator (variant B)",
    9810: "Polar Stereographic (variant A)",
    9829: "Polar Stereographic (variant B)",
    9819: "Krovak",
    9822: "Albers Equal Area",
    9820: "Lambert Azimuthal Equal Area",
    9806: "Cassini-Soldner",
    1119: "Equidistant Conic",
}


def same_angle(a, b, tolerance=Fraction(1, 10**9)):
    """Whether two angles in degrees are equal modulo 360."""
    d = (a - b) % 360
    return d <= tolerance or 360 - d <= tolerance


def choose_layout(method, p):
    """The parameter set (section and keys) of a method for these values."""
    if method == 9807:
        return TM
    if method == 9802:
        return LCC2
    if method == 9801:
        return LCC1
    if method == 9809:
        return STEREO
    if method == 9811:
        return NZMG
    if method == 9812:
        return HOTINE if same_angle(p.angle(GAMMA), p.angle(AZIMUTH)) else RSO
    if method == 9815:
        if not same_angle(p.angle(GAMMA), p.angle(AZIMUTH)):
            raise Skip("Hotine variant B with a grid angle other than the azimuth")
        return OBLIQUE
    if method == 9804:
        if p.has(LAT_NO) and p.angle(LAT_NO) != 0:
            raise Skip("Mercator variant A with an origin off the equator")
        return MERC1
    if method == 9805:
        if p.has(LAT_NO) and p.angle(LAT_NO) != 0:
            raise Skip("Mercator variant B with an origin off the equator")
        return MERC2
    if method == 9810:
        if abs(p.angle(LAT_NO)) != 90:
            raise Skip("polar stereographic variant A with an origin off the pole")
        return POLAR_A
    if method == 9829:
        lat = p.angle(LAT_SP)
        if abs(lat) == 90:
            return POLAR_B_AT_POLE
        if lat == 0:
            raise Skip("polar stereographic variant B with the equator as standard parallel")
        return NORTH_POLE if lat > 0 else SOUTH_POLE
    if method == 9819:
        return KROVAK
    if method == 9822:
        return ALBERS
    if method == 9820:
        return LAEA
    if method == 9806:
        return CASSINI
    if method == 1119:
        return EQDC
    raise Skip("method not supported")


class Params:
    """The parameter values of one conversion, by EPSG parameter code."""

    def __init__(self, row, units, prime_meridian):
        self.units = units
        self.prime_meridian = prime_meridian  # degrees east of Greenwich
        self.values = {}
        for i in range(1, 8):
            code = row["param%d_code" % i]
            if code is None:
                continue
            value = row["param%d_value" % i]
            uom = row["param%d_uom_code" % i]
            if value is None or uom is None:
                raise Skip("parameter without a value or unit")
            if row["param%d_uom_auth_name" % i] != "EPSG":
                raise Skip("unit outside the EPSG dataset")
            self.values[code] = (value, uom)

    def has(self, code):
        return code in self.values

    def _get(self, code):
        if code not in self.values:
            raise Skip("missing parameter %d" % code)
        return self.values[code]

    def angle(self, code):
        value, uom = self._get(code)
        return self.units.degrees(value, uom)

    def longitude(self, code):
        """Greenwich-based longitude in (-180, 180]."""
        lon = self.angle(code) + self.prime_meridian
        while lon > 180:
            lon -= 360
        while lon <= -180:
            lon += 360
        return lon

    def metres(self, code):
        value, uom = self._get(code)
        return self.units.metres(value, uom)

    def raw(self, code):
        return self._get(code)

    def scale(self, code):
        value, uom = self._get(code)
        return self.units.unity(value, uom)


def record_lines(layout, p, us_feet):
    """The key lines of a record.  With us_feet, false origins given in US
    survey feet are written as they stand under the "_ft_us" keys."""
    section, keys = layout
    lines = []
    for key, source in keys:
        if isinstance(source, Fixed):
            lines.append((key, fmt(source.value)))
        elif source in SCALES:
            lines.append((key, fmt(p.scale(source))))
        elif source in LONGITUDES:
            lines.append((key, fmt(p.longitude(source))))
        elif source in FALSE_EASTINGS or source in FALSE_NORTHINGS:
            value, uom = p.raw(source)
            if us_feet and uom == 9003:
                lines.append((key + "_ft_us", fmt(exact(value))))
            else:
                lines.append((key, fmt(p.metres(source))))
        else:
            lines.append((key, fmt(p.angle(source))))
    return section, lines


# ---------------------------------------------------------------------------
# State-plane zones

NAD27_DATUM = "North American Datum 1927"
NAD83_DATUM = "North American Datum 1983"
SPCS27_NAME = re.compile(
    r"^SPCS27 |\bCS27\b|^[A-Z][A-Za-z ]* (Coordinate System|State Plane) .*zone\b")


def is_nad83_datum(name):
    return name == NAD83_DATUM or name.startswith("NAD83 (")


def state_plane_file(conversion_name, datum_name):
    """Which state-plane file a CRS belongs to, or None."""
    if conversion_name.startswith("SPCS83 ") and is_nad83_datum(datum_name):
        return "state_plane_nad83.tsf"
    if datum_name == NAD27_DATUM and SPCS27_NAME.search(conversion_name):
        return "state_plane_nad27.tsf"
    return None


# ---------------------------------------------------------------------------
# Ellipsoids

Ellipsoid = collections.namedtuple("Ellipsoid", "name code a invf")

MARKER = "// Appended by " + GENERATOR


def read_hand_written_ellipsoids(text):
    """The hand-written head of ellipsoid.tsf (everything before the
    generated block and the final EndSect) and its entries."""
    lines = text.splitlines()
    cut = next((i for i, line in enumerate(lines) if line.strip().startswith(MARKER)), None)
    if cut is None:
        cut = max(i for i, line in enumerate(lines) if line.startswith("EndSect"))
    head = lines[:cut]
    while head and not head[-1].strip():
        head.pop()
    entries = []
    current = {}
    for line in head:
        s = line.strip()
        if s.startswith("[REF_ELLIPSOID]"):
            current = {}
        elif s.startswith("EndSect") and current:
            entries.append(Ellipsoid(current["Ellipsoid_Name"], current["ID_Code"],
                                     Fraction(current["Semi_Major_Axis"]),
                                     Fraction(current["Inverse_Flatness"])))
            current = {}
        else:
            m = re.match(r"(\w+)\s*=\s*(.*?)\s*(//.*)?$", s)
            if m:
                value = m.group(2)
                if value.startswith("'"):
                    value = value[1:-1].replace("''", "'")
                current[m.group(1)] = value
    return head, entries


def matches(known, a, invf):
    """a within 1 mm, and 1/f within 1e-9 relative or both spheres."""
    if abs(known.a - a) > Fraction(1, 1000):
        return False
    if invf <= 0 or known.invf <= 0:
        return invf <= 0 and known.invf <= 0
    return abs(known.invf - invf) <= Fraction(1, 10**9) * invf


def ellipsoid_constants(row, units):
    """Semi-major axis in metres and inverse flattening (0: sphere)."""
    if row["uom_auth_name"] != "EPSG":
        raise Skip("ellipsoid unit outside the EPSG dataset")
    a = units.metres(row["semi_major_axis"], row["uom_code"])
    if row["inv_flattening"] is not None:
        return a, exact(row["inv_flattening"])
    if row["semi_minor_axis"] is None:
        raise Skip("ellipsoid without a second constant")
    b = units.metres(row["semi_minor_axis"], row["uom_code"])
    if a == b:
        return a, Fraction(0)
    return a, a / (a - b)


def ellipsoid_lines(e):
    return ["   [REF_ELLIPSOID]",
            "      Ellipsoid_Name = " + quote(e.name),
            "      ID_Code = " + quote(e.code),
            "      Semi_Major_Axis = " + fmt(e.a),
            "      Inverse_Flatness = " + fmt(e.invf),
            "   EndSect  // REF_ELLIPSOID"]


# ---------------------------------------------------------------------------
# Registry

CRS_QUERY = """
SELECT p.code AS crs_code, p.name AS crs_name, cv.*,
       gd.name AS datum_name,
       pm.longitude AS pm_longitude, pm.uom_auth_name AS pm_uom_auth,
       pm.uom_code AS pm_uom_code,
       e.code AS ellipsoid_code, e.name AS ellipsoid_name,
       e.semi_major_axis, e.uom_auth_name, e.uom_code, e.inv_flattening, e.semi_minor_axis
FROM projected_crs p
JOIN conversion cv ON cv.auth_name = p.conversion_auth_name AND cv.code = p.conversion_code
JOIN geodetic_crs g ON g.auth_name = p.geodetic_crs_auth_name AND g.code = p.geodetic_crs_code
JOIN geodetic_datum gd ON gd.auth_name = g.datum_auth_name AND gd.code = g.datum_code
JOIN prime_meridian pm ON pm.auth_name = gd.prime_meridian_auth_name
                      AND pm.code = gd.prime_meridian_code
JOIN ellipsoid e ON e.auth_name = gd.ellipsoid_auth_name AND e.code = gd.ellipsoid_code
WHERE p.auth_name = 'EPSG' AND p.deprecated = 0
ORDER BY p.code
"""


def registry_version(db):
    meta = dict(db.execute("SELECT key, value FROM metadata"))
    return "%s of %s" % (meta.get("EPSG.VERSION", "?"), meta.get("EPSG.DATE", "?"))


def load_units(db):
    return Units(db.execute(
        "SELECT code, type, conv_factor FROM unit_of_measure WHERE auth_name = 'EPSG'").fetchall())


class Catalogue:
    """The records of the three projection files and the report counts."""

    FILES = ("map_projection.tsf", "state_plane_nad83.tsf", "state_plane_nad27.tsf")

    def __init__(self, known_ellipsoids):
        self.known = known_ellipsoids
        self.records = {f: [] for f in self.FILES}
        self.new_ellipsoids = {}  # EPSG code -> Ellipsoid
        self.ellipsoid_of = {}  # EPSG code -> our code
        self.written = collections.Counter()  # (file, method) -> count
        self.sections = collections.Counter()
        self.skipped = collections.Counter()  # (method code, method name, reason)
        self.shifted = 0  # longitudes moved to Greenwich
        self.in_feet = 0  # NAD27 records with "_ft_us" keys
        self.seen_crs = 0
        self.names = collections.Counter()

    def ellipsoid_id(self, row, units):
        code = row["ellipsoid_code"]
        if code in self.ellipsoid_of:
            return self.ellipsoid_of[code]
        a, invf = ellipsoid_constants(row, units)
        found = next((k for k in self.known if matches(k, a, invf)), None)
        if found:
            ours = found.code
        else:
            ours = "E%d" % code
            taken = {k.code for k in self.known}
            if ours in taken:
                raise Skip("ellipsoid code %s already taken" % ours)
            self.new_ellipsoids[code] = Ellipsoid(row["ellipsoid_name"], ours, a, invf)
        self.ellipsoid_of[code] = ours
        return ours

    def add(self, row, units):
        self.seen_crs += 1
        method = row["method_code"]
        if row["method_auth_name"] != "EPSG" or method not in METHOD_NAMES:
            self.skipped[(method, row["method_name"], "method not supported")] += 1
            return
        try:
            pm = units.degrees(row["pm_longitude"], row["pm_uom_code"])
            p = Params(row, units, pm)
            layout = choose_layout(method, p)
            target = state_plane_file(row["name"], row["datum_name"]) or "map_projection.tsf"
            us_feet = target == "state_plane_nad27.tsf"
            section, lines = record_lines(layout, p, us_feet)
            ellipsoid = self.ellipsoid_id(row, units)
            text = ["   [%s]  // EPSG:%d" % (section, row["crs_code"]),
                    "      Projection_Name = " + quote(row["crs_name"]),
                    "      Branch_Name = " + quote(row["datum_name"]),
                    "      Ellipsoid = " + quote(ellipsoid)]
            text += ["      %s = %s" % kv for kv in lines]
            text.append("   EndSect  // " + section)
        except Skip as reason:
            self.skipped[(method, row["method_name"], str(reason))] += 1
            return
        self.records[target].append(text)
        self.written[(target, METHOD_NAMES[method])] += 1
        self.sections[section] += 1
        self.names[row["crs_name"]] += 1
        if pm != 0:
            self.shifted += 1
        if any(key.endswith("_ft_us") for key, _ in lines):
            self.in_feet += 1


def projection_file(version, records, what):
    head = ["// %s" % what,
            "// Generated by %s from the EPSG registry %s" % (GENERATOR, version),
            "// (metadata of the registry file); do not edit: change the generator and",
            "// run it again.",
            "[MAP_PROJECTION_DEFINITION]"]
    body = [line for record in records for line in record]
    return "\n".join(head + body + ["EndSect  // MAP_PROJECTION_DEFINITION", ""])


DESCRIPTIONS = {
    "map_projection.tsf":
        "Projected coordinate systems of the EPSG dataset (state-plane zones apart).",
    "state_plane_nad83.tsf": "US state-plane zones of 1983 (SPCS83) on NAD83 and its realisations.",
    "state_plane_nad27.tsf":
        "US state-plane zones of 1927 (SPCS27) on NAD27; false origins in US survey feet.",
}


def ellipsoid_file(head, version, new):
    lines = list(head)
    if new:
        lines += ["   %s from the EPSG registry %s:" % (MARKER, version),
                  "   // the ellipsoids of the bundled projection catalogue that match none",
                  "   // of the entries above, under \"E\" and their EPSG code."]
        for code in sorted(new):
            lines += ellipsoid_lines(new[code])
    lines.append("EndSect  // ELLIPSOID_DEFINITION")
    return "\n".join(lines) + "\n"


def write(path, text):
    with open(path, "w", encoding="utf-8", newline="\n") as f:
        f.write(text)


def main(argv=None):
    here = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--registry", default=DEFAULT_REGISTRY, help="EPSG registry (SQLite)")
    parser.add_argument("--data", default=os.path.join(here, "..", "data"), help="data folder")
    args = parser.parse_args(argv)

    db = sqlite3.connect("file:%s?mode=ro" % args.registry, uri=True)
    db.row_factory = sqlite3.Row
    version = registry_version(db)
    units = load_units(db)

    ellipsoid_path = os.path.join(args.data, "ellipsoid.tsf")
    with open(ellipsoid_path, encoding="utf-8") as f:
        head, known = read_hand_written_ellipsoids(f.read())

    catalogue = Catalogue(known)
    for row in db.execute(CRS_QUERY):
        catalogue.add(row, units)
    total_crs = db.execute("SELECT count(*) FROM projected_crs "
                           "WHERE auth_name = 'EPSG' AND deprecated = 0").fetchone()[0]

    for name in Catalogue.FILES:
        write(os.path.join(args.data, name),
              projection_file(version, catalogue.records[name], DESCRIPTIONS[name]))
    write(ellipsoid_path, ellipsoid_file(head, version, catalogue.new_ellipsoids))

    report(catalogue, version, total_crs)
    return 0


def report(c, version, total_crs):
    out = sys.stdout
    print("Registry: EPSG %s" % version, file=out)
    print("Projected CRSs (EPSG, not deprecated): %d, joined to datum and ellipsoid: %d"
          % (total_crs, c.seen_crs), file=out)
    for name in Catalogue.FILES:
        print("\n%s: %d records" % (name, len(c.records[name])), file=out)
        for (f, method), n in sorted(c.written.items(), key=lambda kv: (-kv[1], kv[0])):
            if f == name:
                print("  %6d  %s" % (n, method), file=out)
    print("\nParameter sets:", file=out)
    for section, n in sorted(c.sections.items(), key=lambda kv: (-kv[1], kv[0])):
        print("  %6d  %s" % (n, section), file=out)
    print("\nSkipped: %d" % sum(c.skipped.values()), file=out)
    for (code, method, reason), n in sorted(c.skipped.items(),
                                            key=lambda kv: (-kv[1], kv[0][0], kv[0][2])):
        print("  %6d  %s %s: %s" % (n, code, method, reason), file=out)
    print("\nLongitudes moved to Greenwich from another prime meridian: %d records" % c.shifted,
          file=out)
    print("NAD27 records with false origins in US survey feet: %d" % c.in_feet, file=out)
    print("Ellipsoids used: %d (%d matched to existing codes, %d appended)"
          % (len(c.ellipsoid_of), len(c.ellipsoid_of) - len(c.new_ellipsoids),
             len(c.new_ellipsoids)), file=out)
    for code in sorted(c.ellipsoid_of):
        extra = "" if code not in c.new_ellipsoids else "  (new: %s)" % c.new_ellipsoids[code].name
        print("  EPSG:%d -> %s%s" % (code, c.ellipsoid_of[code], extra), file=out)
    duplicates = sorted(n for n, k in c.names.items() if k > 1)
    print("Names used by more than one record (the first wins on look-up): %d" % len(duplicates),
          file=out)
    for n in duplicates:
        print("  %s" % n, file=out)


if __name__ == "__main__":
    sys.exit(main())
