"""Tests of the catalogue generator: python3 -m unittest tools/test_make_catalogue.py

The unit conversions against values worked by hand from the units'
definitions, the choices of parameter set and state-plane file, the ellipsoid
matching, and one run over a small registry built here in SQLite (the real
registry is not needed).
"""

import math
import os
import random
import re
import sqlite3
import sys
import tempfile
import unittest
from fractions import Fraction

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import make_catalogue as mc  # noqa: E402

UNITS = mc.Units([
    (9001, "length", 1.0), (9002, "length", 0.3048), (9003, "length", 0.30480060960121924),
    (9005, "length", 0.3047972654), (9301, "length", 20.116756), (9101, "angle", 1.0),
    (9102, "angle", 0.017453292519943278), (9104, "angle", 4.848136811095355e-06),
    (9105, "angle", 0.01570796326794895), (9110, "angle", None), (9201, "scale", 1.0),
    (9999, "angle", None),
])


class AngleConversions(unittest.TestCase):
    def test_sexagesimal_dms_packed_values(self):
        cases = [
            # value in unit 9110, degrees + minutes/60 + seconds/3600
            (45.3030, Fraction(45) + Fraction(30, 60) + Fraction(30, 3600)),  # 45.508333...
            (-3.3, -(Fraction(3) + Fraction(30, 60))),  # minutes padded: 3°30'
            (323.07483685, 323 + Fraction(7, 60) + Fraction("48.3685") / 3600),
            (0.34179803, Fraction(34, 60) + Fraction("17.9803") / 3600),
            (90.0, Fraction(90)),
            (1e-05, Fraction("0.1") / 3600),  # repr is '1e-05': 0°00'00.1"
            (-0.0001, -Fraction(1, 3600)),  # repr '-0.0001': -0°00'01"
        ]
        for value, expected in cases:
            with self.subTest(value=value):
                self.assertEqual(UNITS.degrees(value, 9110), expected)
        self.assertEqual(float(UNITS.degrees(45.3030, 9110)), 45.50833333333333)

    def test_malformed_sexagesimal_values_are_refused(self):
        for value in (45.61, 45.3075, -1.6):
            with self.subTest(value=value), self.assertRaises(mc.Skip):
                UNITS.degrees(value, 9110)

    def test_other_angle_units(self):
        cases = [
            (52.0, 9105, Fraction("46.8")),  # 52 grads (NTF Lambert zone II origin)
            (2.5969213, 9105, Fraction("2.33722917")),  # the Paris meridian in grads
            (3600.0, 9104, Fraction(1)),  # arc-seconds
            (-17.4, 9110, -(17 + Fraction(40, 60))),  # the Ferro meridian
            (12.5, 9102, Fraction("12.5")),
        ]
        for value, uom, expected in cases:
            with self.subTest(value=value, uom=uom):
                self.assertEqual(UNITS.degrees(value, uom), expected)
        self.assertEqual(float(UNITS.degrees(math.pi / 2, 9101)), 90.0)
        self.assertEqual(float(UNITS.degrees(-1.0, 9101)), -57.29577951308232)
        # DM-packed and DDDMMSS.s forms
        self.assertEqual(mc.dm_packed_to_degrees(45.305), 45 + Fraction("30.5") / 60)
        self.assertEqual(mc.dms_seconds_to_degrees(453030.5),
                         45 + Fraction(30, 60) + Fraction("30.5") / 3600)
        self.assertEqual(mc.dms_seconds_to_degrees(-1230.0),
                         -(Fraction(12, 60) + Fraction(30, 3600)))
        with self.assertRaises(mc.Skip):
            UNITS.degrees(1.0, 9999)  # an angle unit with no factor and no known form


class LengthConversions(unittest.TestCase):
    def test_lengths_become_metres_exactly(self):
        cases = [
            (1.0, 9002, Fraction("0.3048")),
            (1968500.0, 9003, Fraction(600000)),  # US survey feet: 1968500 * 1200/3937
            (13123333.333, 9003, Fraction("13123333.333") * 1200 / 3937),
            (20926202.0, 9005, Fraction(20926202) * Fraction("0.3047972654")),  # Clarke's feet
            (40000.0, 9301, Fraction("804670.24")),  # British chains (Sears 1922 truncated)
            (-100000.0, 9001, Fraction(-100000)),
        ]
        for value, uom, expected in cases:
            with self.subTest(value=value, uom=uom):
                self.assertEqual(UNITS.metres(value, uom), expected)
        self.assertEqual(float(UNITS.metres(13123333.333, 9003)), 3999999.9998983997)
        with self.assertRaises(mc.Skip):
            UNITS.metres(1.0, 9102)  # a degree is not a length
        with self.assertRaises(mc.Skip):
            UNITS.unity(1.0, 9001)


