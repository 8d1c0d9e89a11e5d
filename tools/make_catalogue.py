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
ellipsoid constants, codes, datum shifts.  One record is written for every
projected CRS of authority EPSG that is not deprecated and whose conversion
method has a parameter set here; the others are counted in the report printed
at the end.  Besides its parameters, a record carries:
- "EPSG_Code", the CRS code;
- "Linear_Unit" and "Linear_Unit_Factor" (metres per unit) when its axes are
  not in metres;
- "TOWGS84", the datum shift to WGS 84 in the TOWGS84 order and units
  (metres, arc-seconds, parts per million, position vector convention), when
  PROJ with no grid installed would convert the system to WGS 84 with a 3- or
  7-parameter Helmert transformation.  That choice is reproduced from the
  registry alone (see DatumShifts).

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
  an oblique Mercator set when the two angles agree.  That set has no grid
  angle, so a variant B CRS whose grid angle differs from its azimuth becomes
  a rectified skew orthomorphic set, the same projection with its false
  origin moved from the projection centre back along the initial line to the
  natural origin: FE = Ec - uc sin(gammac), FN = Nc - uc cos(gammac), with
  the distance uc of EPSG Guidance Note 7-2 (see centre_offset); the library
  moves the false origin of such a WKT text the same way.
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
- "Popular Visualisation Pseudo Mercator" (EPSG:3857) is written as a
  Mercator 1SP set on the sphere of the datum's semi-major axis ("Popular
  Visualisation Sphere"): its formulas are the spherical ones, applied to
  latitudes and longitudes of the datum itself (WGS 84).

