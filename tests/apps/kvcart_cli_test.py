"""End-to-end tests of the kvcart program: runs the built binary on small
files in a temporary folder.

    python3 tests/apps/kvcart_cli_test.py PATH_TO_KVCART
"""
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest

KVCART = None
SOURCE_DIR = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
DATA_DIR = os.path.join(SOURCE_DIR, "data")

# A UTM zone 32 north .prj as GIS programs write it.
UTM32_PRJ = (
    'PROJCS["WGS_1984_UTM_Zone_32N",GEOGCS["GCS_WGS_1984",DATUM["D_WGS_1984",'
    'SPHEROID["WGS_1984",6378137.0,298.257223563]],PRIMEM["Greenwich",0.0],'
    'UNIT["Degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],'
    'PARAMETER["False_Easting",500000.0],PARAMETER["False_Northing",0.0],'
    'PARAMETER["Central_Meridian",9.0],PARAMETER["Scale_Factor",0.9996],'
    'PARAMETER["Latitude_Of_Origin",0.0],UNIT["Meter",1.0]]')


# The same system as NAD83 / Texas South Central (ftUS) (EPSG:2278), written
# as an ESRI .prj writes it: no TOWGS84, the parallels the other way round.
TEXAS_FEET_PRJ = (
    'PROJCS["NAD_1983_StatePlane_Texas_South_Central_FIPS_4204_Feet",'
    'GEOGCS["GCS_North_American_1983",DATUM["D_North_American_1983",'
    'SPHEROID["GRS_1980",6378137.0,298.257222101]],PRIMEM["Greenwich",0.0],'
    'UNIT["Degree",0.0174532925199433]],PROJECTION["Lambert_Conformal_Conic"],'
    'PARAMETER["False_Easting",1968500.0],PARAMETER["False_Northing",13123333.333],'
    'PARAMETER["Central_Meridian",-99.0],PARAMETER["Standard_Parallel_1",28.38333333333333],'
    'PARAMETER["Standard_Parallel_2",30.28333333333334],'
    'PARAMETER["Latitude_Of_Origin",27.83333333333333],UNIT["Foot_US",0.3048006096012192]]')

# ED50 / UTM zone 32N without its shift, and the same on an ellipsoid no
# record uses: International 1924 with no TOWGS84.
ED50_UTM32_PRJ = UTM32_PRJ.replace("WGS_1984_UTM_Zone_32N", "ED_1950_UTM_Zone_32N").replace(
    'GEOGCS["GCS_WGS_1984",DATUM["D_WGS_1984",SPHEROID["WGS_1984",6378137.0,298.257223563]]',
    'GEOGCS["GCS_European_1950",DATUM["D_European_1950",SPHEROID["International_1924",'
    '6378388.0,297.0]]')

WARNING = ("no datum shift known between LONG/LAT and ED_1950_UTM_Zone_32N: converting "
           "through the ellipsoids alone, which can be hundreds of metres off")


