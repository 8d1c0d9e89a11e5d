"""Tests of the catalogue generator: python3 -m unittest tools/test_make_catalogue.py

The unit conversions against values worked by hand from the units'
definitions, the choices of parameter set and state-plane file, the ellipsoid
matching, and one run over a small registry built here in SQLite (the real
registry is not needed).
"""

import math
import os
import random
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
                               inv_flattening, semi_minor_axis);
        CREATE TABLE prime_meridian(auth_name, code, name, longitude, uom_auth_name, uom_code);
        CREATE TABLE geodetic_datum(auth_name, code, name, ellipsoid_auth_name, ellipsoid_code,
                                    prime_meridian_auth_name, prime_meridian_code);
        CREATE TABLE geodetic_crs(auth_name, code, name, datum_auth_name, datum_code);
        CREATE TABLE projected_crs(auth_name, code, name, geodetic_crs_auth_name,
                                   geodetic_crs_code, conversion_auth_name, conversion_code,
                                   deprecated);
        CREATE TABLE conversion(auth_name, code, name, method_auth_name, method_code,
                                method_name, %s);
        INSERT INTO metadata VALUES ('EPSG.VERSION', 'v1.0'), ('EPSG.DATE', '2000-01-01');
        INSERT INTO unit_of_measure VALUES ('EPSG', 9001, 'metre', 'length', 1.0),
            ('EPSG', 9003, 'US survey foot', 'length', 0.30480060960121924),
            ('EPSG', 9102, 'degree', 'angle', 0.017453292519943278),
            ('EPSG', 9105, 'grad', 'angle', 0.01570796326794895),
            ('EPSG', 9110, 'sexagesimal DMS', 'angle', NULL),
            ('EPSG', 9201, 'unity', 'scale', 1.0);
        INSERT INTO ellipsoid VALUES ('EPSG', 7008, 'Clarke 1866', 6378206.4, 'EPSG', 9001,
                                      NULL, 6356583.8),
            ('EPSG', 7011, 'Clarke 1880 (IGN)', 6378249.2, 'EPSG', 9001, NULL, 6356515.0);
        INSERT INTO prime_meridian VALUES ('EPSG', 8901, 'Greenwich', 0.0, 'EPSG', 9102),
            ('EPSG', 8903, 'Paris', 2.5969213, 'EPSG', 9105);
        INSERT INTO geodetic_datum VALUES
            ('EPSG', 6267, 'North American Datum 1927', 'EPSG', 7008, 'EPSG', 8901),
            ('EPSG', 6807, 'Nouvelle Triangulation Francaise (Paris)', 'EPSG', 7011, 'EPSG', 8903);
        INSERT INTO geodetic_crs VALUES ('EPSG', 4267, 'NAD27', 'EPSG', 6267),
            ('EPSG', 4807, 'NTF (Paris)', 'EPSG', 6807);
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
    db.executemany("INSERT INTO projected_crs VALUES ('EPSG', ?, ?, 'EPSG', ?, 'EPSG', ?, ?)", [
        (32040, "NAD27 / Texas South Central", 4267, 14204, 0),
        (27572, "NTF (Paris) / Lambert zone II", 4807, 18082, 0),
        (27500, "NTF (Paris) / deprecated", 4807, 18082, 1),
        (29873, "NAD27 / Skewed", 4267, 19000, 0),
        (29874, "NAD27 / Bonne", 4267, 19001, 0),
    ])
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
                      "   EndSect  // LAMBERT_CONIC_2SP_PROJECTION\n", nad27)
        main = first["map_projection.tsf"]
        # Greenwich longitude, grads to degrees, a new ellipsoid code.
        self.assertIn("      Ellipsoid = 'E7011'\n      Scale = 0.99987742\n"
                      "      Origin_Longitude = 2.33722917\n      Origin_Latitude = 46.8\n", main)
        self.assertNotIn("deprecated", main)
        self.assertNotIn("Skewed", main)  # variant B with a grid angle other than the azimuth
        self.assertNotIn("Bonne", main)
        self.assertEqual(first["state_plane_nad83.tsf"].count("EndSect"), 1)  # target only
        ellipsoids = first["ellipsoid.tsf"]
        self.assertIn("      ID_Code = 'E7011'\n      Semi_Major_Axis = 6378249.2\n"
                      "      Inverse_Flatness = 293.4660212936294\n", ellipsoids)  # a / (a - b)
        self.assertEqual(ellipsoids.count("[REF_ELLIPSOID]"), 2)  # Clarke 1866 matched CC


if __name__ == "__main__":
    unittest.main()