Usage: tools/make_catalogue.py [--registry PATH] [--data FOLDER]
Python 3 standard library only.
"""

import argparse
import collections
import math
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
# A false easting (axis 0) or northing (axis 1) moved from the projection
# centre to the natural origin (Params.natural_origin).
Moved = collections.namedtuple("Moved", "axis")

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
RSO_FROM_CENTRE = ("RECTIFIED_SKEW_ORTHOMORPHIC_PROJECTION",
                   [("Scale", K_IL), ("Center_Longitude", LON_PC), ("Center_Latitude", LAT_PC),
                    ("Azimuth", AZIMUTH), ("XY_Plane_Rotation", GAMMA), ("Feast", Moved(0)),
                    ("Fnorth", Moved(1))])
OBLIQUE = ("OBLIQUE_MERCATOR_PROJECTION",
           [("Scale", K_IL), ("Center_Longitude", LON_PC), ("Center_Latitude", LAT_PC),
            ("Azimuth", AZIMUTH), ("Feast", E_PC), ("Fnorth", N_PC)])
MERC1 = ("MERCATOR_1SP_PROJECTION",
         [("Scale", K0), ("Centre", LON_NO), ("Feast", FE), ("Fnorth", FN)])
# The spherical form of the Mercator, on the sphere of the datum's semi-major
# axis (see Catalogue.sphere_id).
PSEUDO_MERCATOR = ("MERCATOR_1SP_PROJECTION",
                   [("Scale", Fixed(1)), ("Centre", LON_NO), ("Feast", FE), ("Fnorth", FN)])
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
    1024: "Popular Visualisation Pseudo Mercator",
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
        return OBLIQUE if same_angle(p.angle(GAMMA), p.angle(AZIMUTH)) else RSO_FROM_CENTRE
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
    if method == 1024:
        if p.has(LAT_NO) and p.angle(LAT_NO) != 0:
            raise Skip("Pseudo Mercator with an origin off the equator")
        return PSEUDO_MERCATOR
    if method == 1119:
        return EQDC
    raise Skip("method not supported")


class Params:
    """The parameter values of one conversion, by EPSG parameter code."""

    def __init__(self, row, units, prime_meridian):
        self.units = units
        self.prime_meridian = prime_meridian  # degrees east of Greenwich
        self.values = {}
        self.ellipsoid = None  # () -> (a, 1/f), set by the catalogue
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

    def natural_origin(self):
        """The false easting and northing of a variant B conversion moved from
        the projection centre to the natural origin, in metres (the ellipsoid
        is set by the catalogue before the lines are written)."""
        a, invf = self.ellipsoid()
        uc = centre_offset(a, invf, self.scale(K_IL), self.angle(LAT_PC), self.angle(AZIMUTH))
        gamma = math.radians(float(self.angle(GAMMA)))
        return (float(self.metres(E_PC)) - uc * math.sin(gamma),
                float(self.metres(N_PC)) - uc * math.cos(gamma))


def centre_offset(a, invf, kc, latc, alphac):
    """uc of EPSG Guidance Note 7-2's Hotine oblique Mercator (variant B),
    metres along the initial line from the natural origin to the projection
    centre: (A / B) atan2(sqrt(D^2 - 1), cos alphac) SIGN(latc), with
    sqrt(D^2 - 1) written tan(latc) sqrt((1 - e^2) / (1 - e^2 sin^2 latc)),
    which it equals.  Angles in degrees; double precision."""
    f = 1 / float(invf) if invf > 0 else 0.0
    e2 = f * (2 - f)
    phi, alpha = math.radians(float(latc)), math.radians(float(alphac))
    w2 = 1 - e2 * math.sin(phi)**2
    B = math.sqrt(1 + e2 * math.cos(phi)**4 / (1 - e2))
    A = float(a) * B * float(kc) * math.sqrt(1 - e2) / w2
    G = math.tan(phi) * math.sqrt((1 - e2) / w2)
    return A / B * math.atan2(abs(G), math.cos(alpha)) * ((latc > 0) - (latc < 0))


def record_lines(layout, p, us_feet):
    """The key lines of a record.  With us_feet, false origins given in US
    survey feet are written as they stand under the "_ft_us" keys."""
    section, keys = layout
    lines = []
    for key, source in keys:
        if isinstance(source, Fixed):
            lines.append((key, fmt(source.value)))
        elif isinstance(source, Moved):
            lines.append((key, fmt(p.natural_origin()[source.axis])))
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
# Linear units

def linear_unit(db, units, crs_row):
    """(name, metres per unit) of a projected CRS whose axes are not in metres,
    None for metres; Skip when its axes disagree or the unit is unknown."""
    axes = db.execute("SELECT a.uom_auth_name, a.uom_code, u.name FROM axis a "
                      "JOIN unit_of_measure u ON u.auth_name = a.uom_auth_name "
                      "AND u.code = a.uom_code WHERE a.coordinate_system_auth_name = ? "
                      "AND a.coordinate_system_code = ?",
                      (crs_row["cs_auth_name"], crs_row["cs_code"])).fetchall()
    found = {(auth, code, name) for auth, code, name in axes}
    if len(found) != 1:
        raise Skip("axes without one common unit")
    auth, code, name = found.pop()
    if auth != "EPSG":
        raise Skip("axis unit outside the EPSG dataset")
    if code == 9001:
        return None
    return name, units.metres(1, code)


# ---------------------------------------------------------------------------
# Datum shifts
#
# PROJ, asked for the operations from WGS 84 to a projected CRS with no grid
# installed (projinfo -s EPSG:4326 -t EPSG:<code> --spatial-test intersects),
# lists the candidate transformations between the CRS's datum and WGS 84 in
# its order of preference for the CRS's whole area of use; the first is its
# default, and the record's shift.  (cs2cs then applies, point by point, the
# most accurate candidate whose area contains the point, which may be a more
# local one.)  The order is reproduced here from the registry:
# - candidates: transformations (Helmert, other, concatenated) between a CRS
#   of the datum and a CRS of WGS 84, either way, not deprecated, and not
#   superseded by another usable one; those defined between the geographic 2D
#   CRSs themselves, when there are any, exclude the others;
# - kept when their area of use meets the CRS's area of use; operations that
#   need a grid are left out (no grid is installed);
# - sorted by the area of that intersection on the sphere, largest first,
#   then by accuracy (unknown last), then a null transformation first, then
#   by name, last version first.
# The first candidate gives the record's shift when it is a 3- or
# 7-parameter Helmert (or reduces to one: a Molodensky-Badekas
# transformation, or a prime-meridian rotation followed by a Helmert).
# Checked against PROJ 9.1.1 for every bundled record: the choices agree
# except where PROJ chains two transformations through a third datum, which
# is not reproduced (those records get no shift).

WGS84_DATUM = 6326
WGS84_GEOGRAPHIC = 4326

# Helmert methods by the start of their name, whatever their domain (geog2D,
# geog3D, geocentric); time-dependent and time-specific ones are none of them.
GEOCENTRIC_TRANSLATIONS = "Geocentric translations"
POSITION_VECTOR = "Position Vector transformation"
COORDINATE_FRAME = "Coordinate Frame rotation"
MOLODENSKY_BADEKAS_PV = "Molodensky-Badekas (PV"
MOLODENSKY_BADEKAS_CF = "Molodensky-Badekas (CF"
LONGITUDE_ROTATION = 9601
ARC_SECOND = 9104
PPM = 9202

Candidate = collections.namedtuple("Candidate", "table code name accuracy source target")


def _lon_ranges(west, east):
    return [(west, east)] if west <= east else [(west, 180.0), (-180.0, east)]


def intersection_area(a, b):
    """Area on the unit sphere of the intersection of two (south, north,
    west, east) boxes in degrees; None when they do not meet."""
    south, north = max(a[0], b[0]), min(a[1], b[1])
    if south > north:
        return None
    width, met = 0.0, False
    for w1, e1 in _lon_ranges(a[2], a[3]):
        for w2, e2 in _lon_ranges(b[2], b[3]):
            lo, hi = max(w1, w2), min(e1, e2)
            if lo <= hi:
                met = True
                width += hi - lo
    if not met:
        return None
    return math.radians(width) * (math.sin(math.radians(north)) - math.sin(math.radians(south)))


class Shift:
    """A datum shift to WGS 84: 3 or 7 TOWGS84 values (exact fractions) and
    the transformation it comes from."""

    def __init__(self, values, source, how):
        self.values = values
        self.source = source  # "EPSG:1133 ED50 to WGS 84 (1)"
        self.how = how  # what was done to the registry's values

    def text(self):
        return ", ".join(fmt(v) for v in self.values)


class DatumShifts:
    """PROJ's default transformation to WGS 84 for a CRS, from the registry."""

    TABLES = ("helmert_transformation", "other_transformation", "concatenated_operation",
              "grid_transformation")

    def __init__(self, db, units):
        self.db = db
        self.units = units
        self.datum_of = dict(db.execute(
            "SELECT code, datum_code FROM geodetic_crs "
            "WHERE auth_name = 'EPSG' AND datum_auth_name = 'EPSG'"))
        self.extents = {t: self._extents(t) for t in self.TABLES + ("projected_crs",)}
        # A superseded transformation stays a candidate when what replaces it
        # needs a grid.
        self.superseded = set(tuple(row) for row in db.execute(
            "SELECT superseded_table_name, superseded_code FROM supersession "
            "WHERE superseded_auth_name = 'EPSG' "
            "AND replacement_table_name != 'grid_transformation'"))
        self.helmert = {r["code"]: r for r in db.execute(
            "SELECT * FROM helmert_transformation WHERE auth_name = 'EPSG'")}
        # Longitude rotations between datums of different prime meridians (a
        # rotation between two Greenwich datums is a datum change of its own).
        self.prime_meridian_changes = {r[0] for r in db.execute(
            "SELECT o.code FROM other_transformation o "
            "JOIN geodetic_crs s ON s.auth_name = o.source_crs_auth_name "
            "AND s.code = o.source_crs_code "
            "JOIN geodetic_crs t ON t.auth_name = o.target_crs_auth_name "
            "AND t.code = o.target_crs_code "
            "JOIN geodetic_datum ds ON ds.auth_name = s.datum_auth_name AND ds.code = s.datum_code "
            "JOIN geodetic_datum dt ON dt.auth_name = t.datum_auth_name AND dt.code = t.datum_code "
            "WHERE o.auth_name = 'EPSG' AND o.method_code = ? "
            "AND ds.prime_meridian_code != dt.prime_meridian_code", (LONGITUDE_ROTATION,))}
        self.grids = {r[0] for r in db.execute(
            "SELECT code FROM grid_transformation WHERE auth_name = 'EPSG'")}
        self.steps = collections.defaultdict(list)
        for op, step in db.execute(
                "SELECT operation_code, step_code FROM concatenated_operation_step "
                "WHERE operation_auth_name = 'EPSG' ORDER BY operation_code, step_number"):
            self.steps[op].append(step)
        self.by_datum = collections.defaultdict(list)
        for table in self.TABLES:
            for row in db.execute(
                    "SELECT code, name, accuracy, source_crs_code, target_crs_code FROM %s "
                    "WHERE auth_name = 'EPSG' AND deprecated = 0 "
                    "AND source_crs_auth_name = 'EPSG' AND target_crs_auth_name = 'EPSG'"
                    % table):
                c = Candidate(table, *row)
                source, target = self.datum_of.get(c.source), self.datum_of.get(c.target)
                if source is None or target is None or source == target:
                    continue
                if target == WGS84_DATUM:
                    self.by_datum[source].append(c)
                elif source == WGS84_DATUM:
                    self.by_datum[target].append(c)
        self.counts = collections.Counter()

    def _extents(self, table):
        boxes = collections.defaultdict(list)
        for row in self.db.execute(
                "SELECT u.object_code, e.south_lat, e.north_lat, e.west_lon, e.east_lon "
                "FROM usage u JOIN extent e ON e.auth_name = u.extent_auth_name "
                "AND e.code = u.extent_code WHERE u.object_table_name = ? "
                "AND u.object_auth_name = 'EPSG' ORDER BY u.code", (table,)):
            if None not in row[1:]:
                boxes[row[0]].append(row[1:])
        return boxes

    def _needs_grid(self, c):
        if c.table == "grid_transformation":
            return True
        return c.table == "concatenated_operation" and any(
            step in self.grids for step in self.steps[c.code])

    def _is_null(self, c):
        row = self.helmert.get(c.code) if c.table == "helmert_transformation" else None
        return row is not None and all(
            not row[k] for k in ("tx", "ty", "tz", "rx", "ry", "rz", "scale_difference"))

    def candidates(self, datum, geographic, area):
        """The candidates for the datum's CRS `geographic` and a CRS with
        the area of use `area`, in PROJ's order."""
        found = []
        for c in self.by_datum.get(datum, []):
            if (c.table, c.code) in self.superseded or self._needs_grid(c):
                continue
            met = [a for a in (intersection_area(box, area)
                               for box in self.extents[c.table].get(c.code, [])) if a is not None]
            if met:
                found.append((c, max(met)))
        direct = [f for f in found if {f[0].source, f[0].target} == {geographic, WGS84_GEOGRAPHIC}]
        found = direct or found
        found.sort(key=lambda f: f[0].name, reverse=True)
        found.sort(key=lambda f: (-f[1], f[0].accuracy if f[0].accuracy is not None else math.inf,
                                  not self._is_null(f[0])))
        return [c for c, _ in found]

    def for_crs(self, crs_code, datum, geographic):
        """The record's Shift, None without one; counts the outcome."""
        if datum == WGS84_DATUM:
            self.counts["on WGS 84 itself"] += 1
            return None
        areas = self.extents["projected_crs"].get(crs_code)
        if not areas:
            self.counts["no area of use"] += 1
            return None
        found = self.candidates(datum, geographic, areas[0])
        if not found:
            self.counts["no transformation to WGS 84 usable without a grid"] += 1
            return None
        shift, reason = self._as_shift(found[0])
        if shift is None:
            self.counts["PROJ's choice is %s" % reason] += 1
            return None
        self.counts["shift: " + shift.how] += 1
        return shift

    def _as_shift(self, c):
        """(Shift, None) for a Helmert or what reduces to one, else (None, why)."""
        reverse = self.datum_of.get(c.source) == WGS84_DATUM
        if c.table == "helmert_transformation":
            return self._helmert(c.code, reverse)
        if c.table == "concatenated_operation":
            helmerts = []
            for step in self.steps[c.code]:
                if step in self.prime_meridian_changes:
                    continue  # the records' longitudes are Greenwich-based already
                if step not in self.helmert:
                    return None, "a chain of transformations"
                helmerts.append(step)
            if len(helmerts) != 1:
                return None, "a chain of transformations"
            step = self.helmert[helmerts[0]]
            step_reverse = self.datum_of.get(step["source_crs_code"]) == WGS84_DATUM
            shift, why = self._helmert(helmerts[0], step_reverse)
            if shift is not None:
                shift.how += " after a prime-meridian rotation"
            return shift, why
        return None, "not a Helmert transformation"

    def _helmert(self, code, reverse):
        row = self.helmert[code]
        method = row["method_name"] or ""
        source = "EPSG:%d %s" % (code, row["name"])
        if any(row[k] is not None for k in ("rate_tx", "rate_rx", "rate_scale_difference")):
            return None, "a time-dependent Helmert transformation"
        kinds = (GEOCENTRIC_TRANSLATIONS, POSITION_VECTOR, COORDINATE_FRAME,
                 MOLODENSKY_BADEKAS_PV, MOLODENSKY_BADEKAS_CF)
        if not method.startswith(kinds):
            return None, "not a Helmert transformation"
        badekas = method.startswith((MOLODENSKY_BADEKAS_PV, MOLODENSKY_BADEKAS_CF))
        t = [self._length(row[k], row["translation_uom_code"]) for k in ("tx", "ty", "tz")]
        if method.startswith(GEOCENTRIC_TRANSLATIONS):
            values, how = t, "3 parameters"
        else:
            r = [self._arc_seconds(row[k], row["rotation_uom_code"]) for k in ("rx", "ry", "rz")]
            scale = self._ppm(row["scale_difference"], row["scale_difference_uom_code"])
            how = "7 parameters"
            if method.startswith((COORDINATE_FRAME, MOLODENSKY_BADEKAS_CF)):
                r = [-v for v in r]
                how += " (coordinate frame, rotations negated)"
            if badekas:
                t = self._about_origin(t, r, scale, row)
                how = "7 parameters (Molodensky-Badekas, rotated about the origin)"
            values = t + r + [scale]
        if reverse:
            values = [-v for v in values]
            how += ", reversed"
        return Shift(values, source, how), None

    def _length(self, value, uom):
        if value is None:
            raise Skip("Helmert transformation without a translation")
        return self.units.metres(value, uom)

    def _arc_seconds(self, value, uom):
        if value is None:
            raise Skip("Helmert transformation without a rotation")
        return self.units.degrees(value, uom) * 3600

    def _ppm(self, value, uom):
        if value is None:
            raise Skip("Helmert transformation without a scale difference")
        if uom == PPM:
            return exact(value)
        factor = self.units.factor.get(uom)
        if self.units.kind.get(uom) != "scale" or not factor:
            raise Skip("unsupported scale unit %s" % uom)
        return exact(value) * exact(factor) * 1000000

    def _about_origin(self, t, r, scale, row):
        """The translations that give, rotating about the geocentre, what a
        Molodensky-Badekas transformation gives rotating about its pivot P:
        T + P - (1 + s) R P, with the small-angle rotation R of the position
        vector convention, exactly as the shift formulas apply it."""
        p = [self._length(row[k], row["pivot_uom_code"]) for k in ("px", "py", "pz")]
        rx, ry, rz = (v / 3600 * PI / 180 for v in r)
        k = 1 + scale / 1000000
        rp = [p[0] - rz * p[1] + ry * p[2], rz * p[0] + p[1] - rx * p[2],
              -ry * p[0] + rx * p[1] + p[2]]
        return [t[i] + p[i] - k * rp[i] for i in range(3)]