class KvcartTest(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.TemporaryDirectory()
        self.folder = self.tmp.name
        self.user = os.path.join(self.folder, "user")
        os.mkdir(self.user)
        self.env = dict(os.environ, KVCART_DATA_DIR=DATA_DIR, KVCART_USER_DIR=self.user,
                        LC_ALL="C")

    def tearDown(self):
        self.tmp.cleanup()

    def run_kvcart(self, *args, stdin=None, env=None):
        return subprocess.run([KVCART, *args], input=stdin, capture_output=True, text=True,
                              env=env or self.env, timeout=60)

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        with open(path, "w") as f:
            f.write(text)
        return path

    def assertPoint(self, line, lon, lat, places):
        x, y = (float(v) for v in line.replace(",", " ").split()[:2])
        self.assertAlmostEqual(x, lon, places=places)
        self.assertAlmostEqual(y, lat, places=places)

    def test_convert_copies_comments_and_carries_trailing_text(self):
        # Expected values: echo "500000 6206079.587" | invproj -f %.10f +proj=utm +zone=32
        # +ellps=WGS84 gives 9.0000000000 55.9999999977; "600000 5100000" gives
        # 10.2925320358 46.0462654558.
        path = self.write("points.txt", "# header\n\n500000 6206079.587 well A\n"
                                        "600000,5100000,B\n  600000\t5100000\n")
        r = self.run_kvcart("convert", "--from", "UTM-32", "--to", "LONG/LAT", path)
        self.assertEqual(r.returncode, 0, r.stderr)
        lines = r.stdout.split("\n")
        self.assertEqual(lines[0], "# header")
        self.assertEqual(lines[1], "")
        self.assertEqual(lines[2], "9.000000000 55.999999998 well A")
        self.assertEqual(lines[3], "10.292532036,46.046265456,B")
        self.assertEqual(lines[4], "  10.292532036\t46.046265456")
        # And back, to the millimetre.
        back = self.run_kvcart("convert", "--from", "LONG/LAT", "--to", "UTM-32",
                               "--precision", "4", stdin="10.2925320358 46.0462654558\n")
        self.assertEqual(back.returncode, 0, back.stderr)
        x, y = map(float, back.stdout.split())
        self.assertAlmostEqual(x, 600000, delta=1e-3)
        self.assertAlmostEqual(y, 5100000, delta=1e-3)

    def test_convert_reports_bad_lines_and_strict_stops(self):
        path = self.write("bad.txt", "500000 6206079.587\nabc def\n500000\n600000 5100000\n")
        r = self.run_kvcart("convert", "--from", "UTM-32", "--to", "LONG/LAT", path)
        self.assertEqual(r.returncode, 1)
        self.assertIn(path + ":2: ", r.stderr)
        self.assertIn(path + ":3: ", r.stderr)
        self.assertEqual(len(r.stdout.splitlines()), 2)
        strict = self.run_kvcart("convert", "--strict", "--from", "UTM-32", "--to", "LONG/LAT",
                                 path)
        self.assertEqual(strict.returncode, 1)
        self.assertEqual(len(strict.stdout.splitlines()), 1)
        self.assertIn(":2: ", strict.stderr)
        self.assertNotIn(":3: ", strict.stderr)
        missing = self.run_kvcart("convert", "--from", "UTM-32", "--to", "LONG/LAT",
                                  os.path.join(self.folder, "missing.txt"))
        self.assertEqual(missing.returncode, 1)
        self.assertIn("missing.txt", missing.stderr)

    def test_convert_with_heights_and_a_prj_file(self):
        prj = self.write("utm32.prj", UTM32_PRJ + "\n")
        r = self.run_kvcart("convert", "--height", "--from", "@" + prj, "--to", "LONG/LAT",
                            stdin="500000 6206079.587 123.25 x\n")
        self.assertEqual(r.returncode, 0, r.stderr)
        parts = r.stdout.split()
        self.assertPoint(r.stdout, 9.0, 56.0, 8)
        self.assertEqual(parts[2], "123.250")
        self.assertEqual(parts[3], "x")

    def test_unknown_system_is_named_with_suggestions(self):
        r = self.run_kvcart("convert", "--from", "UTM-99", "--to", "LONG/LAT", stdin="1 2\n")
        self.assertEqual(r.returncode, 1)
        self.assertIn("unknown coordinate system 'UTM-99'", r.stderr)
        self.assertIn("UTM-9", r.stderr)
        r = self.run_kvcart("info", "@" + os.path.join(self.folder, "none.prj"))
        self.assertEqual(r.returncode, 1)
        self.assertIn("none.prj", r.stderr)

    def test_info_json_reads_back(self):
        r = self.run_kvcart("info", "--json", "UTM-32")
        self.assertEqual(r.returncode, 0, r.stderr)
        d = json.loads(r.stdout)
        self.assertEqual(d["name"], "UTM-32")
        self.assertEqual(d["kind"], "projected")
        self.assertEqual(d["method"]["code"], 1)
        params = {p["name"]: p["value"] for p in d["parameters"]}
        self.assertEqual(params["False easting"], 500000)
        self.assertEqual(params["Scale"], 0.9996)
        self.assertEqual(d["ellipsoid"]["id"], "WE")
        self.assertEqual(d["ellipsoid"]["semi_major_axis"], 6378137)
        self.assertEqual(d["origin"], [9, 0])
        self.assertTrue(d["wkt"].startswith('PROJCS["UTM-32"'))
        self.assertTrue(d["proj4"].startswith("+proj=tmerc "))
        text = self.run_kvcart("info", "LONG/LAT")
        self.assertEqual(text.returncode, 0, text.stderr)
        self.assertIn("geographic", text.stdout)

    def test_info_gives_codes_and_identifies_prj_files(self):
        r = self.run_kvcart("info", "epsg:2278")
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertIn("Name:            NAD83 / Texas South Central (ftUS)\n", r.stdout)
        self.assertIn("EPSG code:       2278\n", r.stdout)
        self.assertIn("Linear unit:     US survey foot (0.3048006096012192 m)\n", r.stdout)
        self.assertIn("UNIT[\"US survey foot\",0.3048006096012192]]", r.stdout)
        d = json.loads(self.run_kvcart("info", "--json", "ED50 / UTM zone 32N").stdout)
        self.assertEqual(d["epsg_code"], 23032)
        self.assertEqual(d["datum_shift"]["values"], [-87, -98, -121, 0, 0, 0, 0])
        self.assertIn("+towgs84=-87,-98,-121,0,0,0,0 ", d["proj4"])
        self.assertIsNone(json.loads(self.run_kvcart("info", "--json", "NON-UTM").stdout)[
            "epsg_code"])

        prj = self.write("texas.prj", TEXAS_FEET_PRJ + "\n")
        r = self.run_kvcart("info", "@" + prj)
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertIn("Identical to:    NAD83 / Texas South Central (ftUS) (EPSG:2278)\n",
                      r.stdout)
        self.assertNotIn("EPSG code:", r.stdout)
        d = json.loads(self.run_kvcart("info", "--json", "@" + self.write("ed50.prj",
                                                                         ED50_UTM32_PRJ)).stdout)
        # ED50 and ELD79 (Libya) share the ellipsoid and the grid; both know a shift.
        self.assertIn({"name": "ED50 / UTM zone 32N", "epsg_code": 23032,
                       "but_the_datum_shift": True}, d["identical"])
        self.assertTrue(all(i["but_the_datum_shift"] for i in d["identical"]))
        d = json.loads(self.run_kvcart("info", "--json", "@" + self.write("utm.prj",
                                                                         UTM32_PRJ)).stdout)
        self.assertEqual([i["name"] for i in d["identical"]], ["UTM-32", "WGS 84 / UTM zone 32N"])

    def test_convert_warns_once_when_no_datum_shift_is_known(self):
        points = "9 56\n10 57\n"
        r = self.run_kvcart("convert", "--from", "LONG/LAT", "--to", ED50_UTM32_PRJ,
                            stdin=points)
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertEqual(r.stderr, "kvcart: " + WARNING + "\n")
        self.assertEqual(len(r.stdout.splitlines()), 2)
        # A record's shift, and a known zero shift (NAD83), say nothing.
        for target in ("ED50 / UTM zone 32N", "EPSG:2278", "UTM-33"):
            r = self.run_kvcart("convert", "--from", "LONG/LAT", "--to", target, stdin=points)
            self.assertEqual(r.stderr, "", target)

    def test_heights_stay_unless_they_are_ellipsoidal(self):
        # echo "500000 6206079.587 -25" | cs2cs -f %.4f +proj=utm +zone=32 +datum=WGS84
        #   +to +proj=utm +zone=32 +ellps=intl +towgs84=-87,-98,-121
        # gives 500083.1511 6206285.1152 -25.0000; the same pipeline through cct
        # (+step +proj=cart ... +proj=helmert +x=87 +y=98 +z=121 ...) gives the
        # ellipsoidal height -56.3303.
        point = "500000 6206079.587 -25\n"
        r = self.run_kvcart("convert", "--height", "--from", "UTM-32", "--to",
                            "ED50 / UTM zone 32N", stdin=point)
        self.assertEqual(r.returncode, 0, r.stderr)
        x, y, h = r.stdout.split()
        self.assertAlmostEqual(float(x), 500083.1511, delta=1e-3)
        self.assertAlmostEqual(float(y), 6206285.1152, delta=1e-3)
        self.assertEqual(h, "-25.000")
        r = self.run_kvcart("convert", "--ellipsoidal-height", "--from", "UTM-32", "--to",
                            "ED50 / UTM zone 32N", stdin=point)
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertAlmostEqual(float(r.stdout.split()[2]), -56.3303, delta=1e-3)
        help_text = self.run_kvcart("convert", "--help").stdout
        self.assertIn("--ellipsoidal-height", help_text)
        self.assertIn("above the ellipsoid", help_text)

    def test_list_labels_its_columns_and_filters_by_kind_and_text(self):
        r = self.run_kvcart("list", "--kind", "geographic")
        self.assertEqual(r.returncode, 0, r.stderr)
        lines = r.stdout.splitlines()
        self.assertEqual(lines[0], "NAME\tBRANCH\tMETHOD")
        names = [line.split("\t")[0] for line in lines[1:]]
        self.assertIn("LONG/LAT", names)
        self.assertNotIn("UTM-32", names)
        r = self.run_kvcart("list", "--match", "utm-3", "--no-header")
        rows = [line.split("\t") for line in r.stdout.splitlines()]
        self.assertIn(["UTM-32", "UTM Projections", "Transverse mercator"], rows)
        self.assertTrue(all("utm-3" in row[0].lower() and len(row) == 3 for row in rows))
        self.assertEqual(self.run_kvcart("list", "--kind", "nonsense").returncode, 2)

    def test_distance_and_zone(self):
        # echo "0 0 1 1" | GeodSolve -i -p 6: 45.18804022936 45.19676732164 156899.568291
        r = self.run_kvcart("distance", "0", "0", "1", "1")
        self.assertEqual(r.returncode, 0, r.stderr)
        values = [float(line.split()[-1 if "azimuth" in line else -2])
                  for line in r.stdout.splitlines()]
        self.assertAlmostEqual(values[0], 156899.568291, delta=1e-4)
        self.assertAlmostEqual(values[1], 45.18804022936, places=8)
        self.assertAlmostEqual(values[2], 45.19676732164, places=8)
        # echo "50 -10 -30 20" | GeodSolve -i -p 6: ... 9344001.341386
        r = self.run_kvcart("distance", "-10", "50", "20", "-30", "--crs", "UTM-32")
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertIn("9344001.341", r.stdout)
        self.assertEqual(self.run_kvcart("zone", "9").stdout, "UTM-32\n")
        self.assertEqual(self.run_kvcart("zone", "-177").stdout, "UTM-1\n")

    def test_usage_help_version_and_folders(self):
        self.assertEqual(self.run_kvcart().returncode, 2)
        self.assertEqual(self.run_kvcart("convert", "--from", "UTM-32").returncode, 2)
        self.assertEqual(self.run_kvcart("distance", "1", "2").returncode, 2)
        for sub in ("convert", "info", "list", "distance", "zone"):
            r = self.run_kvcart(sub, "--help")
            self.assertEqual(r.returncode, 0)
            self.assertIn("Usage: kvcart " + sub, r.stdout)
            # Every example is a command line of this subcommand.
            examples = r.stdout.split("Examples:\n", 1)[1].splitlines()
            self.assertTrue(examples and all("kvcart " + sub + " " in e for e in examples),
                            r.stdout)
        self.assertRegex(self.run_kvcart("--version").stdout,
                         r"^kvcart \d+\.\d+\.\d+ \(library \d+\.\d+\.\d+\)\n$")
        empty = os.path.join(self.folder, "empty")
        os.mkdir(empty)
        r = self.run_kvcart("list", env=dict(self.env, KVCART_DATA_DIR=empty))
        self.assertEqual(r.returncode, 1)
        self.assertIn("ellipsoid.tsf", r.stderr)
        # The data folder option wins over the environment.
        r = self.run_kvcart("--data-dir", DATA_DIR, "list", "--match", "UTM-32",
                            env=dict(self.env, KVCART_DATA_DIR=empty))
        self.assertEqual(r.returncode, 0, r.stderr)

    def test_reads_user_records_and_writes_nothing_back(self):
        self.write("user/custom_projection.tsf",
                   "[MAP_PROJECTION_DEFINITION]\n"
                   "   [UTM_PROJECTION]\n"
                   "      Projection_Name = 'My grid'\n"
                   "      Branch_Name = 'Mine'\n"
                   "      Ellipsoid = 'WE'\n"
                   "      Scale = 1\n      Centre = 12\n      Origin_Latitude = 0\n"
                   "      Feast = 100000\n      Fnorth = 0\n"
                   "   EndSect\nEndSect\n")
        with open(os.path.join(self.user, "custom_projection.tsf")) as f:
            before = f.read()
        r = self.run_kvcart("convert", "--from", "LONG/LAT", "--to", "My grid", stdin="12 0\n")
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertEqual(r.stdout, "100000.000 0.000\n")
        with open(os.path.join(self.user, "custom_projection.tsf")) as f:
            self.assertEqual(f.read(), before)
        self.assertEqual(sorted(os.listdir(self.user)), ["custom_projection.tsf"])

# Points in proj strings with their projected coordinates from cs2cs, the
# geographic system on the same ellipsoid or datum on both sides:
#   echo LON LAT | cs2cs +proj=longlat GEO +to PROJ GEO -f %.4f
PROJ_CASES = [
    ("+datum=WGS84", "+proj=utm +zone=32", (12.5, 47.25), (764833.0161, 5238889.7175)),
    ("+ellps=GRS80", "+proj=utm +zone=33 +south", (15, -33.5), (500000.0, 6293280.7796)),
    ("+ellps=airy",
     "+proj=tmerc +lat_0=49 +lon_0=-2 +k=0.9996012717 +x_0=400000 +y_0=-100000",
     (-1.5, 52.5), (433938.1586, 289280.1642)),
    ("+ellps=GRS80",
     "+proj=lcc +lat_1=49 +lat_2=44 +lat_0=46.5 +lon_0=3 +x_0=700000 +y_0=6600000",
     (5, 47), (851956.7426, 6657455.3805)),
    ("+ellps=clrk66",
     "+proj=lcc +lat_1=18 +lat_0=18 +lon_0=-77 +k_0=1 +x_0=250000 +y_0=150000",
     (-77.5, 18.2), (197106.5002, 172206.4936)),
    # x and y in US survey feet.
    ("+datum=NAD83", "+proj=lcc +lat_1=33 +lat_2=45 +lat_0=39 +lon_0=-96 +units=us-ft",
     (-100, 40), (-1114314.6299, 386808.0448)),
    ("+ellps=krass", "+proj=merc +lat_ts=33 +lon_0=100", (110, 20), (934547.8386, 1895990.4324)),
    ("+ellps=bessel", "+proj=merc +lon_0=110 +k=0.997 +x_0=3900000 +y_0=900000",
     (115, -5), (4454863.2916, 348129.8383)),
    ("+ellps=intl", "+proj=nzmg +lat_0=-41 +lon_0=173 +x_0=2510000 +y_0=6023150",
     (174.76, -36.85), (2667368.2629, 6482219.9083)),
    # The central meridian counts from Paris.
    ("+ellps=intl", "+proj=tmerc +lon_0=9 +k=0.9996 +x_0=500000 +pm=paris",
     (11.5, 51), (511422.1083, 5649953.1535)),
    ("+R=6371000", "+proj=tmerc +lon_0=3 +x_0=500000", (4, 50), (571474.0908, 5560224.1586)),
    ("+ellps=bessel",
     "+proj=sterea +lat_0=52.15616055555555 +lon_0=5.38763888888889 +k=0.9999079 "
     "+x_0=155000 +y_0=463000", (5.5, 52.3), (162663.4144, 479007.8956)),
    ("+datum=WGS84", "+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=0", (10, -75),
     (284571.7229, 1613886.4387)),
    ("+datum=WGS84", "+proj=stere +lat_0=90 +k=0.994 +lon_0=0 +x_0=2000000 +y_0=2000000",
     (20, 80), (2380651.7074, 954168.0293)),
    # Northing first.
    ("+ellps=GRS80",
     "+proj=lcc +lat_1=49 +lat_2=44 +lat_0=46.5 +lon_0=3 +x_0=700000 +y_0=6600000 +axis=neu",
     (5, 47), (6657455.3805, 851956.7426)),
]


class KvcartSideBySideTest(KvcartTest):
    """What users of cs2cs and projinfo expect of kvcart."""

    def convert(self, source, target, text, *options):
        return self.run_kvcart("convert", "--from", source, "--to", target, *options, stdin=text)

    def test_proj_strings_convert_as_cs2cs_does(self):
        for geo, proj, (lon, lat), (x, y) in PROJ_CASES:
            with self.subTest(proj=proj):
                source = "+proj=longlat " + geo
                target = proj + " " + geo
                r = self.convert(source, target, "%r %r\n" % (lon, lat), "--precision", "4")
                self.assertEqual(r.returncode, 0, r.stderr)
                got = [float(v) for v in r.stdout.split()]
                self.assertAlmostEqual(got[0], x, delta=1e-3)
                self.assertAlmostEqual(got[1], y, delta=1e-3)
                # And back, as cs2cs -I does it.
                back = self.convert(source, target, "%.4f %.4f\n" % (x, y), "--inverse")
                self.assertEqual(back.returncode, 0, back.stderr)
                self.assertPoint(back.stdout, lon, lat, 7)
                # The proj4 text info prints reads back as the same system.
                info = self.run_kvcart("info", "--json", target)
                proj4 = json.loads(info.stdout)["proj4"]
                again = self.convert(source, proj4, "%r %r\n" % (lon, lat), "--precision", "4")
                self.assertEqual(again.stdout, r.stdout, proj4)

    def test_proj_string_datum_shift_matches_cs2cs(self):
        # echo -1.5 52.5 | cs2cs +proj=longlat +datum=WGS84 +to +proj=tmerc +lat_0=49
        #   +lon_0=-2 +k=0.9996012717 +x_0=400000 +y_0=-100000 +ellps=airy
        #   +towgs84=446.448,-125.157,542.06,0.15,0.247,0.842,-20.489 -f %.4f
        # gives 434039.4573 289239.2811.
        target = ("+proj=tmerc +lat_0=49 +lon_0=-2 +k=0.9996012717 +x_0=400000 +y_0=-100000 "
                  "+ellps=airy +towgs84=446.448,-125.157,542.06,0.15,0.247,0.842,-20.489")
        r = self.convert("+proj=longlat +datum=WGS84", target, "-1.5 52.5\n", "--precision", "4")
        self.assertEqual(r.returncode, 0, r.stderr)
        x, y = (float(v) for v in r.stdout.split())
        self.assertAlmostEqual(x, 434039.4573, delta=1e-3)
        self.assertAlmostEqual(y, 289239.2811, delta=1e-3)
        info = self.run_kvcart("info", target)
        self.assertIn("Datum shift:     7 parameter: 446.448 -125.157 542.06 0.15 0.247 0.842 "
                      "-20.489\n", info.stdout)

    def test_proj_strings_that_cannot_be_honoured_are_refused(self):
        cases = [
            ("+proj=utm +zone=32 +datum=WGS84 +nadgrids=@conus", "+nadgrids"),
            ("+proj=utm +zone=32 +datum=potsdam", "+datum=potsdam is not read"),
            ("+proj=utm +zone=61", "+zone=1 to +zone=60"),
            ("+proj=tmerc +lat_ts=10", "+lat_ts does not apply to +proj=tmerc"),
            ("+proj=tmerc +lon_0=9d30", "+lon_0=9d30 is not a decimal number"),
            ("+proj=robin", "+proj=robin is not a method kvcart can translate"),
            ("+proj=utm +zone=32 +foo=1", "unknown proj parameter +foo"),
            ("+proj=utm +zone=32 +axis=wsu", "+axis=wsu is not read"),
            ("+proj=longlat +pm=paris", "prime meridian"),
        ]
        for proj, message in cases:
            with self.subTest(proj=proj):
                r = self.convert("LONG/LAT", proj, "9 56\n")
                self.assertEqual(r.returncode, 1)
                self.assertEqual(r.stdout, "")
                self.assertIn("kvcart: cannot use the proj string '%s': " % proj, r.stderr)
                self.assertIn(message, r.stderr)

    def test_inverse_converts_from_the_target_to_the_source(self):
        # echo 600000 5100000 | invproj -f %.10f +proj=utm +zone=32 +ellps=WGS84 gives
        # 10.2925320358 46.0462654558.
        r = self.convert("LONG/LAT", "UTM-32", "600000 5100000\n", "-I")
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertEqual(r.stdout, "10.292532036 46.046265456\n")

    def test_catalogue_names_ignore_letter_case_when_only_one_matches(self):
        r = self.convert("long/lat", "utm-32", "9 56\n")
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertEqual(r.stdout, "500000.000 6206079.587\n")
        self.write("user/custom_projection.tsf", "[MAP_PROJECTION_DEFINITION]\n" + "".join(
            "   [UTM_PROJECTION]\n"
            "      Projection_Name = '%s'\n      Branch_Name = 'Mine'\n"
            "      Ellipsoid = 'WE'\n      Scale = 1\n      Centre = 12\n"
            "      Origin_Latitude = 0\n      Feast = 0\n      Fnorth = 0\n   EndSect\n" % name
            for name in ("My grid", "MY GRID")) + "EndSect\n")
        r = self.convert("LONG/LAT", "my GRID", "9 56\n")
        self.assertEqual(r.returncode, 1)
        self.assertIn("'my GRID' matches several catalogue names when letter case is ignored",
                      r.stderr)
        self.assertIn("\n  My grid", r.stderr)
        self.assertIn("\n  MY GRID", r.stderr)
        # The exact spelling still picks one.
        self.assertEqual(self.convert("LONG/LAT", "MY GRID", "12 0\n").stdout, "0.000 0.000\n")

    def test_csv_header_and_skipped_lines_are_copied(self):
        r = self.convert("UTM-32", "LONG/LAT", "x,y,name\n600000,5100000,B\n")
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertEqual(r.stdout, "x,y,name\n10.292532036,46.046265456,B\n")
        # Comments and blanks may come before the header; a header later on is
        # an unreadable line.
        path = self.write("wells.csv", "# site 4\n\nEasting,Northing,Well\n600000,5100000,B\n"
                                       "Easting,Northing,Well\n")
        r = self.run_kvcart("convert", "--from", "UTM-32", "--to", "LONG/LAT", path)
        self.assertEqual(r.returncode, 1)
        self.assertEqual(r.stdout, "# site 4\n\nEasting,Northing,Well\n"
                                   "10.292532036,46.046265456,B\n")
        self.assertEqual(r.stderr, path + ":5: cannot read two coordinates (x y)\n")
        # A byte-order mark, as spreadsheets write it, is copied and not read.
        for text in (b"x,y\n600000,5100000\n", b"600000,5100000\n"):
            r = subprocess.run([KVCART, "convert", "--from", "UTM-32", "--to", "LONG/LAT"],
                               input=b"\xef\xbb\xbf" + text, capture_output=True, env=self.env,
                               timeout=60)
            self.assertEqual((r.returncode, r.stderr), (0, b""))
            self.assertEqual(r.stdout, b"\xef\xbb\xbf" + text.replace(
                b"600000,5100000", b"10.292532036,46.046265456"))
        # Header lines that look like numbers are skipped by count, in every file.
        other = self.write("other.txt", "2024 survey\n1 2\n600000 5100000\n")
        r = self.run_kvcart("convert", "--skip-lines", "2", "--from", "UTM-32", "--to",
                            "LONG/LAT", other, other)
        self.assertEqual(r.returncode, 0, r.stderr)
        self.assertEqual(r.stdout, 2 * "2024 survey\n1 2\n10.292532036 46.046265456\n")

    def test_bad_points_are_reported_per_line(self):
        lines = ["9.5 55.5", "9.5 95", "9.5 -90.5", "nan 55", "9 inf", "9,5 55,5",
                 "9.5;55.5", "9,5;55,5", "9.5 55.5 x"]
        path = self.write("points.txt", "\n".join(lines) + "\n")
        r = self.run_kvcart("convert", "--from", "LONG/LAT", "--to", "UTM-32", path)
        self.assertEqual(r.returncode, 1)
        # echo 9.5 55.5 | cs2cs +proj=longlat +datum=WGS84 +to +proj=utm +zone=32
        #   +datum=WGS84 -f %.3f gives 531585.160 6150546.797.
        self.assertEqual(r.stdout, "531585.160 6150546.797\n531585.160 6150546.797 x\n")
        semicolons = ("fields separated by ';': separate coordinates by blanks, tabs or a "
                      "comma and write numbers with a full stop")
        self.assertEqual(r.stderr.splitlines(), [
            path + ":2: latitude 95 is outside -90..90",
            path + ":3: latitude -90.5 is outside -90..90",
            path + ":4: a coordinate is not a finite number",
            path + ":5: a coordinate is not a finite number",
            path + ":6: the number 9,5 has a decimal comma: write 9.5 (a comma separates fields)",
            path + ":7: " + semicolons,
            path + ":8: " + semicolons,
        ])
        # Plain comma-separated values stay fine, heights included.
        r = self.convert("UTM-32", "LONG/LAT", "600000,5100000,12.5\n", "--height")
        self.assertEqual(r.stdout, "10.292532036,46.046265456,12.500\n", r.stderr)
        r = self.convert("LONG/LAT", "UTM-32", "9,5 55,5 3,0\n", "--height")
        self.assertIn("decimal comma", r.stderr)

    def test_zone_takes_longitudes_from_minus_to_plus_180(self):
        for lon, zone in (("-180", "UTM-1"), ("-0.000001", "UTM-30"), ("0", "UTM-31"),
                          ("179.999", "UTM-60"), ("180", "UTM-60")):
            r = self.run_kvcart("zone", lon)
            self.assertEqual((r.returncode, r.stdout), (0, zone + "\n"), lon)
        for lon in ("200", "-180.5", "nan", "inf"):
            r = self.run_kvcart("zone", lon)
            self.assertEqual(r.returncode, 2, lon)
            self.assertEqual(r.stdout, "")
            self.assertIn("a longitude lies in -180..180, not " + lon, r.stderr)
        r = self.run_kvcart("distance", "9", "95", "10", "56")
        self.assertEqual(r.returncode, 2)
        self.assertIn("a latitude lies in -90..90, not 95", r.stderr)

    def test_info_gives_units_axis_order_shift_and_a_proj4_text_cs2cs_reads(self):
        r = self.run_kvcart("info", "UTM-32")
        self.assertEqual(r.returncode, 0, r.stderr)
        fields = dict(line.split(":", 1) for line in r.stdout.split("Readable WKT:")[0]
                      .splitlines() if not line.startswith("  "))
        self.assertEqual(fields["Linear unit"].strip(), "Meter (1 m)")
        self.assertEqual(fields["Angular unit"].strip(), "Degree (0.017453292519943295 rad)")
        self.assertEqual(fields["Axis order"].strip(), "Easting (EAST), Northing (NORTH)")
        self.assertEqual(fields["Datum shift"].strip(), "None")
        # Numbers to 15 digits: the library's 9.000000000000002 (its degree
        # factor) is 9, and its -90.00000000000001, which proj refuses, is -90.
        self.assertEqual(fields["Proj4"].strip(),
                         "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 "
                         "+a=6378137 +b=6356752.31424518 +units=m +no_defs")
        exact = self.run_kvcart("info", "--exact-proj4", "UTM-32").stdout
        self.assertIn("Proj4:           +proj=tmerc +lat_0=0 +lon_0=9.000000000000002 +k=0.9996 "
                      "+x_0=500000 +y_0=0 +a=6378137 +b=6356752.314245179 +units=m "
                      "+no_defs  no_defs <>\n", exact)
        polar = UTM32_PRJ.replace('"Transverse_Mercator"', '"Lambert_Conformal_Conic"').replace(
            'PARAMETER["Scale_Factor",0.9996],PARAMETER["Latitude_Of_Origin",0.0]',
            'PARAMETER["Standard_Parallel_1",-72.0],PARAMETER["Standard_Parallel_2",-75.0],'
            'PARAMETER["Latitude_Of_Origin",-90.0]')
        self.assertIn(" +lat_1=-72.00000000000001 +lat_2=-75.00000000000001 "
                      "+lat_0=-90.00000000000001 +lon_0=9.000000000000002 ",
                      self.run_kvcart("info", "--exact-proj4", polar).stdout)
        self.assertIn(" +lat_1=-72 +lat_2=-75 +lat_0=-90 +lon_0=9 ",
                      self.run_kvcart("info", polar).stdout)
        # Special names and geographic systems.
        geo = self.run_kvcart("info", "LONG/LAT").stdout
        self.assertIn("Axis order:      Longitude (EAST), Latitude (NORTH)\n", geo)
        self.assertIn("Linear unit:     - (coordinates in degrees)\n", geo)
        self.assertIn("Proj4:           +proj=longlat +a=6378137 +b=6356752.31424518 +units=m "
                      "+no_defs\n", geo)
        # An oblique stereographic named "Stereographic": its engine is the
        # double stereographic, proj's sterea (echo 5.5 52.3 | cs2cs
        # +proj=longlat +ellps=bessel +to +proj=sterea +lat_0=52.15616055555555
        # +lon_0=5.38763888888889 +k=0.9999079 +x_0=155000 +y_0=463000
        # +ellps=bessel -f %.4f gives 162663.4144 479007.8956).
        stereo = (
            'PROJCS["RD",GEOGCS["Amersfoort",DATUM["D",SPHEROID["Bessel 1841",6377397.155,'
            '299.1528128]],PRIMEM["Greenwich",0],UNIT["Degree",0.017453292519943295]],'
            'PROJECTION["Stereographic"],PARAMETER["Latitude_Of_Origin",52.15616055555555],'
            'PARAMETER["Central_Meridian",5.38763888888889],PARAMETER["Scale_Factor",0.9999079],'
            'PARAMETER["False_Easting",155000],PARAMETER["False_Northing",463000],'
            'UNIT["Meter",1]]')
        d = json.loads(self.run_kvcart("info", "--json", stereo).stdout)
        self.assertTrue(d["proj4"].startswith("+proj=sterea "), d["proj4"])
        self.assertTrue(d["proj4_library"].startswith("+proj=stere "), d["proj4_library"])
        for system in (stereo, d["proj4"]):
            r = self.convert("+proj=longlat +ellps=bessel", system, "5.5 52.3\n", "--precision",
                             "4")
            self.assertEqual(r.stdout, "162663.4144 479007.8956\n", r.stderr)
        local = self.run_kvcart("info", "NON-UTM").stdout
        self.assertIn("Proj4:           - (a local system is not georeferenced)\n", local)
        # A WKT with the northing first, in US survey feet.
        wkt = UTM32_PRJ.replace('UNIT["Meter",1.0]]', 'UNIT["Foot_US",0.3048006096012192],'
                                'AXIS["Northing",NORTH],AXIS["Easting",EAST]]')
        d = json.loads(self.run_kvcart("info", "--json", wkt).stdout)
        self.assertEqual(d["axes"], [{"name": "Northing", "direction": "NORTH"},
                                     {"name": "Easting", "direction": "EAST"}])
        self.assertEqual(d["linear_unit"], {"name": "Foot_US", "factor": 0.3048006096012192})
        self.assertTrue(d["proj4"].endswith(" +to_meter=0.304800609601219 +axis=neu +no_defs"),
                        d["proj4"])
        self.assertTrue(d["proj4_library"].endswith(" +no_defs  no_defs <>"))
        # echo 9.5 56.5 | cs2cs +proj=longlat +datum=WGS84 +to <that proj4> -f %.3f gives
        # 20544061.580 600983.907 (feet, northing first).
        for system in (wkt, d["proj4"]):
            r = self.convert("LONG/LAT", system, "9.5 56.5\n")
            self.assertEqual(r.stdout, "20544061.580 600983.907\n", r.stderr)

    def test_info_json_is_utf8_whatever_the_prj_encoding(self):
        latin1 = UTM32_PRJ.replace("WGS_1984_UTM_Zone_32N", "R\u00e9seau g\u00e9od\u00e9sique")
        path = os.path.join(self.folder, "latin1.prj")
        with open(path, "wb") as f:
            f.write(latin1.encode("latin-1"))
        utf8 = self.write("utf8.prj", UTM32_PRJ.replace("WGS_1984_UTM_Zone_32N",
                                                        "\u00c5s \u2013 \u00f8st"))
        for prj, name in ((path, "R\u00e9seau g\u00e9od\u00e9sique"),
                          (utf8, "\u00c5s \u2013 \u00f8st")):
            r = subprocess.run([KVCART, "info", "--json", "@" + prj], capture_output=True,
                               env=self.env, timeout=60)
            self.assertEqual(r.returncode, 0, r.stderr)
            d = json.loads(r.stdout.decode("utf-8"))
            self.assertEqual(d["name"], name)
            self.assertTrue(d["wkt"].startswith('PROJCS["' + name + '"'))

    def test_a_name_that_exists_but_cannot_be_used_says_why(self):
        self.write("user/custom_projection.tsf",
                   "[MAP_PROJECTION_DEFINITION]\n   [UTM_PROJECTION]\n"
                   "      Projection_Name = 'Lost grid'\n      Branch_Name = 'Mine'\n"
                   "      Ellipsoid = 'QQ'\n      Scale = 1\n      Centre = 12\n"
                   "      Origin_Latitude = 0\n      Feast = 0\n      Fnorth = 0\n"
                   "   EndSect\nEndSect\n")
        r = self.run_kvcart("info", "lost GRID")
        self.assertEqual(r.returncode, 1)
        self.assertEqual(r.stderr, "kvcart: 'Lost grid' is in the catalogue but cannot be used: "
                                   "its ellipsoid 'QQ' is not in the ellipsoid catalogue\n")
        # Records of methods without an engine, if the catalogue still has any.
        listing = self.run_kvcart("list", "--no-header").stdout.splitlines()
        first_of_method = {}
        for name, _, method in (line.split("\t") for line in listing):
            first_of_method.setdefault(method, name)
        for method, name in first_of_method.items():
            r = self.run_kvcart("info", name)
            if r.returncode == 0:
                continue
            self.assertNotIn("closest catalogue names", r.stderr)
            self.assertIn("'%s' is in the catalogue but cannot be used: its method, %s, has no "
                          "engine" % (name, method), r.stderr)
        self.assertEqual(self.run_kvcart("info", "utm").stderr,
                         "kvcart: 'UTM' needs a zone: UTM-1 to UTM-60 (kvcart zone LON names "
                         "the zone of a longitude)\n")

    def test_man_page_documents_every_subcommand_and_option(self):
        with open(os.path.join(SOURCE_DIR, "apps", "kvcart", "kvcart.1.in")) as f:
            page = f.read().replace("\\-", "-").replace("\\fI", "").replace("\\fP", "")
        for sub in ("", "convert", "info", "list", "distance", "zone"):
            text = self.run_kvcart(*([sub] if sub else []), "--help").stdout
            # The option lines of the help: "  -I,--inverse   Convert ...".
            options = {o for line in text.splitlines() if re.match(r"^  -", line)
                       for o in re.findall(r"--?[A-Za-z][\w-]*", line.split()[0])}
            self.assertTrue(options)
            for option in options:
                self.assertTrue(option in page, "kvcart %s %s" % (sub, option))
            if sub:
                self.assertIn(".B " + sub + "\n", page)

    def test_finds_the_catalogue_beside_the_program_without_settings(self):
        env = dict(self.env)
        del env["KVCART_DATA_DIR"]
        r = self.run_kvcart("info", "UTM-32", env=env)
        self.assertEqual(r.returncode, 0, r.stderr)


if __name__ == "__main__":
    KVCART = sys.argv.pop(1)
    unittest.main()