class Formatting(unittest.TestCase):
    def test_numbers_are_short_and_read_back_exactly(self):
        cases = [(500000.0, "500000"), (-0.0, "0"), (0.1, "0.1"), (1e-05, "1e-05"),
                 (Fraction(1, 3), "0.3333333333333333"), (1e20, "1e+20"),
                 (-100000, "-100000")]
        for value, text in cases:
            with self.subTest(value=value):
                self.assertEqual(mc.fmt(value), text)
        rng = random.Random(7)
        for _ in range(2000):
            x = rng.uniform(-1e7, 1e7) * 10 ** rng.randint(-12, 0)
            self.assertEqual(float(mc.fmt(x)), x)

    def test_quotes_are_doubled_and_line_breaks_refused(self):
        self.assertEqual(mc.quote("M'poraloko"), "'M''poraloko'")
        with self.assertRaises(mc.Skip):
            mc.quote("two\nlines")


class Choices(unittest.TestCase):
    def test_state_plane_files(self):
        cases = [
            ("SPCS83 Texas South Central zone (meters)", "North American Datum 1983",
             "state_plane_nad83.tsf"),
            ("SPCS83 Texas South Central zone (US Survey feet)",
             "NAD83 (High Accuracy Reference Network)", "state_plane_nad83.tsf"),
            ("Texas CS27 South Central zone", "North American Datum 1927", "state_plane_nad27.tsf"),
            ("Tennessee CS27", "North American Datum 1927", "state_plane_nad27.tsf"),
            ("Arizona Coordinate System East zone", "North American Datum 1927",
             "state_plane_nad27.tsf"),
            ("Michigan State Plane Old Central zone", "North American Datum 1927",
             "state_plane_nad27.tsf"),
            ("Hawaii CS27 zone 1", "Old Hawaiian", None),
            ("UTM zone 15N", "North American Datum 1927", None),
            ("Michigan Oblique Mercator (meters)", "North American Datum 1983", None),
            ("SPCS83 Texas South Central zone (meters)", "North American Datum 1927", None),
            ("Amtrak North East Corridor Coordinate System 2021 (International feet)",
             "North American Datum 1927", None),
        ]
        for conversion, datum, expected in cases:
            with self.subTest(conversion=conversion, datum=datum):
                self.assertEqual(mc.state_plane_file(conversion, datum), expected)

    def test_angles_compare_modulo_360(self):
        self.assertTrue(mc.same_angle(Fraction(-36), Fraction(324)))
        self.assertTrue(mc.same_angle(Fraction(0), Fraction(360)))
        self.assertFalse(mc.same_angle(Fraction("53.18"), Fraction("53.07")))


class EllipsoidMatching(unittest.TestCase):
    CC = mc.Ellipsoid("Clarke 1866", "CC", Fraction("6378206.4"), Fraction("294.9786982"))
    XY = mc.Ellipsoid("Sphere 6371229", "XY", Fraction(6371229), Fraction(0))

    def test_tolerances(self):
        a = Fraction("6378206.4")
        by_axes = a / (a - Fraction("6356583.8"))  # Clarke 1866 given by a and b
        self.assertTrue(mc.matches(self.CC, a, by_axes))
        self.assertTrue(mc.matches(self.CC, a + Fraction(9, 10000), by_axes))
        self.assertFalse(mc.matches(self.CC, a + Fraction(2, 1000), by_axes))
        self.assertFalse(mc.matches(self.CC, a, Fraction("294.9786982") * (1 + Fraction(2, 10**9))))
        self.assertTrue(mc.matches(self.XY, Fraction(6371229), Fraction(0)))
        self.assertFalse(mc.matches(self.XY, Fraction(6371229), Fraction(300)))

    def test_hand_written_head_is_kept_and_generated_block_replaced(self):
        original = ("// note\n[ELLIPSOID_DEFINITION]\n   [REF_ELLIPSOID]\n"
                    "      Ellipsoid_Name = 'O''Brien'\n      ID_Code = 'OB'\n"
                    "      Semi_Major_Axis = 6378000\n      Inverse_Flatness = 300\n"
                    "   EndSect  // REF_ELLIPSOID\nEndSect  // ELLIPSOID_DEFINITION\n")
        head, known = mc.read_hand_written_ellipsoids(original)
        self.assertEqual(known, [mc.Ellipsoid("O'Brien", "OB", Fraction(6378000), Fraction(300))])
        new = {7011: mc.Ellipsoid("Clarke 1880 (IGN)", "E7011", Fraction("6378249.2"),
                                  Fraction(1, 3))}
        once = mc.ellipsoid_file(head, "v0", new)
        self.assertTrue(once.startswith(original[:-len("EndSect  // ELLIPSOID_DEFINITION\n")]))
        head2, known2 = mc.read_hand_written_ellipsoids(once)
        self.assertEqual(known2, known)
        self.assertEqual(mc.ellipsoid_file(head2, "v0", new), once)
        self.assertEqual(mc.ellipsoid_file(head2, "v0", {}), original)


