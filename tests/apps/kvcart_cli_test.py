"""End-to-end tests of the kvcart program: runs the built binary on small
files in a temporary folder.

    python3 tests/apps/kvcart_cli_test.py PATH_TO_KVCART
"""
import json
import os
import subprocess
import sys
import tempfile
import unittest

KVCART = None
DATA_DIR = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "data")

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
        self.assertIn("Linear unit:     US survey foot (0.3048006096012192)\n", r.stdout)
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

    def test_list_filters_by_kind_and_text(self):
        r = self.run_kvcart("list", "--kind", "geographic")
        self.assertEqual(r.returncode, 0, r.stderr)
        names = [line.split("\t")[0] for line in r.stdout.splitlines()]
        self.assertIn("LONG/LAT", names)
        self.assertNotIn("UTM-32", names)
        r = self.run_kvcart("list", "--match", "utm-3")
        names = [line.split("\t")[0] for line in r.stdout.splitlines()]
        self.assertIn("UTM-32", names)
        self.assertTrue(all("utm-3" in n.lower() for n in names))
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
            self.assertIn("Usage", r.stdout)
        self.assertTrue(self.run_kvcart("--version").stdout.startswith("kvcart "))
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


if __name__ == "__main__":
    KVCART = sys.argv.pop(1)
    unittest.main()