# ---------------------------------------------------------------------------
# Registry

CRS_QUERY = """
SELECT p.code AS crs_code, p.name AS crs_name, cv.*,
       p.coordinate_system_auth_name AS cs_auth_name, p.coordinate_system_code AS cs_code,
       g.code AS geographic_code, gd.code AS datum_code, gd.name AS datum_name,
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

    def __init__(self, known_ellipsoids, db, units):
        self.known = known_ellipsoids
        self.db = db
        self.units = units
        self.shifts = DatumShifts(db, units)
        self.units_used = collections.Counter()  # unit name -> records
        self.coded = 0
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
        return self._our_code(code, row["ellipsoid_name"], a, invf)

    def sphere_id(self, row, units):
        """The code of the registry's sphere whose radius is the semi-major
        axis of the datum's ellipsoid."""
        a, _ = ellipsoid_constants(row, units)
        for sphere in self.db.execute(
                "SELECT * FROM ellipsoid WHERE auth_name = 'EPSG' "
                "AND inv_flattening IS NULL AND semi_minor_axis = semi_major_axis "
                "ORDER BY deprecated, code"):
            if sphere["uom_auth_name"] == "EPSG" and ellipsoid_constants(sphere, units)[0] == a:
                if sphere["code"] in self.ellipsoid_of:
                    return self.ellipsoid_of[sphere["code"]]
                return self._our_code(sphere["code"], sphere["name"], a, Fraction(0))
        raise Skip("no sphere of radius %s in the registry" % fmt(a))

    def _our_code(self, code, name, a, invf):
        found = next((k for k in self.known if matches(k, a, invf)), None)
        if found:
            ours = found.code
        else:
            ours = "E%d" % code
            taken = {k.code for k in self.known}
            if ours in taken:
                raise Skip("ellipsoid code %s already taken" % ours)
            self.new_ellipsoids[code] = Ellipsoid(name, ours, a, invf)
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
            p.ellipsoid = lambda: ellipsoid_constants(row, units)
            layout = choose_layout(method, p)
            target = state_plane_file(row["name"], row["datum_name"]) or "map_projection.tsf"
            us_feet = target == "state_plane_nad27.tsf"
            section, lines = record_lines(layout, p, us_feet)
            if layout is PSEUDO_MERCATOR:
                ellipsoid = self.sphere_id(row, units)
            else:
                ellipsoid = self.ellipsoid_id(row, units)
            unit = linear_unit(self.db, units, row)
            text = ["   [%s]  // EPSG:%d" % (section, row["crs_code"]),
                    "      Projection_Name = " + quote(row["crs_name"]),
                    "      Branch_Name = " + quote(row["datum_name"]),
                    "      Ellipsoid = " + quote(ellipsoid)]
            text += ["      %s = %s" % kv for kv in lines]
            text.append("      EPSG_Code = %d" % row["crs_code"])
            if unit:
                text.append("      Linear_Unit = " + quote(unit[0]))
                text.append("      Linear_Unit_Factor = " + fmt(unit[1]))
            shift = self.shifts.for_crs(row["crs_code"], row["datum_code"],
                                        row["geographic_code"])
            if shift:
                text.append("      TOWGS84 = %s  // %s" % (shift.text(), shift.source))
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
        self.coded += 1
        if unit:
            self.units_used[unit[0]] += 1


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

    catalogue = Catalogue(known, db, units)
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
    print("\nRecords with their EPSG code: %d" % c.coded, file=out)
    print("Records in a unit other than the metre: %d" % sum(c.units_used.values()), file=out)
    for name, n in sorted(c.units_used.items(), key=lambda kv: (-kv[1], kv[0])):
        print("  %6d  %s" % (n, name), file=out)
    shifted = sum(n for k, n in c.shifts.counts.items() if k.startswith("shift: "))
    print("Datum shifts to WGS 84 (PROJ's default without grids): %d records" % shifted,
          file=out)
    for what, n in sorted(c.shifts.counts.items(), key=lambda kv: (-kv[1], kv[0])):
        print("  %6d  %s" % (n, what), file=out)
    duplicates = sorted(n for n, k in c.names.items() if k > 1)
    print("Names used by more than one record (the first wins on look-up): %d" % len(duplicates),
          file=out)
    for n in duplicates:
        print("  %s" % n, file=out)


if __name__ == "__main__":
    sys.exit(main())