def build_registry(path):
    """A registry with the tables and columns the generator reads."""
    db = sqlite3.connect(path)
    params = ", ".join("param%d_auth_name, param%d_code, param%d_name, param%d_value, "
                       "param%d_uom_auth_name, param%d_uom_code" % ((i,) * 6) for i in range(1, 8))
    db.executescript("""
        CREATE TABLE metadata(key, value);
        CREATE TABLE unit_of_measure(auth_name, code, name, type, conv_factor);
        CREATE TABLE ellipsoid(auth_name, code, name, semi_major_axis, uom_auth_name, uom_code,
                               inv_flattening, semi_minor_axis, deprecated DEFAULT 0);
        CREATE TABLE prime_meridian(auth_name, code, name, longitude, uom_auth_name, uom_code);
        CREATE TABLE geodetic_datum(auth_name, code, name, ellipsoid_auth_name, ellipsoid_code,
                                    prime_meridian_auth_name, prime_meridian_code);
        CREATE TABLE geodetic_crs(auth_name, code, name, datum_auth_name, datum_code);
        CREATE TABLE projected_crs(auth_name, code, name, coordinate_system_auth_name,
                                   coordinate_system_code, geodetic_crs_auth_name,
                                   geodetic_crs_code, conversion_auth_name, conversion_code,
                                   deprecated);
        CREATE TABLE axis(auth_name, code, name, coordinate_system_auth_name,
                          coordinate_system_code, coordinate_system_order, uom_auth_name,
                          uom_code);
        CREATE TABLE extent(auth_name, code, name, south_lat, north_lat, west_lon, east_lon);
        CREATE TABLE usage(auth_name, code, object_table_name, object_auth_name, object_code,
                           extent_auth_name, extent_code);
        CREATE TABLE supersession(superseded_table_name, superseded_auth_name, superseded_code,
                                  replacement_table_name, replacement_auth_name,
                                  replacement_code);
        CREATE TABLE helmert_transformation(auth_name, code, name, method_name,
            source_crs_auth_name, source_crs_code, target_crs_auth_name, target_crs_code,
            accuracy, tx, ty, tz, translation_uom_code, rx, ry, rz, rotation_uom_code,
            scale_difference, scale_difference_uom_code, rate_tx, rate_rx,
            rate_scale_difference, px, py, pz, pivot_uom_code, deprecated);
        CREATE TABLE other_transformation(auth_name, code, name, method_code,
            source_crs_auth_name, source_crs_code, target_crs_auth_name, target_crs_code,
            accuracy, deprecated);
        CREATE TABLE grid_transformation(auth_name, code, name, source_crs_auth_name,
            source_crs_code, target_crs_auth_name, target_crs_code, accuracy, deprecated);
        CREATE TABLE concatenated_operation(auth_name, code, name, source_crs_auth_name,
            source_crs_code, target_crs_auth_name, target_crs_code, accuracy, deprecated);
        CREATE TABLE concatenated_operation_step(operation_auth_name, operation_code,
                                                 step_number, step_auth_name, step_code);
        CREATE TABLE conversion(auth_name, code, name, method_auth_name, method_code,
                                method_name, %s);
        INSERT INTO metadata VALUES ('EPSG.VERSION', 'v1.0'), ('EPSG.DATE', '2000-01-01');
        INSERT INTO unit_of_measure VALUES ('EPSG', 9001, 'metre', 'length', 1.0),
            ('EPSG', 9003, 'US survey foot', 'length', 0.30480060960121924),
            ('EPSG', 9005, 'Clarke''s foot', 'length', 0.3047972654),
            ('EPSG', 9104, 'arc-second', 'angle', 4.84813681109536e-06),
            ('EPSG', 9202, 'parts per million', 'scale', 1e-06),
            ('EPSG', 9102, 'degree', 'angle', 0.017453292519943278),
            ('EPSG', 9105, 'grad', 'angle', 0.01570796326794895),
            ('EPSG', 9110, 'sexagesimal DMS', 'angle', NULL),
            ('EPSG', 9201, 'unity', 'scale', 1.0);
        INSERT INTO ellipsoid(auth_name, code, name, semi_major_axis, uom_auth_name, uom_code,
                              inv_flattening, semi_minor_axis) VALUES ('EPSG', 7008, 'Clarke 1866', 6378206.4, 'EPSG', 9001,
                                      NULL, 6356583.8),
            ('EPSG', 7011, 'Clarke 1880 (IGN)', 6378249.2, 'EPSG', 9001, NULL, 6356515.0),
            ('EPSG', 7030, 'WGS 84', 6378137.0, 'EPSG', 9001, 298.257223563, NULL),
            ('EPSG', 7059, 'Popular Visualisation Sphere', 6378137.0, 'EPSG', 9001, NULL,
             6378137.0);
        INSERT INTO prime_meridian VALUES ('EPSG', 8901, 'Greenwich', 0.0, 'EPSG', 9102),
            ('EPSG', 8903, 'Paris', 2.5969213, 'EPSG', 9105);
        INSERT INTO geodetic_datum VALUES
            ('EPSG', 6267, 'North American Datum 1927', 'EPSG', 7008, 'EPSG', 8901),
            ('EPSG', 6807, 'Nouvelle Triangulation Francaise (Paris)', 'EPSG', 7011, 'EPSG', 8903),
            ('EPSG', 6275, 'Nouvelle Triangulation Francaise', 'EPSG', 7011, 'EPSG', 8901),
            ('EPSG', 6326, 'World Geodetic System 1984 ensemble', 'EPSG', 7030, 'EPSG', 8901);
        INSERT INTO geodetic_crs VALUES ('EPSG', 4267, 'NAD27', 'EPSG', 6267),
            ('EPSG', 4807, 'NTF (Paris)', 'EPSG', 6807), ('EPSG', 4275, 'NTF', 'EPSG', 6275),
            ('EPSG', 4326, 'WGS 84', 'EPSG', 6326), ('EPSG', 4978, 'WGS 84', 'EPSG', 6326);
        INSERT INTO axis VALUES ('EPSG', 1, 'Easting', 'EPSG', 4400, 1, 'EPSG', 9001),
            ('EPSG', 2, 'Northing', 'EPSG', 4400, 2, 'EPSG', 9001),
            ('EPSG', 3, 'Easting', 'EPSG', 4497, 1, 'EPSG', 9003),
            ('EPSG', 4, 'Northing', 'EPSG', 4497, 2, 'EPSG', 9003),
            ('EPSG', 5, 'Easting', 'EPSG', 9999, 1, 'EPSG', 9003),
            ('EPSG', 6, 'Northing', 'EPSG', 9999, 2, 'EPSG', 9005);
        -- Texas South Central, the USA and Canada, France, the world
        INSERT INTO extent VALUES ('EPSG', 1, 'Texas SC', 27.8, 30.7, -100.0, -93.4),
            ('EPSG', 2, 'CONUS', 24.4, 49.4, -124.8, -66.9),
            ('EPSG', 3, 'Canada', 40.0, 84.0, -141.0, -47.7),
            ('EPSG', 4, 'France', 41.3, 51.1, -4.9, 9.6),
            ('EPSG', 5, 'World', -90.0, 90.0, -180.0, 180.0),
            ('EPSG', 6, 'Texas west', 25.8, 36.5, -106.7, -93.0);
        INSERT INTO usage VALUES
            ('EPSG', 100, 'projected_crs', 'EPSG', 32040, 'EPSG', 1),
            ('EPSG', 101, 'projected_crs', 'EPSG', 27572, 'EPSG', 4),
            ('EPSG', 102, 'projected_crs', 'EPSG', 29873, 'EPSG', 2),
            ('EPSG', 103, 'projected_crs', 'EPSG', 29874, 'EPSG', 2),
            ('EPSG', 104, 'projected_crs', 'EPSG', 3857, 'EPSG', 5),
            ('EPSG', 105, 'projected_crs', 'EPSG', 2222, 'EPSG', 1),
            ('EPSG', 110, 'helmert_transformation', 'EPSG', 1172, 'EPSG', 3),
            ('EPSG', 111, 'helmert_transformation', 'EPSG', 1173, 'EPSG', 2),
            ('EPSG', 112, 'helmert_transformation', 'EPSG', 1175, 'EPSG', 6),
            ('EPSG', 113, 'helmert_transformation', 'EPSG', 1176, 'EPSG', 6),
            ('EPSG', 114, 'grid_transformation', 'EPSG', 1241, 'EPSG', 2),
            ('EPSG', 115, 'helmert_transformation', 'EPSG', 1193, 'EPSG', 4),
            ('EPSG', 116, 'concatenated_operation', 'EPSG', 8094, 'EPSG', 4),
            ('EPSG', 117, 'helmert_transformation', 'EPSG', 1174, 'EPSG', 6);
    """ % params)
    conversions = [
        # code, name, method, parameters (code, value, uom)
        (14204, "Texas CS27 South Central zone", 9802, "Lambert Conic Conformal (2SP)",
         [(8821, 27.5, 9110), (8822, -99.0, 9110), (8823, 28.23, 9110), (8824, 30.17, 9110),
          (8826, 2000000.0, 9003), (8827, 0.0, 9003)]),
        (18082, "Lambert zone II", 9801, "Lambert Conic Conformal (1SP)",
         [(8801, 52.0, 9105), (8802, 0.0, 9105), (8805, 0.99987742, 9201),
          (8806, 600000.0, 9001), (8807, 2200000.0, 9001)]),
        (19000, "Skewed", 9815, "Hotine Oblique Mercator (variant B)",
         [(8811, 4.0, 9102), (8812, 115.0, 9102), (8813, 53.0, 9102), (8814, 52.0, 9102),
          (8815, 1.0, 9201), (8816, 0.0, 9001), (8817, 0.0, 9001)]),
        (19001, "Bonne", 9827, "Bonne", [(8801, 60.0, 9102), (8802, 0.0, 9102),
                                          (8806, 0.0, 9001), (8807, 0.0, 9001)]),
        (3856, "Popular Visualisation Pseudo-Mercator", 1024,
         "Popular Visualisation Pseudo Mercator",
         [(8801, 0.0, 9102), (8802, 0.0, 9102), (8806, 0.0, 9001), (8807, 0.0, 9001)]),
    ]
    for code, name, method, method_name, values in conversions:
        row = ["EPSG", code, name, "EPSG", method, method_name]
        for i in range(7):
            if i < len(values):
                pcode, value, uom = values[i]
                row += ["EPSG", pcode, "p", value, "EPSG", uom]
            else:
                row += [None] * 6
        db.execute("INSERT INTO conversion VALUES (%s)" % ",".join("?" * len(row)), row)
    db.executemany(
        "INSERT INTO projected_crs VALUES ('EPSG', ?, ?, 'EPSG', ?, 'EPSG', ?, 'EPSG', ?, ?)", [
            (32040, "NAD27 / Texas South Central", 4497, 4267, 14204, 0),
            (27572, "NTF (Paris) / Lambert zone II", 4400, 4807, 18082, 0),
            (27500, "NTF (Paris) / deprecated", 4400, 4807, 18082, 1),
            (29873, "NAD27 / Skewed", 4400, 4267, 19000, 0),
            (29874, "NAD27 / Bonne", 4400, 4267, 19001, 0),
            (3857, "WGS 84 / Pseudo-Mercator", 4400, 4326, 3856, 0),
            (2222, "NAD27 / Mixed units", 9999, 4267, 14204, 0),
        ])
    helmert = [
        # code, name, method, source, target, accuracy, t, r, scale, pivot
        # NAD27: Canada (largest area over Texas? no: it misses Texas), CONUS,
        # two west of the Mississippi of equal accuracy (the later version
        # first), one superseded by a grid, which keeps it a candidate.
        (1172, "NAD27 to WGS 84 (3)", "Geocentric translations (geog2D domain)", 4267, 4326,
         20.0, (-10, 158, 187), None, None, None),
        (1173, "NAD27 to WGS 84 (4)", "Geocentric translations (geog2D domain)", 4267, 4326,
         10.0, (-8, 160, 176), None, None, None),
        (1175, "NAD27 to WGS 84 (6)", "Geocentric translations (geog2D domain)", 4267, 4326,
         7.0, (-8, 159, 175), None, None, None),
        (1176, "NAD27 to WGS 84 (7)", "Coordinate Frame rotation (geog2D domain)", 4267, 4326,
         7.0, (-9, 161, 179), (0.1, -0.2, 0.3), 1.5, None),
        (1174, "NAD27 to WGS 84 (5)", "Molodensky-Badekas (CF geog2D domain)", 4326, 4267,
         12.0, (1, 2, 3), (0.1, -0.2, 0.3), 1.5, (3000000, -5000000, 3000000)),
        (1193, "NTF to WGS 84 (1)", "Geocentric translations (geog2D domain)", 4275, 4326,
         2.0, (-168, -60, 320), None, None, None),
    ]
    for code, name, method, source, target, accuracy, t, r, scale, pivot in helmert:
        r = r or (None, None, None)
        pivot = pivot or (None, None, None)
        db.execute("INSERT INTO helmert_transformation VALUES ('EPSG', ?, ?, ?, 'EPSG', ?, "
                   "'EPSG', ?, ?, ?, ?, ?, 9001, ?, ?, ?, 9104, ?, 9202, NULL, NULL, NULL, "
                   "?, ?, ?, 9001, 0)",
                   (code, name, method, source, target, accuracy) + tuple(t) + tuple(r)
                   + (scale,) + tuple(pivot))
    db.executescript("""
        INSERT INTO grid_transformation VALUES
            ('EPSG', 1241, 'NAD27 to NAD83 (1)', 'EPSG', 4267, 'EPSG', 4326, 0.15, 0);
        INSERT INTO supersession VALUES ('helmert_transformation', 'EPSG', 1175,
                                         'grid_transformation', 'EPSG', 1241),
            ('helmert_transformation', 'EPSG', 1176, 'helmert_transformation', 'EPSG', 1172);
        INSERT INTO other_transformation VALUES
            ('EPSG', 1763, 'NTF (Paris) to NTF (1)', 9601, 'EPSG', 4807, 'EPSG', 4275, 0, 0);
        INSERT INTO concatenated_operation VALUES
            ('EPSG', 8094, 'NTF (Paris) to WGS 84 (1)', 'EPSG', 4807, 'EPSG', 4326, 2.0, 0);
        INSERT INTO concatenated_operation_step VALUES ('EPSG', 8094, 1, 'EPSG', 1763),
            ('EPSG', 8094, 2, 'EPSG', 1193);
    """)
    db.commit()
    db.close()


def read_all(folder):
    texts = {}
    for name in mc.Catalogue.FILES + ("ellipsoid.tsf",):
        with open(os.path.join(folder, name), encoding="utf-8") as f:
            texts[name] = f.read()
    return texts


class GeneratorRun(unittest.TestCase):
    def test_small_registry(self):
        with tempfile.TemporaryDirectory() as folder:
            registry = os.path.join(folder, "registry.db")
            build_registry(registry)
            with open(os.path.join(folder, "ellipsoid.tsf"), "w") as f:
                f.write("[ELLIPSOID_DEFINITION]\n   [REF_ELLIPSOID]\n"
                        "      Ellipsoid_Name = 'Clarke 1866'\n      ID_Code = 'CC'\n"
                        "      Semi_Major_Axis = 6378206.4\n"
                        "      Inverse_Flatness = 294.9786982\n"
                        "   EndSect  // REF_ELLIPSOID\nEndSect  // ELLIPSOID_DEFINITION\n")
            with open(os.devnull, "w") as quiet:
                stdout, sys.stdout = sys.stdout, quiet
                try:
                    mc.main(["--registry", registry, "--data", folder])
                    first = read_all(folder)
                    mc.main(["--registry", registry, "--data", folder])
                finally:
                    sys.stdout = stdout
            second = read_all(folder)
            self.assertEqual(first, second)  # a second run changes nothing

        nad27 = first["state_plane_nad27.tsf"]
        self.assertIn("EPSG registry v1.0 of 2000-01-01", nad27)
        self.assertIn("   [LAMBERT_CONIC_2SP_PROJECTION]  // EPSG:32040\n"
                      "      Projection_Name = 'NAD27 / Texas South Central'\n"
                      "      Branch_Name = 'North American Datum 1927'\n"
                      "      Ellipsoid = 'CC'\n"
                      "      Parallel_1 = 28.383333333333333\n"
                      "      Parallel_2 = 30.283333333333335\n"
                      "      Origin_Longitude = -99\n"
                      "      Origin_Latitude = 27.833333333333332\n"
                      "      Feast_ft_us = 2000000\n"
                      "      Fnorth_ft_us = 0\n"
                      "      EPSG_Code = 32040\n"
                      "      Linear_Unit = 'US survey foot'\n"
                      "      Linear_Unit_Factor = 0.3048006096012192\n"
                      # CONUS (10 m) and (6) west of the Mississippi (7 m) both cover the
                      # system; (6) is superseded by a grid, which is not installed, so
                      # it stays; (7) is superseded by a Helmert transformation and is out.
                      "      TOWGS84 = -8, 159, 175  // EPSG:1175 NAD27 to WGS 84 (6)\n"
                      "   EndSect  // LAMBERT_CONIC_2SP_PROJECTION\n", nad27)
        main = first["map_projection.tsf"]
        # Greenwich longitude, grads to degrees, a new ellipsoid code; the shift
        # of NTF, reached from NTF (Paris) through the prime meridian.
        self.assertIn("      Ellipsoid = 'E7011'\n      Scale = 0.99987742\n"
                      "      Origin_Longitude = 2.33722917\n      Origin_Latitude = 46.8\n"
                      "      Feast = 600000\n      Fnorth = 2200000\n      EPSG_Code = 27572\n"
                      "      TOWGS84 = -168, -60, 320  // EPSG:1193 NTF to WGS 84 (1)\n", main)
        # The spherical Mercator on the sphere of WGS 84's semi-major axis, no
        # shift (its datum is WGS 84).
        self.assertIn("   [MERCATOR_1SP_PROJECTION]  // EPSG:3857\n"
                      "      Projection_Name = 'WGS 84 / Pseudo-Mercator'\n"
                      "      Branch_Name = 'World Geodetic System 1984 ensemble'\n"
                      "      Ellipsoid = 'E7059'\n      Scale = 1\n      Centre = 0\n"
                      "      Feast = 0\n      Fnorth = 0\n      EPSG_Code = 3857\n"
                      "   EndSect  // MERCATOR_1SP_PROJECTION\n", main)
        self.assertNotIn("Mixed units", main + nad27)  # axes in two different units
        self.assertNotIn("deprecated", main)
        # Variant B with a grid angle other than the azimuth: the rectified skew
        # orthomorphic with its false origin at the natural origin, where the
        # centre's own coordinates (0, 0) less uc (sin, cos) of the grid angle are
        # echo "115 4" | proj -f %.9f +proj=omerc +no_uoff +lat_0=4 +lonc=115
        #   +alpha=53 +gamma=52 +k=1 +x_0=0 +y_0=0 +ellps=clrk66
        #   -> 577501.601702215 451193.700694548 (PROJ 9.1.1), negated.
        skewed = main[main.index("// EPSG:29873"):]
        self.assertTrue(skewed.startswith(
            "// EPSG:29873\n      Projection_Name = 'NAD27 / Skewed'\n"), skewed[:200])
        self.assertIn("   [RECTIFIED_SKEW_ORTHOMORPHIC_PROJECTION]  // EPSG:29873", main)
        east = float(re.search(r"Feast = (\S+)", skewed).group(1))
        north = float(re.search(r"Fnorth = (\S+)", skewed).group(1))
        self.assertAlmostEqual(east, -577501.601702215, delta=1e-6)
        self.assertAlmostEqual(north, -451193.700694548, delta=1e-6)
        self.assertIn("      Azimuth = 53\n      XY_Plane_Rotation = 52\n", skewed)
        self.assertNotIn("Bonne", main)
        self.assertEqual(first["state_plane_nad83.tsf"].count("EndSect"), 1)  # target only
        ellipsoids = first["ellipsoid.tsf"]
        self.assertIn("      ID_Code = 'E7011'\n      Semi_Major_Axis = 6378249.2\n"
                      "      Inverse_Flatness = 293.4660212936294\n", ellipsoids)  # a / (a - b)
        self.assertIn("      Ellipsoid_Name = 'Popular Visualisation Sphere'\n"
                      "      ID_Code = 'E7059'\n      Semi_Major_Axis = 6378137\n"
                      "      Inverse_Flatness = 0\n", ellipsoids)
        self.assertEqual(ellipsoids.count("[REF_ELLIPSOID]"), 3)  # Clarke 1866 matched CC


class DatumShiftValues(unittest.TestCase):
    """The registry's Helmert parameters turned into TOWGS84 values."""

    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.TemporaryDirectory()
        path = os.path.join(cls.tmp.name, "registry.db")
        build_registry(path)
        cls.db = sqlite3.connect(path)
        cls.db.row_factory = sqlite3.Row
        cls.shifts = mc.DatumShifts(cls.db, mc.load_units(cls.db))

    @classmethod
    def tearDownClass(cls):
        cls.db.close()
        cls.tmp.cleanup()

    def test_coordinate_frame_rotations_are_negated(self):
        shift, _ = self.shifts._helmert(1176, False)
        self.assertEqual(shift.values, [-9, 161, 179, Fraction("-0.1"), Fraction("0.2"),
                                        Fraction("-0.3"), Fraction("1.5")])

    def test_a_transformation_from_wgs84_is_reversed(self):
        shift, _ = self.shifts._helmert(1173, True)
        self.assertEqual(shift.values, [8, -160, -176])
        self.assertTrue(shift.how.endswith(", reversed"))

    def test_molodensky_badekas_turns_about_the_geocentre(self):
        # Position vector rotations (coordinate frame negated) r = (-0.1,
        # 0.2, -0.3)", k = 1 + 1.5e-6, pivot P: the translations become
        # T + P - k R P with R P = P + r x P, worked here in exact arithmetic,
        # then the whole shift is reversed (the transformation runs from WGS 84).
        rad = lambda arcsec: Fraction(arcsec) / 3600 * mc.PI / 180
        rx, ry, rz = rad("-0.1"), rad("0.2"), rad("-0.3")
        px, py, pz = 3000000, -5000000, 3000000
        k = 1 + Fraction("1.5") / 1000000
        rp = (px - rz * py + ry * pz, rz * px + py - rx * pz, -ry * px + rx * py + pz)
        t = [1 + px - k * rp[0], 2 + py - k * rp[1], 3 + pz - k * rp[2]]
        shift, _ = self.shifts._helmert(1174, True)
        self.assertEqual(shift.values, [-v for v in t] + [Fraction("0.1"), Fraction("-0.2"),
                                                          Fraction("0.3"), Fraction("-1.5")])

    def test_candidates_in_the_order_of_area_then_accuracy(self):
        texas = (27.8, 30.7, -100.0, -93.4)
        canada = (40.0, 84.0, -141.0, -47.7)
        order = [c.code for c in self.shifts.candidates(6267, 4267, texas)]
        # Canada misses Texas; 1176 is superseded by a Helmert; the grid needs
        # its file.  Equal areas: accuracy 7 m, 10 m, 12 m.
        self.assertEqual(order, [1175, 1173, 1174])
        order = [c.code for c in self.shifts.candidates(6267, 4267, canada)]
        # Over Canada the larger intersection (all of it) comes first, before
        # the better accuracy of transformations that cover only its south.
        self.assertEqual(order[0], 1172)

    def test_intersection_area_on_the_sphere(self):
        # A 10-degree square at the equator against one at 60 degrees north.
        low = mc.intersection_area((0, 10, 0, 10), (-5, 5, -20, 20))
        high = mc.intersection_area((60, 70, 0, 10), (55, 65, -20, 20))
        self.assertAlmostEqual(low, math.radians(10) * math.sin(math.radians(5)))
        self.assertLess(high, low)
        self.assertIsNone(mc.intersection_area((0, 10, 0, 10), (20, 30, 0, 10)))
        # Across the antimeridian: 170 E to 170 W meets 175 E to 180.
        self.assertAlmostEqual(mc.intersection_area((0, 1, 170, -170), (0, 1, 175, 180)),
                               math.radians(5) * math.sin(math.radians(1)))


if __name__ == "__main__":
    unittest.main()
